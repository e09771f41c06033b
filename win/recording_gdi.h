// RecordingGdi: a GDI without a screen. It keeps every call it receives as a line of text
// ("SelectObject(dc1,pen3)": the first context and the third pen), tracks what each device context has selected, answers the measuring
// calls with fixed metrics derived from the selected font's height, and can be told to fail a given
// operation, so that the canvases' handling of a failed call can be watched.
#pragma once

#include "win/gdi.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace Tavi {

class RecordingGdi : public Gdi
{
public:
    RecordingGdi();
    ~RecordingGdi() override;

    // The calls received since the last take, in order; they are forgotten.
    std::vector<std::string> take();
    // The calls received so far.
    std::vector<std::string> const &calls() const { return calls_; }
    // The next `times` calls of this operation fail.
    void fail(std::string const &operation, int times = 1);
    // Device resolution of the contexts made from now on (96 by 96 to begin with).
    void resolution(int x, int y);
    // Pens, brushes, fonts, regions, bitmaps and contexts made and not yet deleted.
    std::size_t live_objects() const;
    // The name a handle has in the calls ("pen3"); "null" for none.
    std::string name(void const *handle) const;
    // What a context has selected of a kind ("pen", "brush", "font", "bitmap").
    std::string selected(HDC dc, std::string const &kind) const;
    // The font a handle was made from.
    LOGFONTW const *logfont(HFONT font) const;

    // Metrics of a font `h` pixels high: ascent 4h/5, descent the rest, external leading h/10, every
    // character h/2 wide. A glyph's ink is 1 pixel in from each side; capitals and letters with
    // ascenders rise 7h/10, small letters h/2, and g, j, p, q, y go h/5 below the baseline.
    static long ascent(long h) { return h * 4 / 5; }
    static long advance(long h) { return h / 2; }

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

private:
    struct Object
    {
        std::string kind;  // pen, brush, font, region, bitmap, dc
        bool stock = false;
        // What it takes the place of when selected: pen, brush, font, bitmap or region.
        std::string slot;
        // Handles are named by kind and number: the third pen made is "pen3".
        int number = 0;
        LOGFONTW font{};
        // For a context: its resolution, fill mode and what it has selected, by kind.
        int dpi_x = 96;
        int dpi_y = 96;
        int fill_mode = alternate;
        std::map<std::string, std::uintptr_t> selection;
    };

    void record(std::string const &call);
    // True, and the call counted, when the operation is to fail now.
    bool failing(std::string const &operation);
    std::uintptr_t make(std::string const &kind, bool stock = false, std::string const &slot = {});
    Object *find(void const *handle);
    Object const *find(void const *handle) const;
    // The pixel height of the font selected in the context (16 for the stock font).
    long font_height(HDC dc) const;

    std::vector<std::string> calls_;
    std::size_t taken_ = 0;
    std::map<std::string, int> failures_;
    std::map<std::uintptr_t, Object> objects_;
    std::map<int, std::uintptr_t> stock_;
    std::map<std::string, int> made_;
    std::uintptr_t next_ = 1;
    int dpi_x_ = 96;
    int dpi_y_ = 96;
};

}  // namespace Tavi
