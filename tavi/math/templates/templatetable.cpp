// TemplateTable: the operator dictionary and its lookup, the built-in templates, and the lookups and
// the walk over templates.
#include "tavi/math/templates/templatetable.h"

#include <cstdint>

#include "tavi/editing/matheditscene.h"
#include "tavi/math/layoutmemo.h"
#include "tavi/glyph/input.h"
#include "tavi/math/layout/layoutbigop.h"
#include "tavi/math/layout/layoutbraceop.h"
#include "tavi/math/layout/layoutdisplayop.h"
#include "tavi/math/layout/layoutextcharop.h"
#include "tavi/math/layout/layoutfenceop.h"
#include "tavi/math/layout/layoutintegralop.h"
#include "tavi/math/layout/layoutoverbarop.h"
#include "tavi/math/layout/layoutradicalop.h"
#include "tavi/math/layout/layoutstackop.h"
#include "tavi/math/layout/layouttoken.h"
#include "tavi/math/mathstring.h"
#include "tavi/math/templates/accenttemplate.h"
#include "tavi/math/templates/dummytemplate.h"
#include "tavi/math/templates/identtemplate.h"
#include "tavi/math/templates/joinsymbtemplate.h"
#include "tavi/math/templates/mathidentmapping.h"
#include "tavi/math/templates/minustemplate.h"
#include "tavi/math/templates/negatetemplate.h"
#include "tavi/math/templates/numbertemplate.h"
#include "tavi/math/templates/operator_table.h"
#include "tavi/math/templates/plustemplate.h"
#include "tavi/math/templates/stringtemplate.h"
#include "tavi/math/templates/subscripttemplate.h"
#include "tavi/math/templates/subsupscripttemplate.h"
#include "tavi/math/templates/superscripttemplate.h"

