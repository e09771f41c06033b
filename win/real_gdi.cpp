// RealGdi: each call handed to windows.h, with our stand-in types converted to the system's.
#include "win/real_gdi.h"

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <cstring>
#include <vector>

namespace Tavi {

namespace {

template <class To, class From>
To to(From handle)
{
    return reinterpret_cast<To>(handle);
}

::POINT *to_points(Gdi::POINT const *points, int count, std::vector<::POINT> &buffer)
{
    buffer.resize(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        buffer[static_cast<std::size_t>(i)] = ::POINT{points[i].x, points[i].y};
    return buffer.data();
}

::RECT to_rect(Gdi::RECT const &r) { return ::RECT{r.left, r.top, r.right, r.bottom}; }

LPCWSTR to_wide(wchar const *text) { return reinterpret_cast<LPCWSTR>(text); }

}  // namespace

Gdi::HPEN RealGdi::CreatePen(int style, int width, COLORREF color) { return to<HPEN>(::CreatePen(style, width, color)); }

Gdi::HBRUSH RealGdi::CreateSolidBrush(COLORREF color) { return to<HBRUSH>(::CreateSolidBrush(color)); }

Gdi::HBRUSH RealGdi::CreateHatchBrush(int hatch, COLORREF color) { return to<HBRUSH>(::CreateHatchBrush(hatch, color)); }

Gdi::HFONT RealGdi::CreateFontIndirectW(LOGFONTW const *font)
{
    ::LOGFONTW lf{};
    lf.lfHeight = font->lfHeight;
    lf.lfWidth = font->lfWidth;
    lf.lfEscapement = font->lfEscapement;
    lf.lfOrientation = font->lfOrientation;
    lf.lfWeight = font->lfWeight;
    lf.lfItalic = font->lfItalic;
    lf.lfUnderline = font->lfUnderline;
    lf.lfStrikeOut = font->lfStrikeOut;
    lf.lfCharSet = font->lfCharSet;
    lf.lfOutPrecision = font->lfOutPrecision;
    lf.lfClipPrecision = font->lfClipPrecision;
    lf.lfQuality = font->lfQuality;
    lf.lfPitchAndFamily = font->lfPitchAndFamily;
    static_assert(sizeof lf.lfFaceName == sizeof font->lfFaceName, "32 units of 16 bits");
    std::memcpy(lf.lfFaceName, font->lfFaceName, sizeof lf.lfFaceName);
    return to<HFONT>(::CreateFontIndirectW(&lf));
}

Gdi::HGDIOBJ RealGdi::GetStockObject(int which) { return ::GetStockObject(which); }

Gdi::HGDIOBJ RealGdi::SelectObject(HDC dc, HGDIOBJ object) { return ::SelectObject(to<::HDC>(dc), object); }

bool RealGdi::DeleteObject(HGDIOBJ object) { return ::DeleteObject(object) != 0; }

int RealGdi::SetMapMode(HDC dc, int mode) { return ::SetMapMode(to<::HDC>(dc), mode); }

bool RealGdi::SetViewportOrgEx(HDC dc, int x, int y, POINT *old)
{
    ::POINT p{};
    bool const ok = ::SetViewportOrgEx(to<::HDC>(dc), x, y, &p) != 0;
    if (old != nullptr)
        *old = POINT{p.x, p.y};
    return ok;
}

bool RealGdi::SetWindowOrgEx(HDC dc, int x, int y, POINT *old)
{
    ::POINT p{};
    bool const ok = ::SetWindowOrgEx(to<::HDC>(dc), x, y, &p) != 0;
    if (old != nullptr)
        *old = POINT{p.x, p.y};
    return ok;
}

bool RealGdi::SetWindowExtEx(HDC dc, int x, int y, SIZE *old)
{
    ::SIZE s{};
    bool const ok = ::SetWindowExtEx(to<::HDC>(dc), x, y, &s) != 0;
    if (old != nullptr)
        *old = SIZE{s.cx, s.cy};
    return ok;
}

bool RealGdi::SetViewportExtEx(HDC dc, int x, int y, SIZE *old)
{
    ::SIZE s{};
    bool const ok = ::SetViewportExtEx(to<::HDC>(dc), x, y, &s) != 0;
    if (old != nullptr)
        *old = SIZE{s.cx, s.cy};
    return ok;
}

bool RealGdi::SetBrushOrgEx(HDC dc, int x, int y, POINT *old)
{
    ::POINT p{};
    bool const ok = ::SetBrushOrgEx(to<::HDC>(dc), x, y, &p) != 0;
    if (old != nullptr)
        *old = POINT{p.x, p.y};
    return ok;
}

int RealGdi::SetBkMode(HDC dc, int mode) { return ::SetBkMode(to<::HDC>(dc), mode); }

Gdi::COLORREF RealGdi::SetBkColor(HDC dc, COLORREF color) { return ::SetBkColor(to<::HDC>(dc), color); }

Gdi::COLORREF RealGdi::SetTextColor(HDC dc, COLORREF color) { return ::SetTextColor(to<::HDC>(dc), color); }

unsigned RealGdi::SetTextAlign(HDC dc, unsigned align) { return ::SetTextAlign(to<::HDC>(dc), align); }

int RealGdi::SetTextCharacterExtra(HDC dc, int extra) { return ::SetTextCharacterExtra(to<::HDC>(dc), extra); }

bool RealGdi::MoveToEx(HDC dc, int x, int y, POINT *old)
{
    ::POINT p{};
    bool const ok = ::MoveToEx(to<::HDC>(dc), x, y, &p) != 0;
    if (old != nullptr)
        *old = POINT{p.x, p.y};
    return ok;
}

bool RealGdi::LineTo(HDC dc, int x, int y) { return ::LineTo(to<::HDC>(dc), x, y) != 0; }

bool RealGdi::Polyline(HDC dc, POINT const *points, int count)
{
    std::vector<::POINT> buffer;
    return ::Polyline(to<::HDC>(dc), to_points(points, count, buffer), count) != 0;
}

bool RealGdi::Polygon(HDC dc, POINT const *points, int count)
{
    std::vector<::POINT> buffer;
    return ::Polygon(to<::HDC>(dc), to_points(points, count, buffer), count) != 0;
}

bool RealGdi::Rectangle(HDC dc, int left, int top, int right, int bottom)
{
    return ::Rectangle(to<::HDC>(dc), left, top, right, bottom) != 0;
}

bool RealGdi::Ellipse(HDC dc, int left, int top, int right, int bottom)
{
    return ::Ellipse(to<::HDC>(dc), left, top, right, bottom) != 0;
}

int RealGdi::FillRect(HDC dc, RECT const *r, HBRUSH brush)
{
    ::RECT const rect = to_rect(*r);
    return ::FillRect(to<::HDC>(dc), &rect, to<::HBRUSH>(brush));
}

bool RealGdi::TextOutW(HDC dc, int x, int y, wchar const *text, int count)
{
    return ::TextOutW(to<::HDC>(dc), x, y, to_wide(text), count) != 0;
}

int RealGdi::GetPolyFillMode(HDC dc) { return ::GetPolyFillMode(to<::HDC>(dc)); }

int RealGdi::SetPolyFillMode(HDC dc, int mode) { return ::SetPolyFillMode(to<::HDC>(dc), mode); }

int RealGdi::GetDeviceCaps(HDC dc, int index) { return ::GetDeviceCaps(to<::HDC>(dc), index); }

bool RealGdi::GetTextMetricsA(HDC dc, TEXTMETRICA *metrics)
{
    ::TEXTMETRICA tm{};
    if (!::GetTextMetricsA(to<::HDC>(dc), &tm))
        return false;
    *metrics = TEXTMETRICA{tm.tmHeight, tm.tmAscent, tm.tmDescent, tm.tmInternalLeading, tm.tmExternalLeading,
                           tm.tmAveCharWidth, tm.tmCharSet};
    return true;
}

bool RealGdi::GetTextExtentPoint32W(HDC dc, wchar const *text, int count, SIZE *size)
{
    ::SIZE s{};
    if (!::GetTextExtentPoint32W(to<::HDC>(dc), to_wide(text), count, &s))
        return false;
    *size = SIZE{s.cx, s.cy};
    return true;
}

std::uint32_t RealGdi::GetGlyphOutlineW(HDC dc, unsigned ch, unsigned format, GLYPHMETRICS *metrics)
{
    static ::MAT2 const identity{{0, 1}, {0, 0}, {0, 0}, {0, 1}};
    ::GLYPHMETRICS gm{};
    DWORD const answer = ::GetGlyphOutlineW(to<::HDC>(dc), ch, format, &gm, 0, nullptr, &identity);
    if (answer == GDI_ERROR)
        return gdi_error;
    *metrics = GLYPHMETRICS{gm.gmBlackBoxX, gm.gmBlackBoxY, POINT{gm.gmptGlyphOrigin.x, gm.gmptGlyphOrigin.y},
                            gm.gmCellIncX, gm.gmCellIncY};
    return answer;
}

bool RealGdi::GetCharABCWidthsW(HDC dc, unsigned first, unsigned last, ABC *widths)
{
    std::vector<::ABC> abc(last - first + 1);
    if (!::GetCharABCWidthsW(to<::HDC>(dc), first, last, abc.data()))
        return false;
    for (std::size_t i = 0; i < abc.size(); ++i)
        widths[i] = ABC{abc[i].abcA, abc[i].abcB, abc[i].abcC};
    return true;
}

int RealGdi::SelectClipRgn(HDC dc, HRGN region) { return ::SelectClipRgn(to<::HDC>(dc), to<::HRGN>(region)); }

Gdi::HRGN RealGdi::CreateRectRgn(int left, int top, int right, int bottom)
{
    return to<HRGN>(::CreateRectRgn(left, top, right, bottom));
}

bool RealGdi::SetRectRgn(HRGN region, int left, int top, int right, int bottom)
{
    return ::SetRectRgn(to<::HRGN>(region), left, top, right, bottom) != 0;
}

int RealGdi::IntersectClipRect(HDC dc, int left, int top, int right, int bottom)
{
    return ::IntersectClipRect(to<::HDC>(dc), left, top, right, bottom);
}

int RealGdi::GetClipBox(HDC dc, RECT *r)
{
    ::RECT box{};
    int const kind = ::GetClipBox(to<::HDC>(dc), &box);
    *r = RECT{box.left, box.top, box.right, box.bottom};
    return kind;
}

bool RealGdi::RectVisible(HDC dc, RECT const *r)
{
    ::RECT const rect = to_rect(*r);
    return ::RectVisible(to<::HDC>(dc), &rect) != 0;
}

Gdi::HDC RealGdi::CreateCompatibleDC(HDC dc) { return to<HDC>(::CreateCompatibleDC(to<::HDC>(dc))); }

Gdi::HBITMAP RealGdi::CreateCompatibleBitmap(HDC dc, int width, int height)
{
    return to<HBITMAP>(::CreateCompatibleBitmap(to<::HDC>(dc), width, height));
}

bool RealGdi::BitBlt(HDC target, int x, int y, int width, int height, HDC source, int sx, int sy, std::uint32_t rop)
{
    return ::BitBlt(to<::HDC>(target), x, y, width, height, to<::HDC>(source), sx, sy, rop) != 0;
}

Gdi::HDC RealGdi::GetDC(HWND window) { return to<HDC>(::GetDC(to<::HWND>(window))); }

int RealGdi::ReleaseDC(HWND window, HDC dc) { return ::ReleaseDC(to<::HWND>(window), to<::HDC>(dc)); }

bool RealGdi::DeleteDC(HDC dc) { return ::DeleteDC(to<::HDC>(dc)) != 0; }

}  // namespace Tavi
