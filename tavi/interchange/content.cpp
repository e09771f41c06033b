// Whole formulas to and from the math edit content format.
#include "tavi/interchange/content.h"

#include <climits>
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

std::string write_math_content(MathRootNode &root)
{
    std::ostringstream out;
    root.put_xml(out);
    return out.str();
}

}  // namespace Tavi
