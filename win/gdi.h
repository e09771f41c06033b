// Gdi: the GDI operations the Win_* canvases use, behind one abstract class named after them, with
// small stand-ins for the handles and structures they take. Over it the canvases build on any system:
// on Windows RealGdi forwards each call to windows.h; elsewhere RecordingGdi answers with fixed
// metrics and keeps the calls, so that the canvases' logic is tested on every build.
#pragma once

#include "tavi/kxt/wchar.h"

#include <cstdint>

namespace Tavi {

class Gdi
{
public:
    // Handles are opaque pointers of distinct types, as windows.h makes them; HGDIOBJ takes any.
    struct HDC__;
    struct HPEN__;
    struct HBRUSH__;
    struct HFONT__;
    struct HRGN__;
    struct HBITMAP__;
    struct HWND__;
    using HDC = HDC__ *;
    using HPEN = HPEN__ *;
    using HBRUSH = HBRUSH__ *;
    using HFONT = HFONT__ *;
    using HRGN = HRGN__ *;
    using HBITMAP = HBITMAP__ *;
    using HWND = HWND__ *;
    using HGDIOBJ = void *;
    // 0x00bbggrr.
    using COLORREF = std::uint32_t;

    struct POINT
    {
        long x;
        long y;
    };
    struct SIZE
    {
        long cx;
        long cy;
    };
    struct RECT
    {
        long left;
        long top;
        long right;
        long bottom;
    };
    struct PAINTSTRUCT
    {
        HDC hdc;
        bool fErase;
        RECT rcPaint;
    };
    // The part of TEXTMETRIC the canvases read.
    struct TEXTMETRICA
    {
        long tmHeight;
        long tmAscent;
        long tmDescent;
        long tmInternalLeading;
        long tmExternalLeading;
        long tmAveCharWidth;
        unsigned char tmCharSet;
    };
    struct GLYPHMETRICS
    {
        unsigned gmBlackBoxX;
        unsigned gmBlackBoxY;
        POINT gmptGlyphOrigin;
        short gmCellIncX;
        short gmCellIncY;
    };
    struct ABC
    {
        int abcA;
        unsigned abcB;
        int abcC;
    };
    struct LOGFONTW
    {
        long lfHeight;
        long lfWidth;
        long lfEscapement;
        long lfOrientation;
        long lfWeight;
        unsigned char lfItalic;
        unsigned char lfUnderline;
        unsigned char lfStrikeOut;
        unsigned char lfCharSet;
        unsigned char lfOutPrecision;
        unsigned char lfClipPrecision;
        unsigned char lfQuality;
        unsigned char lfPitchAndFamily;
        wchar lfFaceName[32];
    };

    // The few numbers of windows.h the canvases pass (in lower case: windows.h makes its own names
    // macros).
    enum : int {
        ps_solid = 0,
        ps_null = 5,
        null_brush = 5,
        mm_text = 1,
        mm_anisotropic = 8,
        transparent = 1,
        ta_baseline = 24,
        alternate = 1,
        winding = 2,
        logpixelsx = 88,
        logpixelsy = 90,
        ggo_metrics = 0,
        error_region = 0,
        null_region = 1,
        out_tt_only_precis = 7
    };
    static constexpr std::uint32_t srccopy = 0xCC0020u;
    static constexpr std::uint32_t gdi_error = 0xFFFFFFFFu;

    virtual ~Gdi();

    // Drawing objects.
    virtual HPEN CreatePen(int style, int width, COLORREF color) = 0;
    virtual HBRUSH CreateSolidBrush(COLORREF color) = 0;
    virtual HBRUSH CreateHatchBrush(int hatch, COLORREF color) = 0;
    virtual HFONT CreateFontIndirectW(LOGFONTW const *font) = 0;
    virtual HGDIOBJ GetStockObject(int which) = 0;
    // The object selected before, or null when the selection failed.
    virtual HGDIOBJ SelectObject(HDC dc, HGDIOBJ object) = 0;
    virtual bool DeleteObject(HGDIOBJ object) = 0;

