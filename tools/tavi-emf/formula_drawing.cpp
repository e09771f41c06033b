// Drawing one formula on the Win_* canvases, and the pixels of bitmaps and played-back metafiles.
#include "tools/tavi-emf/formula_drawing.h"

#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/glyph/glyphcontext.h"
#include "tavi/kxt/stream.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/templates/templatetable.h"

#include <fstream>
#include <memory>
#include <sstream>

#ifdef _WIN32
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include "win/win_bmp_canvas.h"
#include "win/win_metafile_canvas.h"
#endif

namespace TaviEmf {

using namespace Tavi;

bool load_setup(FormulaScene &scene, std::string const &setup_path)
{
    std::ifstream in(setup_path, std::ios::binary);
    if (!in)
        return false;
    std::ostringstream text;
    text << in.rdbuf();
    std::string const setup = text.str();
    Kxt::KTmemoryStream stream(setup.data(), setup.size());
    return scene.template_table()->init(stream);
}

namespace {

// One request, allocate and (when asked) draw pass over the formula, from a fresh layout: the
// layouts keep their trees in the units of the gauge that made them.
Box lay_out(FormulaScene &scene, Canvas &canvas, Point const *origin)
{
    scene.formula()->invalidate_allocation();
    scene.formula()->forget_layout();
    GlyphContext context(&scene, nullptr, &canvas, scene.glyph());
    // The root keeps the tree it answers.
    BoxTree const *tree = scene.glyph()->request(context, BoxTree::unconstrained);
    if (tree == nullptr)
        return Box::zero;
    Box const box(tree->width(), tree->ascent(), tree->descent());
    if (origin != nullptr) {
        AllocationTree const allocation(*origin, tree);
        std::unique_ptr<AllocationTree> placed(scene.glyph()->allocate(0, context, allocation));
        scene.glyph()->draw(context, allocation);
    }
    return box;
}

}  // namespace

Box measure(FormulaScene &scene, Canvas &canvas) { return lay_out(scene, canvas, nullptr); }

void draw(FormulaScene &scene, Canvas &canvas, Point origin) { lay_out(scene, canvas, &origin); }

bool Pixels::ink(int x, int y) const
{
    std::uint32_t const p = at(x, y);
    return ((p >> 16) & 0xFF) < 128 || ((p >> 8) & 0xFF) < 128 || (p & 0xFF) < 128;
}

#ifdef _WIN32

namespace {

// A white 32-bit bitmap whose pixels the caller can read, top row first.
HBITMAP make_dib(int width, int height, std::uint32_t *&bits)
{
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    void *memory = nullptr;
    HBITMAP bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &memory, nullptr, 0);
    bits = static_cast<std::uint32_t *>(memory);
    if (bitmap != nullptr)
        for (int i = 0; i < width * height; ++i)
            bits[i] = 0xFFFFFF;
    return bitmap;
}

Pixels copy_pixels(std::uint32_t const *bits, int width, int height)
{
    Pixels p;
    p.width = width;
    p.height = height;
    p.data.resize(static_cast<std::size_t>(width) * height);
    for (std::size_t i = 0; i < p.data.size(); ++i)
        p.data[i] = bits[i] & 0xFFFFFF;
    return p;
}

}  // namespace

Pixels draw_bitmap(FormulaScene &scene, int dpi, int margin, Box &box)
{
    {
        Win_Bmp_Canvas gauge(true, Extension(0, 0, 1, 1), static_cast<std::size_t>(dpi));
        box = measure(scene, gauge);
    }
    int const width = static_cast<int>(box.width()) + 2 * margin;
    int const height = static_cast<int>(box.ascent() + box.descent()) + 2 * margin;
    std::uint32_t *bits = nullptr;
    HBITMAP bitmap = make_dib(width, height, bits);
    if (bitmap == nullptr)
        return Pixels{};
    {
        Win_Bmp_Canvas canvas(true, Extension(0, 0, height, width), static_cast<std::size_t>(dpi),
                              reinterpret_cast<Gdi::HBITMAP>(bitmap));
        if (canvas.valid())
            draw(scene, canvas, Point(margin, margin + box.ascent()));
    }
    GdiFlush();
    Pixels pixels = copy_pixels(bits, width, height);
    DeleteObject(bitmap);
    return pixels;
}