namespace Tavi {

namespace {

// The constructor of each operator class, indexed by OperatorClass.
template <class Op>
LayoutOp *make_op(wchar const *text, LayoutOp::Form form, bool fence, bool separator, bool movablelimits,
                  bool accent, long lspace, long rspace)
{
    return new Op(text, form, fence, separator, movablelimits, accent, lspace, rspace);
}

using OpMaker = LayoutOp *(*)(wchar const *, LayoutOp::Form, bool, bool, bool, bool, long, long);

OpMaker const op_makers[] = {
    make_op<LayoutOp>,          // op_plain
    make_op<LayoutDisplayOp>,   // op_display
    make_op<LayoutStackOp>,     // op_stack
    make_op<LayoutFenceOp>,     // op_fence
    make_op<LayoutBraceOp>,     // op_brace
    make_op<LayoutBigOp>,       // op_big
    make_op<LayoutRadicalOp>,   // op_radical
    make_op<LayoutIntegralOp>,  // op_integral
    make_op<LayoutOverBarOp>,   // op_overbar
    make_op<LayoutExtCharOp>,   // op_extchar
};

LayoutOp *make_op(OperatorRow const &row)
{
    return op_makers[row.op_class](row.text, static_cast<LayoutOp::Form>(row.form), (row.flags & opf_fence) != 0,
                                   (row.flags & opf_separator) != 0, (row.flags & opf_movablelimits) != 0,
                                   (row.flags & opf_accent) != 0, row.lspace, row.rspace);
}

// A walk position is one plus the index of a template; 0 (null) ends the walk.
TemplatePosition *position_of(std::size_t index)
{
    return reinterpret_cast<TemplatePosition *>(static_cast<std::uintptr_t>(index + 1));
}

std::size_t index_of(TemplatePosition *position)
{
    return static_cast<std::size_t>(reinterpret_cast<std::uintptr_t>(position)) - 1;
}

bool same_text(wchar const *a, wchar const *b)
{
    return wstring(a != nullptr ? a : u"") == (b != nullptr ? b : u"");
}

// The built-in accents: type name, keyword, the operator text set with the base, the layout.
struct AccentRow
{
    wchar const *type_name;
    wchar const *keyword;
    wchar const *cat_text;
    AccentTemplate::Layout layout;
};

AccentRow const accent_rows[] = {
    {u"overbar_accent", u"Overbar", u"&OverBar;", AccentTemplate::over},
    {u"underbar_accent", u"Underbar", u"&UnderBar;", AccentTemplate::under},
    {u"ast_accent", u"Asterix", u"&ast;", AccentTemplate::sup},
    {u"prime_accent", u"Prime", u"&prime;", AccentTemplate::row},
    {u"circ_accent", u"Hat", u"&circ;", AccentTemplate::over},
    {u"tilde_accent", u"Tilde", u"&tilde;", AccentTemplate::over_accent},
    {u"rarr_accent", u"Arrow", u"&rarr;", AccentTemplate::over},
    {u"dot_accent", u"Dot", u"&dot;", AccentTemplate::over_accent},
    {u"die_accent", u"Double Dot", u"&die;", AccentTemplate::over_accent},
    {u"tdot_accent", u"Triple Dot", u"&tdot;", AccentTemplate::over_accent},
};

// Sums and their relatives bind at this strength: a sum inside a product gets parentheses.
constexpr double sum_priority = 1000.0;

}  // namespace

TemplateTable::TemplateTable(MathEditScene *scene)
    : scene_(scene), map_decorated_idents_(true), underline_in_ident_as_subscript_(true)
{
    init_builtin_templates();
}

TemplateTable::~TemplateTable()
{
    setup_cleanup();
    for (MathIdentMapping *mapping : ident_mappings_)
        delete mapping;
    // Templates first: a template's layouts may hold copies of operators, never the records here.
    for (MathTemplate *t : templates_)
        if (t)
            t->unref();
    for (LayoutOp *op : operators_)
        op->unref();
}

void TemplateTable::init_builtin_templates()
{
    operators_.reserve(operator_table_size);
    for (std::size_t i = 0; i < operator_table_size; ++i)
        add_operator(make_op(operator_table[i]));

    TemplateAccelerator const none;
    add_template(new IdentTemplate(this, true, u"Identifier", none));
    add_template(new NumberTemplate(this, true, u"Number", none));
    add_template(new StringTemplate(this, true, u"String", none));
    add_template(new DummyTemplate(this, true, u"Placeholder", TemplateAccelerator(u'?')));
    add_template(new PlusTemplate(this, true, u"Addition", TemplateAccelerator(u'+'), sum_priority));
    add_template(new MinusTemplate(this, true, u"Subtraction", TemplateAccelerator(u'-'), sum_priority));
    add_template(new NegateTemplate(this, true, u"Negation",
                                    TemplateAccelerator(static_cast<Input::Key>('N'), Input::modifier_control),
                                    sum_priority));
    add_template(new SubscriptTemplate(this, true, u"Subscript", TemplateAccelerator(u'_')));
    add_template(new SuperscriptTemplate(this, true, u"Superscript", none));
    add_template(new SubSupscriptTemplate(this, true, u"Sub- and Superscript", none));
    add_template(new JoinSymbTemplate(this, true, u"Join Symbols", none));
    for (AccentRow const &row : accent_rows)
        add_template(new AccentTemplate(this, row.type_name, true, row.keyword, none, row.cat_text, row.layout));
}

MathTemplate *TemplateTable::get_template(wchar const *name) const
{
    std::size_t const i = find_template(name);
    return i == npos ? nullptr : templates_[i];
}

MathTemplate *TemplateTable::get_template(TemplateAccelerator const &accel) const
{
    if (accel.is_void())
        return nullptr;
    for (MathTemplate *t : templates_)
        if (t && t->accelerator() == accel)
            return t;
    return nullptr;
}

MathTemplate *TemplateTable::get_dummy_template() const { return get_template(u"dummy"); }

LayoutOp *TemplateTable::find_operator(MathString const &text, LayoutOp::Form form) const
{
    for (LayoutOp *op : operators_)
        if (op->is_op(text, form))
            return op;
    return nullptr;
}

LayoutOp *TemplateTable::get_layout_op(wchar const *text, LayoutOp::Form form, int lbadness, int rbadness)
{
    MathString const string = LayoutToken::decode_text(text);

    // The asked form first, then the others in the fixed order infix, prefix, postfix.
    LayoutOp *found = find_operator(string, form);
    for (LayoutOp::Form other : {LayoutOp::infix, LayoutOp::prefix, LayoutOp::postfix})
        if (found == nullptr && other != form)
            found = find_operator(string, other);
    // An unknown operator is a plain one of the asked form, and stays known.
    if (found == nullptr) {
        found = new LayoutOp(text, form, false, false, false, false, 0, 0);
        add_operator(found);
    }

    LayoutOp *copy = static_cast<LayoutOp *>(found->clone(false));
    if (lbadness != 0)
        copy->lbadness(static_cast<double>(lbadness));
    if (rbadness != 0)
        copy->rbadness(static_cast<double>(rbadness));
    return copy;
}

TemplatePosition *TemplateTable::get_first_template_info_position() const
{
    for (std::size_t i = 0; i < templates_.size(); ++i)
        if (templates_[i])
            return position_of(i);
    return nullptr;
}

void TemplateTable::get_next_template_info(MathOverlayTemplateInfo &info, TemplatePosition *&position) const
{
    if (position == nullptr)
        return;
    std::size_t const i = index_of(position);
    position = nullptr;
    if (i >= templates_.size() || templates_[i] == nullptr)
        return;
    info.assign(*templates_[i]);
    for (std::size_t next = i + 1; next < templates_.size(); ++next)
        if (templates_[next]) {
            position = position_of(next);
            break;
        }
}

// The scene class that knows the answer (it asks the user) is not part of this library yet.
bool TemplateTable::query_array_dimensions(std::size_t &rows, std::size_t &cols, wchar const *keyword)
{
    return scene_ != nullptr && scene_->query_array_dimensions(rows, cols, keyword);
}

void TemplateTable::add_template(MathTemplate *templ)
{
    LayoutMemo::new_generation();
    if (templ)
        templ->ref();
    templates_.push_back(templ);
}

bool TemplateTable::replace_template(std::size_t index, MathTemplate *templ)
{
    LayoutMemo::new_generation();
    if (index >= templates_.size())
        return false;
    if (templ)
        templ->ref();
    MathTemplate *old = templates_[index];
    templates_[index] = templ;
    if (old)
        old->unref();
    return true;
}

std::size_t TemplateTable::find_template(wchar const *name) const
{
    for (std::size_t i = 0; i < templates_.size(); ++i)
        if (templates_[i] && same_text(templates_[i]->type_name(), name))
            return i;
    return npos;
}

MathTemplate *TemplateTable::template_at(std::size_t index) const
{
    return index < templates_.size() ? templates_[index] : nullptr;
}

void TemplateTable::add_operator(LayoutOp *op)
{
    op->ref();
    operators_.push_back(op);
}

LayoutOp *TemplateTable::operator_at(std::size_t index) const
{
    return index < operators_.size() ? operators_[index] : nullptr;
}

}  // namespace Tavi
