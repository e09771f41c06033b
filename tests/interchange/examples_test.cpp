// The example formulas of data/examples against the default setup file: each names itself plainly and
// carries its TeX; each reads without a refusal and without an element the setup does not know; what
// the writer makes of it reads back to the same text; and each typesets.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "support/math_fixture.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/interchange/content.h"
#include "tavi/interchange/matheditcontenthandler.h"
#include "tavi/kxt/stream.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/mathstring.h"
#include "tavi/math/templates/templatetable.h"

namespace {

using namespace Tavi;
using namespace TaviTest;

std::string const source_dir = TAVI_SOURCE_DIR;

std::string read_text(std::string const &path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

// The example files, by name.
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

std::string narrow(wchar const *text)
{
    std::string out;
    for (; text && *text; ++text)
        out += *text < 128 ? static_cast<char>(*text) : '?';
    return out;
}

// Catches what goes to the standard error stream while it lives: the reader reports there.
class Cerr
{
public:
    Cerr() : old_(std::cerr.rdbuf(text_.rdbuf())) {}
    ~Cerr() { std::cerr.rdbuf(old_); }
    Cerr(Cerr const &) = delete;
    Cerr &operator=(Cerr const &) = delete;
    std::string text() const { return text_.str(); }

private:
    std::ostringstream text_;
    std::streambuf *old_;
};

// A table with the default setup; the examples are written for it.
struct SetupTable
{
    SetupTable() : table(nullptr)
    {
        std::string const text = read_text(source_dir + "/data/mathsetup.xml");
        Kxt::KTmemoryStream stream(text.data(), text.size());
        read = !text.empty() && table.init(stream);
    }
    TemplateTable table;
    bool read = false;
};

// A formula read from text, held for the test; the reader's complaints are kept.
struct Read
{
    std::unique_ptr<Held<MathRootNode>> root;
    std::string complaints;
    bool refused = false;
};

Read read_formula(TemplateTable &table, std::string const &text)
{
    Read r;
    Cerr cerr;
    try {
        MathRootNode *root = read_math_content(table, text);
        r.root = std::make_unique<Held<MathRootNode>>(root);
    } catch (BadMathEditContent const &) {
        r.refused = true;
    }
    r.complaints = cerr.text();
    return r;
}

// The type names of every node below `node`, itself included, depth first.
void type_names(MathNode *node, std::vector<std::string> &out)
{
    if (node == nullptr)
        return;
    out.push_back(narrow(node->type_name()));
    for (long i = 0; i < node->count(); ++i)
        type_names(node->child(static_cast<int>(i)), out);
}

// Every character of every atom below `node`, with its font class.
void characters(MathNode *node, std::vector<std::pair<int, int>> &out)
{
    if (node == nullptr)
        return;
    if (node->count() == 0) {
        MathString const &text = node->text();
        for (std::size_t i = 0; i < text.length(); ++i)
            out.emplace_back(static_cast<int>(text.font_at(i)), static_cast<int>(text.at(i)));
    }
    for (long i = 0; i < node->count(); ++i)
        characters(node->child(static_cast<int>(i)), out);
}

}  // namespace

// Enough formulas, each in a file of a short descriptive name of lower-case words joined by hyphens.
TEST(Examples, FilesAndNames)
{
    std::vector<std::filesystem::path> const files = examples();
    EXPECT_GE(files.size(), 30u);
    for (auto const &file : files) {
        std::string const base = file.filename().string();
        std::string const stem = file.stem().string();
        EXPECT_LE(base.size(), 40u) << base;
        bool plain = !stem.empty() && stem.front() != '-' && stem.back() != '-' &&
                     stem.find("--") == std::string::npos;
        for (char c : stem)
            plain = plain && ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-');
        EXPECT_TRUE(plain) << base;
    }
}

// The formula's TeX stands in a comment before the math element: not blank, and not a placeholder
// such as "TODO".
TEST(Examples, EachCarriesItsTeX)
{
    for (auto const &file : examples()) {
        SCOPED_TRACE(file.filename().string());
        std::string const text = read_text(file.string());
        std::size_t const open = text.find("<!--");
        std::size_t const close = text.find("-->", open == std::string::npos ? 0 : open);
        std::size_t const math = text.find("<math");
        ASSERT_NE(std::string::npos, open);
        ASSERT_NE(std::string::npos, close);
        ASSERT_NE(std::string::npos, math);
        EXPECT_LT(close, math) << "the comment comes first";
        std::string const tex = text.substr(open + 4, close - open - 4);
        EXPECT_GE(tex.find_last_not_of(" \n") - tex.find_first_not_of(" \n"), 4u) << tex;
        EXPECT_EQ(std::string::npos, tex.find("TODO")) << tex;
        // TeX of a formula has at least one command, relation or script.
        EXPECT_NE(std::string::npos, tex.find_first_of("\\=^_<>")) << tex;
    }
}

// Every example reads against the default setup without a refusal or a complaint, and every element
// found a template of its own: none fell back to the stand-in for unknown kinds.
TEST(Examples, ReadWithKnownTemplatesOnly)
{
    SetupTable s;
    ASSERT_TRUE(s.read);
    for (auto const &file : examples()) {
        SCOPED_TRACE(file.filename().string());
        Read const r = read_formula(s.table, read_text(file.string()));
        ASSERT_FALSE(r.refused) << r.complaints;
        EXPECT_EQ("", r.complaints);
        ASSERT_NE(nullptr, r.root);
        ASSERT_NE(nullptr, r.root->get());
        std::vector<std::string> names;
        type_names((*r.root)->child(), names);
        EXPECT_GE(names.size(), 3u);
        EXPECT_EQ(0, std::count(names.begin(), names.end(), "missingTemplate"));
    }
}

// Read, write, read, write: the second text is the first. The written text is the format's own, in
// its namespace, and names the same kinds as the file.
TEST(Examples, WrittenTextIsStable)
{
    SetupTable s;
    ASSERT_TRUE(s.read);
    for (auto const &file : examples()) {
        SCOPED_TRACE(file.filename().string());
        Read const first = read_formula(s.table, read_text(file.string()));
        ASSERT_TRUE(first.root != nullptr && first.root->get() != nullptr) << first.complaints;
        std::string const written = write_math_content(**first.root);
        EXPECT_EQ(0u, written.find("<math xmlns=\"" + std::string(MathEditContentHandler::nameSpace()) + "\""))
            << written;

        Read const second = read_formula(s.table, written);
        ASSERT_TRUE(second.root != nullptr && second.root->get() != nullptr) << second.complaints << written;
        EXPECT_EQ(written, write_math_content(**second.root));

        std::vector<std::string> a, b;
        type_names((*first.root)->child(), a);
        type_names((*second.root)->child(), b);
        EXPECT_EQ(a, b);
    }
}

// Every example typesets with the default setup: a box with room in it.
TEST(Examples, Typeset)
{
    SetupTable s;
    ASSERT_TRUE(s.read);
    MathFixture f;
    for (auto const &file : examples()) {
        SCOPED_TRACE(file.filename().string());
        Read const r = read_formula(s.table, read_text(file.string()));
        ASSERT_TRUE(r.root != nullptr && r.root->get() != nullptr);
        MathNode *top = (*r.root)->child();
        ASSERT_NE(nullptr, top);
        std::unique_ptr<BoxTree> box(top->request(f.context, BoxTree::unconstrained));
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
    struct Case
    {
        char const *file;
        std::vector<std::pair<int, int>> wanted;
    };
    Case const cases[] = {
        {"number-sets.xml",
         {{open_face, 'N'}, {open_face, 'Z'}, {open_face, 'Q'}, {open_face, 'R'}, {open_face, 'C'}}},
        {"set-builder.xml", {{open_face, 'R'}}},
        {"epsilon-delta.xml", {{symbol, 0x65}, {symbol, 0x64}}},       // epsilon, delta
        {"gaussian-integral.xml", {{symbol, 0xFFA5}, {symbol, 0x70}}},  // infinity, pi
        {"gamma-function.xml", {{symbol, 0x47}}},                      // capital Gamma
        {"continued-fraction.xml", {{symbol, 0xFFBC}}},                // ellipsis
        {"maxwell-equations.xml", {{symbol, 0x72}, {symbol, 0x6D}}},   // rho, mu
    };
    SetupTable s;
    ASSERT_TRUE(s.read);
    for (Case const &c : cases) {
        SCOPED_TRACE(c.file);
        Read const r = read_formula(s.table, read_text(source_dir + "/data/examples/" + c.file));
        ASSERT_TRUE(r.root != nullptr && r.root->get() != nullptr) << r.complaints;
        std::vector<std::pair<int, int>> found;
        characters((*r.root)->child(), found);
        for (auto const &w : c.wanted)
            EXPECT_NE(found.end(), std::find(found.begin(), found.end(), w))
                << "class " << w.first << " code " << w.second;
    }
}
