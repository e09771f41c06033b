// PaintRecorder: a paint device whose engine writes down every primitive a QPainter hands it, with the
// pen, brush and transformation in force, so that tests can see exactly which lines, rectangles and
// text runs a canvas drew.
#pragma once

#include <QBrush>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPen>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QTransform>

#include <vector>

namespace TaviTest {

struct PaintOp
{
    enum Kind { line, rect, ellipse, polygon, polyline, text, path };

    Kind kind;
    // line: from and to; rect and ellipse: the rectangle; text: the baseline origin.
    QPointF a;
    QPointF b;
    QRectF rectangle;
    std::vector<QPointF> points;
    QString run;
    QPen pen;
    QBrush brush;
    QTransform transform;
};

class PaintRecordEngine : public QPaintEngine
{
public:
    PaintRecordEngine();

    bool begin(QPaintDevice *device) override;
    bool end() override;
    void updateState(QPaintEngineState const &state) override;
    // The integral forms reach these through QPaintEngine's own conversions.
    using QPaintEngine::drawEllipse;
    using QPaintEngine::drawLines;
    using QPaintEngine::drawPolygon;
    using QPaintEngine::drawRects;
    void drawLines(QLineF const *lines, int count) override;
    void drawRects(QRectF const *rects, int count) override;
    void drawEllipse(QRectF const &r) override;
    void drawPolygon(QPointF const *points, int count, PolygonDrawMode mode) override;
    void drawPath(QPainterPath const &path) override;
    void drawTextItem(QPointF const &p, QTextItem const &item) override;
    void drawPixmap(QRectF const &r, QPixmap const &pm, QRectF const &sr) override;
    Type type() const override;

    std::vector<PaintOp> ops;

private:
    PaintOp op(PaintOp::Kind kind) const;

    QPen pen_;
    QBrush brush_;
    QTransform transform_;
};

// A device of the given size in pixels and resolution, painting into the recorder.
class PaintRecorder : public QPaintDevice
{
public:
    explicit PaintRecorder(int width = 400, int height = 300, int dpi = 96);
    ~PaintRecorder() override;

    QPaintEngine *paintEngine() const override;
    std::vector<PaintOp> const &ops() const { return engine_.ops; }
    void clear() { engine_.ops.clear(); }
    // The recorded operations of one kind, in order.
    std::vector<PaintOp> ops_of(PaintOp::Kind kind) const;

protected:
    int metric(PaintDeviceMetric m) const override;

private:
    mutable PaintRecordEngine engine_;
    int width_;
    int height_;
    int dpi_;
};

}  // namespace TaviTest
