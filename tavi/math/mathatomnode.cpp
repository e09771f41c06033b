// MathAtomNode: text, caret, and the protocol of a node without components.
#include "tavi/math/mathatomnode.h"

#include "tavi/math/mathnodecontext.h"

namespace Tavi {

MathAtomNode::MathAtomNode(MathTemplate *templ) : MathNode(templ), caret_pos_(0) {}

AllocationTree *MathAtomNode::allocate(long, GlyphContext &, AllocationTree const &) { return nullptr; }

bool MathAtomNode::is_allocated()
{
    if (templ() != nullptr && !templ()->is_allocated())
        return false;
    return Glyph::is_allocated();
}

void MathAtomNode::invalidate_allocation()
{
    if (templ() != nullptr)
        templ()->invalidate_allocation();
    Glyph::invalidate_allocation();
}

// The caret belongs to the atom: a pick in its text moves it to the position under the point.
bool MathAtomNode::pick(MathSelection *, MathNodeContext &context, AllocationTree const &allocation, Point point)
{
    if (templ() == nullptr)
        return false;
    long position = 0;
    {
        AsMathNode scope(context, this);
        position = templ()->caret_pos(context, allocation, point);
    }
    long const end = static_cast<long>(text_.length());
    caret_pos_ = position < 0 ? 0 : position > end ? end : position;
    return true;
}

void MathAtomNode::text(wchar const *text)
{
    text_ = MathString(text, MathString::f_text);
    caret_pos_ = static_cast<long>(text_.length());
    modified();
}

void MathAtomNode::text(MathString const &text, long caret)
{
    text_ = text;
    long const end = static_cast<long>(text_.length());
    caret_pos_ = caret < 0 || caret > end ? end : caret;
    modified();
}

MathString const &MathAtomNode::text() const { return text_; }

bool MathAtomNode::is_equal(MathNode *other)
{
    if (!MathNode::is_equal(other))
        return false;
    MathAtomNode *atom = dynamic_cast<MathAtomNode *>(other);
    return atom != nullptr && atom->text() == text();
}

unsigned long MathAtomNode::cat_childs() const { return 0; }

bool MathAtomNode::may_replace(long, MathNode *) { return false; }

long MathAtomNode::caret_pos() { return caret_pos_; }

bool MathAtomNode::increment_caret_pos(bool forward)
{
    std::size_t const here = static_cast<std::size_t>(caret_pos_ < 0 ? 0 : caret_pos_);
    if (forward ? here >= text_.length() : here == 0)
        return false;
    caret_pos_ = static_cast<long>(forward ? text_.next_char(here) : text_.prev_char(here));
    return true;
}

void MathAtomNode::set_caret_pos(bool at_end) { caret_pos_ = at_end ? static_cast<long>(text_.length()) : 0; }

}  // namespace Tavi
