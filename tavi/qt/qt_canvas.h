// Qt_Canvas: the surface that draws through a QPainter and measures through QFontMetrics, in device
// pixels. It keeps true floating-point geometry for the _f operations, cuts dashes itself so that they
// look as on every other surface, and translates symbol-encoded text for the symbol font at hand.
// Qt_Pixmap_Canvas (qt_pixmap_canvas.h) is the same surface on a pixmap of its own.
#pragma once

#include "tavi/canvas/canvas.h"
#include "tavi/canvas/font.h"
#include "tavi/geometry/box.h"
#include "tavi/geometry/extension.h"
#include "tavi/geometry/extent.h"
#include "tavi/geometry/point.h"
#include "tavi/geometry/rect.h"
#include "tavi/kxt/wchar.h"
#include "tavi/qt/qt_fontcache.h"

#include <QPainter>
#include <QPen>
#include <QString>

class QBrush;
class QPainter;
class QPaintEvent;
class QPoint;
class QPointF;
class QPolygon;
class QPolygonF;
class QRect;
class QRectF;

namespace Tavi {

class Qt_Canvas : public Canvas
{
public:
    // Which symbol font a cs_symbol run is written for; decides how its byte codes become Unicode.
    enum SymbolKind {
        symbol_adobe = 0,             // "Symbol", and any font not known here: the byte as it stands
        symbol_kmt_math_ext = 1,      // "KMT Math Ext": the private-use page 0xF000 + byte
        symbol_standard_symbols = 2,  // "Standard Symbols L"
        symbol_open_symbol = 3        // "OpenSymbol"
    };

    // Draws on the painter, which must be active on a device; the damage is the whole extension.
    Qt_Canvas(QPainter *painter, Extension const &extension);
    // The damage is the event's rectangle.
    Qt_Canvas(QPainter *painter, QPaintEvent *event, Extension const &extension);
    // Copies every field; the painter is shared, not owned, and the font's spec is shared.
    Qt_Canvas(Qt_Canvas const &other) = default;
    Qt_Canvas &operator=(Qt_Canvas const &other) = default;
    ~Qt_Canvas() override;

    // Gauge
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
    void translate(long &x, long &y) const override;
    void translate_f(double &x, double &y) const override;
    void translation(Point p) override;
    Point translation() override;
    void translation_f(PointF const &p) override;
    PointF translation_f() override;
    void add_translation(Point p) override;
    void add_translation_f(PointF const &p) override;
    Extent twips_to_pixel(Extent const &twips) override;
    ExtentF twips_to_pixel_f(ExtentF const &twips) override;

    // Canvas
    Pen pen() const override;
    void pen(Pen const &pen, bool restart) override;
    Brush brush() const override;
    void brush(Brush const &brush) override;
    void text_color(Color color) override;
    void background(Color color) override;
    void line(Point from, Point to, Pen const &pen, bool restart) override;
    void line(Point from, Point to) override;
    void line_f(PointF from, PointF to, Pen const &pen, bool restart) override;
    void line_f(PointF from, PointF to) override;
    void poly_line(Point const *points, std::size_t count, Pen const &pen, bool closed) override;
    void poly_line(Point const *points, std::size_t count, bool closed) override;
    void poly_line_f(PointF const *points, std::size_t count, Pen const &pen, bool closed) override;
    void poly_line_f(PointF const *points, std::size_t count, bool closed) override;
    void frame_rect(Rect const &r, Pen const &pen) override;
    void frame_rect(Rect const &r) override;
    void frame_rect_f(RectF const &r, Pen const &pen) override;
    void frame_rect_f(RectF const &r) override;
    void fill_rect(Rect const &r, Brush const &brush) override;
    void fill_rect(Rect const &r) override;
    void fill_rect_f(RectF const &r, Brush const &brush) override;
    void fill_rect_f(RectF const &r) override;
    void frame_ellipse(Rect const &r, Pen const &pen) override;
    void frame_ellipse(Rect const &r) override;
    void frame_ellipse_f(RectF const &r, Pen const &pen) override;
    void frame_ellipse_f(RectF const &r) override;
    void fill_ellipse(Rect const &r, Brush const &brush) override;
    void fill_ellipse(Rect const &r) override;
    void fill_ellipse_f(RectF const &r, Brush const &brush) override;
    void fill_ellipse_f(RectF const &r) override;
    void fill_polygon(Point const *points, std::size_t count, Brush const &brush, bool winding) override;
    void fill_polygon(Point const *points, std::size_t count, bool winding) override;
    void fill_polygon_f(PointF const *points, std::size_t count, Brush const &brush, bool winding) override;
    void fill_polygon_f(PointF const *points, std::size_t count, bool winding) override;
    void shadow(Rect const &r) override;
    void shadow_f(RectF const &r) override;
    void erase(Color color) override;
    void erase() override;
    void text(wchar const *text, long count, Point p) override;
    void text_f(wchar const *text, long count, PointF p) override;
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

