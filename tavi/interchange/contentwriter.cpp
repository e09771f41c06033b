// Shared pieces of the content writers of the node classes.
#include "tavi/interchange/contentwriter.h"

#include <ostream>

#include "tavi/interchange/decimalseparator.h"
#include "tavi/kxt/xmltext.h"
#include "tavi/math/charnames.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathstring.h"

namespace Tavi {

void put_ipop(std::ostream &out, MathNode const &node)
{
    if (node.ip_operand())
        out << " ipop=\"1\"";
}

void put_children(std::ostream &out, MathNode &node)
{
    long const n = node.count();
    for (long i = 0; i < n; ++i)
        if (Glyph *child = node.component(i))
            child->put_xml(out);
}

std::ostream &put_plain_element(std::ostream &out, char const *tag, MathNode &node)
{
    out << '<' << tag;
    put_ipop(out, node);
    out << '>';
    put_children(out, node);
    return out << "</" << tag << '>';
}

namespace {

// One character of a symbol, extension or open-face run: by name when the font's map has one,
// as itself when the map says it is a plain character of that font, dropped when unknown.
void put_mapped_char(std::ostream &out, MathString::Font font, wchar code)
{
    wstring const form = CharNames::entity(font, code);
    if (form.empty())
        return;
    if (form[0] == u'&' && form.size() >= 2 && form.back() == u';') {
        wstring const name = form.substr(1, form.size() - 2);
        out << "<chr nm=\"" << name.c_str() << "\"/>";
        return;
    }
    Kxt::putCData(out, form.c_str());
}

}  // namespace

void put_token_text(std::ostream &out, MathString const &text, wchar separator)
{
    for (std::size_t run = 0; run < text.run_count(); ++run) {
        std::size_t const start = text.run_start(run);
        std::size_t const end = text.run_end(run);
        MathString::Font const font = text.run_font(run);
        if (font == MathString::f_text) {
            wstring piece = text.chars().substr(start, end - start);
            // In memory a number holds the user's separator; the format always has a point.
            if (separator != 0 && separator != u'.')
                replace_first(piece, separator, u'.');
            Kxt::putCData(out, piece.c_str());
            continue;
        }
        for (std::size_t i = start; i < end; ++i)
            put_mapped_char(out, font, text.at(i));
    }
}

std::ostream &put_token_element(std::ostream &out, char const *tag, MathNode &node, bool number)
{
    out << '<' << tag;
    put_ipop(out, node);
    out << '>';
    put_token_text(out, node.text(), number ? decimal_separator() : wchar(0));
    return out << "</" << tag << '>';
}

}  // namespace Tavi