    // Coordinates.
    virtual int SetMapMode(HDC dc, int mode) = 0;
    virtual bool SetViewportOrgEx(HDC dc, int x, int y, POINT *old) = 0;
    virtual bool SetWindowOrgEx(HDC dc, int x, int y, POINT *old) = 0;
    virtual bool SetWindowExtEx(HDC dc, int x, int y, SIZE *old) = 0;
    virtual bool SetViewportExtEx(HDC dc, int x, int y, SIZE *old) = 0;
    virtual bool SetBrushOrgEx(HDC dc, int x, int y, POINT *old) = 0;

    // Text state.
    virtual int SetBkMode(HDC dc, int mode) = 0;
    virtual COLORREF SetBkColor(HDC dc, COLORREF color) = 0;
    virtual COLORREF SetTextColor(HDC dc, COLORREF color) = 0;
    virtual unsigned SetTextAlign(HDC dc, unsigned align) = 0;
    virtual int SetTextCharacterExtra(HDC dc, int extra) = 0;

    // Output.
    virtual bool MoveToEx(HDC dc, int x, int y, POINT *old) = 0;
    virtual bool LineTo(HDC dc, int x, int y) = 0;
    virtual bool Polyline(HDC dc, POINT const *points, int count) = 0;
    virtual bool Polygon(HDC dc, POINT const *points, int count) = 0;
    virtual bool Rectangle(HDC dc, int left, int top, int right, int bottom) = 0;
    virtual bool Ellipse(HDC dc, int left, int top, int right, int bottom) = 0;
    virtual int FillRect(HDC dc, RECT const *r, HBRUSH brush) = 0;
    virtual bool TextOutW(HDC dc, int x, int y, wchar const *text, int count) = 0;
    virtual int GetPolyFillMode(HDC dc) = 0;
    virtual int SetPolyFillMode(HDC dc, int mode) = 0;

    // Measuring. The glyph outline is asked for its metrics only, with the identity matrix.
    virtual int GetDeviceCaps(HDC dc, int index) = 0;
    virtual bool GetTextMetricsA(HDC dc, TEXTMETRICA *metrics) = 0;
    virtual bool GetTextExtentPoint32W(HDC dc, wchar const *text, int count, SIZE *size) = 0;
    virtual std::uint32_t GetGlyphOutlineW(HDC dc, unsigned ch, unsigned format, GLYPHMETRICS *metrics) = 0;
    virtual bool GetCharABCWidthsW(HDC dc, unsigned first, unsigned last, ABC *widths) = 0;

    // Clipping and damage.
    virtual int SelectClipRgn(HDC dc, HRGN region) = 0;
    virtual HRGN CreateRectRgn(int left, int top, int right, int bottom) = 0;
    virtual bool SetRectRgn(HRGN region, int left, int top, int right, int bottom) = 0;
    virtual int IntersectClipRect(HDC dc, int left, int top, int right, int bottom) = 0;
    virtual int GetClipBox(HDC dc, RECT *r) = 0;
    virtual bool RectVisible(HDC dc, RECT const *r) = 0;

    // Buffers.
    virtual HDC CreateCompatibleDC(HDC dc) = 0;
    virtual HBITMAP CreateCompatibleBitmap(HDC dc, int width, int height) = 0;
    virtual bool BitBlt(HDC target, int x, int y, int width, int height, HDC source, int sx, int sy,
                        std::uint32_t rop) = 0;
    virtual HDC GetDC(HWND window) = 0;
    virtual int ReleaseDC(HWND window, HDC dc) = 0;
    virtual bool DeleteDC(HDC dc) = 0;

    // a * b / c in 64 bits, rounded half away from zero; -1 when c is 0 or the answer leaves 32 bits.
    // Pure arithmetic, the same as the system's on every build.
    static int MulDiv(int a, int b, int c);

    // The interface the canvases call: the installed one, or else the system's own (RealGdi on
    // Windows, a process-wide RecordingGdi elsewhere).
    static Gdi &current();
    // Installs `gdi` (null for the default) and answers the one it replaces. The font cache's handles
    // belong to the interface that made them: drop them (Win_FontCache::clear) before switching.
    static Gdi *install(Gdi *gdi);
};

}  // namespace Tavi
