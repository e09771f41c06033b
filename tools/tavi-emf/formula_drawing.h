// Drawing one formula of a FormulaScene on the Win_* canvases: the layout on any canvas, and on
// Windows a bitmap (Win_Bmp_Canvas into 32-bit pixels), an enhanced metafile (Win_Metafile_Canvas)
// and the metafile played back into pixels, for tavi-emf and for the tests that compare them.
#pragma once

#include "tavi/canvas/canvas.h"
#include "tavi/editing/formulascene.h"
#include "tavi/geometry/box.h"

#include <cstdint>
#include <string>
#include <vector>

namespace TaviEmf {

// The scene with the setup file read; false when the setup is refused.
bool load_setup(Tavi::FormulaScene &scene, std::string const &setup_path);

// Lays the formula out on the canvas's gauge and answers its box (in the canvas's units).
Tavi::Box measure(Tavi::FormulaScene &scene, Tavi::Canvas &canvas);
// Lays it out again and draws it with the left end of its baseline at `origin`.
void draw(Tavi::FormulaScene &scene, Tavi::Canvas &canvas, Tavi::Point origin);

// 32-bit pixels, 0x00rrggbb, top row first.
struct Pixels
{
    int width = 0;
    int height = 0;
    std::vector<std::uint32_t> data;

    std::uint32_t at(int x, int y) const { return data[static_cast<std::size_t>(y) * width + x]; }
    // Darker than mid grey in any channel.
    bool ink(int x, int y) const;
};

#ifdef _WIN32
// The formula drawn at `dpi` on white, as for print (no highlight of a selected node), with `margin` pixels round its box; the box in pixels.
Pixels draw_bitmap(Tavi::FormulaScene &scene, int dpi, int margin, Tavi::Box &box);
// Writes the formula as an enhanced metafile whose frame is its box; false when the file cannot be
// made. `box` is the formula's box in the metafile's units (twips).
bool write_metafile(Tavi::FormulaScene &scene, std::wstring const &path, Tavi::Box &box);
// The metafile played back (PlayEnhMetaFile) into white pixels of this size, its frame filling the
// rectangle that leaves `margin` pixels on each side.
Pixels play_metafile(std::wstring const &path, int width, int height, int margin);
// A 24-bit BMP file of the pixels.
bool write_bmp(Pixels const &pixels, std::wstring const &path);
#endif

}  // namespace TaviEmf
