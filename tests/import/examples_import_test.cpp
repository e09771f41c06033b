// The example formulas of data/examples imported from the TeX in their comments, and carried through
// the MathML, content MathML and LaTeX writers and back: each gives the example's own tree.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "interchange/content_test_util.h"
#include "support/math_fixture.h"
#include "tavi/export/contentmathmlwriter.h"
#include "tavi/export/latexwriter.h"
#include "tavi/export/mathmlwriter.h"
#include "tavi/import/importer.h"
#include "tavi/interchange/content.h"
#include "tavi/interchange/matheditcontenthandler.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/templates/templatetable.h"

namespace {

using namespace Tavi;
using namespace TaviTest;

std::vector<std::filesystem::path> examples()
{
    std::vector<std::filesystem::path> files;
    for (auto const &entry : std::filesystem::directory_iterator(std::string(TAVI_SOURCE_DIR) + "/data/examples"))
        if (entry.path().extension() == ".xml")
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

// A document read and written again: the form in which two trees are compared (character names
// of one glyph written with one name, no white space).
std::string canonical(TemplateTable &table, std::string const &text)
{
    CaptureCerr cerr;
    Held<MathRootNode> root(read_math_content(table, text));
    if (!root.get())
        return "(not read) " + text;
    std::string const messages = cerr.text();
    return write_math_content(*root.get()) + messages;
}

std::string tex_of(std::string const &file_text)
{
    std::size_t const open = file_text.find("<!--") + 4;
    return file_text.substr(open, file_text.find("-->", open) - open);
}

struct Fixture : ::testing::Test
{
    void SetUp() override { ASSERT_TRUE(read_default_setup(table)); }
    TemplateTable table{nullptr};
};

using ImportExamples = Fixture;

// The TeX of every example imports to the example's own tree. There are no exceptions to document:
// each example's content is what the importer's reading of its TeX gives.
TEST_F(ImportExamples, TeXGivesTheExamplesTree)
{
    auto const files = examples();
    EXPECT_EQ(47u, files.size());
    for (auto const &file : files) {
        SCOPED_TRACE(file.filename().string());
        std::string const text = read_whole_file(file.string());
        std::string const tex = tex_of(text);
        EXPECT_EQ(FormulaLanguage::latex, guess_language(tex));
        EXPECT_EQ(FormulaLanguage::content, guess_language(text));
        std::string imported;
        try {
            imported = to_content(FormulaLanguage::latex, tex, table);
        } catch (ImportError const &e) {
            ADD_FAILURE() << e.what() << "\n" << tex;
            continue;
        }
        EXPECT_EQ(canonical(table, text), canonical(table, imported)) << tex;
    }
}

// Every example written by each writer and read back by the importer is the same tree.
TEST_F(ImportExamples, WritersRoundTrip)
{
    struct Writer
    {
        char const *name;
        FormulaLanguage language;
        std::function<std::string(MathRootNode &)> write;
    };
    // What a writer cannot tell apart comes back as one of its forms: content MathML writes an
    // implicit product as <times/> and an array as a matrix, without lines.
    struct Equivalence
    {
        char const *writer;
        char const *written;
        char const *read;
    };
    Equivalence const equivalences[] = {
        {"content MathML", "tmp=\"implicit_times\"", "tmp=\"times\""},
        {"content MathML", "tmp=\"array\" rows=\"3\" cols=\"3\" rowl=\"s\" coll=\"s\" frl=\"S\"",
         "tmp=\"matrix\" rows=\"3\" cols=\"3\""},
    };
    Writer const writers[] = {
        {"presentation MathML", FormulaLanguage::mathml, [](MathRootNode &r) { return write_mathml(r); }},
        {"content MathML", FormulaLanguage::mathml, [](MathRootNode &r) { return write_content_mathml(r); }},
        {"LaTeX", FormulaLanguage::latex, [](MathRootNode &r) { return write_latex(r); }},
    };
    for (auto const &file : examples()) {
        std::string const text = read_whole_file(file.string());
        Held<MathRootNode> root(read_math_content(table, text));
        ASSERT_NE(nullptr, root.get());
        std::string const expected = canonical(table, text);
        for (auto const &w : writers) {
            SCOPED_TRACE(file.filename().string() + " through " + w.name);
            std::string const written = w.write(*root.get());
            std::string want = expected;
            for (auto const &e : equivalences)
                for (std::size_t at; w.name == std::string(e.writer) && (at = want.find(e.written)) != std::string::npos;)
                    want.replace(at, std::string(e.written).size(), e.read);
            EXPECT_EQ(w.language, guess_language(written));
            try {
                EXPECT_EQ(want, canonical(table, to_content(w.language, written, table))) << written;
            } catch (ImportError const &e) {
                ADD_FAILURE() << e.what() << "\n" << written;
            }
        }
    }
}

}  // namespace
