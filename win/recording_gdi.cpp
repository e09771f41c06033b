// RecordingGdi: the calls as text, the selections per context, and fixed metrics.
#include "win/recording_gdi.h"

#include <cstdio>

namespace Tavi {

namespace {

std::string hex(std::uint32_t value)
{
    char text[16];
    std::snprintf(text, sizeof text, "%06x", static_cast<unsigned>(value));
    return text;
}

// ASCII as it stands, anything else as \uXXXX.
std::string narrow(wchar const *text, int count)
{
    std::string s;
    for (int i = 0; i < count; ++i) {
        if (text[i] < 0x80) {
            s += static_cast<char>(text[i]);
        } else {
            char code[8];
            std::snprintf(code, sizeof code, "\\u%04x", static_cast<unsigned>(text[i]));
            s += code;
        }
    }
    return s;
}

std::string args(std::initializer_list<long> values)
{
    std::string s;
    for (long v : values)
        s += "," + std::to_string(v);
    return s;
}

// Which part of a glyph's height its ink takes, by character: (rise, fall) in tenths of the height.
struct Ink
{
    long rise;
    long fall;
};

Ink ink_of(unsigned ch)
{
    std::string const small = "acemnorsuvwxz";
    std::string const falling = "gjpqy";
    if (ch < 0x80 && small.find(static_cast<char>(ch)) != std::string::npos)
        return {5, 0};
    if (ch < 0x80 && falling.find(static_cast<char>(ch)) != std::string::npos)
        return {5, 2};
    return {7, 0};
}

}  // namespace

RecordingGdi::RecordingGdi()
{
    // What a new context has selected before anyone selects into it.
    for (char const *kind : {"pen", "brush", "font", "bitmap"})
        stock_[-static_cast<int>(stock_.size()) - 1] = make(std::string("def") + kind, true, kind);
}

RecordingGdi::~RecordingGdi() = default;

std::vector<std::string> RecordingGdi::take()
{
    std::vector<std::string> recent(calls_.begin() + static_cast<std::ptrdiff_t>(taken_), calls_.end());
    taken_ = calls_.size();
    return recent;
}

void RecordingGdi::fail(std::string const &operation, int times) { failures_[operation] += times; }

void RecordingGdi::resolution(int x, int y)
{
    dpi_x_ = x;
    dpi_y_ = y;
}

std::size_t RecordingGdi::live_objects() const
{
    std::size_t n = 0;
    for (auto const &entry : objects_)
        n += entry.second.stock ? 0 : 1;
    return n;
}

std::string RecordingGdi::name(void const *handle) const
{
    Object const *object = find(handle);
    if (object == nullptr)
        return handle == nullptr ? "null" : "unknown";
    if (object->stock)
        return object->kind;
    return object->kind + std::to_string(object->number);
}

std::string RecordingGdi::selected(HDC dc, std::string const &kind) const
{
    Object const *object = find(dc);
    if (object == nullptr)
        return "null";
    auto const it = object->selection.find(kind);
    return it == object->selection.end() ? "null" : name(reinterpret_cast<void const *>(it->second));
}

Gdi::LOGFONTW const *RecordingGdi::logfont(HFONT font) const
{
    Object const *object = find(font);
    return object != nullptr && object->kind == "font" ? &object->font : nullptr;
}

void RecordingGdi::record(std::string const &call) { calls_.push_back(call); }

bool RecordingGdi::failing(std::string const &operation)
{
    auto const it = failures_.find(operation);
    if (it == failures_.end() || it->second == 0)
        return false;
    --it->second;
    return true;
}

std::uintptr_t RecordingGdi::make(std::string const &kind, bool stock, std::string const &slot)
{
    std::uintptr_t const id = next_++;
    Object &object = objects_[id];
    object.kind = kind;
    object.stock = stock;
    object.slot = slot.empty() ? kind : slot;
    object.number = ++made_[kind];
    return id;
}

RecordingGdi::Object *RecordingGdi::find(void const *handle)
{
    auto const it = objects_.find(reinterpret_cast<std::uintptr_t>(handle));
    return it == objects_.end() ? nullptr : &it->second;
}

RecordingGdi::Object const *RecordingGdi::find(void const *handle) const
{
    auto const it = objects_.find(reinterpret_cast<std::uintptr_t>(handle));
    return it == objects_.end() ? nullptr : &it->second;
}

long RecordingGdi::font_height(HDC dc) const
{
    Object const *object = find(dc);
    if (object == nullptr)
        return 0;
    auto const it = object->selection.find("font");
    Object const *font = it == object->selection.end() ? nullptr : find(reinterpret_cast<void const *>(it->second));
    if (font == nullptr || font->stock)
        return 16;
    long const h = font->font.lfHeight;
    return h < 0 ? -h : h;
}

Gdi::HPEN RecordingGdi::CreatePen(int style, int width, COLORREF color)
{
    if (failing("CreatePen")) {
        record("CreatePen(" + std::to_string(style) + args({width}) + "," + hex(color) + ")=null");
        return nullptr;
    }
    auto const pen = reinterpret_cast<HPEN>(make("pen"));
    record("CreatePen(" + std::to_string(style) + args({width}) + "," + hex(color) + ")=" + name(pen));
    return pen;
}

Gdi::HBRUSH RecordingGdi::CreateSolidBrush(COLORREF color)
{
    HBRUSH brush = failing("CreateSolidBrush") ? nullptr : reinterpret_cast<HBRUSH>(make("brush"));
    record("CreateSolidBrush(" + hex(color) + ")=" + name(brush));
    return brush;
}

Gdi::HBRUSH RecordingGdi::CreateHatchBrush(int hatch, COLORREF color)
{
    HBRUSH brush = failing("CreateHatchBrush") ? nullptr : reinterpret_cast<HBRUSH>(make("brush"));
    record("CreateHatchBrush(" + std::to_string(hatch) + "," + hex(color) + ")=" + name(brush));
    return brush;
}

Gdi::HFONT RecordingGdi::CreateFontIndirectW(LOGFONTW const *font)
{
    std::string const face = narrow(font->lfFaceName, static_cast<int>(std::char_traits<wchar>::length(font->lfFaceName)));
    std::string const call = "CreateFontIndirectW(" + face + args({font->lfHeight, font->lfEscapement,
                                                                      font->lfWeight, font->lfItalic,
                                                                      font->lfCharSet}) + ")=";
    if (failing("CreateFontIndirectW")) {
        record(call + "null");
        return nullptr;
    }
    std::uintptr_t const id = make("font");
    objects_[id].font = *font;
    auto const handle = reinterpret_cast<HFONT>(id);
    record(call + name(handle));
    return handle;
}

Gdi::HGDIOBJ RecordingGdi::GetStockObject(int which)
{
    auto it = stock_.find(which);
    // The stock objects 0 to 5 are brushes, 6 to 8 pens, the rest fonts.
    if (it == stock_.end())
        it = stock_.emplace(which, make("stock" + std::to_string(which), true,
                                        which <= 5 ? "brush" : which <= 8 ? "pen" : "font")).first;
    return reinterpret_cast<HGDIOBJ>(it->second);
}

Gdi::HGDIOBJ RecordingGdi::SelectObject(HDC dc, HGDIOBJ object)
{
    Object *context = find(dc);
    Object *selected = find(object);
    bool const fails = failing("SelectObject") || context == nullptr || selected == nullptr;
    record("SelectObject(" + name(dc) + "," + name(object) + ")" + (fails ? "=null" : ""));
    if (fails)
        return nullptr;
    if (selected->slot == "region")
        return reinterpret_cast<HGDIOBJ>(1);
    auto &slot = context->selection[selected->slot];
    std::uintptr_t const old = slot;
    slot = reinterpret_cast<std::uintptr_t>(object);
    return reinterpret_cast<HGDIOBJ>(old);
}

bool RecordingGdi::DeleteObject(HGDIOBJ object)
{
    Object *o = find(object);
    record("DeleteObject(" + name(object) + ")");
    if (o == nullptr || o->stock)
        return false;
    objects_.erase(reinterpret_cast<std::uintptr_t>(object));
    return true;
}

int RecordingGdi::SetMapMode(HDC dc, int mode)
{
    record("SetMapMode(" + name(dc) + args({mode}) + ")");
    return 1;
}

bool RecordingGdi::SetViewportOrgEx(HDC dc, int x, int y, POINT *)
{
    record("SetViewportOrgEx(" + name(dc) + args({x, y}) + ")");
    return true;
}

bool RecordingGdi::SetWindowOrgEx(HDC dc, int x, int y, POINT *)
{
    record("SetWindowOrgEx(" + name(dc) + args({x, y}) + ")");
    return true;
}

bool RecordingGdi::SetWindowExtEx(HDC dc, int x, int y, SIZE *)
{
    record("SetWindowExtEx(" + name(dc) + args({x, y}) + ")");
    return true;
}

bool RecordingGdi::SetViewportExtEx(HDC dc, int x, int y, SIZE *)
{
    record("SetViewportExtEx(" + name(dc) + args({x, y}) + ")");
    return true;
}

bool RecordingGdi::SetBrushOrgEx(HDC dc, int x, int y, POINT *)
{
    record("SetBrushOrgEx(" + name(dc) + args({x, y}) + ")");
    return true;
}

int RecordingGdi::SetBkMode(HDC dc, int mode)
{
    record("SetBkMode(" + name(dc) + args({mode}) + ")");
    return 2;
}

Gdi::COLORREF RecordingGdi::SetBkColor(HDC dc, COLORREF color)
{
    record("SetBkColor(" + name(dc) + "," + hex(color) + ")");
    return 0xffffff;
}

Gdi::COLORREF RecordingGdi::SetTextColor(HDC dc, COLORREF color)
{
    record("SetTextColor(" + name(dc) + "," + hex(color) + ")");
    return 0;
}

unsigned RecordingGdi::SetTextAlign(HDC dc, unsigned align)
{
    record("SetTextAlign(" + name(dc) + args({static_cast<long>(align)}) + ")");
    return 0;
}

int RecordingGdi::SetTextCharacterExtra(HDC dc, int extra)
{
    record("SetTextCharacterExtra(" + name(dc) + args({extra}) + ")");
    return 0;
}

bool RecordingGdi::MoveToEx(HDC dc, int x, int y, POINT *)
{
    record("MoveToEx(" + name(dc) + args({x, y}) + ")");
    return true;
}

bool RecordingGdi::LineTo(HDC dc, int x, int y)
{
    record("LineTo(" + name(dc) + args({x, y}) + ")");
    return true;
}

bool RecordingGdi::Polyline(HDC dc, POINT const *points, int count)
{
    std::string call = "Polyline(" + name(dc);
    for (int i = 0; i < count; ++i)
        call += args({points[i].x, points[i].y});
    record(call + ")");
    return true;
}

bool RecordingGdi::Polygon(HDC dc, POINT const *points, int count)
{
    std::string call = "Polygon(" + name(dc);
    for (int i = 0; i < count; ++i)
        call += args({points[i].x, points[i].y});
    record(call + ")");
    return true;
}

bool RecordingGdi::Rectangle(HDC dc, int left, int top, int right, int bottom)
{
    record("Rectangle(" + name(dc) + args({left, top, right, bottom}) + ")");
    return true;
}

bool RecordingGdi::Ellipse(HDC dc, int left, int top, int right, int bottom)
{
    record("Ellipse(" + name(dc) + args({left, top, right, bottom}) + ")");
    return true;
}

int RecordingGdi::FillRect(HDC dc, RECT const *r, HBRUSH brush)
{
    record("FillRect(" + name(dc) + args({r->left, r->top, r->right, r->bottom}) + "," + name(brush) + ")");
    return 1;
}

bool RecordingGdi::TextOutW(HDC dc, int x, int y, wchar const *text, int count)
{
    record("TextOutW(" + name(dc) + args({x, y}) + "," + narrow(text, count) + ")");
    return true;
}

int RecordingGdi::GetPolyFillMode(HDC dc)
{
    Object const *context = find(dc);
    return context != nullptr ? context->fill_mode : 0;
}

int RecordingGdi::SetPolyFillMode(HDC dc, int mode)
{
    record("SetPolyFillMode(" + name(dc) + args({mode}) + ")");
    Object *context = find(dc);
    if (context == nullptr)
        return 0;
    int const old = context->fill_mode;
    context->fill_mode = mode;
    return old;
}

int RecordingGdi::GetDeviceCaps(HDC dc, int index)
{
    record("GetDeviceCaps(" + name(dc) + args({index}) + ")");
    Object const *context = find(dc);
    if (context == nullptr)
        return 0;
    return index == logpixelsx ? context->dpi_x : index == logpixelsy ? context->dpi_y : 0;
}

bool RecordingGdi::GetTextMetricsA(HDC dc, TEXTMETRICA *metrics)
{
    record("GetTextMetricsA(" + name(dc) + ")");
    if (failing("GetTextMetricsA") || find(dc) == nullptr)
        return false;
    long const h = font_height(dc);
    Object const *context = find(dc);
    auto const it = context->selection.find("font");
    Object const *font = it == context->selection.end() ? nullptr : find(reinterpret_cast<void const *>(it->second));
    *metrics = TEXTMETRICA{h, ascent(h), h - ascent(h), 0, h / 10, advance(h),
                           font != nullptr && !font->stock ? font->font.lfCharSet : static_cast<unsigned char>(0)};
    return true;
}

bool RecordingGdi::GetTextExtentPoint32W(HDC dc, wchar const *text, int count, SIZE *size)
{
    record("GetTextExtentPoint32W(" + name(dc) + "," + narrow(text, count) + ")");
    if (failing("GetTextExtentPoint32W") || find(dc) == nullptr)
        return false;
    long const h = font_height(dc);
    *size = SIZE{advance(h) * count, h};
    return true;
}

std::uint32_t RecordingGdi::GetGlyphOutlineW(HDC dc, unsigned ch, unsigned format, GLYPHMETRICS *metrics)
{
    record("GetGlyphOutlineW(" + name(dc) + args({static_cast<long>(ch), static_cast<long>(format)}) + ")");
    if (failing("GetGlyphOutlineW") || find(dc) == nullptr)
        return gdi_error;
    long const h = font_height(dc);
    Ink const ink = ink_of(ch);
    long const rise = h * ink.rise / 10;
    long const fall = h * ink.fall / 10;
    *metrics = GLYPHMETRICS{static_cast<unsigned>(advance(h) - 2), static_cast<unsigned>(rise + fall),
                            POINT{1, rise}, static_cast<short>(advance(h)), 0};
    return 0;
}

bool RecordingGdi::GetCharABCWidthsW(HDC dc, unsigned first, unsigned last, ABC *widths)
{
    record("GetCharABCWidthsW(" + name(dc) + args({static_cast<long>(first), static_cast<long>(last)}) + ")");
    if (failing("GetCharABCWidthsW") || find(dc) == nullptr)
        return false;
    long const h = font_height(dc);
    for (unsigned c = first; c <= last; ++c)
        widths[c - first] = ABC{1, static_cast<unsigned>(advance(h) - 2), 1};
    return true;
}

int RecordingGdi::SelectClipRgn(HDC dc, HRGN region)
{
    record("SelectClipRgn(" + name(dc) + "," + name(region) + ")");
    return failing("SelectClipRgn") ? error_region : null_region + 1;
}

Gdi::HRGN RecordingGdi::CreateRectRgn(int left, int top, int right, int bottom)
{
    HRGN region = failing("CreateRectRgn") ? nullptr : reinterpret_cast<HRGN>(make("region"));
    record("CreateRectRgn(" + std::to_string(left) + args({top, right, bottom}) + ")=" + name(region));
    return region;
}

bool RecordingGdi::SetRectRgn(HRGN region, int left, int top, int right, int bottom)
{
    record("SetRectRgn(" + name(region) + args({left, top, right, bottom}) + ")");
    return find(region) != nullptr;
}

int RecordingGdi::IntersectClipRect(HDC dc, int left, int top, int right, int bottom)
{
    record("IntersectClipRect(" + name(dc) + args({left, top, right, bottom}) + ")");
    return null_region + 1;
}

int RecordingGdi::GetClipBox(HDC dc, RECT *r)
{
    record("GetClipBox(" + name(dc) + ")");
    *r = RECT{0, 0, 100, 100};
    return failing("GetClipBox") ? null_region : null_region + 1;
}

bool RecordingGdi::RectVisible(HDC dc, RECT const *r)
{
    record("RectVisible(" + name(dc) + args({r->left, r->top, r->right, r->bottom}) + ")");
    return !failing("RectVisible");
}

Gdi::HDC RecordingGdi::CreateCompatibleDC(HDC dc)
{
    HDC made = nullptr;
    if (!failing("CreateCompatibleDC")) {
        made = reinterpret_cast<HDC>(make("dc"));
        Object &context = *find(made);
        context.dpi_x = dpi_x_;
        context.dpi_y = dpi_y_;
        for (char const *kind : {"pen", "brush", "font", "bitmap"})
            context.selection[kind] = stock_[-static_cast<int>(context.selection.size()) - 1];
    }
    record("CreateCompatibleDC(" + name(dc) + ")=" + name(made));
    return made;
}

Gdi::HBITMAP RecordingGdi::CreateCompatibleBitmap(HDC dc, int width, int height)
{
    HBITMAP bitmap = failing("CreateCompatibleBitmap") ? nullptr : reinterpret_cast<HBITMAP>(make("bitmap"));
    record("CreateCompatibleBitmap(" + name(dc) + args({width, height}) + ")=" + name(bitmap));
    return bitmap;
}

bool RecordingGdi::BitBlt(HDC target, int x, int y, int width, int height, HDC source, int sx, int sy,
                          std::uint32_t rop)
{
    record("BitBlt(" + name(target) + args({x, y, width, height}) + "," + name(source) + args({sx, sy}) + "," +
           hex(rop) + ")");
    return true;
}

Gdi::HDC RecordingGdi::GetDC(HWND window)
{
    HDC made = nullptr;
    if (!failing("GetDC")) {
        made = CreateCompatibleDC(nullptr);
        calls_.pop_back();
    }
    record("GetDC(" + std::to_string(reinterpret_cast<std::uintptr_t>(window)) + ")=" + name(made));
    return made;
}

int RecordingGdi::ReleaseDC(HWND window, HDC dc)
{
    record("ReleaseDC(" + std::to_string(reinterpret_cast<std::uintptr_t>(window)) + "," + name(dc) + ")");
    return objects_.erase(reinterpret_cast<std::uintptr_t>(dc)) ? 1 : 0;
}

bool RecordingGdi::DeleteDC(HDC dc)
{
    record("DeleteDC(" + name(dc) + ")");
    return objects_.erase(reinterpret_cast<std::uintptr_t>(dc)) != 0;
}

}  // namespace Tavi
