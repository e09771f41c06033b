// RealGdi: the Gdi interface on the system's own GDI (Windows only).
#pragma once

#include "win/gdi.h"

namespace Tavi {

class RealGdi : public Gdi
{
public:
    HPEN CreatePen(int style, int width, COLORREF color) override;
    HBRUSH CreateSolidBrush(COLORREF color) override;
    HBRUSH CreateHatchBrush(int hatch, COLORREF color) override;
    HFONT CreateFontIndirectW(LOGFONTW const *font) override;
    HGDIOBJ GetStockObject(int which) override;
    HGDIOBJ SelectObject(HDC dc, HGDIOBJ object) override;
    bool DeleteObject(HGDIOBJ object) override;
    int SetMapMode(HDC dc, int mode) override;
    bool SetViewportOrgEx(HDC dc, int x, int y, POINT *old) override;
    bool SetWindowOrgEx(HDC dc, int x, int y, POINT *old) override;
    bool SetWindowExtEx(HDC dc, int x, int y, SIZE *old) override;
    bool SetViewportExtEx(HDC dc, int x, int y, SIZE *old) override;
    bool SetBrushOrgEx(HDC dc, int x, int y, POINT *old) override;
    int SetBkMode(HDC dc, int mode) override;
    COLORREF SetBkColor(HDC dc, COLORREF color) override;
    COLORREF SetTextColor(HDC dc, COLORREF color) override;
    unsigned SetTextAlign(HDC dc, unsigned align) override;
    int SetTextCharacterExtra(HDC dc, int extra) override;
    bool MoveToEx(HDC dc, int x, int y, POINT *old) override;
    bool LineTo(HDC dc, int x, int y) override;
    bool Polyline(HDC dc, POINT const *points, int count) override;
    bool Polygon(HDC dc, POINT const *points, int count) override;
    bool Rectangle(HDC dc, int left, int top, int right, int bottom) override;
    bool Ellipse(HDC dc, int left, int top, int right, int bottom) override;
    int FillRect(HDC dc, RECT const *r, HBRUSH brush) override;
    bool TextOutW(HDC dc, int x, int y, wchar const *text, int count) override;
    int GetPolyFillMode(HDC dc) override;
    int SetPolyFillMode(HDC dc, int mode) override;
    int GetDeviceCaps(HDC dc, int index) override;
    bool GetTextMetricsA(HDC dc, TEXTMETRICA *metrics) override;
    bool GetTextExtentPoint32W(HDC dc, wchar const *text, int count, SIZE *size) override;
    std::uint32_t GetGlyphOutlineW(HDC dc, unsigned ch, unsigned format, GLYPHMETRICS *metrics) override;
    bool GetCharABCWidthsW(HDC dc, unsigned first, unsigned last, ABC *widths) override;
    int SelectClipRgn(HDC dc, HRGN region) override;
    HRGN CreateRectRgn(int left, int top, int right, int bottom) override;
    bool SetRectRgn(HRGN region, int left, int top, int right, int bottom) override;
    int IntersectClipRect(HDC dc, int left, int top, int right, int bottom) override;
    int GetClipBox(HDC dc, RECT *r) override;
    bool RectVisible(HDC dc, RECT const *r) override;
    HDC CreateCompatibleDC(HDC dc) override;
    HBITMAP CreateCompatibleBitmap(HDC dc, int width, int height) override;
    bool BitBlt(HDC target, int x, int y, int width, int height, HDC source, int sx, int sy,
                std::uint32_t rop) override;
    HDC GetDC(HWND window) override;
    int ReleaseDC(HWND window, HDC dc) override;
    bool DeleteDC(HDC dc) override;
};

}  // namespace Tavi
