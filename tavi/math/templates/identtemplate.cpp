// IdentTemplate: identifiers made from their text, and the decorated identifiers that a host's text
// stands for.
#include "tavi/math/templates/identtemplate.h"

#include <cstdint>

#include "tavi/math/layout/layoutidentnode.h"
#include "tavi/math/mathidentnode.h"
#include "tavi/math/mathstring.h"
#include "tavi/math/templates/templatetable.h"

namespace Tavi {

namespace {

// The characters that, ending an identifier, stand for an accent over it: the class of the last
// run and the character code, and the accent template.
struct AccentChar
{
    MathString::Font font;
    std::uint16_t code;
    wchar const *templ;
};

AccentChar const accent_chars[] = {
    {MathString::f_upright, 65448, u"die_accent"},
    {MathString::f_text, 46, u"dot_accent"},
    {MathString::f_text, 94, u"circ_accent"},
    {MathString::f_symbol, 42, u"ast_accent"},
    {MathString::f_symbol, 95, u"underbar_accent"},
    {MathString::f_symbol, 126, u"tilde_accent"},
    {MathString::f_symbol, 65442, u"prime_accent"},
    {MathString::f_symbol, 65454, u"rarr_accent"},
    {MathString::f_symbol, 65468, u"tdot_accent"},
    {MathString::f_extension, 197, u"overbar_accent"},
};

// The accent template that the string's last character names, or null. A single character is a
// name, never an accent.
wchar const *trailing_accent(MathString const &text)
{
    if (text.char_count() < 2)
        return nullptr;
    MathString::Font const font = text.run_font(text.run_count() - 1);
    wchar const code = text.at(text.length() - 1);
    for (AccentChar const &row : accent_chars)
        if (row.font == font && row.code == code)
            return row.templ;
    return nullptr;
}

std::size_t text_length(wchar const *text)
{
    std::size_t n = 0;
    while (text[n] != 0)
        ++n;
    return n;
}

}  // namespace

IdentTemplate::IdentTemplate(TemplateTable *table, bool can_enter, wchar const *keyword, TemplateAccelerator const &accelerator)
    : AtomTemplate(table, u"ci", can_enter, keyword, accelerator)
{
    layout(new LayoutIdentNode);
}

MathNode *IdentTemplate::create_node(wchar const *text)
{
    MathIdentNode *node = new MathIdentNode(this);
    node->text(text);
    return node;
}

MathNode *IdentTemplate::create_node(MathString const &text)
{
    MathIdentNode *node = new MathIdentNode(this);
    node->text(text, -1);
    return node;
}

MathNode *IdentTemplate::create_cat_node(wchar const *text)
{
    if (text == nullptr)
        return create_node(u"");
    TemplateTable *owner = table();
    if (owner->map_decorated_idents() && text[0] == u'-') {
        if (MathNode *decorated = owner->decorated_ident(text))
            return decorated;
    }
    std::size_t const length = text_length(text);
    if (owner->underline_in_ident_as_subscript() && wstring(text, length).find(u'_') != wstring::npos) {
        if (MathTemplate *subscript = owner->get_template(u"subscript"))
            return build_subscripted_ident(subscript, text, length);
    }
    return build_accented_ident(text, length);
}

MathNode *IdentTemplate::build_accented_ident(wchar const *text, std::size_t length)
{
    MathString string;
    if (!MathString::decode(text, length, string))
        return create_node(u"");
    return build_accented_ident(string);
}

MathNode *IdentTemplate::build_accented_ident(MathString &text)
{
    wchar const *accent_name = trailing_accent(text);
    MathTemplate *accent = accent_name != nullptr ? table()->get_template(accent_name) : nullptr;
    if (accent == nullptr)
        return create_node(text);
    MathNode *node = accent->create_node();
    if (node == nullptr)
        return create_node(text);
    text.erase(text.prev_char(text.length()), text.length());
    node->append(build_accented_ident(text));
    return node;
}

MathNode *IdentTemplate::build_subscripted_ident(MathTemplate *subscript, wchar const *text, std::size_t length)
{
    // Leading underscores belong to the name ("_a" is one identifier).
    std::size_t start = 0;
    while (start < length && text[start] == u'_')
        ++start;
    std::size_t split = start;
    while (split < length && text[split] != u'_')
        ++split;
    std::size_t rest = split + 1;
    while (rest < length && text[rest] == u'_')
        ++rest;
    // No underscore, or only underscores after it: it stays in the name ("a_").
    if (split >= length || rest >= length)
        return build_accented_ident(text, length);

    MathNode *node = subscript->create_node();
    if (node == nullptr)
        return build_accented_ident(text, length);
    node->append(build_accented_ident(text, split));
    node->append(build_subscripted_ident(subscript, text + split + 1, length - split - 1));
    return node;
}

}  // namespace Tavi
