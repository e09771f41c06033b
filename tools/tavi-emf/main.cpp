// tavi-emf: typesets a formula of the content format on Windows GDI and writes it as an enhanced
// metafile (through Win_Metafile_Canvas) and, when asked, as a bitmap (through Win_Bmp_Canvas).
//
//   tavi-emf [--setup FILE] [--dpi N] INPUT.xml OUTPUT.emf [OUTPUT.bmp]
#include "tools/tavi-emf/formula_drawing.h"

#include "tavi/interchange/matheditcontenthandler.h"

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

namespace {

int usage()
{
    std::cerr << "usage: tavi-emf [--setup FILE] [--dpi N] INPUT.xml OUTPUT.emf [OUTPUT.bmp]\n";
    return 2;
}

std::wstring wide(std::string const &s) { return std::wstring(s.begin(), s.end()); }

}  // namespace

int main(int argc, char **argv)
{
    std::string setup = "data/mathsetup.xml";
    int dpi = 96;
    std::string files[3];
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--setup") == 0 && i + 1 < argc) {
            setup = argv[++i];
        } else if (std::strcmp(argv[i], "--dpi") == 0 && i + 1 < argc) {
            dpi = std::atoi(argv[++i]);
            if (dpi < 1 || dpi > 4800) {
                std::cerr << "tavi-emf: the resolution must be between 1 and 4800 dpi\n";
                return 2;
            }
        } else if (argv[i][0] == '-' || count == 3) {
            return usage();
        } else {
            files[count++] = argv[i];
        }
    }
    if (count < 2)
        return usage();

    Tavi::FormulaScene scene;
    if (!TaviEmf::load_setup(scene, setup)) {
        std::cerr << "tavi-emf: " << setup << ": the setup file cannot be read or is refused\n";
        return 1;
    }
    std::ifstream in(files[0], std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    try {
        if (!in || !scene.read_content(text.str())) {
            std::cerr << "tavi-emf: " << files[0] << ": not a formula in the content format\n";
            return 1;
        }
    } catch (Tavi::BadMathEditContent const &e) {
        std::cerr << "tavi-emf: " << files[0] << ": " << e.what() << "\n";
        return 1;
    }

    Tavi::Box box;
    if (!TaviEmf::write_metafile(scene, wide(files[1]), box)) {
        std::cerr << "tavi-emf: " << files[1] << ": the metafile cannot be written\n";
        return 1;
    }
    std::cout << files[1] << ": " << box.width() << " by " << box.ascent() + box.descent() << " twips\n";
    if (count == 3) {
        TaviEmf::Pixels const pixels = TaviEmf::draw_bitmap(scene, dpi, 2, box);
        if (pixels.data.empty() || !TaviEmf::write_bmp(pixels, wide(files[2]))) {
            std::cerr << "tavi-emf: " << files[2] << ": the bitmap cannot be written\n";
            return 1;
        }
        std::cout << files[2] << ": " << pixels.width << " by " << pixels.height << " pixels at " << dpi << " dpi\n";
    }
    return 0;
}
