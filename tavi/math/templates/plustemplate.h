// PlusTemplate: the template "plus" of sums. A sum is a run of terms, each with its own sign; the
// template draws the sign before each term: "+" or "-" between terms, nothing before a leading plus
// and a prefix "-" before a leading minus. Differences and negations are sums too.
#pragma once

#include "tavi/math/templates/mathtemplate.h"

namespace Tavi {

class LayoutOp;

class PlusTemplate : public MathTemplate
{
public:
    PlusTemplate(TemplateTable *table, bool can_enter, wchar const *keyword, TemplateAccelerator const &accelerator,
                 double priority);
    ~PlusTemplate() override;

    using MathTemplate::create_node;
    // An empty sum node.
    MathNode *create_node() override;
    // Removing a term from a sum of two leaves no sum; from a longer one the sum stays.
    DeleteOp delete_child_op(MathNode const *node, std::size_t child) override;

    // The sign before term `index`. A break is cheap before it and forbidden after it, so a sign
    // never ends a line.
    BoxTree *request_operator(long index, MathNodeContext &context, BoxTree const &constraint) override;
    void draw_operator(long index, MathNodeContext &context, AllocationTree const &allocation) override;

private:
    // The operator shown before term `index`, or null when it shows nothing (a leading plus).
    LayoutOp *sign_operator(long index, MathNodeContext &context) const;

    LayoutOp *plus_;          // "+" infix
    LayoutOp *minus_;         // "-" infix
    LayoutOp *leading_minus_; // "-" prefix
};

}  // namespace Tavi
