// The layout expressions of the setup file: each element leaves one layout on the reader's stack, and
// the elements that take children collect them from the stack when they end. Placeholders (oper),
// operators and tokens are the leaves; rows, fractions, scripts, limits, radicals and tables nest.
#include <cstring>
#include <string>
#include <vector>

#include "tavi/math/layout/layoutfixedplaceholder.h"
#include "tavi/math/layout/layoutfraction.h"
#include "tavi/math/layout/layoutident.h"
#include "tavi/math/layout/layoutlists.h"
#include "tavi/math/layout/layoutnumber.h"
#include "tavi/math/layout/layoutoperatorrow.h"
#include "tavi/math/layout/layoutover.h"
#include "tavi/math/layout/layoutroot.h"
#include "tavi/math/layout/layoutrow.h"
#include "tavi/math/layout/layoutrunningplaceholder.h"
#include "tavi/math/layout/layoutsqrt.h"
#include "tavi/math/layout/layoutstring.h"
#include "tavi/math/layout/layoutsub.h"
#include "tavi/math/layout/layoutsubsup.h"
#include "tavi/math/layout/layoutsup.h"
#include "tavi/math/layout/layouttable.h"
#include "tavi/math/layout/layouttext.h"
#include "tavi/math/layout/layoutunder.h"
#include "tavi/math/layout/layoutunderover.h"
#include "tavi/math/templates/setupgrammar.h"
#include "tavi/math/templates/setupscan.h"

