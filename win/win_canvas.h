// Win_Canvas: the drawing contract on GDI device contexts, through the Gdi interface. One context
// takes the drawing and another (often the same) the measuring; pens, brushes and the font are GDI
// objects selected into them, made when an attribute changes and put back when the canvas ends. Its
// four forms (paint pass, window client area, metafile, bitmap) say where the contexts come from.
#pragma once

#include "tavi/canvas/integralcanvas.h"
#include "win/gdi.h"

#include <cstddef>

namespace Tavi {

class Win_Canvas : public IntegralCanvas
{
public:
    ~Win_Canvas() override;

    Font font() const override;
    void font(Font const &font, CharSet char_set, long angle) override;
    CharSet char_set() override;
    long text_angle() const override;
    Extent text_extent(wchar const *text, long count) override;
    Box text_box(wchar const *text, long count) override;
    void text_metrics(wchar const *text, long count, Box &box, long &left, long &right) override;
    long font_ascent() const override;
    long font_descent() const override;
    long font_leading() const override;
    long font_em() const override;
    long font_ex() const override;
    long font_X_height() const override;
    void char_bearing(wchar const *text, long &left, long &right) const override;
    Extent dpi() override;
    bool printing() const override;
    void translation(Point p) override;
    Point translation() override;
    void translation_f(PointF const &p) override;
    PointF translation_f() override;
    void add_translation(Point p) override;
    void add_translation_f(PointF const &p) override;
    Extent twips_to_pixel(Extent const &twips) override;

    Pen pen() const override;
    void pen(Pen const &pen, bool restart) override;
    Brush brush() const override;
    void brush(Brush const &brush) override;
    void text_color(Color color) override;
    void background(Color color) override;
    void line(Point from, Point to, Pen const &pen, bool restart) override;
    void line(Point from, Point to) override;
    void poly_line(Point const *points, std::size_t count, Pen const &pen, bool closed) override;
    void poly_line(Point const *points, std::size_t count, bool closed) override;
    void frame_rect(Rect const &r, Pen const &pen) override;
    void frame_rect(Rect const &r) override;
    void fill_rect(Rect const &r, Brush const &brush) override;
    void fill_rect(Rect const &r) override;
    void frame_ellipse(Rect const &r, Pen const &pen) override;
    void frame_ellipse(Rect const &r) override;
    void fill_ellipse(Rect const &r, Brush const &brush) override;
    void fill_ellipse(Rect const &r) override;
    void fill_polygon(Point const *points, std::size_t count, Brush const &brush, bool winding) override;
    void fill_polygon(Point const *points, std::size_t count, bool winding) override;
    void shadow(Rect const &r) override;
    void erase(Color color) override;
    void erase() override;
    void text(wchar const *text, long count, Point p) override;
    bool damaged(Rect const &r) const override;
    bool damaged(Extension const &e) const override;
    bool any_real_damage() const override;
    bool really_damaged(Rect const &r) const override;
    bool really_damaged(Extension const &e) const override;
    bool clip_rect(Rect *r) override;
    void clip_rect(Rect const &r) override;
    void no_clip_rect() override;
    bool short_coordinates() const override;
    bool antialias() const override;
    void antialias(bool on) override;
    bool antialias_text() const override;
    void antialias_text(bool on) override;

    // Copies a buffer out to the device; nothing where there is no buffer.
    virtual void flush_buff();
    // Selects the canvas's pen, brush and font and sets the text state on its contexts.
    virtual void init_dc();
    // Selects back what init_dc found, deletes what the canvas made, and flushes the buffer. Once.
    virtual void restore_dc();
    // The vertical resolution that font heights are made for.
    virtual long dpi_y();
    virtual double dash_len();

    // A device position in the canvas's coordinates, and back.
    Point client_to_point(int x, int y) const;
    void to_pixels(Point p, int &x, int &y) const;

    Gdi::HDC draw_dc() const { return draw_dc_; }
    Gdi::HDC info_dc() const { return info_dc_; }
    Point offset() const { return offset_; }
    Rect damage() const { return damage_; }

protected:
    Win_Canvas(bool printing, Extension const &extension);

    // The GDI colour: red, green and blue; alpha is dropped.
    static Gdi::COLORREF colorref(Color const &c);
    Gdi &gdi() const { return gdi_; }

    // After a font change: the line metrics of the new font; ex and X height are asked again later.
    void font_changed();
    // Selects the cache entry on both contexts and releases the one before; false, with the old font
    // still selected, when the entry has no font or a context refuses it.
    bool change_font(std::size_t id);
    // The metrics of the glyph of the first character, which `text` passes (a surrogate pair is one);
    // false when the system has none.
    bool get_glyph_outline(wchar const *&text, Gdi::GLYPHMETRICS *metrics) const;
    void query_ex() const;
    long dot_len() const;
    // A run in the device's terms: symbol codes read for the symbol font selected.
    wstring device_text(wchar const *text, long count) const;
    wchar symbol_code(wchar unit) const;
    Gdi::RECT device_rect(Rect const &r) const;
    // Sets the map mode and origins of a screen context.
    void screen_mapping(Gdi::HDC dc);
    // Offset for contexts whose drawing starts at (x, y): plus the translation, minus the extension's
    // top left.
    void place(int x, int y, Extension const &extension);

    Gdi &gdi_;
    Gdi::HDC draw_dc_ = nullptr;
    Gdi::HDC info_dc_ = nullptr;
    bool printing_;
    Point offset_;
    Gdi::HGDIOBJ old_font_ = nullptr;
    Gdi::HGDIOBJ old_info_font_ = nullptr;
    Font font_;
    CharSet char_set_ = cs_unicode;
    unsigned char device_char_set_ = 0;
    long angle_ = 0;
    std::size_t font_id_ = 0;
    bool font_selected_ = false;
    long ascent_ = 0;
    long descent_ = 0;
    long leading_ = 0;
    mutable long ex_ = 0x7fffffff;
    mutable long X_height_ = 0x7fffffff;
    Gdi::HGDIOBJ old_pen_ = nullptr;
    Gdi::HGDIOBJ old_brush_ = nullptr;
    Gdi::HRGN clip_region_ = nullptr;
    bool clipping_ = false;
    Rect clip_;
    Pen pen_;
    Gdi::HPEN pen_handle_ = nullptr;
    Brush brush_;
    Gdi::HBRUSH brush_handle_ = nullptr;
    Color background_ = Color::white;
    Color text_color_ = Color::black;
    Rect damage_;
    // The resolution of info_dc, read once.
    mutable Extent dpi_;
    bool restored_ = false;

private:
    enum SymbolKind { symbol_adobe, symbol_kmt_math_ext, symbol_standard_symbols, symbol_open_symbol };
    struct SymbolFamily;
    static SymbolFamily const symbol_families[];
    static SymbolKind symbol_kind_of(wchar const *family);

    SymbolKind symbol_kind_ = symbol_adobe;

    // Makes the GDI object of a brush: solid, or hatched by its fill style.
    Gdi::HBRUSH make_brush(Brush const &brush);
    // Moves the offset with the translation, whichever setter changed it.
    template <class Change>
    void move_translation(Change &&change);
};

}  // namespace Tavi
