// Win_Canvas: attributes, measuring, shapes and text on GDI contexts.
#include "win/win_canvas.h"

#include "tavi/canvas/dash_cutter.h"
#include "tavi/geometry/rounding.h"
#include "tavi/qt/cp1252_table.h"
#include "tavi/qt/symbol_tables.h"
#include "win/win_fontcache.h"

#include <algorithm>
#include <memory>
#include <vector>

namespace Tavi {

namespace {

// The hatch style of GDI for each fill style after solid (HS_HORIZONTAL 0, HS_VERTICAL 1,
// HS_FDIAGONAL 2, HS_BDIAGONAL 3, HS_CROSS 4, HS_DIAGCROSS 5).
constexpr int hatch_styles[] = {
    0,  // horizontal
    1,  // vertical
    3,  // diagonal
    2,  // back_diagonal
    4,  // cross
    5,  // diagonal_cross
};

// Up to this many polygon points are converted in the routine's own frame.
constexpr std::size_t local_points = 256;

bool is_high_surrogate(wchar u) { return u >= 0xD800 && u < 0xDC00; }
bool is_low_surrogate(wchar u) { return u >= 0xDC00 && u < 0xE000; }

int to_int(long v) { return static_cast<int>(v); }

}  // namespace

// The symbol fonts whose codes are read otherwise than Adobe's, by family name as written.
struct Win_Canvas::SymbolFamily
{
    char16_t const *name;
    SymbolKind kind;
};

Win_Canvas::SymbolFamily const Win_Canvas::symbol_families[] = {
    {u"KMT Math Ext", symbol_kmt_math_ext},
    {u"Standard Symbols L", symbol_standard_symbols},
    {u"OpenSymbol", symbol_open_symbol},
};

namespace {

}  // namespace

Win_Canvas::Win_Canvas(bool printing, Extension const &extension)
    : gdi_(Gdi::current()),
      printing_(printing),
      offset_(0, 0),
      damage_(0, 0, extension.bottom() - extension.top(), extension.right() - extension.left())
{
}

Win_Canvas::~Win_Canvas() { Win_Canvas::restore_dc(); }

Gdi::COLORREF Win_Canvas::colorref(Color const &c)
{
    return static_cast<Gdi::COLORREF>(c.red()) | static_cast<Gdi::COLORREF>(c.green()) << 8 |
           static_cast<Gdi::COLORREF>(c.blue()) << 16;
}

void Win_Canvas::place(int x, int y, Extension const &extension)
{
    Point const t = translation();
    offset_ = Point(x + t.x - extension.left(), y + t.y - extension.top());
}

void Win_Canvas::screen_mapping(Gdi::HDC dc)
{
    gdi_.SetMapMode(dc, Gdi::mm_text);
    gdi_.SetViewportOrgEx(dc, 0, 0, nullptr);
    gdi_.SetWindowOrgEx(dc, 0, 0, nullptr);
}

// ---------------------------------------------------------------------------------------------------
// Set-up and restore

void Win_Canvas::init_dc()
{
    if (draw_dc_ == nullptr)
        return;
    pen_handle_ = gdi_.CreatePen(Gdi::ps_solid, to_int(pen_.width()), colorref(pen_.color()));
    if (pen_handle_ != nullptr)
        old_pen_ = gdi_.SelectObject(draw_dc_, pen_handle_);
    brush_handle_ = make_brush(brush_);
    if (brush_handle_ != nullptr)
        old_brush_ = gdi_.SelectObject(draw_dc_, brush_handle_);

    long const height = Gdi::MulDiv(to_int(font_.size()), to_int(dpi_y()), 1440);
    if (change_font(Win_FontCache::lookup(font_, char_set_, height, angle_)))
        font_changed();

    gdi_.SetBkMode(draw_dc_, Gdi::transparent);
    gdi_.SetBkColor(draw_dc_, colorref(background_));
    gdi_.SetTextColor(draw_dc_, colorref(text_color_));
    for (Gdi::HDC dc : {draw_dc_, info_dc_}) {
        gdi_.SetTextAlign(dc, Gdi::ta_baseline);
        gdi_.SetTextCharacterExtra(dc, 0);
        if (info_dc_ == draw_dc_)
            break;
    }
}

void Win_Canvas::restore_dc()
{
    if (restored_)
        return;
    restored_ = true;
    if (draw_dc_ == nullptr)
        return;
    if (old_pen_ != nullptr)
        gdi_.SelectObject(draw_dc_, old_pen_);
    if (old_brush_ != nullptr)
        gdi_.SelectObject(draw_dc_, old_brush_);
    if (pen_handle_ != nullptr)
        gdi_.DeleteObject(pen_handle_);
    if (brush_handle_ != nullptr)
        gdi_.DeleteObject(brush_handle_);
    if (font_selected_) {
        gdi_.SelectObject(draw_dc_, old_font_);
        if (info_dc_ != draw_dc_)
            gdi_.SelectObject(info_dc_, old_info_font_);
        Win_FontCache::release(font_id_);
        font_selected_ = false;
    }
    if (clip_region_ != nullptr) {
        gdi_.SelectClipRgn(draw_dc_, nullptr);
        gdi_.DeleteObject(clip_region_);
        clip_region_ = nullptr;
    }
    flush_buff();
}

void Win_Canvas::flush_buff() {}

// ---------------------------------------------------------------------------------------------------
// Fonts

Font Win_Canvas::font() const { return font_; }

void Win_Canvas::font(Font const &font, CharSet char_set, long angle)
{
    if (font == font_ && char_set == char_set_ && angle == angle_)
        return;
    long const height = Gdi::MulDiv(to_int(font.size()), to_int(dpi_y()), 1440);
    if (!change_font(Win_FontCache::lookup(font, char_set, height, angle)))
        return;
    font_ = font;
    char_set_ = char_set;
    angle_ = angle;
    symbol_kind_ = char_set == cs_symbol ? symbol_kind_of(font.name()) : symbol_adobe;
    font_changed();
}

bool Win_Canvas::change_font(std::size_t id)
{
    if (draw_dc_ == nullptr)
        return false;
    Gdi::HFONT const handle = Win_FontCache::acquire(id);
    if (handle == nullptr)
        return false;
    Gdi::HGDIOBJ const before = gdi_.SelectObject(draw_dc_, handle);
    if (before == nullptr) {
        Win_FontCache::release(id);
        return false;
    }
    Gdi::HGDIOBJ info_before = before;
    if (info_dc_ != draw_dc_) {
        info_before = gdi_.SelectObject(info_dc_, handle);
        if (info_before == nullptr) {
            gdi_.SelectObject(draw_dc_, before);
            Win_FontCache::release(id);
            return false;
        }
    }
    if (font_selected_) {
        Win_FontCache::release(font_id_);
    } else {
        old_font_ = before;
        old_info_font_ = info_before;
        font_selected_ = true;
    }
    font_id_ = id;
    return true;
}

void Win_Canvas::font_changed()
{
    Gdi::TEXTMETRICA tm{};
    if (gdi_.GetTextMetricsA(info_dc_, &tm)) {
        ascent_ = tm.tmAscent;
        descent_ = tm.tmDescent;
        leading_ = tm.tmExternalLeading;
        device_char_set_ = tm.tmCharSet;
    }
    ex_ = 0x7fffffff;
    X_height_ = 0x7fffffff;
}

Gauge::CharSet Win_Canvas::char_set() { return char_set_; }

long Win_Canvas::text_angle() const { return angle_; }

// ---------------------------------------------------------------------------------------------------
// Measuring

// A unit of the symbol set is its low byte, read for the symbol font selected: the Adobe Symbol
// font takes the byte itself, the extension font has its glyphs on the private-use page F0xx, and
// the URW and OpenSymbol fonts publish the characters at their Unicode code points.
wchar Win_Canvas::symbol_code(wchar unit) const
{
    unsigned const byte = unit & 0xFFu;
    switch (symbol_kind_) {
    case symbol_kmt_math_ext:
        return static_cast<wchar>(0xF000 | byte);
    case symbol_standard_symbols:
        return standard_symbols_code_points[byte];
    case symbol_open_symbol:
        return open_symbol_code_points[byte];
    default:
        return static_cast<wchar>(byte);
    }
}

Win_Canvas::SymbolKind Win_Canvas::symbol_kind_of(wchar const *family)
{
    for (SymbolFamily const &f : symbol_families)
        if (std::u16string(family) == f.name)
            return f.kind;
    return symbol_adobe;
}

wstring Win_Canvas::device_text(wchar const *text, long count) const
{
    wstring s(text, static_cast<std::size_t>(count));
    if (char_set_ == cs_symbol)
        for (wchar &u : s)
            u = symbol_code(u);
    return s;
}

Extent Win_Canvas::text_extent(wchar const *text, long count)
{
    if (text == nullptr || count < 1)
        return Extent(0, 0);
    wstring const s = device_text(text, count);
    Gdi::SIZE size{0, 0};
    if (!gdi_.GetTextExtentPoint32W(info_dc_, s.data(), to_int(count), &size))
        return Extent(0, 0);
    return Extent(size.cx, font_em());
}

Box Win_Canvas::text_box(wchar const *text, long count)
{
    if (text == nullptr || count < 1)
        return Box::zero;
    Extent const extent = text_extent(text, count);
    if (extent.width() == 0 && extent.height() == 0)
        return Box::zero;
    return Box(extent.width(), font_ascent(), font_descent());
}

bool Win_Canvas::get_glyph_outline(wchar const *&text, Gdi::GLYPHMETRICS *metrics) const
{
    unsigned code = *text++;
    if (char_set_ == cs_symbol)
        code = symbol_code(static_cast<wchar>(code));
    else if (is_high_surrogate(static_cast<wchar>(code)) && is_low_surrogate(*text))
        code = 0x10000 + ((code - 0xD800) << 10) + (*text++ - 0xDC00);
    std::uint32_t const answer = gdi_.GetGlyphOutlineW(info_dc_, code, Gdi::ggo_metrics, metrics);
    // A blank has no ink: it counts as one pixel on the baseline, so that it still has a box.
    if (code == ' ' && char_set_ != cs_symbol) {
        if (answer == Gdi::gdi_error)
            *metrics = Gdi::GLYPHMETRICS{1, 1, Gdi::POINT{0, 1}, 1, 0};
        metrics->gmBlackBoxX = 1;
        metrics->gmBlackBoxY = 1;
        metrics->gmptGlyphOrigin = Gdi::POINT{0, 1};
        return true;
    }
    return answer != Gdi::gdi_error;
}

void Win_Canvas::text_metrics(wchar const *text, long count, Box &box, long &left, long &right)
{
    box = Box::zero;
    left = 0;
    right = 0;
    if (text == nullptr || count < 1)
        return;
    Box const line = text_box(text, count);
    wstring const s(text, static_cast<std::size_t>(count));
    wchar const *at = s.c_str();
    wchar const *const end = at + s.size();
    long ascent = 0;
    long descent = 0;
    long first_left = 0;
    long last_right = 0;
    bool first = true;
    while (at < end) {
        Gdi::GLYPHMETRICS gm{};
        if (!get_glyph_outline(at, &gm)) {
            box = line;
            return;
        }
        long const a = gm.gmptGlyphOrigin.y;
        long const d = static_cast<long>(gm.gmBlackBoxY) - gm.gmptGlyphOrigin.y;
        if (first) {
            ascent = a;
            descent = d;
            first_left = gm.gmptGlyphOrigin.x;
            first = false;
        } else {
            ascent = std::max(ascent, a);
            descent = std::max(descent, d);
        }
        last_right = gm.gmCellIncX - static_cast<long>(gm.gmBlackBoxX) - gm.gmptGlyphOrigin.x;
    }
    box = Box(line.width(), ascent, descent);
    left = first_left;
    right = last_right;
}

long Win_Canvas::font_ascent() const { return ascent_; }

long Win_Canvas::font_descent() const { return descent_; }

long Win_Canvas::font_leading() const { return leading_; }

long Win_Canvas::font_em() const { return ascent_ + descent_; }

void Win_Canvas::query_ex() const
{
    static wchar const x[] = u"x";
    static wchar const X[] = u"X";
    Gdi::GLYPHMETRICS gm{};
    wchar const *at = x;
    bool ok = get_glyph_outline(at, &gm);
    ex_ = gm.gmptGlyphOrigin.y;
    at = X;
    ok = ok && get_glyph_outline(at, &gm);
    X_height_ = gm.gmptGlyphOrigin.y;
    if (!ok) {
        ex_ = ascent_ / 2;
        X_height_ = ascent_;
    }
}

long Win_Canvas::font_ex() const
{
    if (ex_ == 0x7fffffff)
        query_ex();
    return ex_;
}

long Win_Canvas::font_X_height() const
{
    if (X_height_ == 0x7fffffff)
        query_ex();
    return X_height_;
}

void Win_Canvas::char_bearing(wchar const *text, long &left, long &right) const
{
    left = 0;
    right = 0;
    if (text == nullptr)
        return;
    // The wide call reads Unicode: an ANSI code goes through Windows-1252 first.
    unsigned const code = char_set_ == cs_unicode  ? *text
                          : char_set_ == cs_symbol ? symbol_code(*text)
                                                   : cp1252_code_points[*text & 0xFFu];
    if (code == 0)
        return;
    Gdi::ABC abc{};
    if (!gdi_.GetCharABCWidthsW(info_dc_, code, code, &abc))
        return;
    left = abc.abcA;
    right = abc.abcC;
}

Extent Win_Canvas::dpi()
{
    if (dpi_.width() == 0 && info_dc_ != nullptr)
        dpi_ = Extent(gdi_.GetDeviceCaps(info_dc_, Gdi::logpixelsx), gdi_.GetDeviceCaps(info_dc_, Gdi::logpixelsy));
    return dpi_;
}

long Win_Canvas::dpi_y() { return dpi().height(); }

bool Win_Canvas::printing() const { return printing_; }

Extent Win_Canvas::twips_to_pixel(Extent const &twips)
{
    Extent const d = dpi();
    return Extent(Gdi::MulDiv(to_int(twips.width()), to_int(d.width()), 1440),
                  Gdi::MulDiv(to_int(twips.height()), to_int(d.height()), 1440));
}

// ---------------------------------------------------------------------------------------------------
// Translation: the offset follows it.

template <class Change>
void Win_Canvas::move_translation(Change &&change)
{
    Point const before = IntegralCanvas::translation();
    change();
    Point const after = IntegralCanvas::translation();
    offset_ += Point(after.x - before.x, after.y - before.y);
}

void Win_Canvas::translation(Point p)
{
    move_translation([&] { IntegralCanvas::translation(p); });
}

Point Win_Canvas::translation() { return IntegralCanvas::translation(); }

void Win_Canvas::translation_f(PointF const &p)
{
    move_translation([&] { IntegralCanvas::translation_f(p); });
}

PointF Win_Canvas::translation_f() { return IntegralCanvas::translation_f(); }

void Win_Canvas::add_translation(Point p)
{
    move_translation([&] { IntegralCanvas::add_translation(p); });
}

void Win_Canvas::add_translation_f(PointF const &p)
{
    move_translation([&] { IntegralCanvas::add_translation_f(p); });
}

Point Win_Canvas::client_to_point(int x, int y) const { return Point(x - offset_.x, y - offset_.y); }

void Win_Canvas::to_pixels(Point p, int &x, int &y) const
{
    x = to_int(p.x + offset_.x);
    y = to_int(p.y + offset_.y);
}

// ---------------------------------------------------------------------------------------------------
// Attributes

Pen Win_Canvas::pen() const { return pen_; }

// The device pen is always solid: dashes are cut here. A pen that cannot be made or selected leaves
// the old one in force.
void Win_Canvas::pen(Pen const &pen, bool restart)
{
    if (restart)
        reset_dash_phase();
    if (pen.width() == pen_.width() && pen.color() == pen_.color() && pen.style() == pen_.style())
        return;
    Gdi::HPEN const handle = gdi_.CreatePen(Gdi::ps_solid, to_int(pen.width()), colorref(pen.color()));
    if (handle == nullptr)
        return;
    Gdi::HGDIOBJ const before = gdi_.SelectObject(draw_dc_, handle);
    if (before == nullptr) {
        gdi_.DeleteObject(handle);
        return;
    }
    if (pen_handle_ != nullptr)
        gdi_.DeleteObject(pen_handle_);
    else
        old_pen_ = before;
    pen_handle_ = handle;
    pen_ = pen;
}

Brush Win_Canvas::brush() const { return brush_; }

Gdi::HBRUSH Win_Canvas::make_brush(Brush const &brush)
{
    int const style = brush.fill_style();
    if (style >= Brush::horizontal && style <= Brush::diagonal_cross)
        return gdi_.CreateHatchBrush(hatch_styles[style - Brush::horizontal], colorref(brush.color()));
    return gdi_.CreateSolidBrush(colorref(brush.color()));
}

void Win_Canvas::brush(Brush const &brush)
{
    if (brush == brush_)
        return;
    Gdi::HBRUSH const handle = make_brush(brush);
    if (handle == nullptr)
        return;
    Gdi::HGDIOBJ const before = gdi_.SelectObject(draw_dc_, handle);
    if (before == nullptr) {
        gdi_.DeleteObject(handle);
        return;
    }
    if (brush_handle_ != nullptr)
        gdi_.DeleteObject(brush_handle_);
    else
        old_brush_ = before;
    brush_handle_ = handle;
    brush_ = brush;
}

void Win_Canvas::text_color(Color color)
{
    if (color == text_color_)
        return;
    text_color_ = color;
    gdi_.SetTextColor(draw_dc_, colorref(color));
}

void Win_Canvas::background(Color color)
{
    if (color == background_)
        return;
    background_ = color;
    gdi_.SetBkColor(draw_dc_, colorref(color));
}

bool Win_Canvas::antialias() const { return false; }

void Win_Canvas::antialias(bool) {}

bool Win_Canvas::antialias_text() const { return false; }

void Win_Canvas::antialias_text(bool) {}

bool Win_Canvas::short_coordinates() const { return false; }

double Win_Canvas::dash_len() { return Canvas::dash_length(pen_.width(), dpi()); }

long Win_Canvas::dot_len() const { return round_to_long(static_cast<double>(pen_.width())); }

// ---------------------------------------------------------------------------------------------------
// Lines

void Win_Canvas::line(Point p, Point q)
{
    auto const segment = [this](Point const &a, Point const &b) {
        gdi_.MoveToEx(draw_dc_, to_int(a.x + offset_.x), to_int(a.y + offset_.y), nullptr);
        gdi_.LineTo(draw_dc_, to_int(b.x + offset_.x), to_int(b.y + offset_.y));
    };
    if (pen_.style() == Pen::solid) {
        segment(p, q);
        return;
    }
    double const D = dash_len();
    double const L = pen_.style() == Pen::dashed ? D : static_cast<double>(dot_len());
    dash_phase(cut_dashes(p, q, D, L, dash_phase(), segment));
}

void Win_Canvas::line(Point from, Point to, Pen const &pen, bool restart)
{
    if (restart)
        reset_dash_phase();
    Pen const saved = pen_;
    this->pen(pen, false);
    line(from, to);
    this->pen(saved, false);
}

void Win_Canvas::poly_line(Point const *points, std::size_t count, bool closed)
{
    if (points == nullptr || count < 2)
        return;
    reset_dash_phase();
    if (pen_.style() != Pen::solid) {
        for (std::size_t i = 0; i + 1 < count; ++i)
            line(points[i], points[i + 1]);
        if (closed)
            line(points[count - 1], points[0]);
        return;
    }
    std::vector<Gdi::POINT> device;
    device.reserve(count + 1);
    for (std::size_t i = 0; i < count; ++i)
        device.push_back(Gdi::POINT{points[i].x + offset_.x, points[i].y + offset_.y});
    if (closed)
        device.push_back(device.front());
    gdi_.Polyline(draw_dc_, device.data(), static_cast<int>(device.size()));
}

void Win_Canvas::poly_line(Point const *points, std::size_t count, Pen const &pen, bool closed)
{
    Pen const saved = pen_;
    this->pen(pen, false);
    poly_line(points, count, closed);
    this->pen(saved, false);
}

// ---------------------------------------------------------------------------------------------------
// Rectangles, ellipses, polygons

Gdi::RECT Win_Canvas::device_rect(Rect const &r) const
{
    return Gdi::RECT{r.left() + offset_.x, r.top() + offset_.y, r.right() + offset_.x, r.bottom() + offset_.y};
}

void Win_Canvas::frame_rect(Rect const &r)
{
    reset_dash_phase();
    if (pen_.style() != Pen::solid) {
        Point const tl = r.top_left();
        Point const tr(r.right(), r.top());
        Point const br = r.bottom_right();
        Point const bl(r.left(), r.bottom());
        line(tl, tr);
        line(tr, br);
        line(br, bl);
        line(bl, tl);
        return;
    }
    Gdi::RECT const d = device_rect(r);
    Gdi::HGDIOBJ const before = gdi_.SelectObject(draw_dc_, gdi_.GetStockObject(Gdi::null_brush));
    gdi_.Rectangle(draw_dc_, to_int(d.left), to_int(d.top), to_int(d.right), to_int(d.bottom));
    if (before != nullptr)
        gdi_.SelectObject(draw_dc_, before);
}

void Win_Canvas::frame_rect(Rect const &r, Pen const &pen)
{
    Pen const saved = pen_;
    this->pen(pen, false);
    frame_rect(r);
    this->pen(saved, false);
}

void Win_Canvas::fill_rect(Rect const &r)
{
    Gdi::RECT const d = device_rect(r);
    gdi_.FillRect(draw_dc_, &d, brush_handle_);
}

void Win_Canvas::fill_rect(Rect const &r, Brush const &brush)
{
    Gdi::HBRUSH const handle = make_brush(brush);
    if (handle == nullptr)
        return;
    Gdi::RECT const d = device_rect(r);
    gdi_.FillRect(draw_dc_, &d, handle);
    gdi_.DeleteObject(handle);
}

void Win_Canvas::frame_ellipse(Rect const &r)
{
    reset_dash_phase();
    Gdi::RECT const d = device_rect(r);
    Gdi::HGDIOBJ const before = gdi_.SelectObject(draw_dc_, gdi_.GetStockObject(Gdi::null_brush));
    gdi_.Ellipse(draw_dc_, to_int(d.left), to_int(d.top), to_int(d.right), to_int(d.bottom));
    if (before != nullptr)
        gdi_.SelectObject(draw_dc_, before);
}

void Win_Canvas::frame_ellipse(Rect const &r, Pen const &pen)
{
    Pen const saved = pen_;
    this->pen(pen, false);
    frame_ellipse(r);
    this->pen(saved, false);
}

void Win_Canvas::fill_ellipse(Rect const &r)
{
    Gdi::HPEN const none = gdi_.CreatePen(Gdi::ps_null, 0, 0);
    Gdi::HGDIOBJ const before = none != nullptr ? gdi_.SelectObject(draw_dc_, none) : nullptr;
    Gdi::RECT const d = device_rect(r);
    gdi_.Ellipse(draw_dc_, to_int(d.left), to_int(d.top), to_int(d.right), to_int(d.bottom));
    if (before != nullptr)
        gdi_.SelectObject(draw_dc_, before);
    if (none != nullptr)
        gdi_.DeleteObject(none);
}

void Win_Canvas::fill_ellipse(Rect const &r, Brush const &brush)
{
    Gdi::HBRUSH const handle = make_brush(brush);
    if (handle == nullptr)
        return;
    Gdi::HGDIOBJ const before = gdi_.SelectObject(draw_dc_, handle);
    fill_ellipse(r);
    if (before != nullptr)
        gdi_.SelectObject(draw_dc_, before);
    gdi_.DeleteObject(handle);
}

void Win_Canvas::fill_polygon(Point const *points, std::size_t count, bool winding)
{
    if (points == nullptr || count < 2)
        return;
    Gdi::POINT local[local_points];
    std::unique_ptr<Gdi::POINT[]> heap;
    Gdi::POINT *device = local;
    if (count > local_points) {
        heap.reset(new Gdi::POINT[count]);
        device = heap.get();
    }
    for (std::size_t i = 0; i < count; ++i)
        device[i] = Gdi::POINT{points[i].x + offset_.x, points[i].y + offset_.y};
    Gdi::HPEN const none = gdi_.CreatePen(Gdi::ps_null, 0, 0);
    Gdi::HGDIOBJ const before = none != nullptr ? gdi_.SelectObject(draw_dc_, none) : nullptr;
    int const mode = gdi_.GetPolyFillMode(draw_dc_);
    gdi_.SetPolyFillMode(draw_dc_, winding ? Gdi::winding : Gdi::alternate);
    gdi_.Polygon(draw_dc_, device, static_cast<int>(count));
    gdi_.SetPolyFillMode(draw_dc_, mode);
    if (before != nullptr)
        gdi_.SelectObject(draw_dc_, before);
    if (none != nullptr)
        gdi_.DeleteObject(none);
}

void Win_Canvas::fill_polygon(Point const *points, std::size_t count, Brush const &brush, bool winding)
{
    if (points == nullptr || count < 2)
        return;
    Gdi::HBRUSH const handle = make_brush(brush);
    if (handle == nullptr)
        return;
    Gdi::HGDIOBJ const before = gdi_.SelectObject(draw_dc_, handle);
    fill_polygon(points, count, winding);
    if (before != nullptr)
        gdi_.SelectObject(draw_dc_, before);
    gdi_.DeleteObject(handle);
}

// Grey hatching with its pattern pinned to the drawing's origin, so it does not crawl as the view
// scrolls.
void Win_Canvas::shadow(Rect const &r)
{
    Gdi::HBRUSH const hatch = gdi_.CreateHatchBrush(3, 0x808080);
    if (hatch == nullptr)
        return;
    Gdi::HPEN const none = gdi_.CreatePen(Gdi::ps_null, 0, 0);
    Gdi::HGDIOBJ const old_brush = gdi_.SelectObject(draw_dc_, hatch);
    Gdi::HGDIOBJ const old_pen = none != nullptr ? gdi_.SelectObject(draw_dc_, none) : nullptr;
    gdi_.SetBrushOrgEx(draw_dc_, to_int(-offset_.x), to_int(-offset_.y), nullptr);
    Gdi::RECT const d = device_rect(r);
    gdi_.Rectangle(draw_dc_, to_int(d.left), to_int(d.top), to_int(d.right), to_int(d.bottom));
    gdi_.SetBrushOrgEx(draw_dc_, to_int(offset_.x), to_int(offset_.y), nullptr);
    if (old_pen != nullptr)
        gdi_.SelectObject(draw_dc_, old_pen);
    if (old_brush != nullptr)
        gdi_.SelectObject(draw_dc_, old_brush);
    if (none != nullptr)
        gdi_.DeleteObject(none);
    gdi_.DeleteObject(hatch);
}

// The damage is in device pixels already.
void Win_Canvas::erase(Color color)
{
    Gdi::HBRUSH const handle = gdi_.CreateSolidBrush(colorref(color));
    if (handle == nullptr)
        return;
    Gdi::RECT const d{damage_.left(), damage_.top(), damage_.right(), damage_.bottom()};
    gdi_.FillRect(draw_dc_, &d, handle);
    gdi_.DeleteObject(handle);
}

void Win_Canvas::erase() { erase(background_); }

void Win_Canvas::text(wchar const *text, long count, Point p)
{
    if (text == nullptr || count < 1)
        return;
    wstring const s = device_text(text, count);
    gdi_.TextOutW(draw_dc_, to_int(p.x + offset_.x), to_int(p.y + offset_.y), s.data(), to_int(count));
}

// ---------------------------------------------------------------------------------------------------
// Damage and clip

bool Win_Canvas::damaged(Rect const &r) const
{
    Rect moved = r;
    moved += offset_;
    return moved.intersects(damage_);
}

// An extension holds the translation already: it is taken off before the offset goes on.
bool Win_Canvas::damaged(Extension const &e) const
{
    Rect moved = e.rect();
    Point translation(0, 0);
    translate(translation.x, translation.y);
    moved -= translation;
    moved += offset_;
    return moved.intersects(damage_);
}

bool Win_Canvas::any_real_damage() const { return damage_.width() > 0 && damage_.height() > 0; }

bool Win_Canvas::really_damaged(Rect const &r) const { return damaged(r); }

bool Win_Canvas::really_damaged(Extension const &e) const { return damaged(e); }

bool Win_Canvas::clip_rect(Rect *r)
{
    if (clipping_ && r != nullptr)
        *r = clip_;
    return clipping_;
}

void Win_Canvas::clip_rect(Rect const &r)
{
    clip_ = r;
    Gdi::RECT const d = device_rect(r);
    if (clip_region_ != nullptr)
        gdi_.SetRectRgn(clip_region_, to_int(d.left), to_int(d.top), to_int(d.right), to_int(d.bottom));
    else
        clip_region_ = gdi_.CreateRectRgn(to_int(d.left), to_int(d.top), to_int(d.right), to_int(d.bottom));
    if (clip_region_ != nullptr && gdi_.SelectClipRgn(draw_dc_, clip_region_) != Gdi::error_region)
        clipping_ = true;
}

void Win_Canvas::no_clip_rect()
{
    gdi_.SelectClipRgn(draw_dc_, nullptr);
    clipping_ = false;
}

}  // namespace Tavi
