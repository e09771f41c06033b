// EditHistory: the undo and redo stacks of a scene. It owns the operations it keeps and calls undo
// and redo in last-in, first-out order. A step is one or more operations: characters typed one
// after another into the same atom are one step with the character that began it, as people expect
// of an editor, until anything else happens (another edit, a move of the selection, an undo). A new
// step clears what could be redone. The depth is bounded: the oldest steps go first.
#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <vector>

#include "tavi/editing/matheditop.h"

namespace Kxt {
class Operation;
}

namespace Tavi {

class EditHistory
{
public:
    static constexpr std::size_t default_depth = 1000;

    explicit EditHistory(std::size_t depth = default_depth);
    ~EditHistory();
    EditHistory(EditHistory const &) = delete;
    EditHistory &operator=(EditHistory const &) = delete;

    // Takes over an operation that has run. One that changed nothing, or a change of mode, is freed.
    void record(Kxt::Operation *op, bool done, EditKind kind);
    // Ends the typing step in progress: the next typed character starts a step of its own.
    void seal() { typing_open_ = false; }

    bool can_undo() const { return !done_.empty(); }
    bool can_redo() const { return !undone_.empty(); }
    // Takes the last step back, its operations in reverse order; false when there is none.
    bool undo();
    // Does the last undone step again; false when there is none.
    bool redo();
    // Forgets every step.
    void clear();

    std::size_t undo_count() const { return done_.size(); }
    std::size_t redo_count() const { return undone_.size(); }
    std::size_t depth() const { return depth_; }
    // At least 1; steps beyond the new depth are forgotten, oldest first.
    void depth(std::size_t steps);

private:
    struct Step
    {
        std::vector<std::unique_ptr<Kxt::Operation>> ops;
    };

    void trim();

    std::deque<Step> done_;
    std::vector<Step> undone_;
    std::size_t depth_;
    bool typing_open_ = false;
};

}  // namespace Tavi
