// The pattern expander of the export formats, and the walk over a template's layout that finds the
// placeholder of a child and the parentheses it asks for.
#include "tavi/export/exportpattern.h"

#include <typeinfo>
#include <vector>

#include "tavi/interchange/decimalseparator.h"
#include "tavi/interchange/lineartext.h"
#include "tavi/kxt/utf.h"
#include "tavi/math/layout/layoutfixedplaceholder.h"
#include "tavi/math/layout/layoutrunningplaceholder.h"
#include "tavi/math/layout/mathlayout.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathnumbernode.h"
#include "tavi/math/mathstring.h"
#include "tavi/math/mathtablenode.h"
#include "tavi/math/templates/mathtemplate.h"

namespace Tavi {

namespace {

// The children a pattern sees: all of the node's, or one row of a table's.
struct View
{
    MathNode *node;
    long first;
    long count;
};

bool is_digit(wchar c) { return c >= u'0' && c <= u'9'; }

// Characters of the extension class that the linear text leaves in their entity form, having no
// character of their own at text size; the exports name the character that they stand for.
struct EntityChar
{
    char16_t const *entity;
    char16_t const *unicode;
};

constexpr EntityChar entity_chars[] = {
    // entity                        unicode
    {u"&Hat;",                      u"^"},
    {u"&Tilde;",                    u"~"},
    {u"&PrincipalValueIntegral;",   u"\u2A0F"},
    {u"&Verbar;",                   u"\u2016"},
    {u"&OverBar;",                  u"\u203E"},
    {u"&LeftFloor;",                u"\u230A"},
    {u"&RightFloor;",               u"\u230B"},
    {u"&LeftCeiling;",              u"\u2308"},
    {u"&RightCeiling;",             u"\u2309"},
    {u"&LeftAngleBracket;",         u"\u27E8"},
    {u"&RightAngleBracket;",        u"\u27E9"},
    {u"&Sqrt;",                     u"\u221A"},
    {u"&SmallCircle;",              u"\u2218"},
};

long read_number(wchar const *&p)
{
    long n = 0;
    for (; is_digit(*p) && n < 100000; ++p)
        n = n * 10 + (*p - u'0');
    return n;
}

// A braced group after a slot, braces balanced inside; false (and nothing read) without one.
bool read_group(wchar const *&p, wstring &group)
{
    if (*p != u'{')
        return false;
    int depth = 0;
    wchar const *start = p + 1;
    for (wchar const *q = p; *q != 0; ++q) {
        if (*q == u'{')
            ++depth;
        else if (*q == u'}' && --depth == 0) {
            group.assign(start, q);
            p = q + 1;
            return true;
        }
    }
    return false;
}

bool expand(wchar const *p, View const &view, PatternWriter &writer, std::string &out);

bool expand_rows(wchar const *&p, View const &view, PatternWriter &writer, std::string &out)
{
    auto *table = dynamic_cast<MathTableNode *>(view.node);
    wstring row;
    wstring separator;
    if (table == nullptr || !read_group(p, row) || (*p == u'{' && !read_group(p, separator)))
        return false;
    long const cols = table->n_cols() > 0 ? static_cast<long>(table->n_cols()) : 1;
    long const count = view.node->count();
    for (long start = 0; start < count; start += cols) {
        if (start > 0)
            writer.append(out, Kxt::to_string(separator));
        long const cells = count - start < cols ? count - start : cols;
        if (!expand(row.c_str(), View{view.node, start, cells}, writer, out))
            return false;
    }
    return true;
}

bool expand_slot(wchar const *&p, View const &view, PatternWriter &writer, std::string &out)
{
    if (*p == u'#') {
        ++p;
        writer.append(out, "#");
        return true;
    }
    if (*p == u'R') {
        ++p;
        return expand_rows(p, view, writer, out);
    }
    if (!is_digit(*p))
        return false;
    long const n = read_number(p) - 1;
    if (n < 0)
        return false;
    if (*p == u'*') {
        ++p;
        wstring separator;
        if (*p == u'{' && !read_group(p, separator))
            return false;
        for (long i = n; i < view.count; ++i) {
            if (i > n)
                writer.append(out, Kxt::to_string(separator));
            writer.append(out, writer.child(view.node, view.first + i));
        }
        return true;
    }
    if (n >= view.count)
        return false;
    if (*p == u'.' && is_digit(p[1])) {
        ++p;
        long const m = read_number(p) - 1;
        MathNode *outer = child_at(view.node, view.first + n);
        if (outer == nullptr || m < 0 || m >= outer->count())
            return false;
        writer.append(out, writer.child(outer, m));
        return true;
    }
    writer.append(out, writer.child(view.node, view.first + n));
    return true;
}

bool expand(wchar const *p, View const &view, PatternWriter &writer, std::string &out)
{
    wstring literal;
    while (*p != 0) {
        if (*p != u'#') {
            literal += *p++;
            continue;
        }
        if (!literal.empty())
            writer.append(out, Kxt::to_string(literal));
        literal.clear();
        ++p;
        if (!expand_slot(p, view, writer, out))
            return false;
    }
    if (!literal.empty())
        writer.append(out, Kxt::to_string(literal));
    return true;
}

// The binding strength asked by the placeholder that shows child `index` (of `count`), or -1 when
// none in this layout does.
int placeholder_priority(MathLayout *layout, long index, long count)
{
    if (layout == nullptr)
        return -1;
    if (auto *fixed = dynamic_cast<LayoutFixedPlaceholder *>(layout)) {
        long const i = fixed->fixed_index() < 0 ? fixed->fixed_index() + count : fixed->fixed_index();
        return i == index ? fixed->priority() : -1;
    }
    if (auto *running = dynamic_cast<LayoutRunningPlaceholder *>(layout)) {
        long const first = running->first() < 0 ? running->first() + count : running->first();
        long const last = running->last() < 0 ? running->last() + count : running->last();
        return index >= first && index <= last ? running->priority() : -1;
    }
    for (long i = 0; i < layout->count(); ++i) {
        int const prio = placeholder_priority(layout->child(i), index, count);
        if (prio >= 0)
            return prio;
    }
    return -1;
}

}  // namespace

bool expand_pattern(wstring const &pattern, MathNode *node, PatternWriter &writer, std::string &out)
{
    if (node == nullptr)
        return false;
    // Alternatives are tried in order. A "##" is a "#" of the text, not the start of "#|".
    std::vector<wstring> alternatives(1);
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] == u'#' && i + 1 < pattern.size() && pattern[i + 1] == u'|') {
            alternatives.emplace_back();
            ++i;
            continue;
        }
        alternatives.back() += pattern[i];
        if (pattern[i] == u'#' && i + 1 < pattern.size() && pattern[i + 1] == u'#')
            alternatives.back() += pattern[++i];
    }
    for (wstring const &alternative : alternatives) {
        std::string written;
        if (expand(alternative.c_str(), View{node, 0, node->count()}, writer, written)) {
            out += written;
            return true;
        }
    }
    return false;
}

