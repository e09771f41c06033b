// Win_* canvases: what each form does to its contexts when it starts and when it ends, its
// resolution, and its buffer.
#include "tests/win/win_fixture.h"

#include "win/win_bmp_canvas.h"
#include "win/win_client_canvas.h"
#include "win/win_draw_canvas.h"
#include "win/win_metafile_canvas.h"

using namespace Tavi;
using Strings = std::vector<std::string>;

namespace TaviTest {

TEST_F(WinCanvasTest, SetUpSelectsSolidPenBrushAndFontAndRestorePutsBackWhatItFound)
{
    Gdi::HDC dc = context();
    {
        Win_Draw_Canvas canvas(dc, 5, 7, false, Extension(2, 3, 50, 80));
        EXPECT_EQ(calls(), (Strings{
                               "SetMapMode(dc1,1)", "SetViewportOrgEx(dc1,0,0)", "SetWindowOrgEx(dc1,0,0)",
                               "SetBrushOrgEx(dc1,2,5)",  // (5, 7) less the extension's corner
                               "CreatePen(0,0,000000)=pen1", "SelectObject(dc1,pen1)",
                               "CreateSolidBrush(000000)=brush1", "SelectObject(dc1,brush1)",
                               "GetDeviceCaps(dc1,90)", "GetDeviceCaps(dc1,88)",
                               "CreateFontIndirectW(Arial,-16,0,400,0,1)=font1", "SelectObject(dc1,font1)",
                               "GetTextMetricsA(dc1)", "SetBkMode(dc1,1)", "SetBkColor(dc1,ffffff)",
                               "SetTextColor(dc1,000000)", "SetTextAlign(dc1,24)", "SetTextCharacterExtra(dc1,0)",
                           }));
        EXPECT_EQ(canvas.font_ascent(), RecordingGdi::ascent(16));
    }
    EXPECT_EQ(calls(), (Strings{"SelectObject(dc1,defpen)", "SelectObject(dc1,defbrush)", "DeleteObject(pen1)",
                                "DeleteObject(brush1)", "SelectObject(dc1,deffont)"}));
    EXPECT_EQ(gdi().live_objects(), 2u);  // the context and the cached font
    EXPECT_EQ(Win_FontCache::uses(0), 0);
}

TEST_F(WinCanvasTest, APaintPassIsBufferedOnTheScreenAndDrawnDirectlyWhenPrintingOrWithoutABuffer)
{
    struct Row
    {
        bool printing;
        char const *failing;
        bool buffered;
        Strings expected;
    };
    Row const rows[] = {
        {false, "", true,
         {"CreateCompatibleDC(dc1)=dc2", "CreateCompatibleBitmap(dc1,100,50)=bitmap1",
          "SetBrushOrgEx(dc2,-5,-13)", "FillRect(dc2,0,0,100,50,brush2)",
          "BitBlt(dc1,10,20,100,50,dc2,0,0,cc0020)", "DeleteObject(bitmap1)", "DeleteDC(dc2)"}},
        {false, "CreateCompatibleBitmap", false,
         {"CreateCompatibleDC(dc1)=dc2", "CreateCompatibleBitmap(dc1,100,50)=null", "DeleteDC(dc2)",
          "SetBrushOrgEx(dc1,5,7)", "FillRect(dc1,10,20,110,70,brush2)"}},
        {true, "", false, {"SetBrushOrgEx(dc1,5,7)", "FillRect(dc1,10,20,110,70,brush2)"}},
    };
    for (Row const &row : rows) {
        SCOPED_TRACE(row.failing);
        fresh();
        Gdi::HDC dc = context();
        gdi().fail(row.failing);
        Gdi::PAINTSTRUCT paint{dc, false, {10, 20, 110, 70}};
        {
            Win_Draw_Canvas canvas(&paint, 5, 7, row.printing, Extension(0, 0, 50, 80));
            EXPECT_EQ(canvas.buffered(), row.buffered);
            canvas.erase();  // the damage is the painted area, where the drawing lands
        }
        EXPECT_EQ(calls({"CreateCompatible", "SetBrushOrgEx", "FillRect", "BitBlt", "DeleteObject(bitmap", "DeleteDC"}),
                  row.expected);
    }
}

TEST_F(WinCanvasTest, AMetafileIsWrittenInTwipsOnBothContexts)
{
    Gdi::HDC file = context();
    Gdi::HDC reference = context();
    Win_Metafile_Canvas canvas(file, reference, 0, 0, true, Extension(0, 0, 300, 600));
    EXPECT_EQ(calls({"SetMapMode", "SetWindowExtEx", "SetViewportExtEx", "CreateFontIndirectW"}),
              (Strings{"SetMapMode(dc1,8)", "SetWindowExtEx(dc1,600,300)", "SetViewportExtEx(dc1,600,300)",
                       "SetMapMode(dc2,8)", "SetWindowExtEx(dc2,600,300)", "SetViewportExtEx(dc2,600,300)",
                       "CreateFontIndirectW(Arial,-240,0,400,0,1)=font1"}));
    EXPECT_EQ(canvas.dpi(), Extent(1440, 1440));
    EXPECT_EQ(canvas.twips_to_pixel(Extent(240, 30)), Extent(240, 30));
    EXPECT_EQ(canvas.dash_len(), 120.0);
}

TEST_F(WinCanvasTest, ABitmapCanvasTakesTheScreensResolutionOrItsOwn)
{
    struct Row
    {
        int screen_x, screen_y;
        std::size_t dpi;
        Extent expected;
    };
    Row const rows[] = {
        {96, 96, 0, Extent(96, 96)},
        {96, 96, 300, Extent(300, 300)},
        {96, 120, 0, Extent(96, 120)},
        {96, 120, 300, Extent(300, 375)},  // the screen's proportion kept
    };
    for (Row const &row : rows) {
        gdi().resolution(row.screen_x, row.screen_y);
        Win_Bmp_Canvas canvas(false, Extension(0, 0, 40, 60), row.dpi);
        EXPECT_TRUE(canvas.valid());
        EXPECT_EQ(canvas.dpi(), row.expected);
        // The font is made for the bitmap's resolution: 12 points at 375 dpi are 63 pixels.
        EXPECT_EQ(canvas.font_em(), Gdi::MulDiv(240, static_cast<int>(row.expected.height()), 1440));
    }
}

TEST_F(WinCanvasTest, ABitmapCanvasDeletesOnlyTheBitmapItMade)
{
    Gdi::HBITMAP own = gdi().CreateCompatibleBitmap(nullptr, 10, 10);
    { Win_Bmp_Canvas given(false, Extension(0, 0, 40, 60), 0, own); }
    { Win_Bmp_Canvas made(false, Extension(0, 0, 40, 60), 0); }
    EXPECT_EQ(calls({"CreateCompatibleBitmap", "DeleteObject(bitmap"}),
              (Strings{"CreateCompatibleBitmap(null,10,10)=bitmap1", "CreateCompatibleBitmap(dc3,60,40)=bitmap2",
                       "DeleteObject(bitmap2)"}));
}

TEST_F(WinCanvasTest, AClientCanvasGivesItsContextBackAndAFailedGetDCLeavesNullContexts)
{
    auto *window = reinterpret_cast<Gdi::HWND>(42);
    {
        Win_Client_Canvas canvas(window, Extension(10, 20, 50, 80));
        EXPECT_EQ(canvas.client_to_point(0, 0), Point(20, 10));
        canvas.change_viewport(Extension(0, 0, 50, 80));
        EXPECT_EQ(canvas.client_to_point(0, 0), Point(0, 0));
    }
    Strings const made = calls({"GetDC", "ReleaseDC"});
    EXPECT_EQ(made, (Strings{"GetDC(42)=dc1", "ReleaseDC(42,dc1)"}));
    gdi().fail("GetDC");
    {
        Win_Client_Canvas canvas(window, Extension(0, 0, 50, 80));
        EXPECT_EQ(canvas.draw_dc(), nullptr);
        canvas.text(u"x", 1, Point(0, 0));
    }
    EXPECT_EQ(calls({"GetDC", "ReleaseDC", "Select"}), (Strings{"GetDC(42)=null"}));
}

}  // namespace TaviTest