    // Own operations.
    void printing(bool on) { printing_ = on; }
    // With it set, antialias(bool) leaves the painter's hint as the caller of the painter chose it.
    void useInheritAliasing(bool on) { inherit_aliasing_ = on; }
    // Reads the device's resolution, switches the painter's clip off, clears the dash phase and makes
    // the drawing offset: the translation less the extension's top left.
    void init(Extension const &extension);
    // Hands the present font to the painter again, whatever the painter holds now.
    void init_font();
    // A new visible area: the offset as init makes it, and the damage as large as the area.
    void change_viewport(Extension const &extension);
    void set_damaged(Extension const &extension);
    // Device pixel to canvas coordinates, and back.
    Point client_to_point(int x, int y) const;
    void to_pixels(Point p, int &x, int &y) const;
    // A font size in twips as pixels of the device: dpi_y * twips / 1440 + 0.5, truncated.
    long font_pixel_size(long twips) const;
    // The run as Qt text, symbol codes translated for the selected symbol font.
    QString qstring(wchar const *text, long count) const;
    Point draw_offset() const { return draw_offset_; }
    PointF draw_offset_f() const { return draw_offset_f_; }
    SymbolKind symbol_kind() const { return symbol_kind_; }
    QPainter *painter() const { return painter_; }
    Rect damage() const { return damage_; }

    // The translation of one symbol-font byte to Unicode for a font of the given kind.
    static wchar symbol_code_point(SymbolKind kind, unsigned char code);
    // The kind of symbol font a family name stands for, compared in full and case-sensitively.
    static SymbolKind symbol_kind_of(wchar const *family);

protected:
    // No painter yet: a subclass that owns one sets it. The damage is the whole extension.
    explicit Qt_Canvas(Extension const &extension);

    void set_painter(QPainter *painter)
    {
        painter_ = painter;
        record_ = nullptr;
        painter_record_ = nullptr;
    }
    // The device's logical resolution, read by init and by a subclass that starts its own painter.
    void set_device_dpi(int dpi_x, int dpi_y);
    int device_dpi_x() const { return dpi_x_; }
    int device_dpi_y() const { return dpi_y_; }
    // The drawing offset made from the translation and a top left, in both forms.
    void set_draw_offset(Point const &top_left);
    void move_draw_offset(Point const &by);

    double dash_len();
    long dot_len() const;
    // Gives the painter the selected font, when it has another; a subclass that paints text in its own
    // way calls it first.
    void apply_painter_font();

private:
    // The font selection of font(); `force` skips the test for an unchanged font.
    void select_font(Font const &font, CharSet char_set, long angle, bool force);
    void fill_metric_cache() const;
    void query_ex() const;
    // The cached record of the selected font at this resolution, the metrics of it for the painter's
    // device, and a text's entry in it (measured on first use).
    QtFontRecord *record() const;
    QFontMetrics const &qmetrics() const;
    QtFontRecord::Text &measured(wchar const *text, long count) const;

