// Tests of the data sources and the clipboard: formats offered, byte counts and contents written,
// independence after copy, and the clipboard's text through the hosting frame.
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "interchange/content_test_util.h"
#include "support/math_fixture.h"
#include "tavi/interchange/clipboard.h"
#include "tavi/interchange/datasource.h"
#include "tavi/interchange/hostingframe.h"
#include "tavi/math/mathnode.h"
#include "tavi/qt/qt_clipboard.h"

using namespace Tavi;
using namespace TaviTest;

namespace {

std::vector<unsigned char> bytes_of(Kxt::KTmemoryStream const &stream)
{
    return std::vector<unsigned char>(stream.data(), stream.data() + stream.length());
}

// The bytes of 16-bit units as this machine stores them.
std::vector<unsigned char> units(std::u16string const &text, std::size_t count)
{
    std::vector<unsigned char> out(count);
    std::memcpy(out.data(), text.c_str(), count);
    return out;
}

std::vector<wstring> formats_of(DataSource const &source)
{
    std::vector<wstring> out;
    for (std::size_t i = 0; source.format(i) != nullptr; ++i)
        out.push_back(source.format(i));
    return out;
}

// A clipboard that owns what it is given and hands out its source's formats.
class HoldingClipboard : public Clipboard
{
public:
    std::size_t provides(wchar const *const *formats, std::size_t count) const override
    {
        asked_.assign(formats, formats + count);
        for (std::size_t i = 0; i < count && source; ++i)
            for (std::size_t j = 0; source->format(j) != nullptr; ++j)
                if (wstring(source->format(j)) == formats[i])
                    return i + 1;
        return 0;
    }
    bool get_data(int index, Kxt::KTstream &stream) override
    {
        if (!source || index < 1 || static_cast<std::size_t>(index) > asked_.size())
            return false;
        for (std::size_t j = 0; source->format(j) != nullptr; ++j) {
            if (wstring(source->format(j)) != asked_[static_cast<std::size_t>(index) - 1])
                continue;
            Kxt::KTheapStream data(64, 64);
            if (!source->serialize(j, data))
                return false;
            std::size_t written = 0;
            return stream.write(data.data(), data.length(), written) == Kxt::KTstream::Ok;
        }
        return false;
    }
    void data(DataSource *given) override { source.reset(given); }

    std::unique_ptr<DataSource> source;

private:
    mutable std::vector<wstring> asked_;
};

class HoldingFrame : public HostingFrame
{
public:
    HoldingFrame() : old_(install(this)) {}
    ~HoldingFrame() override { install(old_); }
    Clipboard &clipboard() override { return board; }
    void message(wchar const *, wchar const *, MessageType) override {}
    HoldingClipboard board;

private:
    HostingFrame *old_;
};

}  // namespace

// Text goes out as its 16-bit units and the whole terminator: (length + 1) * 2 bytes.
TEST(DataSource, TextSourceBytes)
{
    struct Case
    {
        wchar const *text;
        std::u16string units;
        std::size_t bytes;
    };
    Case const cases[] = {
        {nullptr, u"", 2},          // (0 + 1) * 2
        {u"ab", u"ab", 6},          // (2 + 1) * 2
        {u"\u00e9\u03bb", u"\u00e9\u03bb", 6},
        {u"a\U0001d400", u"a\U0001d400", 8},  // a surrogate pair is two units: (3 + 1) * 2
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.bytes);
        TextSource source(c.text);
        EXPECT_EQ(std::vector<wstring>{u"text/plain"}, formats_of(source));
        Kxt::KTheapStream stream(16, 16);
        EXPECT_TRUE(source.serialize(0, stream));
        EXPECT_EQ(units(c.units, c.bytes), bytes_of(stream));
        EXPECT_FALSE(source.serialize(1, stream));
        EXPECT_EQ(c.bytes, stream.length());
    }
    // A stream without room for all of it: false.
    unsigned char room[5];
    Kxt::KTmemoryStream small(room, sizeof room, 0);
    EXPECT_FALSE(TextSource(u"ab").serialize(0, small));
}

