// PaintRecorder: the recording paint engine and its device.
#include "paint_recorder.h"

#include <QLineF>
#include <QPixmap>
#include <QTextItem>

namespace TaviTest {

// Claiming every feature keeps QPainter from emulating anything: each primitive reaches the engine
// as the canvas asked for it.
PaintRecordEngine::PaintRecordEngine() : QPaintEngine(QPaintEngine::AllFeatures) {}

bool PaintRecordEngine::begin(QPaintDevice *) { return true; }

bool PaintRecordEngine::end() { return true; }

void PaintRecordEngine::updateState(QPaintEngineState const &state)
{
    if (state.state() & QPaintEngine::DirtyTransform)
        transform_ = state.transform();
}

PaintOp PaintRecordEngine::op(PaintOp::Kind kind) const
{
    PaintOp o;
    o.kind = kind;
    o.transform = transform_;
    return o;
}

void PaintRecordEngine::drawLines(QLineF const *lines, int count)
{
    for (int i = 0; i < count; ++i) {
        PaintOp o = op(PaintOp::line);
        o.a = lines[i].p1();
        o.b = lines[i].p2();
        ops.push_back(o);
    }
}

void PaintRecordEngine::drawRects(QRectF const *rects, int count)
{
    for (int i = 0; i < count; ++i) {
        PaintOp o = op(PaintOp::rect);
        o.rectangle = rects[i];
        ops.push_back(o);
    }
}

void PaintRecordEngine::drawTextItem(QPointF const &p, QTextItem const &item)
{
    PaintOp o = op(PaintOp::text);
    o.a = p;
    o.run = item.text();
    o.font = item.font();
    ops.push_back(o);
}

void PaintRecordEngine::drawPixmap(QRectF const &, QPixmap const &, QRectF const &) {}

QPaintEngine::Type PaintRecordEngine::type() const { return QPaintEngine::User; }

PaintRecorder::PaintRecorder(int width, int height, int dpi) : width_(width), height_(height), dpi_(dpi) {}

PaintRecorder::~PaintRecorder() = default;

QPaintEngine *PaintRecorder::paintEngine() const { return &engine_; }

std::vector<PaintOp> PaintRecorder::ops_of(PaintOp::Kind kind) const
{
    std::vector<PaintOp> found;
    for (PaintOp const &o : engine_.ops) {
        if (o.kind == kind)
            found.push_back(o);
    }
    return found;
}

int PaintRecorder::metric(PaintDeviceMetric m) const
{
    switch (m) {
    case PdmWidth:
        return width_;
    case PdmHeight:
        return height_;
    case PdmWidthMM:
        return width_ * 254 / (dpi_ * 10);
    case PdmHeightMM:
        return height_ * 254 / (dpi_ * 10);
    case PdmNumColors:
        return 0x7fffffff;
    case PdmDepth:
        return 32;
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY:
        return dpi_;
    case PdmDevicePixelRatio:
        return 1;
    case PdmDevicePixelRatioScaled:
        return static_cast<int>(QPaintDevice::devicePixelRatioFScale());
    default:
        return QPaintDevice::metric(m);
    }
}

}  // namespace TaviTest
