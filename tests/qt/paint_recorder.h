// PaintRecorder: a paint device whose engine writes down the lines, rectangles and text runs a QPainter
// hands it, with the transformation in force, so that tests can see exactly what a canvas drew.
#pragma once

#include <QPaintDevice>
#include <QPaintEngine>
#include <QPointF>
#include <QRectF>
#include <QFont>
#include <QString>
#include <QTransform>

#include <vector>

namespace TaviTest {

struct PaintOp
{
    enum Kind { line, rect, text };

    Kind kind;
    // line: from and to; rect and ellipse: the rectangle; text: the baseline origin.
    QPointF a;
    QPointF b;
    QRectF rectangle;
    QString run;
    QFont font;  // text: the font it was drawn in
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
    // Ellipses, polygons and paths are not recorded.
    void drawEllipse(QRectF const &) override {}
    void drawPolygon(QPointF const *, int, PolygonDrawMode) override {}
    void drawPath(QPainterPath const &) override {}
    void drawTextItem(QPointF const &p, QTextItem const &item) override;
    void drawPixmap(QRectF const &r, QPixmap const &pm, QRectF const &sr) override;
    Type type() const override;

    std::vector<PaintOp> ops;

private:
    PaintOp op(PaintOp::Kind kind) const;

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
