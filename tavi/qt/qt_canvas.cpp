// Qt_Canvas: measuring with QFontMetrics and drawing with a QPainter, in device pixels.
#include "tavi/qt/qt_canvas.h"

#include "tavi/canvas/dash_cutter.h"
#include "tavi/geometry/rounding.h"
#include "tavi/qt/cp1252_table.h"
#include "tavi/qt/qt_fontcache.h"
#include "tavi/qt/symbol_tables.h"

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QFontMetrics>
#include <QLine>
#include <QLineF>
#include <QPaintDevice>
#include <QPaintEvent>
#include <QPainter>
#include <QPolygon>
#include <QPolygonF>
#include <QRect>
#include <QRectF>
#include <QTransform>

#include <algorithm>
#include <cmath>

namespace Tavi {

namespace {

long const empty_metric = 0x7fffffff;

// A run wider than this many pixels is drawn in parts: some painters lose text whose coordinates
// run past the 16-bit range.
int const longest_text_run = 30000;

QColor qcolor(Color const &c) { return QColor(c.red(), c.green(), c.blue(), c.alpha()); }

// The Qt brush style of each fill style, by its number; a number outside the table fills solid.
Qt::BrushStyle const brush_styles[] = {
    Qt::SolidPattern,      // solid
    Qt::HorPattern,        // horizontal
    Qt::VerPattern,        // vertical
    Qt::BDiagPattern,      // diagonal
    Qt::FDiagPattern,      // back_diagonal
    Qt::CrossPattern,      // cross
    Qt::DiagCrossPattern,  // diagonal_cross
};

Qt::BrushStyle qt_brush_style(Brush::FillStyle style)
{
    int const n = static_cast<int>(style);
    if (n < 0 || n >= static_cast<int>(sizeof brush_styles / sizeof brush_styles[0]))
        return Qt::SolidPattern;
    return brush_styles[n];
}

QBrush qbrush(Brush const &b) { return QBrush(qcolor(b.color()), qt_brush_style(b.fill_style())); }

// The family names of the symbol fonts whose encodings are known, in the order they are tried.
struct SymbolFamily
{
    char const *name;
    Qt_Canvas::SymbolKind kind;
};

SymbolFamily const symbol_families[] = {
    {"Symbol", Qt_Canvas::symbol_adobe},
    {"KMT Math Ext", Qt_Canvas::symbol_kmt_math_ext},
    {"OpenSymbol", Qt_Canvas::symbol_open_symbol},
    {"Standard Symbols L", Qt_Canvas::symbol_standard_symbols},
};

bool same_name(wchar const *wide, char const *narrow)
{
    for (; *narrow != '\0'; ++wide, ++narrow) {
        if (*wide != static_cast<wchar>(static_cast<unsigned char>(*narrow)))
            return false;
    }
    return *wide == 0;
}

// The points with the offset added, and the first again at the end of a closed path; QPolygon or
// QPolygonF by the form of the points.
template <class QPoly, class Pt>
QPoly qpolygon(Pt const *points, std::size_t count, Pt const &offset, bool closed)
{
    using QPt = typename QPoly::value_type;
    QPoly polygon;
    polygon.reserve(static_cast<int>(count + (closed ? 1 : 0)));
    for (std::size_t i = 0; i < count; ++i)
        polygon.append(QPt(points[i].x + offset.x, points[i].y + offset.y));
    if (closed)
        polygon.append(QPt(points[0].x + offset.x, points[0].y + offset.y));
    return polygon;
}

// Grey hatching anchored at the rectangle's corner, so that it does not crawl when the area moves.
template <class QR>
void hatch(QPainter *painter, QR const &q)
{
    QPointF const saved = painter->brushOrigin();
    painter->setBrushOrigin(q.topLeft());
    painter->fillRect(q, QBrush(QColor(128, 128, 128, 255), Qt::BDiagPattern));
    painter->setBrushOrigin(saved);
}

bool is_black(Brush const &b) { return b.color() == Color::black; }

}  // namespace

// ---------------------------------------------------------------------------------------------------
// Construction

Qt_Canvas::Qt_Canvas(Extension const &extension)
    : painter_(nullptr),
      text_pen_(Qt::black),
      damage_(0, 0, extension.bottom() - extension.top(), extension.right() - extension.left()),
      font_(),
      char_set_(cs_unicode),
      angle_(0),
      symbol_kind_(symbol_adobe),
      pen_(0, Color::black, Pen::solid),
      brush_(Brush::solid, Color::black),
      text_color_(Color::black),
      background_(Color::white),
      ascent_(empty_metric),
      descent_(0),
      leading_(0),
      ex_(empty_metric),
      X_height_(0),
      translation_(0, 0),
      translation_f_(0.0, 0.0),
      draw_offset_(0, 0),
      draw_offset_f_(0.0, 0.0),
      dpi_x_(0),
      dpi_y_(0),
      clip_(),
      clipping_(false),
      printing_(false),
      inherit_aliasing_(false)
{
}

Qt_Canvas::Qt_Canvas(QPainter *painter, Extension const &extension) : Qt_Canvas(extension)
{
    painter_ = painter;
    init(extension);
    init_font();
}

// The event's rectangle is inclusive in Qt; the damage keeps its bottom and right just outside.
Qt_Canvas::Qt_Canvas(QPainter *painter, QPaintEvent *event, Extension const &extension)
    : Qt_Canvas(extension)
{
    painter_ = painter;
    if (event != nullptr) {
        QRect const r = event->rect();
        damage_ = Rect(r.top(), r.left(), r.bottom() + 1, r.right() + 1);
    }
    init(extension);
    init_font();
}

Qt_Canvas::~Qt_Canvas() = default;

void Qt_Canvas::init(Extension const &extension)
{
    if (painter_ == nullptr || painter_->device() == nullptr)
        qFatal("qt_canvas: the painter of a Qt_Canvas has no paint device");
    set_device_dpi(painter_->device()->logicalDpiX(), painter_->device()->logicalDpiY());
    painter_->setClipping(false);
    record_ = nullptr;
    painter_record_ = nullptr;
    reset_dash_phase();
    set_draw_offset(Point(extension.left(), extension.top()));
}

void Qt_Canvas::init_font() { select_font(font_, char_set_, angle_, true); }

void Qt_Canvas::change_viewport(Extension const &extension)
{
    set_draw_offset(Point(extension.left(), extension.top()));
    damage_.bottom(extension.bottom() - extension.top());
    damage_.right(extension.right() - extension.left());
}

void Qt_Canvas::set_damaged(Extension const &extension)
{
    damage_ = Rect(extension.top(), extension.left(), extension.bottom(), extension.right());
}

void Qt_Canvas::set_device_dpi(int dpi_x, int dpi_y)
{
    dpi_x_ = dpi_x;
    dpi_y_ = dpi_y;
    record_ = nullptr;
}

// The offset turns canvas coordinates into device pixels: the translation is added, and the top left of
// the visible area comes to lie at the device's origin.
void Qt_Canvas::set_draw_offset(Point const &top_left)
{
    draw_offset_ = translation_ - top_left;
    draw_offset_f_ = translation_f_ - PointF(top_left);
}

void Qt_Canvas::move_draw_offset(Point const &by)
{
    draw_offset_ += by;
    draw_offset_f_ += PointF(by);
}

Point Qt_Canvas::client_to_point(int x, int y) const { return Point(x, y) - draw_offset_; }

void Qt_Canvas::to_pixels(Point p, int &x, int &y) const
{
    x = static_cast<int>(p.x + draw_offset_.x);
    y = static_cast<int>(p.y + draw_offset_.y);
}

long Qt_Canvas::font_pixel_size(long twips) const
{
    return static_cast<long>(static_cast<double>(dpi_y_) * static_cast<double>(twips) / 1440.0 + 0.5);
}

// ---------------------------------------------------------------------------------------------------
// Fonts and text translation

Font Qt_Canvas::font() const { return font_; }

void Qt_Canvas::font(Font const &font, CharSet char_set, long angle)
{
    select_font(font, char_set, angle, false);
}

// The QFont comes from the font cache, made once per font and resolution. The painter takes it only
// when text is painted: a layout selects fonts far more often than it paints, and measuring goes
// through the cache, not through the painter.
void Qt_Canvas::select_font(Font const &font, CharSet char_set, long angle, bool force)
{
    angle_ = angle;
    if (!force && font == font_ && char_set == char_set_)
        return;
    char_set_ = char_set;
    font_ = font;
    record_ = nullptr;
    ascent_ = empty_metric;
    ex_ = empty_metric;

    if (char_set == cs_symbol)
        symbol_kind_ = symbol_kind_of(font.name());
}

QtFontRecord *Qt_Canvas::record() const
{
    if (record_ == nullptr)
        record_ = QtFontCache::local().record(font_, char_set_, dpi_x_, dpi_y_, painter_->device()->devType());
    return record_;
}

QFontMetrics const &Qt_Canvas::qmetrics() const { return record()->metrics_for(painter_->device()); }

void Qt_Canvas::apply_painter_font()
{
    QtFontRecord *r = record();
    if (painter_record_ == r)
        return;
    painter_->setFont(r->qfont);
    painter_record_ = r;
}

// Each text is measured once per font: later questions are answered from the record.
QtFontRecord::Text &Qt_Canvas::measured(wchar const *text, long count) const
{
    QtFontRecord *r = record();
    if (r->texts.size() > QtFontCache::texts_per_record)
        r->texts.clear();
    auto [entry, added] = r->texts.try_emplace(std::u16string(text, static_cast<std::size_t>(count)));
    if (added)
        entry->second.advance = qmetrics().horizontalAdvance(qstring(text, count));
    return entry->second;
}

Qt_Canvas::SymbolKind Qt_Canvas::symbol_kind_of(wchar const *family)
{
    if (family == nullptr)
        return symbol_adobe;
    for (SymbolFamily const &f : symbol_families) {
        if (same_name(family, f.name))
            return f.kind;
    }
    return symbol_adobe;
}

// The KMT font publishes its glyphs on the private-use page that symbol fonts use: the byte minus
// 0x1000 in 16 bits, which is 0xF000 + byte.
wchar Qt_Canvas::symbol_code_point(SymbolKind kind, unsigned char code)
{
    switch (kind) {
    case symbol_kmt_math_ext:
        return static_cast<wchar>((code - 0x1000) & 0xffff);
    case symbol_standard_symbols:
        return standard_symbols_code_points[code];
    case symbol_open_symbol:
        return open_symbol_code_points[code];
    case symbol_adobe:
    default:
        return static_cast<wchar>(code);
    }
}

// Only cs_symbol is translated: each unit is cut to its low byte and mapped for the selected symbol
// font; a 0 from the tables goes in as U+0000, there is no fallback.
QString Qt_Canvas::qstring(wchar const *text, long count) const
{
    if (text == nullptr || count <= 0)
        return QString();
    if (char_set_ != cs_symbol)
        return QString::fromUtf16(text, static_cast<qsizetype>(count));
    QString s;
    s.reserve(static_cast<qsizetype>(count));
    for (long i = 0; i < count; ++i) {
        unsigned char const code = static_cast<unsigned char>(text[i] & 0xff);
        s.append(QChar(static_cast<char16_t>(symbol_code_point(symbol_kind_, code))));
    }
    return s;
}

Gauge::CharSet Qt_Canvas::char_set() { return char_set_; }

long Qt_Canvas::text_angle() const { return angle_; }

// ---------------------------------------------------------------------------------------------------
// Measuring

Extent Qt_Canvas::text_extent(wchar const *text, long count)
{
    if (text == nullptr || count < 1)
        return Extent(0, 0);
    return Extent(measured(text, count).advance, font_em());
}

// The width of the whole string, so that kerning between its characters counts; the height is the
// font's, the same for every string.
Box Qt_Canvas::text_box(wchar const *text, long count)
{
    if (text == nullptr || count < 1)
        return Box::zero;
    return Box(measured(text, count).advance, font_ascent(), font_descent());
}

// The ink: the highest top and the lowest bottom row over the characters' bounding rectangles (the
// bottom row plus one, as a descent counts rows below the baseline), the left bearing of the first
// character and the right bearing of the last. The first character starts the maxima.
void Qt_Canvas::text_metrics(wchar const *text, long count, Box &box, long &left, long &right)
{
    box = Box::zero;
    left = 0;
    right = 0;
    if (text == nullptr || count < 1)
        return;
    QtFontRecord::Text &t = measured(text, count);
    if (!t.ink_known) {
        QString const s = qstring(text, count);
        QFontMetrics const &metrics = qmetrics();
        for (qsizetype i = 0; i < s.size(); ++i) {
            QRect const r = metrics.boundingRect(s.at(i));
            long const a = -r.top();
            long const d = r.bottom() + 1;
            if (i == 0 || a > t.ascent)
                t.ascent = a;
            if (i == 0 || d > t.descent)
                t.descent = d;
        }
        t.left = metrics.leftBearing(s.at(0));
        t.right = metrics.rightBearing(s.at(s.size() - 1));
        t.ink_known = true;
    }
    box = Box(t.advance, t.ascent, t.descent);
    left = t.left;
    right = t.right;
}

// The character is read by the selected set: a Windows-1252 byte, a symbol-font byte, or a UTF-16 unit.
void Qt_Canvas::char_bearing(wchar const *text, long &left, long &right) const
{
    left = 0;
    right = 0;
    if (text == nullptr)
        return;
    unsigned char const low = static_cast<unsigned char>(text[0] & 0xff);
    wchar code = 0;
    switch (char_set_) {
    case cs_ansi:
        code = cp1252_code_points[low];
        break;
    case cs_symbol:
        code = symbol_code_point(symbol_kind_, low);
        break;
    case cs_unicode:
        code = text[0];
        break;
    default:
        code = 0;
        break;
    }
    if (code == 0)
        return;
    QtFontRecord *r = record();
    auto [entry, added] = r->bearings.try_emplace(code);
    if (added) {
        QFontMetrics const &metrics = qmetrics();
        entry->second = {metrics.leftBearing(QChar(static_cast<char16_t>(code))),
                         metrics.rightBearing(QChar(static_cast<char16_t>(code)))};
    }
    left = entry->second.first;
    right = entry->second.second;
}

void Qt_Canvas::fill_metric_cache() const
{
    QtFontRecord *r = record();
    if (!r->line_known) {
        QFontMetrics const &metrics = qmetrics();
        r->ascent = metrics.ascent();
        r->descent = metrics.descent();
        r->leading = metrics.leading();
        r->line_known = true;
    }
    ascent_ = r->ascent;
    descent_ = r->descent;
    leading_ = r->leading;
}

// ex is the font's x-height; the capital height is how far the ink of "X" rises above the baseline.
void Qt_Canvas::query_ex() const
{
    QtFontRecord *r = record();
    if (!r->ex_known) {
        QFontMetrics const &metrics = qmetrics();
        r->ex = metrics.xHeight();
        r->X_height = -metrics.boundingRect(QChar(u'X')).top();
        r->ex_known = true;
    }
    ex_ = r->ex;
    X_height_ = r->X_height;
}

long Qt_Canvas::font_ascent() const
{
    if (ascent_ == empty_metric)
        fill_metric_cache();
    return ascent_;
}

long Qt_Canvas::font_descent() const
{
    font_ascent();
    return descent_;
}

long Qt_Canvas::font_leading() const
{
    font_ascent();
    return leading_;
}

long Qt_Canvas::font_em() const { return font_ascent() + descent_; }

long Qt_Canvas::font_ex() const
{
    if (ex_ == empty_metric)
        query_ex();
    return ex_;
}

long Qt_Canvas::font_X_height() const
{
    font_ex();
    return X_height_;
}

Extent Qt_Canvas::dpi() { return Extent(dpi_x_, dpi_y_); }

bool Qt_Canvas::printing() const { return printing_; }

Extent Qt_Canvas::twips_to_pixel(Extent const &twips) { return Gauge::twips_to_device(twips, dpi()); }

ExtentF Qt_Canvas::twips_to_pixel_f(ExtentF const &twips) { return Gauge::twips_to_device_f(twips, dpi()); }

// ---------------------------------------------------------------------------------------------------
// Translation. The drawing offset always equals the translation less the top left of the visible
// area, so each change of the translation moves the offset by the same amount.

void Qt_Canvas::translate(long &x, long &y) const
{
    x += translation_.x;
    y += translation_.y;
}

void Qt_Canvas::translate_f(double &x, double &y) const
{
    x += translation_f_.x;
    y += translation_f_.y;
}

// The double forms follow the integers exactly.
void Qt_Canvas::translation(Point p)
{
    draw_offset_ = draw_offset_ - translation_ + p;
    translation_ = p;
    translation_f_ = PointF(translation_);
    draw_offset_f_ = PointF(draw_offset_);
}

Point Qt_Canvas::translation() { return translation_; }

// The doubles stay exact; the integers are rounded from them, halves upward. The offset's integral
// part differs from the translation's by a whole number, so rounding each keeps them in step.
void Qt_Canvas::translation_f(PointF const &p)
{
    draw_offset_f_ = draw_offset_f_ - translation_f_ + p;
    translation_f_ = p;
    translation_ = translation_f_.to_point();
    draw_offset_ = draw_offset_f_.to_point();
}

PointF Qt_Canvas::translation_f() { return translation_f_; }

void Qt_Canvas::add_translation(Point p) { translation(translation_ + p); }

void Qt_Canvas::add_translation_f(PointF const &p) { translation_f(translation_f_ + p); }

// ---------------------------------------------------------------------------------------------------
// Attributes

QPen Qt_Canvas::qpen(Pen const &pen)
{
    return QPen(QBrush(qcolor(pen.color()), Qt::SolidPattern), static_cast<qreal>(std::max(pen.width(), 1L)),
                Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

// An exclusive-or pen strokes white with the source-xor-destination raster operation: every pixel
// under it turns to its inverse, so that the stroke shows on any background and a second stroke
// would take it away again.
void Qt_Canvas::apply_pen(Pen const &pen)
{
    if (pen.exclusive_or()) {
        painter_->setPen(qpen(Pen(pen.width(), Color::white, pen.style())));
        painter_->setCompositionMode(QPainter::RasterOp_SourceXorDestination);
    } else {
        painter_->setPen(qpen(pen));
        painter_->setCompositionMode(QPainter::CompositionMode_SourceOver);
    }
}

Qt_Canvas::PenInForce::PenInForce(Qt_Canvas &canvas, Pen const &pen)
    : canvas_(canvas), painter_pen_(canvas.painter_->pen()), mode_(canvas.painter_->compositionMode()),
      pen_(canvas.pen_)
{
    canvas_.apply_pen(pen);
    canvas_.pen_ = pen;
}

Qt_Canvas::PenInForce::~PenInForce()
{
    canvas_.pen_ = pen_;
    canvas_.painter_->setPen(painter_pen_);
    canvas_.painter_->setCompositionMode(mode_);
}

Qt_Canvas::FillInForce::FillInForce(QPainter *painter)
    : painter_(painter), pen_(painter->pen()), brush_(painter->brush())
{
    painter_->setPen(Qt::NoPen);
}

Qt_Canvas::FillInForce::FillInForce(QPainter *painter, QBrush const &brush) : FillInForce(painter)
{
    painter_->setBrush(brush);
}

Qt_Canvas::FillInForce::~FillInForce()
{
    painter_->setBrush(brush_);
    painter_->setPen(pen_);
}

Qt_Canvas::NoBrushInForce::NoBrushInForce(QPainter *painter) : painter_(painter), brush_(painter->brush())
{
    painter_->setBrush(Qt::NoBrush);
}

Qt_Canvas::NoBrushInForce::~NoBrushInForce()
{
    painter_->setBrush(brush_);
}

Pen Qt_Canvas::pen() const { return pen_; }

void Qt_Canvas::pen(Pen const &pen, bool restart)
{
    if (restart)
        reset_dash_phase();
    if (pen == pen_)
        return;
    apply_pen(pen);
    pen_ = pen;
}

Brush Qt_Canvas::brush() const { return brush_; }

void Qt_Canvas::brush(Brush const &brush)
{
    if (brush == brush_)
        return;
    painter_->setBrush(qbrush(brush));
    brush_ = brush;
}

void Qt_Canvas::text_color(Color color)
{
    if (color == text_color_)
        return;
    text_pen_.setColor(qcolor(color));
    text_color_ = color;
}

void Qt_Canvas::background(Color color)
{
    if (color == background_)
        return;
    painter_->setBackground(QBrush(qcolor(color), Qt::SolidPattern));
    background_ = color;
}

bool Qt_Canvas::antialias() const { return painter_->testRenderHint(QPainter::Antialiasing); }

void Qt_Canvas::antialias(bool on)
{
    if (!inherit_aliasing_)
        painter_->setRenderHint(QPainter::Antialiasing, on);
}

bool Qt_Canvas::antialias_text() const { return painter_->testRenderHint(QPainter::TextAntialiasing); }

void Qt_Canvas::antialias_text(bool on) { painter_->setRenderHint(QPainter::TextAntialiasing, on); }

bool Qt_Canvas::short_coordinates() const { return false; }

double Qt_Canvas::dash_len() { return Canvas::dash_length(pen_.width(), dpi()); }

long Qt_Canvas::dot_len() const { return round_to_long(static_cast<double>(pen_.width())); }

// ---------------------------------------------------------------------------------------------------
// Lines

// The integral forms hand Qt its int types, which it rasterises otherwise than the floating ones; the
// same overload of each painter call is reached by converting with the offset of the same form.
QPoint Qt_Canvas::device(Point const &p) const
{
    return QPoint(static_cast<int>(p.x + draw_offset_.x), static_cast<int>(p.y + draw_offset_.y));
}

QPointF Qt_Canvas::device(PointF const &p) const { return QPointF(p.x + draw_offset_f_.x, p.y + draw_offset_f_.y); }

// The right and bottom edges of a Rect lie just outside it, so Qt's last pixel column is
// left + width - 1.
QRect Qt_Canvas::device(Rect const &r) const
{
    return QRect(QPoint(r.left() + draw_offset_.x, r.top() + draw_offset_.y),
                 QPoint(r.left() + r.width() - 1 + draw_offset_.x, r.top() + r.height() - 1 + draw_offset_.y));
}

QRectF Qt_Canvas::device(RectF const &r) const
{
    return QRectF(r.left() + draw_offset_f_.x, r.top() + draw_offset_f_.y, r.width(), r.height());
}

QPolygon Qt_Canvas::device(Point const *points, std::size_t count, bool closed) const
{
    return qpolygon<QPolygon>(points, count, draw_offset_, closed);
}

QPolygonF Qt_Canvas::device(PointF const *points, std::size_t count, bool closed) const
{
    return qpolygon<QPolygonF>(points, count, draw_offset_f_, closed);
}

// A new canvas never hands its starting brush (solid black) to the painter, so a black brush is always
// built anew; any other brush is the painter's own.
QBrush Qt_Canvas::current_qbrush() const { return is_black(brush_) ? qbrush(brush_) : painter_->brush(); }

// Dashes are cut here (tavi/canvas/dash_cutter.h), so that they run on from one line to the next as
// one path.
template <class Pt>
void Qt_Canvas::cut_dashes(Pt const &p, Pt const &q)
{
    if (pen_.style() == Pen::solid) {
        painter_->drawLine(device(p), device(q));
        return;
    }
    double const D = dash_len();
    double const L = pen_.style() == Pen::dashed ? D : static_cast<double>(dot_len());
    dash_phase(Tavi::cut_dashes(p, q, D, L, dash_phase(),
                                [this](Pt const &a, Pt const &b) { painter_->drawLine(device(a), device(b)); }));
}

void Qt_Canvas::line(Point p, Point q) { cut_dashes(p, q); }

void Qt_Canvas::line_f(PointF p, PointF q) { cut_dashes(p, q); }

void Qt_Canvas::line(Point from, Point to, Pen const &pen, bool restart)
{
    if (restart)
        reset_dash_phase();
    PenInForce const in_force(*this, pen);
    line(from, to);
}

void Qt_Canvas::line_f(PointF from, PointF to, Pen const &pen, bool restart)
{
    if (restart)
        reset_dash_phase();
    PenInForce const in_force(*this, pen);
    line_f(from, to);
}

// A patterned path is a chain of lines that dash as one; a solid one is one polyline, drawn without
// the brush so that it is never filled.
template <class Pt>
void Qt_Canvas::draw_path(Pt const *points, std::size_t count, bool closed)
{
    if (pen_.style() != Pen::solid) {
        for (std::size_t i = 0; i + 1 < count; ++i)
            stroke(points[i], points[i + 1]);
        if (closed)
            stroke(points[count - 1], points[0]);
        return;
    }
    auto const polygon = device(points, count, closed);
    NoBrushInForce const no_brush(painter_);
    painter_->drawPolyline(polygon);
}

void Qt_Canvas::poly_line(Point const *points, std::size_t count, bool closed)
{
    if (points == nullptr || count < 2)
        return;
    reset_dash_phase();
    draw_path(points, count, closed);
}

void Qt_Canvas::poly_line_f(PointF const *points, std::size_t count, bool closed)
{
    if (points == nullptr || count < 2)
        return;
    reset_dash_phase();
    draw_path(points, count, closed);
}

void Qt_Canvas::poly_line(Point const *points, std::size_t count, Pen const &pen, bool closed)
{
    PenInForce const in_force(*this, pen);
    poly_line(points, count, closed);
}

void Qt_Canvas::poly_line_f(PointF const *points, std::size_t count, Pen const &pen, bool closed)
{
    PenInForce const in_force(*this, pen);
    poly_line_f(points, count, closed);
}

// ---------------------------------------------------------------------------------------------------
// Rectangles, ellipses, polygons

// A patterned frame is the closed path round the rectangle, clockwise from the top left, dashing as
// one; a solid frame is Qt's rectangle outline.
template <class R>
void Qt_Canvas::draw_frame(R const &r)
{
    reset_dash_phase();
    if (pen_.style() != Pen::solid) {
        using Pt = decltype(r.top_left());
        Pt const corners[] = {Pt(r.left(), r.top()), Pt(r.right(), r.top()), Pt(r.right(), r.bottom()),
                              Pt(r.left(), r.bottom())};
        draw_path(corners, 4, true);
        return;
    }
    NoBrushInForce const no_brush(painter_);
    painter_->drawRect(device(r));
}

void Qt_Canvas::frame_rect(Rect const &r) { draw_frame(r); }

void Qt_Canvas::frame_rect_f(RectF const &r) { draw_frame(r); }

void Qt_Canvas::frame_rect(Rect const &r, Pen const &pen)
{
    PenInForce const in_force(*this, pen);
    frame_rect(r);
}

void Qt_Canvas::frame_rect_f(RectF const &r, Pen const &pen)
{
    PenInForce const in_force(*this, pen);
    frame_rect_f(r);
}

void Qt_Canvas::fill_rect(Rect const &r) { painter_->fillRect(device(r), current_qbrush()); }

void Qt_Canvas::fill_rect(Rect const &r, Brush const &brush) { painter_->fillRect(device(r), qbrush(brush)); }

void Qt_Canvas::fill_rect_f(RectF const &r) { painter_->fillRect(device(r), current_qbrush()); }

void Qt_Canvas::fill_rect_f(RectF const &r, Brush const &brush) { painter_->fillRect(device(r), qbrush(brush)); }

// An ellipse is never dashed, whatever the pen's style.
template <class R>
void Qt_Canvas::draw_ellipse_frame(R const &r)
{
    reset_dash_phase();
    NoBrushInForce const no_brush(painter_);
    painter_->drawEllipse(device(r));
}

template <class R>
void Qt_Canvas::paint_ellipse(R const &r, QBrush const &brush)
{
    FillInForce const fill(painter_, brush);
    painter_->drawEllipse(device(r));
}

void Qt_Canvas::frame_ellipse(Rect const &r) { draw_ellipse_frame(r); }

void Qt_Canvas::frame_ellipse_f(RectF const &r) { draw_ellipse_frame(r); }

void Qt_Canvas::frame_ellipse(Rect const &r, Pen const &pen)
{
    PenInForce const in_force(*this, pen);
    frame_ellipse(r);
}

void Qt_Canvas::frame_ellipse_f(RectF const &r, Pen const &pen)
{
    PenInForce const in_force(*this, pen);
    frame_ellipse_f(r);
}

void Qt_Canvas::fill_ellipse(Rect const &r) { paint_ellipse(r, current_qbrush()); }

void Qt_Canvas::fill_ellipse(Rect const &r, Brush const &brush) { paint_ellipse(r, qbrush(brush)); }

void Qt_Canvas::fill_ellipse_f(RectF const &r) { paint_ellipse(r, current_qbrush()); }

void Qt_Canvas::fill_ellipse_f(RectF const &r, Brush const &brush) { paint_ellipse(r, qbrush(brush)); }

template <class Pt>
void Qt_Canvas::paint_polygon(Pt const *points, std::size_t count, QBrush const &brush, bool winding)
{
    if (points == nullptr || count < 2)
        return;
    FillInForce const fill(painter_, brush);
    painter_->drawPolygon(device(points, count, false), winding ? Qt::WindingFill : Qt::OddEvenFill);
}

void Qt_Canvas::fill_polygon(Point const *points, std::size_t count, bool winding)
{
    paint_polygon(points, count, current_qbrush(), winding);
}

void Qt_Canvas::fill_polygon(Point const *points, std::size_t count, Brush const &brush, bool winding)
{
    paint_polygon(points, count, qbrush(brush), winding);
}

void Qt_Canvas::fill_polygon_f(PointF const *points, std::size_t count, bool winding)
{
    paint_polygon(points, count, current_qbrush(), winding);
}

void Qt_Canvas::fill_polygon_f(PointF const *points, std::size_t count, Brush const &brush, bool winding)
{
    paint_polygon(points, count, qbrush(brush), winding);
}

void Qt_Canvas::shadow(Rect const &r) { hatch(painter_, device(r)); }

void Qt_Canvas::shadow_f(RectF const &r) { hatch(painter_, device(r)); }

// The damage is in device pixels already: no offset is added.
void Qt_Canvas::erase()
{
    painter_->eraseRect(QRectF(static_cast<qreal>(damage_.left()), static_cast<qreal>(damage_.top()),
                               static_cast<qreal>(damage_.width()), static_cast<qreal>(damage_.height())));
}

void Qt_Canvas::erase(Color color)
{
    painter_->fillRect(QRectF(static_cast<qreal>(damage_.left()), static_cast<qreal>(damage_.top()),
                              static_cast<qreal>(damage_.width()), static_cast<qreal>(damage_.height())),
                       QBrush(qcolor(color), Qt::SolidPattern));
}

// ---------------------------------------------------------------------------------------------------
// Text

// A turned run is drawn at the origin of a rotated painter; the angle counts counter-clockwise, and y
// grows downward, hence the minus. An upright run of the integral form of 30000 pixels or more is cut
// into width / 30000 + 1 parts of equal length in characters, each drawn where the ones before it end;
// the floating form draws it whole.
void Qt_Canvas::paint_text(wchar const *chars, long count, QPointF const &at, bool in_parts)
{
    if (chars == nullptr || count < 1)
        return;
    QString const s = qstring(chars, count);
    apply_painter_font();
    QPen const saved = painter_->pen();
    painter_->setPen(text_pen_);
    if (angle_ != 0) {
        QTransform const matrix = painter_->worldTransform();
        painter_->translate(at);
        painter_->rotate(static_cast<qreal>(-angle_));
        painter_->drawText(QPointF(0.0, 0.0), s);
        painter_->setWorldTransform(matrix);
    } else if (!in_parts) {
        painter_->drawText(at, s);
    } else {
        QFontMetrics const &metrics = qmetrics();
        long const width = measured(chars, count).advance;
        if (width < longest_text_run) {
            painter_->drawText(at, s);
        } else {
            qsizetype const parts = width / longest_text_run + 1;
            qsizetype const part_length = std::max<qsizetype>(1, s.size() / parts);
            QPointF part_at = at;
            for (qsizetype pos = 0; pos < s.size();) {
                qsizetype n = std::min(part_length, s.size() - pos);
                // Never part a surrogate pair.
                if (pos + n < s.size() && s.at(pos + n - 1).isHighSurrogate())
                    ++n;
                QString const part = s.mid(pos, n);
                painter_->drawText(part_at, part);
                part_at.rx() += metrics.horizontalAdvance(part);
                pos += n;
            }
        }
    }
    painter_->setPen(saved);
}

void Qt_Canvas::text(wchar const *chars, long count, Point p) { paint_text(chars, count, device(p), true); }

void Qt_Canvas::text_f(wchar const *chars, long count, PointF p) { paint_text(chars, count, device(p), false); }

// ---------------------------------------------------------------------------------------------------
// Damage and clip

bool Qt_Canvas::damaged(Rect const &r) const
{
    Rect moved = r;
    moved += draw_offset_;
    return moved.intersects(damage_);
}

// An extension holds the translation already: it is taken off before the offset goes on.
bool Qt_Canvas::damaged(Extension const &e) const
{
    Rect moved = e.rect();
    moved -= translation_;
    moved += draw_offset_;
    return moved.intersects(damage_);
}

bool Qt_Canvas::really_damaged(Rect const &r) const { return damaged(r); }

bool Qt_Canvas::really_damaged(Extension const &e) const { return damaged(e); }

bool Qt_Canvas::any_real_damage() const { return damage_.width() > 0 && damage_.height() > 0; }

bool Qt_Canvas::clip_rect(Rect *r)
{
    if (clipping_ && r != nullptr)
        *r = clip_;
    return clipping_;
}

// The clip replaces any earlier one; its bottom and right edges lie outside it.
void Qt_Canvas::clip_rect(Rect const &r)
{
    clip_ = r;
    clipping_ = true;
    QRect const q(QPoint(static_cast<int>(r.left() + draw_offset_.x), static_cast<int>(r.top() + draw_offset_.y)),
                  QPoint(static_cast<int>(r.right() + draw_offset_.x - 1),
                         static_cast<int>(r.bottom() + draw_offset_.y - 1)));
    painter_->setClipRect(q, Qt::ReplaceClip);
}

void Qt_Canvas::no_clip_rect()
{
    clipping_ = false;
    painter_->setClipping(false);
}

}  // namespace Tavi
