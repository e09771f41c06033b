// Whole formulas to and from the math edit content format.
#include "tavi/interchange/content.h"

#include <climits>
#include <iostream>
#include <sstream>

#include "tavi/interchange/matheditcontenthandler.h"
#include "tavi/kxt/xmlparser.h"
#include "tavi/math/mathrootnode.h"

namespace Tavi {

MathRootNode *read_math_content(TemplateTable &table, char const *data, std::size_t length)
{
    MathEditContentHandler handler(table);
    Xml::Parser parser(&handler, true);
    // The parser takes an int length: a longer text goes in pieces.
    char const *p = data != nullptr ? data : "";
    std::size_t left = data != nullptr ? length : 0;
    constexpr std::size_t piece = INT_MAX / 2;
    do {
        std::size_t const n = left < piece ? left : piece;
        if (!parser.parse(p, static_cast<int>(n), n == left))
            return nullptr;
        p += n;
        left -= n;
    } while (left > 0);
    return handler.node();
}

MathRootNode *read_math_content(TemplateTable &table, std::string const &text)
{
    return read_math_content(table, text.data(), text.size());
}

MathRootNode *read_math_document(TemplateTable &table, std::string const &text, std::string const &source,
                                 std::string &error, std::string *messages)
{
    if (text.size() > static_cast<std::size_t>(INT_MAX)) {
        error = source + ": the document is larger than 2 GB";
        return nullptr;
    }
    // The reader writes some reasons without a line end; they are gathered whole and given one.
    std::ostringstream said;
    auto pass_on = [&said, messages]() {
        std::string text = said.str();
        if (!text.empty() && text.back() != '\n')
            text += '\n';
        if (messages != nullptr)
            *messages += text;
        else
            std::cerr << text << std::flush;
    };
    MathEditContentHandler handler(table);
    handler.message_stream(said);
    Xml::Parser parser(&handler, true);
    bool well_formed = false;
    try {
        well_formed = parser.parse(text.data(), static_cast<int>(text.size()), true);
    } catch (BadMathEditContent const &) {
        pass_on();
        error = source + ": the formula was refused";
        return nullptr;
    }
    pass_on();
    if (!well_formed) {
        error = source + ":" + std::to_string(parser.errorLine()) + ":" + std::to_string(parser.errorColumn()) +
                ": " + parser.errorString();
        return nullptr;
    }
    MathRootNode *root = handler.node();
    if (root == nullptr)
        error = source + ": no formula in the document";
    return root;
}

std::string write_math_content(MathRootNode &root)
{
    std::ostringstream out;
    root.put_xml(out);
    return out.str();
}

}  // namespace Tavi
