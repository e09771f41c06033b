// The example formulas of data/examples against the default setup file: each reads without a refusal
// and without an element the setup does not know, what the writer makes of it reads back to the same
// text, each typesets, and named characters keep their font classes.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "interchange/content_test_util.h"
#include "support/math_fixture.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/interchange/content.h"
#include "tavi/interchange/matheditcontenthandler.h"
#include "tavi/kxt/utf.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/mathstring.h"
#include "tavi/math/templates/templatetable.h"

namespace {

using namespace Tavi;
using namespace TaviTest;

std::string const source_dir = TAVI_SOURCE_DIR;

std::vector<std::filesystem::path> examples()
{
    std::vector<std::filesystem::path> files;
    std::filesystem::path const dir = source_dir + "/data/examples";
    if (std::filesystem::is_directory(dir))
        for (auto const &entry : std::filesystem::directory_iterator(dir))
            if (entry.path().extension() == ".xml")
                files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

// A formula read from text (null when refused), with the reader's complaints.
struct Read
{
    std::unique_ptr<Held<MathRootNode>> root;
    std::string complaints;
    MathNode *top() const { return root ? (*root)->child() : nullptr; }
};

Read read_formula(TemplateTable &table, std::string const &text)
{
    Read r;
    CaptureCerr cerr;
    try {
        r.root = std::make_unique<Held<MathRootNode>>(read_math_content(table, text));
    } catch (BadMathEditContent const &) {
    }
    r.complaints = cerr.text();
    return r;
}

// The type names of every node below `node`, itself included, depth first.
void type_names(MathNode *node, std::vector<std::string> &out)
{
    out.push_back(Kxt::to_string(node->type_name()));
    for (long i = 0; i < node->count(); ++i)
        type_names(node->child(static_cast<int>(i)), out);
}

// Every character of every atom below `node`, with its font class.
void characters(MathNode *node, std::vector<std::pair<int, int>> &out)
{
    MathString const &text = node->text();
    for (std::size_t i = 0; node->count() == 0 && i < text.length(); ++i)
        out.emplace_back(static_cast<int>(text.font_at(i)), static_cast<int>(text.at(i)));
    for (long i = 0; i < node->count(); ++i)
        characters(node->child(static_cast<int>(i)), out);
}

}  // namespace

// Every example reads without a complaint and with no element fallen back to the stand-in for
// unknown kinds; read, write, read, write gives the same text, in the format's namespace, and the same
// kinds; and it typesets to a box with room in it.
TEST(Examples, ReadWriteReadAndTypeset)
{
    TemplateTable table(nullptr);
    ASSERT_TRUE(read_default_setup(table));
    std::vector<std::filesystem::path> const files = examples();
    EXPECT_GE(files.size(), 30u);
    MathFixture f;
    for (auto const &file : files) {
        SCOPED_TRACE(file.filename().string());
        Read const first = read_formula(table, read_whole_file(file.string()));
        ASSERT_NE(nullptr, first.top()) << first.complaints;
        EXPECT_EQ("", first.complaints);
        std::vector<std::string> a, b;
        type_names(first.top(), a);
        EXPECT_GE(a.size(), 3u);
        EXPECT_EQ(0, std::count(a.begin(), a.end(), "missingTemplate"));

        std::string const written = write_math_content(**first.root);
        EXPECT_EQ(0u, written.find("<math xmlns=\"" + std::string(MathEditContentHandler::nameSpace()) + "\""));
        Read const second = read_formula(table, written);
        ASSERT_NE(nullptr, second.top()) << second.complaints << written;
        EXPECT_EQ(written, write_math_content(**second.root));
        type_names(second.top(), b);
        EXPECT_EQ(a, b);

        std::unique_ptr<BoxTree> box(first.top()->request(f.context, BoxTree::unconstrained));
        ASSERT_NE(nullptr, box);
        EXPECT_GT(box->width(), 0);
        EXPECT_GT(box->ascent() + box->descent(), 0);
    }
}

// Named characters arrive in their own font classes: open-face capitals in class 4 at their letters,
// Greek letters and other signs in class 2 at their codes of the symbol font (the upper half stored
// from 0xFF00 on), as the character table gives them.
TEST(Examples, NamedCharactersKeepTheirClasses)
{
    int const symbol = MathString::f_symbol, open_face = MathString::f_open_face;
    std::pair<char const *, std::vector<std::pair<int, int>>> const cases[] = {
        {"number-sets.xml", {{open_face, 'N'}, {open_face, 'Z'}, {open_face, 'Q'}, {open_face, 'C'}}},
        {"gaussian-integral.xml", {{symbol, 0xFFA5}, {symbol, 0x70}}},  // infinity, pi
    };
    TemplateTable table(nullptr);
    ASSERT_TRUE(read_default_setup(table));
    for (auto const &c : cases) {
        SCOPED_TRACE(c.first);
        Read const r = read_formula(table, read_whole_file(source_dir + "/data/examples/" + c.first));
        ASSERT_NE(nullptr, r.top()) << r.complaints;
        std::vector<std::pair<int, int>> found;
        characters(r.top(), found);
        for (auto const &w : c.second)
            EXPECT_NE(found.end(), std::find(found.begin(), found.end(), w)) << "class " << w.first << " code " << w.second;
    }
}

// Each example carries its formula's TeX in a comment before the math element: not blank, with at
// least one command, relation or script, as TeX of a formula has.
TEST(Examples, EachCarriesItsTeX)
{
    for (auto const &file : examples()) {
        SCOPED_TRACE(file.filename().string());
        std::string const text = read_whole_file(file.string());
        std::size_t const open = text.find("<!--");
        std::size_t const math = text.find("<math");
        ASSERT_NE(std::string::npos, open);
        std::size_t const close = text.find("-->", open);
        ASSERT_NE(std::string::npos, close);
        EXPECT_LT(close, math) << "the comment comes first";
        std::string const tex = text.substr(open + 4, close - open - 4);
        EXPECT_NE(std::string::npos, tex.find_first_of("\\=^_<>")) << tex;
    }
}
