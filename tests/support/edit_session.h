// EditSession: a formula edited exactly as a host drives it, with no window. A FormulaScene with the
// default setup file, a GlyphView joined to the windowless implementations, and a QImage the view
// draws on at 96 dpi. Keys and characters go in through the view (View::key_down, enter_char),
// clicks through View::mouse_down and the next draw.
//
// Scripts: plain text is typed character by character (UTF-8 in, 16-bit units out); a key in braces
// is pressed: {Left} {Right} {Up} {Down} {Tab} {S-Tab} {Del} {BS} {Space} {S-Space} {C-Space}, and
// control combinations {C-R}, {C-S-I}, ... by letter or digit; {{} types a brace.
#pragma once

#include <string>
#include <vector>

#include <QImage>

#include "tavi/editing/formulascene.h"
#include "tavi/geometry/box.h"
#include "tavi/geometry/rect.h"
#include "tavi/glyph/glyphview.h"
#include "tavi/glyph/rendersceneimp.h"
#include "tavi/glyph/renderviewimp.h"
#include "tavi/interchange/hostingframe.h"
#include "tavi/interchange/memoryclipboard.h"

namespace Tavi {
class MathNode;
class MathSelection;
}  // namespace Tavi

namespace TaviTest {

// A scene implementation whose modifier word the test sets.
class ModifierSceneImp : public Tavi::RenderSceneImp
{
public:
    int modifier_state() override { return modifiers; }
    int modifiers = 0;
};

class EditSession
{
public:
    // An empty formula, or the given content XML.
    explicit EditSession(std::string const &content = std::string());
    ~EditSession();
    EditSession(EditSession const &) = delete;
    EditSession &operator=(EditSession const &) = delete;

    // Runs a script (see above); false at the first key that no one took, when `strict` is set.
    void type(std::string const &script);
    // One key through the view, with the modifier word held while it goes.
    bool key(int key, int modifiers = 0);
    bool character(char16_t c, int modifiers = 0);

    // Draws the view on the image, as a paint event would.
    void draw();
    // A click at a point of the drawn formula, taken up by the next draw.
    void click(Tavi::Point point);
    // Where the node at the path stands on the image (after a draw).
    Tavi::Rect box_of(std::vector<long> const &path);
    // The formula's measured box on the image's canvas.
    Tavi::Box formula_box();

    // The formula in the content format without the math element around it.
    std::string content();
    std::vector<long> path();
    long caret();
    Tavi::MathSelection *selection();
    Tavi::MathNode *selected();

    Tavi::FormulaScene scene;
    ModifierSceneImp scene_imp;
    Tavi::RenderViewImp view_imp;
    Tavi::GlyphView view;
    QImage image;
};

// A hosting frame with a clipboard in memory, installed for its life: copy and paste within the
// process. Messages are kept, not shown.
class MemoryFrame : public Tavi::HostingFrame
{
public:
    MemoryFrame() : old_(Tavi::HostingFrame::install(this)) {}
    ~MemoryFrame() override { Tavi::HostingFrame::install(old_); }
    Tavi::Clipboard &clipboard() override { return clipboard_; }
    void message(Tavi::wchar const *, Tavi::wchar const *, Tavi::MessageType) override { ++messages; }
    int messages = 0;

private:
    Tavi::MemoryClipboard clipboard_;
    Tavi::HostingFrame *old_;
};

// The body of a content document: the math element's children.
std::string content_body(std::string const &document);

}  // namespace TaviTest
