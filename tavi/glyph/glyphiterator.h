// GlyphIterator: walks a glyph tree in post-order, every component of a glyph before the glyph
// itself. A null component is stepped over.
#pragma once

#include <utility>
#include <vector>

namespace Tavi {

class Glyph;

class GlyphIterator
{
public:
    explicit GlyphIterator(Glyph *root = nullptr);

    // Starts again on another tree; the first glyph is then its first leaf.
    void root(Glyph *root);
    bool at_end() const { return stack_.empty(); }
    // The present glyph, or null at the end.
    Glyph *glyph() const { return stack_.empty() ? nullptr : stack_.back().first; }
    // Moves on; false when the walk has run out (and stays out).
    bool next();

private:
    // Pushes the first non-null component of the top, and so on down, from component index `from`
    // of the top, until a glyph without such components is on top.
    void descend(long from);

    // Each glyph on the path from the root, with the index of the component being visited.
    std::vector<std::pair<Glyph *, long>> stack_;
};

}  // namespace Tavi
