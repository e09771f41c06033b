// Scaffolding for tests of layouts and templates: a math context drawing on a recording canvas, a
// template built around a layout under test, nodes made on it and held for the test's life, and
// readers of what the canvas painted.
//
// Metrics of the recording canvas for a font of size s twips (240 gives the bracketed numbers):
// advance 10s/240 (10) per character, font ascent 8s/240 (8), descent 2s/240 (2), ex 5s/240 (5),
// ink ascent 7s/240 (7) and ink descent s/240 (1) from text_metrics, bearings 0. At the default dpi of
// 1440, twips_to_pixel is the identity, so a space of n twips is n units.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "support/recording_canvas.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/glyph/glyphcontext.h"
#include "tavi/glyph/glyphscene.h"
#include "tavi/kxt/wchar.h"
#include "tavi/math/mathinfo.h"
#include "tavi/math/mathnodecontext.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/mathstyle.h"
#include "tavi/math/templates/mathtemplate.h"

namespace Tavi {
class MathLayout;
class MathNode;
class TemplateTable;
}  // namespace Tavi

namespace TaviTest {

// The whole of a file; empty if it cannot be read.
std::string read_whole_file(std::string const &path);
// The source tree's default setup file, data/mathsetup.xml, read into the table; false on any fault.
bool read_default_setup(Tavi::TemplateTable &table);

// Settings of a context: the text font at `size` twips, display style, no slanting of identifiers
// (so that tests see the italic flag only where a layout or node sets it).
Tavi::MathInfo::Settings math_settings(long size = 240);

// A recording canvas and a math context over it.
struct MathFixture
{
    explicit MathFixture(Tavi::MathInfo::Settings const &settings = math_settings(),
                         Tavi::Extent const &dpi = Tavi::Extent(1440, 1440));
    RecordingCanvas canvas;
    Tavi::GlyphContext glyph_context;
    Tavi::MathNodeContext context;
};

// A scene that shows one formula root in the style it owns (the default style unless changed), and
// says whether it is read-only.
class StyledScene : public Tavi::GlyphScene, public Tavi::MathStyleSource
{
public:
    Tavi::Glyph *glyph() override { return root; }
    Tavi::MathStyle *math_style() override { return &style; }
    bool read_only() const override { return locked; }
    Tavi::Glyph *root = nullptr;
    Tavi::MathStyle style;
    bool locked = false;
};

// Holds one reference on a reference-counted object for its own life, as a parent would.
template <class T>
class Held
{
public:
    explicit Held(T *p) : p_(p)
    {
        if (p_)
            p_->ref();
    }
    ~Held()
    {
        if (p_)
            p_->unref();
    }
    Held(Held const &) = delete;
    Held &operator=(Held const &) = delete;
    T *operator->() const { return p_; }
    T &operator*() const { return *p_; }
    T *get() const { return p_; }

private:
    T *p_;
};

// A template of the given name and priority whose only layout is `layout` (the template takes its
// reference). Varying arity, no entry key, nothing flattens.
Tavi::MathTemplate *layout_template(Tavi::MathLayout *layout, double priority = Tavi::MathTemplate::no_parens_priority,
                                    Tavi::wchar const *name = u"test");

// Nodes on a template: an atom of each kind with its text (decoded, so "&Sum;" names a character),
// and an expression node with the given children (the node takes a reference on each).
Tavi::MathNode *ident_node(Tavi::MathTemplate *templ, Tavi::wchar const *text);
Tavi::MathNode *number_node(Tavi::MathTemplate *templ, Tavi::wchar const *text);
Tavi::MathNode *string_node(Tavi::MathTemplate *templ, Tavi::wchar const *text);
Tavi::MathNode *expr_node(Tavi::MathTemplate *templ, std::vector<Tavi::MathNode *> const &children);

// Request and draw of a layout on behalf of a node, as the node's template would run them: the
// node is the context's math node for the call, and the old one comes back afterwards.
Tavi::BoxTree *request_as(Tavi::MathNodeContext &context, Tavi::MathNode *node, Tavi::MathLayout *layout,
                          Tavi::BoxTree const &constraint = Tavi::BoxTree::unconstrained);
void draw_as(Tavi::MathNodeContext &context, Tavi::MathNode *node, Tavi::MathLayout *layout,
             Tavi::AllocationTree const &allocation);

// The painted texts among the recorded calls, as (text in UTF-8, x, y), in order.
struct Painted
{
    std::string text;
    long x;
    long y;
    bool operator==(Painted const &o) const { return text == o.text && x == o.x && y == o.y; }
};
std::vector<Painted> painted_texts(RecordingCanvas const &canvas);
// The recorded calls whose name starts with `prefix` ("line(", "font(").
std::vector<std::string> calls_starting(RecordingCanvas const &canvas, std::string const &prefix);
// The painted texts among the recorded calls while a font of this name was selected.
std::vector<Painted> painted_texts_in(RecordingCanvas const &canvas, std::string const &font_name);
// Every text and line recorded from call `first` on that does not lie inside `box` at `origin`, each
// as its record and " in <font> <size>". `font` is the font selected before call `first`. A run of n
// characters in a text font of size s spans its advance n*(10s/240) from its point and its ink 7s/240
// above and s/240 below; a glyph of the extension font hangs from its point with heights the canvas
// does not know, so only the point is held to the box; a line must have both ends in it.
std::vector<std::string> painted_outside(RecordingCanvas const &canvas, std::size_t first, Tavi::Point origin,
                                         Tavi::BoxTree const &box, Tavi::Font const &font = Tavi::Font());
// Readable form for assertion messages.
std::ostream &operator<<(std::ostream &out, Painted const &p);

// The box's width, ascent and descent, for comparing with a Box.
inline Tavi::Box box_of(Tavi::BoxTree const *b) { return b ? b->box() : Tavi::Box(-99, -99, -99); }

}  // namespace TaviTest
