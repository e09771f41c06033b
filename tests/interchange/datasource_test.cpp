// Tests of the data sources: formats offered, byte counts and contents written, and independence
// after copy.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "interchange/content_test_util.h"
#include "support/math_fixture.h"
#include "tavi/interchange/datasource.h"
#include "tavi/math/mathnode.h"

using namespace Tavi;
using namespace TaviTest;

namespace {

std::string bytes_of(Kxt::KTmemoryStream const &stream)
{
    return std::string(reinterpret_cast<char const *>(stream.data()), stream.length());
}

// The first `count` bytes of 16-bit units as this machine stores them.
std::string units(std::u16string const &text, std::size_t count)
{
    return std::string(reinterpret_cast<char const *>(text.c_str()), count);
}

std::vector<wstring> formats_of(DataSource const &source)
{
    std::vector<wstring> out;
    for (std::size_t i = 0; source.format(i) != nullptr; ++i)
        out.push_back(source.format(i));
    return out;
}

}  // namespace

// Text goes out as its 16-bit units and the whole terminator, (length + 1) * 2 bytes; a number or
// an identifier as its text and one byte of the terminator, (length + 1) * 2 - 1 bytes, or one zero
// byte for no text. Other nodes offer the math format only.
TEST(DataSource, FormatsAndByteCounts)
{
    TemplateTable table(nullptr);
    table.add_template(plain_template(&table, u"frac"));
    MathNode *fraction = table.get_template(u"frac")->create_node();
    fraction->append(table.get_template(u"cn")->create_node(u"1"));
    fraction->append(table.get_dummy_template()->create_node());
    struct Case
    {
        std::unique_ptr<DataSource> source;
        std::vector<wstring> formats;
        std::size_t text_format;
        std::string bytes;
    };
    wstring const math = u"x-application/kalex-math-edit-content", text = u"text/plain";
    auto node = [](MathNode *n) { return std::make_unique<MathNodeDataSource>(n); };
    Case cases[] = {
        {std::make_unique<TextSource>(u"a\U0001d400"), {text}, 0, units(u"a\U0001d400", 8)},  // a pair is 2 units
        {node(table.get_template(u"cn")->create_node(u"12")), {math, text}, 1, units(u"12", 5)},  // (2 + 1) * 2 - 1
        {node(table.get_template(u"ci")->create_node(u"")), {math, text}, 1, std::string(1, '\0')},
        {node(fraction), {math}, 1, ""},
        {node(nullptr), {}, 0, ""},
    };
    for (Case &c : cases) {
        SCOPED_TRACE(c.bytes.size());
        EXPECT_EQ(c.formats, formats_of(*c.source));
        Kxt::KTheapStream stream(4, 4);
        bool const has_text = c.formats.size() > c.text_format && c.formats[c.text_format] == text;
        EXPECT_EQ(has_text, c.source->serialize(c.text_format, stream));
        EXPECT_EQ(c.bytes, bytes_of(stream));
        EXPECT_FALSE(c.source->serialize(2, stream));
    }
    // A stream without room for all of the text.
    unsigned char room[5];
    Kxt::KTmemoryStream small(room, sizeof room, 0);
    EXPECT_FALSE(TextSource(u"ab").serialize(0, small));
}

// The math format is the node as a whole formula; the node stays where it was in its document. A
// copied source keeps what it had when the document changes; a shared one doesn't.
TEST(DataSource, MathContentAndCopy)
{
    TemplateTable table(nullptr);
    Held<MathNode> sum(table.get_template(u"plus")->create_node());
    MathNode *x = table.get_template(u"ci")->create_node(u"x");
    sum->append(x);
    sum->append(table.get_template(u"cn")->create_node(u"2"));
    auto content = [](DataSource &source) {
        Kxt::KTheapStream stream(16, 16);
        EXPECT_TRUE(source.serialize(0, stream));
        return bytes_of(stream);
    };
    MathNodeDataSource live(x);
    EXPECT_EQ(math_doc("<ident>x</ident>"), content(live));
    EXPECT_EQ(sum.get(), x->parent());
    MathNodeDataSource shared(live);
    MathNodeDataSource copied(live);
    copied.copy();
    x->text(u"y");
    EXPECT_EQ(math_doc("<ident>y</ident>"), content(shared));
    EXPECT_EQ(math_doc("<ident>x</ident>"), content(copied));
}
