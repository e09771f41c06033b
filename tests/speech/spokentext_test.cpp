// Spoken text: every example formula against its line in spoken-examples.txt (the readings as
// a person checked them), readings of kinds the examples lack, and a phrase for every template of
// the default setup. Each run also writes what it read to the test output folder, so that a changed
// reading can be looked at and copied over the golden file.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <typeinfo>
#include <vector>

#include "interchange/content_test_util.h"
#include "support/math_fixture.h"
#include "tavi/interchange/content.h"
#include "tavi/interchange/matheditcontenthandler.h"
#include "tavi/kxt/utf.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/templates/mathtemplate.h"
#include "tavi/math/templates/templatetable.h"
#include "tavi/speech/spokentext.h"

namespace {

using namespace Tavi;
using namespace TaviTest;

std::string const source_dir = TAVI_SOURCE_DIR;

struct SetupTable
{
    SetupTable() : table(nullptr)
    {
        read = read_default_setup(table);
        table.add_template(plain_template(&table, u"gcd"));
    }
    TemplateTable table;
    bool read = false;
};

std::string spoken(TemplateTable &table, std::string const &document)
{
    try {
        Held<MathRootNode> root(read_math_content(table, document));
        return root.get() != nullptr ? Kxt::to_string(spoken_text(root->child()).c_str()) : "<unread>";
    } catch (BadMathEditContent const &) {
        return "<refused>";
    }
}

// The golden file: "name: reading" a line; lines starting with "#" and empty ones are notes.
std::map<std::string, std::string> golden_readings()
{
    std::map<std::string, std::string> out;
    std::istringstream in(read_whole_file(source_dir + "/tests/speech/spoken-examples.txt"));
    for (std::string line; std::getline(in, line);) {
        std::size_t const colon = line.find(": ");
        if (line.empty() || line[0] == '#' || colon == std::string::npos)
            continue;
        out[line.substr(0, colon)] = line.substr(colon + 2);
    }
    return out;
}

std::string x(std::string const &tmp, std::vector<std::string> const &children)
{
    std::string out = "<expr tmp='" + tmp + "'>";
    for (std::string const &child : children)
        out += child;
    return out + "</expr>";
}
std::string sum(std::string const &signs, std::vector<std::string> const &children)
{
    std::string out = "<plus sgn='" + signs + "'>";
    for (std::string const &child : children)
        out += child;
    return out + "</plus>";
}
std::string id(std::string const &text) { return "<ident>" + text + "</ident>"; }
std::string num(std::string const &text) { return "<num>" + text + "</num>"; }

}  // namespace

TEST(SpokenText, Examples)
{
    SetupTable s;
    ASSERT_TRUE(s.read);
    std::map<std::string, std::string> const golden = golden_readings();
    std::vector<std::filesystem::path> files;
    for (auto const &entry : std::filesystem::directory_iterator(source_dir + "/data/examples"))
        if (entry.path().extension() == ".xml")
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    std::filesystem::create_directories(TAVI_TEST_OUTPUT_DIR);
    std::ofstream written(std::string(TAVI_TEST_OUTPUT_DIR) + "/spoken-examples.txt");
    for (std::filesystem::path const &file : files) {
        std::string const name = file.stem().string();
        std::string const reading = spoken(s.table, read_whole_file(file.string()));
        written << name << ": " << reading << "\n";
        auto const found = golden.find(name);
        EXPECT_EQ(found != golden.end() ? found->second : "<no golden line>", reading) << name;
    }
    EXPECT_EQ(golden.size(), files.size()) << "one golden line per example";
}

