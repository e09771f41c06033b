// EditSession: a windowless host that edits one formula through its view.
#include "support/edit_session.h"

#include <fstream>
#include <memory>
#include <sstream>

#include <QPainter>
#include <QString>

#include "tavi/editing/mathselection.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/glyph/glyphcontext.h"
#include "tavi/glyph/input.h"
#include "tavi/kxt/stream.h"
#include "tavi/math/mathnode.h"
#include "tavi/qt/qt_canvas.h"

namespace TaviTest {

using namespace Tavi;

namespace {

std::string read_file(std::string const &path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

struct NamedKey
{
    char const *name;
    int key;
    int modifiers;
    char16_t text;  // the character the key also types, 0 for none
};

// The keys a script can press by name, with what a keyboard sends along with them.
NamedKey const named_keys[] = {
    {"Left", Input::key_left, 0, 0},   {"Right", Input::key_right, 0, 0},
    {"Up", Input::key_up, 0, 0},       {"Down", Input::key_down, 0, 0},
    {"Tab", Input::key_tab, 0, 0},     {"S-Tab", Input::key_tab, Input::modifier_shift, 0},
    {"Del", Input::key_delete, 0, 0},  {"BS", Input::key_backspace, 0, 8},
    {"Space", Input::key_space, 0, u' '}, {"S-Space", Input::key_space, Input::modifier_shift, u' '},
    {"C-Space", Input::key_space, Input::modifier_control, u' '},
};

}  // namespace

std::string content_body(std::string const &document)
{
    std::size_t const open = document.find('>');
    std::size_t const close = document.rfind("</math>");
    if (open == std::string::npos || close == std::string::npos || close < open)
        return document;
    return document.substr(open + 1, close - open - 1);
}

EditSession::EditSession(std::string const &content) : image(640, 480, QImage::Format_ARGB32_Premultiplied)
{
    int const dots_per_meter = 3780;  // 96 dpi
    image.setDotsPerMeterX(dots_per_meter);
    image.setDotsPerMeterY(dots_per_meter);
    std::string const setup = read_file(TAVI_SOURCE_DIR "/data/mathsetup.xml");
    Kxt::KTmemoryStream stream(reinterpret_cast<unsigned char const *>(setup.data()), setup.size());
    scene.template_table()->init(stream);
    if (!content.empty())
        scene.read_content("<math xmlns=\"http://www.tavi-math.org/xml/MathEditContent\">" + content + "</math>");
    // The host's order: scene and its implementation, view and its implementation, final_construct.
    scene.implementation(&scene_imp);
    view_imp.scene(&scene);
    view.implementation(&view_imp);
    scene_imp.view(&view);
    view.final_construct();
    draw();
}

EditSession::~EditSession() { scene_imp.view(nullptr); }

bool EditSession::key(int key, int modifiers)
{
    scene_imp.modifiers = modifiers;
    bool const taken = view.key_down(static_cast<Input::Key>(key), modifiers);
    scene_imp.modifiers = 0;
    return taken;
}

bool EditSession::character(char16_t c, int modifiers)
{
    scene_imp.modifiers = modifiers;
    bool const taken = view.enter_char(c);
    scene_imp.modifiers = 0;
    return taken;
}

void EditSession::type(std::string const &script)
{
    std::size_t i = 0;
    while (i < script.size()) {
        if (script.compare(i, 3, "{{}") == 0) {
            character(u'{');
            i += 3;
            continue;
        }
        if (script[i] == '{') {
            std::size_t const end = script.find('}', i);
            std::string const name = script.substr(i + 1, end - i - 1);
            i = end + 1;
            bool named = false;
            for (NamedKey const &k : named_keys) {
                if (name == k.name) {
                    key(k.key, k.modifiers);
                    if (k.text)
                        character(k.text, k.modifiers);
                    named = true;
                }
            }
            if (named)
                continue;
            // C-X, C-S-X: control (and shift) with a letter or digit.
            int modifiers = Input::modifier_control;
            std::string rest = name.substr(2);
            if (rest.compare(0, 2, "S-") == 0) {
                modifiers |= Input::modifier_shift;
                rest = rest.substr(2);
            }
            key(rest[0], modifiers);
            continue;
        }
        // One UTF-8 character, as the 16-bit units it stands for.
        std::size_t len = 1;
        unsigned char const lead = static_cast<unsigned char>(script[i]);
        if (lead >= 0xf0)
            len = 4;
        else if (lead >= 0xe0)
            len = 3;
        else if (lead >= 0xc0)
            len = 2;
        QString const text = QString::fromUtf8(script.data() + i, static_cast<int>(len));
        i += len;
        for (QChar unit : text) {
            char16_t const c = unit.unicode();
            // A keyboard sends the key of a letter or digit before its character.
            if ((c >= u'a' && c <= u'z') || (c >= u'0' && c <= u'9'))
                key(c >= u'a' ? c - u'a' + 'A' : c, 0);
            character(c);
        }
    }
    draw();
}

void EditSession::draw()
{
    image.fill(Qt::white);
    QPainter painter(&image);
    Qt_Canvas canvas(&painter, Extension(0, 0, image.height(), image.width()));
    view.on_draw(&canvas, false);
}

void EditSession::click(Point point)
{
    view.mouse_down(point, 0, false);
    draw();
}

Rect EditSession::box_of(std::vector<long> const &path)
{
    QPainter painter(&image);
    Qt_Canvas canvas(&painter, Extension(0, 0, image.height(), image.width()));
    GlyphContext context(&scene, &view, &canvas, scene.glyph());
    BoxTree const *tree = scene.glyph()->request(context, BoxTree::unconstrained);
    if (tree == nullptr)
        return Rect();
    AllocationTree const allocation(Point(0, tree->ascent()), tree);
    MathSelection probe(&scene, 0);
    for (long index : path)
        probe.path_push_back(index);
    std::unique_ptr<AllocationTree> placed(probe.allocate(context, allocation));
    return placed ? placed->rect() : Rect();
}

Box EditSession::formula_box()
{
    QPainter painter(&image);
    Qt_Canvas canvas(&painter, Extension(0, 0, image.height(), image.width()));
    GlyphContext context(&scene, &view, &canvas, scene.glyph());
    BoxTree const *tree = scene.glyph()->request(context, BoxTree::unconstrained);
    return tree ? tree->box() : Box();
}

std::string EditSession::content() { return content_body(scene.content()); }

MathSelection *EditSession::selection() { return dynamic_cast<MathSelection *>(scene.focus()); }

std::vector<long> EditSession::path()
{
    MathSelection *s = selection();
    return s ? s->path() : std::vector<long>{-99};
}

MathNode *EditSession::selected()
{
    MathSelection *s = selection();
    return s ? s->selected_node() : nullptr;
}

long EditSession::caret()
{
    MathNode *node = selected();
    return node ? node->caret_pos() : -99;
}

}  // namespace TaviTest
