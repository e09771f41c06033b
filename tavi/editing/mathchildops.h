// The operations that add, swap or unwrap one node at the selection: a sibling inserted after the
// selected node, a child appended to it (each also with a minus sign, in a sum), the selected node
// replaced by another, and a one-child node (or the parent of the selection) unwrapped to its child.
#pragma once

#include "tavi/editing/matheditop.h"

namespace Tavi {

// Inserts its node after the selected node and selects it.
class MathInsertSiblingOp : public MathEditOp
{
public:
    // Takes a reference on the node.
    MathInsertSiblingOp(MathEditScene *scene, MathNode *node);

protected:
    bool on_doit(MathSelection *selection) override;
    bool on_undo(MathSelection *selection) override;

    // Between runs the node lives in the tree; after an undo the operation holds it again.
    NodeRef node;
};

// The same, the new operand signed minus (the parent is a sum).
class MathInsertNegativeSiblingOp : public MathInsertSiblingOp
{
public:
    using MathInsertSiblingOp::MathInsertSiblingOp;

protected:
    bool on_doit(MathSelection *selection) override;
};

// Appends its node as the last child of the selected node and selects it.
class MathAppendChildOp : public MathEditOp
{
public:
    MathAppendChildOp(MathEditScene *scene, MathNode *node);

protected:
    bool on_doit(MathSelection *selection) override;
    bool on_undo(MathSelection *selection) override;

    NodeRef node;
};

// The same, the new operand signed minus (the selected node is a sum).
class MathAppendNegativeChildOp : public MathAppendChildOp
{
public:
    using MathAppendChildOp::MathAppendChildOp;

protected:
    bool on_doit(MathSelection *selection) override;
};

// Puts its node where the selected node stands, and keeps the one it displaced: every run swaps.
class MathReplaceNodeOp : public MathEditOp
{
public:
    MathReplaceNodeOp(MathEditScene *scene, MathNode *node);

protected:
    bool on_doit(MathSelection *selection) override;
    bool on_undo(MathSelection *selection) override;

private:
    bool swap(MathSelection *selection);

    NodeRef node;
};

// Replaces the selected node by its first child (a double negation goes this way).
class MathFlattenUnaryOp : public MathEditOp
{
public:
    explicit MathFlattenUnaryOp(MathEditScene *scene);

protected:
    bool on_doit(MathSelection *selection) override;
    bool on_undo(MathSelection *selection) override;

    // The node unwrapped, kept whole with its child for the undo.
    NodeRef node;
};

// The same for the parent of the selected node, which then stands in the parent's place.
class MathFlattenUnaryParentOp : public MathFlattenUnaryOp
{
public:
    using MathFlattenUnaryOp::MathFlattenUnaryOp;

protected:
    bool on_doit(MathSelection *selection) override;
    bool on_undo(MathSelection *selection) override;
};

}  // namespace Tavi