TEST(SpokenText, Readings)
{
    struct Row
    {
        std::string body;
        char const *expected;
    };
    std::string const x1 = sum("++", {id("x"), num("1")});
    Row const rows[] = {
        // The end of a compound root, exponent or fraction is said when more follows, not otherwise.
        {sum("++", {x("sqrt", {x1}), num("2")}), "the square root of x plus 1, end root, plus 2"},
        {sum("++", {x("sqrt", {id("x")}), num("2")}), "the square root of x, plus 2"},
        {x("eq", {id("y"), x("sqrt", {x1})}), "y equals the square root of x plus 1"},
        {sum("++", {x("power", {id("x"), x1}), num("1")}), "x to the power x plus 1, end exponent, plus 1"},
        {sum("++", {x("power", {id("x"), num("2")}), num("1")}), "x squared plus 1"},
        {x("divide", {x("divide", {x1, id("y")}), id("z")}),
         "the fraction with numerator the fraction with numerator x plus 1, and denominator y, end fraction, "
         "and denominator z"},
        {x("implicit_times", {x("divide", {num("1"), num("2")}), id("m"), x("power", {id("v"), num("2")})}),
         "1 over 2, m v squared"},
        // Parentheses where the formula shows them; two numbers side by side.
        {x("power", {sum("+-", {id("x"), id("a")}), id("n")}), "open paren x minus a close paren to the power n"},
        {x("implicit_times", {num("2"), num("3"), id("x")}), "2 times 3 x"},
        {sum("+-", {id("a"), sum("++", {id("b"), id("c")})}), "a minus open paren b plus c close paren"},
        // Roots by their index; an empty set; a placeholder; a kind the table does not know.
        {x("root", {id("x"), num("4")}), "the fourth root of x"},
        {x("root", {id("x"), id("n")}), "the n-th root of x"},
        {x("set", {}), "the empty set"},
        {x("sqrt", {"<plh/>"}), "the square root of blank"},
        {x("gcd", {num("12"), id("a")}), "gcd of 12, a"},
        {x("gcd", {num("12"), x1}), "gcd of open paren 12, x plus 1 close paren"},
        {x("apply", {id("f"), x1}), "f of open paren x plus 1 close paren"},
        // Named characters, in symbol and text runs.
        {x("in", {id("<chr nm='alpha'/>"), id("<chr nm='Ropf'/>")}), "alpha is an element of the real numbers"},
        {id("<chr nm='Gamma'/>\xCE\xB2"), "capital gamma beta"},
        // Grids: a shape of their own, and a generic one for an unexpected column count.
        {"<tab tmp='matrix' rows='2' cols='2'>" + id("a") + id("b") + id("c") + id("d") + "</tab>",
         "the 2 by 2 matrix, row 1: a, b; row 2: c, d"},
        {"<tab tmp='piecewise' rows='1' cols='3'>" + id("a") + id("b") + id("c") + "</tab>",
         "the cases: row 1: a, b, c"},
        {sum("++", {"<tab tmp='determinant' rows='1' cols='1'>" + id("a") + "</tab>", id("a")}),
         "the 1 by 1 determinant, row 1: a, end determinant, plus a"},
        // A relation parts its sides with a pause, whatever its left side owes.
        {x("eq", {x("sqrt", {x1}), num("2")}), "the square root of x plus 1, equals 2"},
    };
    SetupTable s;
    ASSERT_TRUE(s.read);
    for (Row const &row : rows)
        EXPECT_EQ(row.expected, spoken(s.table, math_doc(row.body))) << row.body;
    EXPECT_TRUE(spoken_text(nullptr).empty());
}

// A formula near the reader's depth limit is read to its end, each root's end said once.
TEST(SpokenText, DeepFormula)
{
    int const depth = 2400;
    std::string body = sum("++", {id("x"), num("1")});
    for (int i = 0; i < depth; ++i)
        body = x("sqrt", {body});
    SetupTable s;
    ASSERT_TRUE(s.read);
    std::string const text = spoken(s.table, math_doc(sum("++", {body, num("2")})));
    auto const count = [&text](std::string const &word) {
        int n = 0;
        for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + 1))
            ++n;
        return n;
    };
    EXPECT_EQ(depth, count("the square root of"));
    EXPECT_EQ(depth, count("end root"));
    EXPECT_EQ(text.size() - 16, text.rfind("end root, plus 2"));
}

// Every kind of the default setup has its own phrase, but for atoms and sums, which are read by their class.
TEST(SpokenText, EveryTemplateHasAPhrase)
{
    SetupTable s;
    ASSERT_TRUE(s.read);
    for (std::size_t i = 0; i < s.table.template_count(); ++i) {
        MathTemplate *t = s.table.template_at(i);
        wstring const name = t != nullptr ? t->type_name() : u"gcd";
        if (name == u"gcd" || name == u"ci" || name == u"cn" || name == u"string" || name == u"dummy" ||
            name == u"plus" || name == u"minus" || name == u"negate")
            continue;
        EXPECT_TRUE(has_spoken_phrase(t->type_name())) << Kxt::to_string(t->type_name());
    }
}