// The math format for every node, plain text as well for numbers and identifiers: the text and one
// byte of the terminator, (length + 1) * 2 - 1 bytes, or one zero byte for no text.
TEST(DataSource, MathNodeFormatsAndText)
{
    TemplateTable table(nullptr);
    table.add_template(plain_template(&table, u"frac"));
    struct Case
    {
        MathNode *node;
        bool has_text;
        std::u16string text;
        std::size_t bytes;
    };
    MathTemplate *frac = table.get_template(u"frac");
    MathNode *fraction = frac->create_node();
    fraction->append(table.get_template(u"cn")->create_node(u"1"));
    fraction->append(table.get_template(u"ci")->create_node(u"n"));
    Case const cases[] = {
        {table.get_template(u"cn")->create_node(u"12"), true, u"12", 5},  // (2 + 1) * 2 - 1
        {table.get_template(u"ci")->create_node(u"x"), true, u"x", 3},    // (1 + 1) * 2 - 1
        {table.get_template(u"ci")->create_node(u""), true, u"", 1},      // one zero byte
        {table.get_template(u"string")->create_node(u"s"), false, u"", 0},
        {table.get_dummy_template()->create_node(), false, u"", 0},
        {fraction, false, u"", 0},
    };
    for (Case const &c : cases) {
        Held<MathNode> held(c.node);
        MathNodeDataSource source(c.node);
        std::vector<wstring> expected{u"x-application/kalex-math-edit-content"};
        if (c.has_text)
            expected.push_back(u"text/plain");
        EXPECT_EQ(expected, formats_of(source));
        Kxt::KTheapStream stream(16, 16);
        EXPECT_EQ(c.has_text, source.serialize(1, stream));
        EXPECT_EQ(c.bytes, stream.length());
        if (c.has_text) {
            EXPECT_EQ(units(c.text, c.bytes), bytes_of(stream));
        }
        EXPECT_FALSE(source.serialize(2, stream));
    }

    MathNodeDataSource none(nullptr);
    EXPECT_EQ(nullptr, none.format(0));
    Kxt::KTheapStream stream(16, 16);
    EXPECT_FALSE(none.serialize(0, stream));
    EXPECT_EQ(0u, stream.length());
}

// The math format is the node as a whole formula; the node stays where it was in its document. A
// copied source keeps what it had when the document changes.
TEST(DataSource, MathNodeContentAndCopy)
{
    TemplateTable table(nullptr);
    Held<MathNode> sum(table.get_template(u"plus")->create_node());
    MathNode *x = table.get_template(u"ci")->create_node(u"x");
    sum->append(x);
    sum->append(table.get_template(u"cn")->create_node(u"2"));

    auto content = [](DataSource &source) {
        Kxt::KTheapStream stream(16, 16);
        EXPECT_TRUE(source.serialize(0, stream));
        return std::string(reinterpret_cast<char const *>(stream.data()), stream.length());
    };
    MathNodeDataSource live(x);
    EXPECT_EQ(math_doc("<ident>x</ident>"), content(live));
    EXPECT_EQ(sum.get(), x->parent());

    MathNodeDataSource shared(live);
    MathNodeDataSource copied(live);
    copied.copy();
    EXPECT_NE(x, copied.node());
    EXPECT_EQ(x, shared.node());
    x->text(u"y");
    EXPECT_EQ(math_doc("<ident>y</ident>"), content(live));
    EXPECT_EQ(math_doc("<ident>y</ident>"), content(shared));
    EXPECT_EQ(math_doc("<ident>x</ident>"), content(copied));

    MathNodeDataSource whole(sum.get());
    whole.copy();
    EXPECT_EQ(math_doc("<plus sgn=\"++\"><ident>y</ident><num>2</num></plus>"), content(whole));
}

// Qt hosting has a clipboard that offers and keeps nothing.
TEST(Clipboard, QtClipboardHoldsNothing)
{
    EXPECT_EQ(&Qt_Clipboard::instance(), &Clipboard::object());
    EXPECT_FALSE(Clipboard::has_text());
    EXPECT_EQ(nullptr, Clipboard::text());
    wchar const *const formats[] = {math_edit_content_format, plain_text_format};
    EXPECT_EQ(0u, Qt_Clipboard::instance().provides(formats, 2));
    Kxt::KTheapStream stream(16, 16);
    EXPECT_FALSE(Qt_Clipboard::instance().get_data(1, stream));
    TextSource source(u"kept");
    source.put_on_clipboard();  // ignored: the source stays the caller's
    EXPECT_EQ(u"kept", wstring(source.text()));
}

// With a host's clipboard: text put on it comes back, sources go to it, and a request for several
// formats answers the position of the first one on offer.
TEST(Clipboard, TextThroughTheHostsClipboard)
{
    HoldingFrame frame;
    EXPECT_EQ(&frame.board, &Clipboard::object());
    EXPECT_FALSE(Clipboard::has_text());

    Clipboard::text(u"hello \u03bb");
    EXPECT_TRUE(Clipboard::has_text());
    std::unique_ptr<wchar[]> text(Clipboard::text());
    ASSERT_NE(nullptr, text);
    EXPECT_EQ(u"hello \u03bb", wstring(text.get()));

    // A text longer than the first block of the stream.
    wstring const long_text(700, u'z');
    Clipboard::text(long_text.c_str());
    text.reset(Clipboard::text());
    EXPECT_EQ(long_text, wstring(text.get()));

    TemplateTable table(nullptr);
    (new MathNodeDataSource(table.get_template(u"cn")->create_node(u"12")))->put_on_clipboard();
    wchar const *const formats[] = {u"image/png", math_edit_content_format, plain_text_format};
    EXPECT_EQ(2u, frame.board.provides(formats, 3));
    // Plain text of a number lacks one byte of the terminator; the odd byte left over is dropped.
    text.reset(Clipboard::text());
    EXPECT_EQ(u"12", wstring(text.get()));

    (new MathNodeDataSource(table.get_dummy_template()->create_node()))->put_on_clipboard();
    EXPECT_FALSE(Clipboard::has_text());
    EXPECT_EQ(nullptr, Clipboard::text());
}