namespace Tavi {

using Grammar = TemplateTable::SetupGrammar;

namespace {

// --- Attribute values. A faulty number is recorded and replaced by the fallback.

// A count or strength of 0 or more.
int read_unsigned_int(Grammar::Element const &e, wchar const *name, wchar const *def, int fallback)
{
    int value = 0;
    if (!scan_setup_int(e.text(name, def).c_str(), value) || value < 0) {
        e.table.parse_err();
        return fallback;
    }
    return value;
}

long read_unsigned_long(Grammar::Element const &e, wchar const *name)
{
    long value = 0;
    if (!scan_setup_long(e.text(name, u"0").c_str(), value) || value < 0) {
        e.table.parse_err();
        return 0;
    }
    return value;
}

// A badness may be negative: it makes a break beside the operator more welcome.
int read_badness(Grammar::Element const &e, wchar const *name)
{
    int value = 0;
    if (!scan_setup_int(e.text(name, u"0").c_str(), value)) {
        e.table.parse_err();
        return 0;
    }
    return value;
}

// lspace and rspace of mo, in twentieths of the font size: -1 when absent, so that the dictionary's
// value stands.
long read_space(Grammar::Element const &e, wchar const *name)
{
    wstring const text = e.text(name, u"");
    if (text.empty())
        return -1;
    int value = 0;
    if (!scan_setup_int(text.c_str(), value) || value < 0) {
        e.table.parse_err();
        return -1;
    }
    return value;
}

// idx="from, to" of a row or table: the node's children that it shows, -1 the last. Every oper
// idx="*" read later takes this range, also after the element has ended.
void read_child_range(Grammar::Element const &e)
{
    long &from = Grammar::idx_from(e.table);
    long &to = Grammar::idx_to(e.table);
    if (!scan_setup_long_pair(e.text(u"idx", u"0,-1").c_str(), from, to)) {
        e.table.parse_err();
        from = 0;
        to = 0;
    }
}

// slant: the two names, or a flag that forces identifiers slanted or upright.
struct SlantRow
{
    wchar const *value;
    LayoutPlaceholder::Slanting slanting;
};

SlantRow const slant_rows[] = {
    {u"inherit", LayoutPlaceholder::inherit},
    {u"noslantedidents", LayoutPlaceholder::noslantedidents},
    {u"1", LayoutPlaceholder::slanted},
    {u"true", LayoutPlaceholder::slanted},
    {u"0", LayoutPlaceholder::unslanted},
    {u"false", LayoutPlaceholder::unslanted},
};

LayoutPlaceholder::Slanting read_slanting(Grammar::Element const &e)
{
    wstring const value = e.text(u"slant", u"inherit");
    for (SlantRow const &row : slant_rows)
        if (value == row.value)
            return row.slanting;
    e.table.parse_err();
    return LayoutPlaceholder::slanted;
}

struct FormRow
{
    wchar const *value;
    LayoutOp::Form form;
};

FormRow const form_rows[] = {
    {u"infix", LayoutOp::infix},
    {u"prefix", LayoutOp::prefix},
    {u"postfix", LayoutOp::postfix},
};

// --- Leaves.

// oper: where the node's children are shown: one child by index, or with idx="*" each child of the
// range of the enclosing row or table in turn.
void oper_start(Grammar::Element const &e)
{
    TemplateTable &t = e.table;
    int const prio = read_unsigned_int(e, u"prio", u"0", 0);
    LayoutPlaceholder::Slanting const slanting = read_slanting(e);
    wstring const idx = e.text(u"idx", u"*");
    if (idx == u"*") {
        Grammar::push(t, new LayoutRunningPlaceholder(&t, prio, Grammar::idx_from(t), Grammar::idx_to(t), slanting));
        return;
    }
    long index = 0;
    if (scan_setup_long(idx.c_str(), index))
        Grammar::push(t, new LayoutFixedPlaceholder(&t, prio, index, slanting));
    else
        t.parse_err();
}

// mo: an operator of the table's dictionary (or a new one) by its text. A form that is not known
// stops the text from being collected, and the end then knows the element is void. lspace and rspace
// set this use of the operator apart from the dictionary's record, which stays as it is.
void mo_start(Grammar::Element const &e)
{
    TemplateTable &t = e.table;
    Grammar::need_character_data(t) = true;
    wstring const form = e.text(u"form", u"infix");
    bool known = false;
    for (FormRow const &row : form_rows)
        if (form == row.value) {
            Grammar::mo_form(t) = row.form;
            known = true;
        }
    if (!known) {
        Grammar::need_character_data(t) = false;
        t.parse_err();
    }
    Grammar::mo_lbadness(t) = read_badness(e, u"lbadness");
    Grammar::mo_rbadness(t) = read_badness(e, u"rbadness");
    Grammar::mo_lspace(t) = read_space(e, u"lspace");
    Grammar::mo_rspace(t) = read_space(e, u"rspace");
}

void mo_end(TemplateTable &t)
{
    if (!Grammar::need_character_data(t)) {
        t.parse_err();
        return;
    }
    std::unique_ptr<wstring> const &text = Grammar::character_data(t);
    LayoutOp *op = t.get_layout_op(text ? text->c_str() : u"", Grammar::mo_form(t), Grammar::mo_lbadness(t),
                                   Grammar::mo_rbadness(t));
    long const lspace = Grammar::mo_lspace(t);
    long const rspace = Grammar::mo_rspace(t);
    if (lspace >= 0 || rspace >= 0)
        op->spaces(lspace >= 0 ? lspace : op->lspace(), rspace >= 0 ? rspace : op->rspace());
    Grammar::push(t, op);
}

void token_start(Grammar::Element const &e) { Grammar::need_character_data(e.table) = true; }

// mi, mn, mtext, ms: fixed text; an empty one is a fault.
template <class Token>
void token_end(TemplateTable &t)
{
    std::unique_ptr<wstring> const &text = Grammar::character_data(t);
    if (!text || text->empty()) {
        t.parse_err();
        return;
    }
    Grammar::push(t, new Token(text->c_str()));
}

// --- Layouts with children.

// Takes the top `count` entries off the stack, oldest first; the caller gets their references.
std::vector<MathLayout *> pop_entries(TemplateTable &t, std::size_t count)
{
    std::vector<MathLayout *> &stack = Grammar::stack(t);
    std::vector<MathLayout *> entries(stack.end() - static_cast<long>(count), stack.end());
    stack.resize(stack.size() - count);
    return entries;
}

// Appends each entry to the parent in order and gives back the stack's references.
void adopt(MathLayout *parent, std::vector<MathLayout *> const &children)
{
    for (MathLayout *child : children) {
        if (parent)
            parent->append(child);
        Grammar::release(child);
    }
}

// mrow: everything read since its start, in one row.
void mrow_start(Grammar::Element const &e)
{
    Grammar::row_starts(e.table).push_back(Grammar::stack(e.table).size());
}

void mrow_end(TemplateTable &t)
{
    std::vector<std::size_t> &starts = Grammar::row_starts(t);
    if (starts.empty()) {
        t.parse_err();
        return;
    }
    std::size_t const start = starts.back();
    starts.pop_back();
    std::size_t const size = Grammar::stack(t).size();
    if (start >= size) {
        t.parse_err();
        return;
    }
    LayoutRow *row = new LayoutRow;
    adopt(row, pop_entries(t, size - start));
    Grammar::push(t, row);
}

// oprow, mfrac, munder, mover, munderover: made at the start tag, they take the `count` layouts that
// follow them, which must be of the element's own class.
template <class Parent, std::size_t count>
void take_children_end(TemplateTable &t)
{
    if (Grammar::stack(t).size() <= count) {
        t.parse_err();
        return;
    }
    std::vector<MathLayout *> const children = pop_entries(t, count);
    MathLayout *parent = Grammar::stack(t).back();
    if (dynamic_cast<Parent *>(parent) == nullptr) {
        t.parse_err();
        parent = nullptr;
    }
    adopt(parent, children);
}

void oprow_start(Grammar::Element const &e)
{
    read_child_range(e);
    Grammar::push(e.table, new LayoutOperatorRow(Grammar::idx_from(e.table), Grammar::idx_to(e.table), false));
}

void mfrac_start(Grammar::Element const &e)
{
    Grammar::push(e.table, new LayoutFraction(read_unsigned_int(e, u"linethickness", u"1", 1)));
}

void munder_start(Grammar::Element const &e) { Grammar::push(e.table, new LayoutUnder(e.flag(u"accent", false))); }

void mover_start(Grammar::Element const &e) { Grammar::push(e.table, new LayoutOver(e.flag(u"accent", false))); }

void munderover_start(Grammar::Element const &e)
{
    bool const accent = e.flag(u"accent", false);
    wstring const align = e.text(u"align", u"c");
    Grammar::push(e.table, new LayoutUnderOver(accent, static_cast<char>(align.empty() ? 0 : align[0])));
}

// msub, msup, msubsup, mroot, msqrt: made at the end tag from the last `count` layouts, which they replace.
template <class Parent, std::size_t count>
void wrap_children_end(TemplateTable &t)
{
    if (Grammar::stack(t).size() < count) {
        t.parse_err();
        return;
    }
    Parent *parent = new Parent;
    adopt(parent, pop_entries(t, count));
    Grammar::push(t, parent);
}

// optable, oplists: a grid of the node's children in the range; the layouts read inside are its cell
// layouts (for a table, one per column).
void grid_start(Grammar::Element const &e, long &rows, long &cols)
{
    read_child_range(e);
    rows = read_unsigned_long(e, u"rows");
    cols = read_unsigned_long(e, u"cols");
    Grammar::row_starts(e.table).push_back(Grammar::stack(e.table).size());
}

void optable_start(Grammar::Element const &e)
{
    long rows = 0;
    long cols = 0;
    grid_start(e, rows, cols);
    wstring const rowlines = e.text(u"rowlines", u"");
    wstring const columnlines = e.text(u"columnlines", u"");
    wstring const framelines = e.text(u"framelines", u"");
    wstring const columnalign = e.text(u"columnalign", u"");
    bool const wrapchildren = e.flag(u"wrapchildren", false);
    Grammar::push(e.table, new LayoutTable(Grammar::idx_from(e.table), Grammar::idx_to(e.table),
                                           static_cast<std::size_t>(rows), static_cast<std::size_t>(cols),
                                           rowlines.c_str(), columnlines.c_str(), framelines.c_str(),
                                           columnalign.c_str(), wrapchildren));
}

void oplists_start(Grammar::Element const &e)
{
    long rows = 0;
    long cols = 0;
    grid_start(e, rows, cols);
    Grammar::push(e.table, new LayoutLists(Grammar::idx_from(e.table), Grammar::idx_to(e.table),
                                           static_cast<std::size_t>(rows), static_cast<std::size_t>(cols)));
}

void grid_end(TemplateTable &t)
{
    std::vector<std::size_t> &starts = Grammar::row_starts(t);
    if (starts.empty()) {
        t.parse_err();
        return;
    }
    std::size_t const start = starts.back();
    starts.pop_back();
    std::vector<MathLayout *> &stack = Grammar::stack(t);
    if (start >= stack.size()) {
        t.parse_err();
        return;
    }
    MathLayout *grid = stack[start];
    if (dynamic_cast<LayoutTable *>(grid) == nullptr && dynamic_cast<LayoutLists *>(grid) == nullptr)
        t.parse_err();
    std::size_t const cells = stack.size() - start - 1;
    if (cells == 0)
        t.parse_err();
    adopt(grid, pop_entries(t, cells));
}

Grammar::Rule const layout_rules[] = {
    // element        start             end
    {"oper",          oper_start,       nullptr},
    {"mo",            mo_start,         mo_end},
    {"mi",            token_start,      token_end<LayoutIdent>},
    {"mn",            token_start,      token_end<LayoutNumber>},
    {"mtext",         token_start,      token_end<LayoutText>},
    {"ms",            token_start,      token_end<LayoutString>},
    {"mrow",          mrow_start,       mrow_end},
    {"oprow",         oprow_start,      take_children_end<LayoutOperatorRow, 2>},
    {"mfrac",         mfrac_start,      take_children_end<LayoutFraction, 2>},
    {"munder",        munder_start,     take_children_end<LayoutUnder, 2>},
    {"mover",         mover_start,      take_children_end<LayoutOver, 2>},
    {"munderover",    munderover_start, take_children_end<LayoutUnderOver, 3>},
    {"msub",          nullptr,          wrap_children_end<LayoutSub, 2>},
    {"msup",          nullptr,          wrap_children_end<LayoutSup, 2>},
    {"msubsup",       nullptr,          wrap_children_end<LayoutSubSup, 3>},
    {"mroot",         nullptr,          wrap_children_end<LayoutRoot, 2>},
    {"msqrt",         nullptr,          wrap_children_end<LayoutSqrt, 1>},
    {"optable",       optable_start,    grid_end},
    {"oplists",       oplists_start,    grid_end},
};

}  // namespace

Grammar::Rule const *Grammar::layout_rule(char const *name)
{
    for (Rule const &rule : layout_rules)
        if (std::strcmp(rule.name, name) == 0)
            return &rule;
    return nullptr;
}

}  // namespace Tavi
