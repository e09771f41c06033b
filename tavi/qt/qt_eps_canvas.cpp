// Qt_EPS_Canvas: EPS output with Qt metrics, and the choice of a PostScript family for a font.
#include "tavi/qt/qt_eps_canvas.h"

#include "tavi/qt/generic_font_families.h"

#include <QByteArray>
#include <QFont>
#include <QFontInfo>
#include <QPixmap>
#include <QRawFont>
#include <QString>

namespace Tavi {

namespace {

// Where the OS/2 table of an OpenType font keeps its classification: the high byte of sFamilyClass,
// then the PANOSE family kind and serif style.
int const os2_family_class = 30;
int const os2_panose_family = 32;
int const os2_panose_serif = 33;
int const panose_latin_text = 2;
int const panose_first_sans_serif_style = 11;  // normal sans ...
int const panose_last_sans_serif_style = 15;   // ... through rounded
int const ibm_class_sans_serif = 8;

// The style of the font that Qt finds for a family name. QFontInfo::styleHint answers only the hint
// that was asked for on this platform, so the hint the font itself carries is worked out from the same
// sources a font's own family class comes from: a fixed pitch makes a typewriter face; the OS/2
// family class "sans serif", or a PANOSE serif style of the sans-serif kinds, makes a sans-serif face;
// any other classified font is a serif face.
QFont::StyleHint style_hint_of(QFont const &font)
{
    QFontInfo const info(font);
    if (info.styleHint() != QFont::AnyStyle)
        return info.styleHint();
    if (info.fixedPitch())
        return QFont::Courier;
    QByteArray const os2 = QRawFont::fromFont(font).fontTable("OS/2");
    if (os2.size() <= os2_panose_serif)
        return QFont::AnyStyle;
    int const family_class = static_cast<unsigned char>(os2.at(os2_family_class));
    int const panose_family = static_cast<unsigned char>(os2.at(os2_panose_family));
    int const panose_serif = static_cast<unsigned char>(os2.at(os2_panose_serif));
    if (family_class == ibm_class_sans_serif)
        return QFont::Helvetica;
    if (panose_family == panose_latin_text && panose_serif >= panose_first_sans_serif_style &&
        panose_serif <= panose_last_sans_serif_style)
        return QFont::Helvetica;
    return QFont::Times;
}

// The font that stands for each style Qt may report; anything else is drawn as Times.
struct HintedFamily
{
    QFont::StyleHint hint;
    wchar const *family;
    EPS_Canvas::PSFont ps_font;
};

HintedFamily const hinted_families[] = {
    {QFont::Helvetica, u"Arial", EPS_Canvas::ps_helvetica},
    {QFont::Courier, u"Courier New", EPS_Canvas::ps_courier},
};

HintedFamily const hinted_default = {QFont::Times, u"Times New Roman", EPS_Canvas::ps_times};

}  // namespace

// The gauge is a one-pixel pixmap of its own at 1440 dpi. Its default font is selected once more so
// that the painter holds it; the pixmap's own resolution converts the gauge's pixels to twips.
Qt_EPS_Canvas::Qt_EPS_Canvas(std::ostream &stream, Extension const &extension)
    : EPS_Canvas(stream, extension), screen_dpi_(0), measure_(Extension(0, 0, 1, 1), nullptr, 1440)
{
    measure_.font(measure_.font(), cs_ansi, measure_.text_angle());
    screen_dpi_ = measure_.pixmap()->logicalDpiX();
}

Qt_EPS_Canvas::~Qt_EPS_Canvas() = default;

Gauge const *Qt_EPS_Canvas::gauge() const { return &measure_; }

Gauge *Qt_EPS_Canvas::gauge() { return &measure_; }

// Size, bold and italic pass through; only the family name may change.
EPS_Canvas::PSFont Qt_EPS_Canvas::match_font(Font const &wanted, Font &matched)
{
    matched = wanted;
    if (GenericFontFamily const *generic = find_generic_font_family(wanted.name())) {
        matched.name(generic->family);
        return generic->ps_font;
    }
    QFont::StyleHint const hint = style_hint_of(QFont(QString::fromUtf16(wanted.name()), -1, -1, false));
    HintedFamily const *chosen = &hinted_default;
    for (HintedFamily const &h : hinted_families) {
        if (h.hint == hint)
            chosen = &h;
    }
    matched.name(chosen->family);
    return chosen->ps_font;
}

long Qt_EPS_Canvas::pixel2twips(long px) const
{
    if (screen_dpi_ <= 0)
        return px;
    return px * 1440 / screen_dpi_;
}

long Qt_EPS_Canvas::font_ascent() const { return pixel2twips(measure_.font_ascent()); }

long Qt_EPS_Canvas::font_descent() const { return pixel2twips(measure_.font_descent()); }

long Qt_EPS_Canvas::font_leading() const { return pixel2twips(measure_.font_leading()); }

long Qt_EPS_Canvas::font_em() const { return pixel2twips(measure_.font_em()); }

long Qt_EPS_Canvas::font_ex() const { return pixel2twips(measure_.font_ex()); }

long Qt_EPS_Canvas::font_X_height() const { return pixel2twips(measure_.font_X_height()); }

Box Qt_EPS_Canvas::text_box(wchar const *text, long count)
{
    Box const b = measure_.text_box(text, count);
    return Box(pixel2twips(b.width()), pixel2twips(b.ascent()), pixel2twips(b.descent()));
}

}  // namespace Tavi
