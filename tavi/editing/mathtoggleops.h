// The operations that flip a setting and are their own inverse: the sign of the selected term of a
// sum, the signs of all terms of the selected sum, the formula's own read-only flag, and whether the
// formula takes its read-only state from outside.
#pragma once

#include "tavi/editing/matheditop.h"

namespace Tavi {

class MathToggleSignOp : public MathEditOp
{
public:
    explicit MathToggleSignOp(MathEditScene *scene);

protected:
    bool on_doit(MathSelection *selection) override;
    bool on_undo(MathSelection *selection) override;
};

class MathToggleAllSignsOp : public MathEditOp
{
public:
    explicit MathToggleAllSignsOp(MathEditScene *scene);

protected:
    bool on_doit(MathSelection *selection) override;
    bool on_undo(MathSelection *selection) override;
};

class ToggleReadOnlyOp : public MathEditOp
{
public:
    explicit ToggleReadOnlyOp(MathEditScene *scene);

protected:
    bool on_doit(MathSelection *selection) override;
    bool on_undo(MathSelection *selection) override;
};

class ToggleInheritReadOnlyOp : public MathEditOp
{
public:
    explicit ToggleInheritReadOnlyOp(MathEditScene *scene);

protected:
    bool on_doit(MathSelection *selection) override;
    bool on_undo(MathSelection *selection) override;
};

}  // namespace Tavi
