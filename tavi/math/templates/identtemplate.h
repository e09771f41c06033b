// IdentTemplate: the template "ci" of identifiers, laid out as names (a letter slanted, a longer name
// upright). Identifiers that come from a host as text may be decorated: a trailing accent character
// becomes an accent over the name, an underscore a subscript, and a made-up name ("-3") the
// decorated identifier it was made for.
#pragma once

#include <cstddef>

#include "tavi/math/templates/atomtemplate.h"

namespace Tavi {

class MathString;

class IdentTemplate : public AtomTemplate
{
public:
    IdentTemplate(TemplateTable *table, bool can_enter, wchar const *keyword, TemplateAccelerator const &accelerator);

    using AtomTemplate::create_node;
    // A MathIdentNode with the text.
    MathNode *create_node(wchar const *text) override;
    // An identifier from a host: a made-up name turns back into its expression (when the table maps
    // such names), underscores become subscripts (when the table says so), and trailing accent
    // characters become accents. Null text is the empty identifier.
    MathNode *create_cat_node(wchar const *text) override;

protected:
    // A MathIdentNode with the string as its text.
    MathNode *create_node(MathString const &text);
    // The identifier of the text, with accents taken off its end: each accent character that ends a
    // name of two characters or more, and whose accent template is in the table, becomes an accent
    // node around the rest. Text that isn't a valid string gives the empty identifier.
    MathNode *build_accented_ident(wchar const *text, std::size_t length);
    MathNode *build_accented_ident(MathString &text);
    // The identifier of the text with the first underscore after any leading ones as a subscript:
    // "a_b_c" is a subscripted by (b subscripted by c). An underscore with nothing but underscores
    // after it stays in the name.
    MathNode *build_subscripted_ident(MathTemplate *subscript, wchar const *text, std::size_t length);
};

}  // namespace Tavi