MathNode *child_at(MathNode *parent, long index)
{
    if (parent == nullptr || index < 0 || index >= parent->count())
        return nullptr;
    return parent->child(static_cast<int>(index));
}

bool child_in_parens(MathNode *parent, long index)
{
    MathNode *child = child_at(parent, index);
    if (child == nullptr || parent->templ() == nullptr || child->templ() == nullptr)
        return false;
    // A placeholder of priority 0 has no parenthesised form.
    int const prio = placeholder_priority(parent->templ()->layout(), index, parent->count());
    return prio > 0 && static_cast<double>(prio) >= child->templ()->priority();
}

std::string xml_text(wstring const &text)
{
    std::string out;
    for (char c : Kxt::to_string(text)) {
        switch (c) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '"': out += "&quot;"; break;
        default: out += c;
        }
    }
    return out;
}

wstring export_unicode(MathString const &string)
{
    wstring text = unicode_text(string);
    for (std::size_t at = text.find(u'&'); at != wstring::npos; at = text.find(u'&', at + 1))
        for (EntityChar const &row : entity_chars)
            if (text.compare(at, wstring(row.entity).size(), row.entity) == 0) {
                text.replace(at, wstring(row.entity).size(), row.unicode);
                break;
            }
    return text;
}

wstring atom_unicode(MathNode *atom)
{
    wstring text = export_unicode(atom->text());
    if (typeid(*atom) == typeid(MathNumberNode) && decimal_separator() != u'.')
        replace_first(text, decimal_separator(), u'.');
    return text;
}

}  // namespace Tavi
