// Win_* canvases beside Qt_Canvas: the same dashes and dots from the same chain of lines.
#include "tests/win/win_fixture.h"

#include "tavi/qt/qt_canvas.h"
#include "tests/qt/paint_recorder.h"
#include "win/win_draw_canvas.h"

#include <QPainter>

#include <cstdio>

using namespace Tavi;
using Strings = std::vector<std::string>;

namespace TaviTest {

namespace {

Extension const area(0, 0, 300, 400);

// The segments a chain of lines leaves, as "x1,y1-x2,y2".
Strings segments_of(Strings const &calls)
{
    Strings found;
    int x = 0;
    int y = 0;
    for (std::string const &call : calls) {
        int a = 0;
        int b = 0;
        if (std::sscanf(call.c_str(), "MoveToEx(dc%*d,%d,%d)", &a, &b) == 2) {
            x = a;
            y = b;
        } else if (std::sscanf(call.c_str(), "LineTo(dc%*d,%d,%d)", &a, &b) == 2) {
            found.push_back(std::to_string(x) + "," + std::to_string(y) + "-" + std::to_string(a) + "," +
                            std::to_string(b));
        }
    }
    return found;
}

}  // namespace

// The same chain of lines, pens and resolution on Qt_Canvas and on a GDI context: the same pieces.
TEST_F(WinCanvasTest, DashesAndDotsAreCutIntoTheSameSegmentsAsOnQtCanvas)
{
    struct Row
    {
        Pen pen;
        int dpi;
    };
    Row const rows[] = {
        {Pen(1, Color::black, Pen::dashed), 96},  {Pen(0, Color::black, Pen::dotted), 96},
        {Pen(3, Color::black, Pen::dotted), 96},  {Pen(10, Color::black, Pen::dashed), 96},
        {Pen(1, Color::black, Pen::dashed), 300}, {Pen(2, Color::black, Pen::dotted), 300},
    };
    Point const chain[] = {Point(3, 4), Point(93, 4), Point(93, 61), Point(10, 100), Point(10, 100), Point(11, 100)};
    for (Row const &row : rows) {
        SCOPED_TRACE(std::to_string(row.pen.width()) + " at " + std::to_string(row.dpi));
        fresh();
        PaintRecorder device(400, 300, row.dpi);
        Strings qt;
        {
            QPainter painter(&device);
            Qt_Canvas canvas(&painter, area);
            canvas.pen(row.pen, true);
            for (std::size_t i = 0; i + 1 < std::size(chain); ++i)
                canvas.line(chain[i], chain[i + 1]);
            painter.end();
        }
        for (PaintOp const &o : device.ops_of(PaintOp::line))
            qt.push_back(std::to_string(static_cast<int>(o.a.x())) + "," + std::to_string(static_cast<int>(o.a.y())) +
                         "-" + std::to_string(static_cast<int>(o.b.x())) + "," +
                         std::to_string(static_cast<int>(o.b.y())));
        Gdi::HDC dc = context(row.dpi, row.dpi);
        Win_Draw_Canvas canvas(dc, 0, 0, false, area);
        canvas.pen(row.pen, true);
        calls();
        for (std::size_t i = 0; i + 1 < std::size(chain); ++i)
            canvas.line(chain[i], chain[i + 1]);
        Strings const gdi_segments = segments_of(calls());
        EXPECT_GT(gdi_segments.size(), 4u);
        EXPECT_EQ(gdi_segments, qt);
    }
}

}  // namespace TaviTest