bool write_metafile(FormulaScene &scene, std::wstring const &path, Box &box)
{
    HDC reference = GetDC(nullptr);
    if (reference == nullptr)
        return false;
    // Measured once on a metafile in memory, so that the file's frame can be the formula's box.
    HDC scratch = CreateEnhMetaFileW(reference, nullptr, nullptr, nullptr);
    {
        Win_Metafile_Canvas gauge(reinterpret_cast<Gdi::HDC>(scratch), reinterpret_cast<Gdi::HDC>(reference), 0, 0,
                                  true, Extension(0, 0, 1, 1));
        box = measure(scene, gauge);
    }
    DeleteEnhMetaFile(CloseEnhMetaFile(scratch));
    long const width = box.width();
    long const height = box.ascent() + box.descent();
    // The drawing's units are the reference's pixels; the frame is in hundredths of a millimetre.
    RECT const frame{0, 0,
                     MulDiv(static_cast<int>(width), GetDeviceCaps(reference, HORZSIZE) * 100,
                            GetDeviceCaps(reference, HORZRES)),
                     MulDiv(static_cast<int>(height), GetDeviceCaps(reference, VERTSIZE) * 100,
                            GetDeviceCaps(reference, VERTRES))};
    HDC file = CreateEnhMetaFileW(reference, path.c_str(), &frame, L"tavi-emf\0formula\0");
    bool ok = file != nullptr;
    if (ok) {
        {
            Win_Metafile_Canvas canvas(reinterpret_cast<Gdi::HDC>(file), reinterpret_cast<Gdi::HDC>(reference), 0, 0,
                                       true, Extension(0, 0, height, width));
            draw(scene, canvas, Point(0, box.ascent()));
        }
        HENHMETAFILE done = CloseEnhMetaFile(file);
        ok = done != nullptr;
        if (done != nullptr)
            DeleteEnhMetaFile(done);
    }
    ReleaseDC(nullptr, reference);
    return ok;
}

Pixels play_metafile(std::wstring const &path, int width, int height, int margin)
{
    HENHMETAFILE emf = GetEnhMetaFileW(path.c_str());
    if (emf == nullptr)
        return Pixels{};
    std::uint32_t *bits = nullptr;
    HBITMAP bitmap = make_dib(width, height, bits);
    HDC dc = CreateCompatibleDC(nullptr);
    HGDIOBJ old = SelectObject(dc, bitmap);
    RECT const target{margin, margin, width - margin, height - margin};
    PlayEnhMetaFile(dc, emf, &target);
    GdiFlush();
    Pixels pixels = copy_pixels(bits, width, height);
    SelectObject(dc, old);
    DeleteDC(dc);
    DeleteObject(bitmap);
    DeleteEnhMetaFile(emf);
    return pixels;
}

bool write_bmp(Pixels const &pixels, std::wstring const &path)
{
    int const row = (pixels.width * 3 + 3) & ~3;
    BITMAPFILEHEADER file{};
    BITMAPINFOHEADER info{};
    file.bfType = 0x4D42;
    file.bfOffBits = sizeof file + sizeof info;
    file.bfSize = file.bfOffBits + static_cast<DWORD>(row * pixels.height);
    info.biSize = sizeof info;
    info.biWidth = pixels.width;
    info.biHeight = pixels.height;  // bottom row first
    info.biPlanes = 1;
    info.biBitCount = 24;
    info.biCompression = BI_RGB;
    std::ofstream out(path.c_str(), std::ios::binary);
    out.write(reinterpret_cast<char const *>(&file), sizeof file);
    out.write(reinterpret_cast<char const *>(&info), sizeof info);
    std::vector<char> line(static_cast<std::size_t>(row), 0);
    for (int y = pixels.height - 1; y >= 0; --y) {
        for (int x = 0; x < pixels.width; ++x) {
            std::uint32_t const p = pixels.at(x, y);
            line[static_cast<std::size_t>(x) * 3] = static_cast<char>(p & 0xFF);
            line[static_cast<std::size_t>(x) * 3 + 1] = static_cast<char>((p >> 8) & 0xFF);
            line[static_cast<std::size_t>(x) * 3 + 2] = static_cast<char>((p >> 16) & 0xFF);
        }
        out.write(line.data(), row);
    }
    return static_cast<bool>(out);
}

#endif

}  // namespace TaviEmf
