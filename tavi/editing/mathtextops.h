// The operations on the text of the selected atom: a character put in at a position, and the
// character after (or before) a position taken out. Positions are in 16-bit units of the text; a
// named character that spans several units goes in and out whole.
#pragma once

#include "tavi/editing/matheditop.h"
#include "tavi/math/mathstring.h"

namespace Tavi {

class MathInsertCharOp : public MathEditOp
{
public:
    MathInsertCharOp(MathEditScene *scene, MathString const &text, long position);

protected:
    // The caret goes behind what went in.
    bool on_doit(MathSelection *selection) override;
    // The caret goes back to where the text went in.
    bool on_undo(MathSelection *selection) override;

private:
    MathString text;
    long position;
};

class MathDeleteCharOp : public MathEditOp
{
public:
    // Forward deletes the character at `position` (the Delete key); backward the one before it
    // (backspace).
    MathDeleteCharOp(MathEditScene *scene, long position, bool forward);

protected:
    bool on_doit(MathSelection *selection) override;
    bool on_undo(MathSelection *selection) override;

private:
    long position;
    MathString text;
    bool forward;
};

}  // namespace Tavi