    // Canvas coordinates as device ones, with the drawing offset of the same form; the integral forms
    // give Qt's int types, the floating ones its F types.
    QPoint device(Point const &p) const;
    QPointF device(PointF const &p) const;
    QRect device(Rect const &r) const;
    QRectF device(RectF const &r) const;
    QPolygon device(Point const *points, std::size_t count, bool closed) const;
    QPolygonF device(PointF const *points, std::size_t count, bool closed) const;
    // The brush of a fill that names none.
    QBrush current_qbrush() const;
    // The line with the current pen in the form of its points, for the rules shared by both forms.
    void stroke(Point const &from, Point const &to) { line(from, to); }
    void stroke(PointF const &from, PointF const &to) { line_f(from, to); }

    // Each drawing rule once, over the form of its coordinates (Point or PointF, Rect or RectF).
    template <class Pt>
    void cut_dashes(Pt const &p, Pt const &q);
    template <class Pt>
    void draw_path(Pt const *points, std::size_t count, bool closed);
    template <class R>
    void draw_frame(R const &r);
    template <class R>
    void draw_ellipse_frame(R const &r);
    template <class R>
    void paint_ellipse(R const &r, QBrush const &brush);
    template <class Pt>
    void paint_polygon(Pt const *points, std::size_t count, QBrush const &brush, bool winding);
    // in_parts cuts an upright run too long for some painters into parts.
    void paint_text(wchar const *chars, long count, QPointF const &at, bool in_parts);
    // The pen the painter gets for a Pen: always solid, since dashes are cut here.
    static QPen qpen(Pen const &pen);
    // Sets the painter's pen, and its composition mode for an exclusive-or pen.
    void apply_pen(Pen const &pen);

    // The shapes that take a pen of their own draw with it in place of the current one, on the canvas
    // and on the painter alike, and give both back when the scope ends.
    class PenInForce
    {
    public:
        PenInForce(Qt_Canvas &canvas, Pen const &pen);
        ~PenInForce();
        PenInForce(PenInForce const &) = delete;
        PenInForce &operator=(PenInForce const &) = delete;

    private:
        Qt_Canvas &canvas_;
        QPen painter_pen_;
        QPainter::CompositionMode mode_;
        Pen pen_;
    };
    // Interiors are filled with no pen, so that no outline is stroked round them, and with the given
    // brush if there is one; pen and brush come back after.
    class FillInForce
    {
    public:
        explicit FillInForce(QPainter *painter);
        FillInForce(QPainter *painter, QBrush const &brush);
        ~FillInForce();
        FillInForce(FillInForce const &) = delete;
        FillInForce &operator=(FillInForce const &) = delete;

    private:
        QPainter *painter_;
        QPen pen_;
        QBrush brush_;
    };
    // Outlines are drawn with no brush, so that the painter never fills them; the brush comes back after.
    class NoBrushInForce
    {
    public:
        explicit NoBrushInForce(QPainter *painter);
        ~NoBrushInForce();
        NoBrushInForce(NoBrushInForce const &) = delete;
        NoBrushInForce &operator=(NoBrushInForce const &) = delete;

    private:
        QPainter *painter_;
        QBrush brush_;
    };

    QPainter *painter_;
    // The selected font's record (null until asked for), and the one the painter has.
    mutable QtFontRecord *record_ = nullptr;
    QtFontRecord *painter_record_ = nullptr;
    QPen text_pen_;
    Rect damage_;
    Font font_;
    CharSet char_set_;
    long angle_;
    SymbolKind symbol_kind_;
    Pen pen_;
    Brush brush_;
    Color text_color_;
    Color background_;
    // Metric caches of the selected font; ascent_ and ex_ hold 0x7fffffff while empty.
    mutable long ascent_;
    mutable long descent_;
    mutable long leading_;
    mutable long ex_;
    mutable long X_height_;
    Point translation_;
    PointF translation_f_;
    Point draw_offset_;
    PointF draw_offset_f_;
    int dpi_x_;
    int dpi_y_;
    Rect clip_;
    bool clipping_;
    bool printing_;
    bool inherit_aliasing_;
};

}  // namespace Tavi
