// Writing wide text into XML as UTF-8 character data, and narrowed without escaping.
#include "tavi/kxt/utf.h"
#include "tavi/kxt/xmlparser.h"
#include "tavi/kxt/xmltext.h"

#include <gtest/gtest.h>

#include <cstring>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct Written {
    char const *name;
    Kxt::wchar const *text;
    std::string cdata;    // putCData
    std::string narrow;   // operator<<
};

// U+FFFD is EF BF BD in UTF-8; U+1F600 is F0 9F 98 80 (see utf_test).
std::vector<Written> const written = {
    {"quotes", u"\"q\" 'a'", "&quot;q&quot; &apos;a&apos;", "\"q\" 'a'"},
    {"tab, line feed, carriage return", u"t\tl\nc\r", "t&#9;l&#10;c&#13;", "t\tl\nc\r"},
    {"controls XML cannot carry", u"\x01\x08\x0B\x0C\x1F",
     "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD", "\x01\x08\x0B\x0C\x1F"},
    {"lone high surrogate", u"\xD800x", "\xEF\xBF\xBDx", "\xEF\xBF\xBDx"},
    {"null", nullptr, "", ""},
};

TEST(XmlText, CDataAndNarrowOutput)
{
    for (Written const &w : written) {
        SCOPED_TRACE(w.name);
        std::ostringstream cdata;
        Kxt::putCData(cdata, w.text);
        EXPECT_EQ(cdata.str(), w.cdata);
        std::ostringstream narrow;
        narrow << w.text;
        EXPECT_EQ(narrow.str(), w.narrow);
    }
}

// Takes the one attribute and the text of a one-element document.
class TextCollector : public Kxt::Xml::Handler {
public:
    bool elementName(char const *, char const *name, int &ns, int &id) override
    {
        ns = 0;
        id = 1;
        return std::strcmp(name, "e") == 0;
    }
    bool attributeName(char const *, char const *name, int &ns, int &id) override
    {
        ns = 0;
        id = 2;
        return std::strcmp(name, "a") == 0;
    }
    void startElement(int, int, std::vector<Kxt::Xml::Attribute> &attributes) override
    {
        if (auto const *a = Kxt::Xml::findAttribute(attributes, 2))
            attribute = a->value;
    }
    void endElement(int, int) override {}
    void characterData(char const *data, int length) override { text.append(data, length); }

    std::string attribute, text;
};

TEST(XmlText, CDataReadsBackTheSameInContentAndAttributes)
{
    // Markup characters and the three whitespace controls come back as they were; what XML
    // cannot carry comes back as U+FFFD.
    std::u16string const input = u"a&b<c>d\"e'f\tg\nh\ri\x01j\xFFFEk\xD83D\xDE00l\xDC00m";
    std::u16string const expected = u"a&b<c>d\"e'f\tg\nh\ri\xFFFDj\xFFFDk\xD83D\xDE00l\xFFFDm";
    for (char const *quote : {"\"", "'"}) {
        SCOPED_TRACE(quote);
        std::ostringstream document;
        document << "<e a=" << quote;
        Kxt::putCData(document, input.c_str());
        document << quote << '>';
        Kxt::putCData(document, input.c_str());
        document << "</e>";

        TextCollector collector;
        Kxt::Xml::Parser parser(&collector, false, nullptr);
        std::string const text = document.str();
        ASSERT_TRUE(parser.parse(text.data(), static_cast<int>(text.size()), true)) << parser.errorString();
        EXPECT_EQ(Kxt::to_ustring(collector.attribute), expected);
        EXPECT_EQ(Kxt::to_ustring(collector.text), expected);
    }
}

}  // namespace
