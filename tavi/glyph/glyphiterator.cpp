// GlyphIterator.
#include "tavi/glyph/glyphiterator.h"

#include "tavi/glyph/glyph.h"

namespace Tavi {

GlyphIterator::GlyphIterator(Glyph *root)
{
    this->root(root);
}

void GlyphIterator::root(Glyph *root)
{
    stack_.clear();
    if (!root)
        return;
    stack_.emplace_back(root, 0);
    descend(0);
}

// A glyph is visited once its components are done: the top of the stack is popped, and its
// parent either goes down into its next component or, when it has none left, is visited itself.
bool GlyphIterator::next()
{
    if (stack_.empty())
        return false;
    stack_.pop_back();
    if (stack_.empty())
        return false;
    descend(stack_.back().second + 1);
    return true;
}

void GlyphIterator::descend(long from)
{
    for (;;) {
        Glyph *top = stack_.back().first;
        long const n = top->count();
        long i = from;
        Glyph *child = nullptr;
        for (; i < n; ++i)
            if ((child = top->component(i)))
                break;
        if (i >= n)
            return;
        stack_.back().second = i;
        stack_.emplace_back(child, 0);
        from = 0;
    }
}

}  // namespace Tavi
