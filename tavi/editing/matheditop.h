// MathEditOp: the base of every change a user makes to a formula. An operation acts on the scene's
// selection as it stands when it runs: it has no path of its own, reads the selected node, pushes and
// pops the selection's path and leaves it on the node to be selected next. That is why it keeps a memo
// of the selection as it left it, and puts that memo back before an undo or a redo: every later step
// assumes the path it left.
#pragma once

#include <memory>

#include "tavi/kxt/operation.h"

namespace Tavi {

class MathEditScene;
class MathNode;
class MathSelection;
class SelectionMemo;

// How an operation joins the history of a scene that keeps one: an edit of its own, the first or a
// following character typed into an atom (following ones are one step with the first), or a change of
// mode that the history leaves out.
enum class EditKind { edit, typing_start, typing, mode };

class MathEditOp : public Kxt::Operation
{
public:
    explicit MathEditOp(MathEditScene *scene);
    ~MathEditOp() override;
    MathEditOp(MathEditOp const &) = delete;
    MathEditOp &operator=(MathEditOp const &) = delete;

    // Runs the change on the scene's selection. On success the selection hears of the content change
    // and the memo becomes the selection as the change left it.
    bool doit() override;
    // Puts the memo back, then takes the change back; false for an operation that never ran.
    bool undo() override;
    // Puts the memo back, then runs the change again.
    bool redo() override;

    MathEditScene *scene() const { return scene_; }
    // Whether the operation has run (it then has a memo).
    bool has_run() const { return memo_ != nullptr; }

protected:
    virtual bool on_doit(MathSelection *selection) = 0;
    virtual bool on_undo(MathSelection *selection) = 0;

    // Puts `node` where the selected node stands: into the parent at the last index of the path, or
    // as the formula's top node for an empty path. The node displaced loses its parent and the tree's
    // reference; whoever still needs it must hold one.
    static void put_in_place(MathSelection *selection, MathNode *node);

private:
    // The frame around every change: highlight off, chain detached, the change, chain attached,
    // highlight on, and on success the change hint and a new memo.
    bool run(bool undoing);
    void revive_memo();

    std::unique_ptr<SelectionMemo> memo_;
    MathEditScene *scene_;
};

// Holds one reference on a node for the life of an operation's field; null is allowed.
class NodeRef
{
public:
    NodeRef() = default;
    explicit NodeRef(MathNode *node) { reset(node); }
    ~NodeRef() { reset(nullptr); }
    NodeRef(NodeRef const &) = delete;
    NodeRef &operator=(NodeRef const &) = delete;

    MathNode *get() const { return node_; }
    MathNode *operator->() const { return node_; }
    explicit operator bool() const { return node_ != nullptr; }
    // Takes a reference on the new node before letting the old one go.
    void reset(MathNode *node);

private:
    MathNode *node_ = nullptr;
};

}  // namespace Tavi
