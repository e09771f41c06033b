// The fuzzers' host: the default setup, the examples, and typesetting on a gauge of fixed metrics.
#include "fuzz/fuzz_host.h"

#include <dirent.h>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>

#include "fuzz/fixedgauge.h"
#include "tavi/canvas/measuringcanvas.h"
#include "tavi/editing/formulascene.h"
#include "tavi/geometry/allocationtree.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/glyph/glyphcontext.h"
#include "tavi/kxt/stream.h"

namespace TaviFuzz {

using namespace Tavi;

namespace {

std::string read_file(std::string const &path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

void lay_out(FormulaScene &scene, BoxTree const &limits)
{
    FixedGauge gauge;
    MeasuringCanvas canvas(&gauge);
    GlyphContext context(&scene, nullptr, &canvas, scene.glyph());
    BoxTree const *tree = scene.glyph()->request(context, limits);
    if (tree == nullptr)
        return;
    AllocationTree const allocation(Point(0, tree->ascent()), tree);
    std::unique_ptr<AllocationTree> placed(scene.glyph()->allocate(0, context, allocation));
    scene.glyph()->draw(context, allocation);
}

}  // namespace

void quiet()
{
    static std::ostringstream sink;
    std::cerr.rdbuf(sink.rdbuf());
}

FormulaScene &default_scene()
{
    static FormulaScene *scene = [] {
        auto *s = new FormulaScene;
        std::string const setup = read_file(TAVI_SOURCE_DIR "/data/mathsetup.xml");
        Kxt::KTmemoryStream stream(setup.data(), setup.size());
        s->template_table()->init(stream);
        return s;
    }();
    return *scene;
}

std::vector<std::string> const &examples()
{
    static std::vector<std::string> const documents = [] {
        std::vector<std::string> names;
        std::string const folder = TAVI_SOURCE_DIR "/data/examples";
        if (DIR *dir = opendir(folder.c_str())) {
            while (dirent *entry = readdir(dir)) {
                std::string const name = entry->d_name;
                if (name.size() > 4 && name.compare(name.size() - 4, 4, ".xml") == 0)
                    names.push_back(folder + "/" + name);
            }
            closedir(dir);
        }
        std::sort(names.begin(), names.end());
        std::vector<std::string> texts;
        for (std::string const &n : names)
            texts.push_back(read_file(n));
        return texts;
    }();
    return documents;
}

void typeset(FormulaScene &scene)
{
    scene.wrap_width(0.0);
    lay_out(scene, BoxTree::unconstrained);
    // Broken into lines a couple of centimetres wide: the line breaking and the splitting of long
    // atoms get their share.
    scene.wrap_width(60.0);
    scene.formula()->invalidate_allocation();
    BoxTreeLeaf const narrow(80, 0x7fffffff, 0x7fffffff);
    lay_out(scene, narrow);
}

}  // namespace TaviFuzz
