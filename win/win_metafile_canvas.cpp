// Win_Metafile_Canvas: twips, generic names and text a character at a time.
#include "win/win_metafile_canvas.h"

#include <algorithm>
#include <cstring>

namespace Tavi {

namespace {

// A generic name anywhere in a font name, and the font it becomes.
struct GenericName
{
    char16_t const *generic;
    char16_t const *font;
};

constexpr GenericName generic_names[] = {
    {u"Generic Serif", u"Times New Roman"},
    {u"Generic Sans-Serif", u"Arial"},
    {u"Generic Monospace", u"Courier New"},
};

bool contains(wstring const &text, char16_t const *part) { return text.find(part) != wstring::npos; }

}  // namespace

Win_Metafile_Canvas::Win_Metafile_Canvas(Gdi::HDC metafile, Gdi::HDC reference, int x, int y, bool printing,
                                         Extension const &extension)
    : Win_Canvas(printing, extension)
{
    draw_dc_ = metafile;
    info_dc_ = reference;
    place(x, y, extension);
    int const width = static_cast<int>(extension.right() - extension.left());
    int const height = static_cast<int>(extension.bottom() - extension.top());
    for (Gdi::HDC dc : {draw_dc_, info_dc_}) {
        if (dc == nullptr)
            continue;
        gdi_.SetMapMode(dc, Gdi::mm_anisotropic);
        gdi_.SetWindowExtEx(dc, width, height, nullptr);
        gdi_.SetViewportExtEx(dc, width, height, nullptr);
        if (info_dc_ == draw_dc_)
            break;
    }
    if (draw_dc_ != nullptr)
        gdi_.SetBrushOrgEx(draw_dc_, static_cast<int>(offset_.x), static_cast<int>(offset_.y), nullptr);
    init_dc();
}

Win_Metafile_Canvas::~Win_Metafile_Canvas() { restore_dc(); }

void Win_Metafile_Canvas::font(Font const &font, CharSet char_set, long angle)
{
    wstring const name = font.name();
    for (GenericName const &g : generic_names)
        if (contains(name, g.generic)) {
            Font real = font;
            real.name(g.font);
            Win_Canvas::font(real, char_set, angle);
            return;
        }
    Win_Canvas::font(font, char_set, angle);
}

long Win_Metafile_Canvas::character_length(wchar const *text, long left)
{
    return left > 1 && text[0] >= 0xD800 && text[0] < 0xDC00 && text[1] >= 0xDC00 && text[1] < 0xE000 ? 2 : 1;
}

// The sum of the single characters' widths, as text places them.
Extent Win_Metafile_Canvas::text_extent(wchar const *text, long count)
{
    if (text == nullptr || count < 1)
        return Extent(0, 0);
    wstring const s = device_text(text, count);
    long width = 0;
    for (long i = 0; i < count;) {
        long const n = character_length(s.data() + i, count - i);
        Gdi::SIZE size{0, 0};
        if (!gdi_.GetTextExtentPoint32W(info_dc_, s.data() + i, static_cast<int>(n), &size))
            return Extent(0, 0);
        width += size.cx;
        i += n;
    }
    return Extent(width, font_em());
}

void Win_Metafile_Canvas::text_metrics(wchar const *text, long count, Box &box, long &left, long &right)
{
    Win_Canvas::text_metrics(text, count, box, left, right);
    if (text != nullptr && count > 0)
        box.ascent(box.ascent() + font_leading());
}

long Win_Metafile_Canvas::font_ex() const { return Win_Canvas::font_ex() + font_leading() / 2; }

long Win_Metafile_Canvas::font_X_height() const { return Win_Canvas::font_X_height() + font_leading(); }

void Win_Metafile_Canvas::text(wchar const *text, long count, Point p)
{
    if (text == nullptr || count < 1)
        return;
    if (angle_ != 0) {
        Win_Canvas::text(text, count, p);
        return;
    }
    wstring const s = device_text(text, count);
    long x = p.x + offset_.x;
    int const y = static_cast<int>(p.y + offset_.y);
    for (long i = 0; i < count;) {
        long const n = character_length(s.data() + i, count - i);
        gdi_.TextOutW(draw_dc_, static_cast<int>(x), y, s.data() + i, static_cast<int>(n));
        Gdi::SIZE size{0, 0};
        if (gdi_.GetTextExtentPoint32W(info_dc_, s.data() + i, static_cast<int>(n), &size))
            x += size.cx;
        i += n;
    }
}

Extent Win_Metafile_Canvas::dpi() { return Extent(1440, 1440); }

long Win_Metafile_Canvas::dpi_y() { return 1440; }

double Win_Metafile_Canvas::dash_len() { return std::max(static_cast<double>(pen_.width()) * 5.0, 120.0); }

bool Win_Metafile_Canvas::short_coordinates() const { return false; }

void Win_Metafile_Canvas::clip_rect(Rect const &r)
{
    no_clip_rect();
    clip_ = r;
    Gdi::RECT const d = device_rect(r);
    if (gdi_.IntersectClipRect(draw_dc_, static_cast<int>(d.left), static_cast<int>(d.top), static_cast<int>(d.right),
                               static_cast<int>(d.bottom)) != Gdi::error_region)
        clipping_ = true;
}

void Win_Metafile_Canvas::no_clip_rect()
{
    gdi_.SelectClipRgn(draw_dc_, clip_region_);
    clipping_ = false;
}

}  // namespace Tavi
