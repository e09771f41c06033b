// TemplateTable: the operator dictionary and its lookup across forms, unknown operators, the copies a
// caller gets, template lookup by name and by entry key, the host's walk over templates, and the
// table's hold on the templates it keeps.
#include "tavi/kxt/utf.h"
#include "tavi/glyph/input.h"
#include "tavi/math/layout/layoutbigop.h"
#include "tavi/math/layout/layoutbraceop.h"
#include "tavi/math/layout/layoutdisplayop.h"
#include "tavi/math/layout/layoutextcharop.h"
#include "tavi/math/layout/layoutfenceop.h"
#include "tavi/math/layout/layoutintegralop.h"
#include "tavi/math/layout/layoutop.h"
#include "tavi/math/layout/layoutoverbarop.h"
#include "tavi/math/layout/layoutradicalop.h"
#include "tavi/math/layout/layoutstackop.h"
#include "tavi/math/layout/layouttoken.h"
#include "tavi/math/templates/mathoverlaytemplateinfo.h"
#include "tavi/math/templates/mathtemplate.h"
#include "tavi/math/templates/operator_table.h"
#include "tavi/math/templates/templatetable.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <typeindex>
#include <typeinfo>
#include <utility>
#include <vector>

using namespace Tavi;

namespace {

struct OpDeleter
{
    void operator()(LayoutOp *op) const
    {
        op->ref();
        op->unref();
    }
};
using OpCopy = std::unique_ptr<LayoutOp, OpDeleter>;

OpCopy lookup(TemplateTable &table, wchar const *text, LayoutOp::Form form, int lbad = 0, int rbad = 0)
{
    return OpCopy(table.get_layout_op(text, form, lbad, rbad));
}

}  // namespace

TEST(OperatorTable, HasOneRowPerTextAndFormAndOnlyKnownClasses)
{
    ASSERT_EQ(139u, operator_table_size);
    std::set<std::pair<std::u16string, int>> seen;
    for (std::size_t i = 0; i < operator_table_size; ++i) {
        OperatorRow const &row = operator_table[i];
        SCOPED_TRACE(Kxt::to_string(row.text));
        EXPECT_TRUE(seen.insert({row.text, row.form}).second) << "text and form twice";
        EXPECT_GE(row.op_class, op_plain);
        EXPECT_LE(row.op_class, op_extchar);
        EXPECT_GE(row.form, 0);
        EXPECT_LE(row.form, 2);
    }
    TemplateTable table(nullptr);
    EXPECT_EQ(139u, table.operator_count());
}

// Lookup across forms: the asked form first, then infix, prefix, postfix; the copy keeps the form of
// the record it came from.
TEST(TemplateTable, GetLayoutOpTriesTheAskedFormThenInfixPrefixPostfix)
{
    struct Case
    {
        wchar const *text;
        LayoutOp::Form asked;
        std::type_index cls;
        LayoutOp::Form found;
        bool fence, separator, movablelimits, accent;
        long lspace, rspace;
    };
    using F = LayoutOp::Form;
    std::vector<Case> const cases = {
        {u"(", F::prefix, typeid(LayoutFenceOp), F::prefix, true, false, false, false, 0, 0},
        // No postfix "(": the infix record (space 3 before it) comes before the prefix one.
        {u"(", F::postfix, typeid(LayoutFenceOp), F::infix, true, false, false, false, 3, 0},
        // "!" exists as prefix and postfix: for infix the prefix record wins.
        {u"!", F::infix, typeid(LayoutOp), F::prefix, false, false, false, false, 0, 6},
        // "-" for postfix: infix (5, 5) is tried before prefix (3, 4).
        {u"-", F::postfix, typeid(LayoutOp), F::infix, false, false, false, false, 5, 5},
        // "}" for prefix: not prefix, not infix, then postfix.
        {u"}", F::prefix, typeid(LayoutBraceOp), F::postfix, true, false, false, false, 0, 0},
        {u"|", F::infix, typeid(LayoutStackOp), F::infix, false, false, false, false, 6, 6},
        {u",", F::infix, typeid(LayoutOp), F::infix, false, true, false, false, 0, 7},
        {u"&Sum;", F::infix, typeid(LayoutDisplayOp), F::prefix, false, false, true, false, 0, 4},
        {u"&Integral;", F::postfix, typeid(LayoutIntegralOp), F::prefix, false, false, true, false, 0, 0},
        {u"&Sqrt;", F::prefix, typeid(LayoutRadicalOp), F::prefix, false, false, false, false, 0, 0},
        {u"&SmallCircle;", F::infix, typeid(LayoutExtCharOp), F::infix, false, false, false, false, 5, 5},
        {u"&OverBar;", F::postfix, typeid(LayoutOverBarOp), F::postfix, false, false, false, true, 0, 0},
    };
    TemplateTable table(nullptr);
    for (Case const &c : cases) {
        SCOPED_TRACE(Kxt::to_string(c.text) + " asked " + std::to_string(c.asked));
        OpCopy op = lookup(table, c.text, c.asked);
        ASSERT_NE(nullptr, op);
        EXPECT_EQ(c.cls, std::type_index(typeid(*op)));
        EXPECT_EQ(c.found, op->form());
        EXPECT_EQ(c.fence, op->fence());
        EXPECT_EQ(c.separator, op->separator());
        EXPECT_EQ(c.movablelimits, op->movablelimits());
        EXPECT_EQ(c.accent, op->accent());
        EXPECT_EQ(c.lspace, op->lspace());
        EXPECT_EQ(c.rspace, op->rspace());
    }
    // None of these was unknown.
    EXPECT_EQ(139u, table.operator_count());
}

// The caller gets a private copy: badness set on it stays on it, and the record keeps the form's
// defaults (infix 0 and 0, prefix 0 and 50000).
TEST(TemplateTable, GetLayoutOpGivesACopyWithTheCallersBadnessAndKeepsUnknownOperators)
{
    TemplateTable table(nullptr);
    OpCopy plus = lookup(table, u"+", LayoutOp::infix, 7, 0);
    EXPECT_DOUBLE_EQ(7.0, plus->lbadness());
    EXPECT_DOUBLE_EQ(0.0, plus->rbadness());

    // A badness of 0 leaves the record's own: a prefix operator must not part from what follows.
    OpCopy neg = lookup(table, u"-", LayoutOp::prefix, 0, 0);
    EXPECT_DOUBLE_EQ(0.0, neg->lbadness());
    EXPECT_DOUBLE_EQ(LayoutOp::forbidden_break, neg->rbadness());
    // Changing a copy leaves the next copy alone.
    neg->rbadness(12.0);
    EXPECT_DOUBLE_EQ(LayoutOp::forbidden_break, lookup(table, u"-", LayoutOp::prefix)->rbadness());

    // An unknown operator is never a miss: a plain record of the asked form joins the table for good
    // and is found again, by any form, without another record.
    OpCopy foo = lookup(table, u"foo", LayoutOp::prefix, 2, 3);
    EXPECT_EQ(std::type_index(typeid(LayoutOp)), std::type_index(typeid(*foo)));
    EXPECT_DOUBLE_EQ(2.0, foo->lbadness());
    EXPECT_DOUBLE_EQ(3.0, foo->rbadness());
    ASSERT_EQ(140u, table.operator_count());

    // The record keeps the badness a prefix operator is born with, not the caller's 2 and 3.
    LayoutOp *record = table.operator_at(139);
    EXPECT_DOUBLE_EQ(0.0, record->lbadness());
    EXPECT_DOUBLE_EQ(LayoutOp::forbidden_break, record->rbadness());

    OpCopy post = lookup(table, u"foo", LayoutOp::postfix);
    EXPECT_EQ(LayoutOp::prefix, post->form());
    EXPECT_DOUBLE_EQ(LayoutOp::forbidden_break, post->rbadness());
    EXPECT_EQ(140u, table.operator_count());
}

TEST(TemplateTable, GetTemplateByNameIsExact)
{
    TemplateTable table(nullptr);
    std::vector<std::u16string> const names = {
        u"ci", u"cn", u"string", u"dummy", u"plus", u"minus", u"negate", u"subscript", u"superscript",
        u"subsupscript", u"joinsymb", u"overbar_accent", u"underbar_accent", u"ast_accent", u"prime_accent",
        u"circ_accent", u"tilde_accent", u"rarr_accent", u"dot_accent", u"die_accent", u"tdot_accent"};
    ASSERT_EQ(names.size(), table.template_count());
    for (std::size_t i = 0; i < names.size(); ++i) {
        MathTemplate *t = table.get_template(names[i].c_str());
        ASSERT_NE(nullptr, t) << Kxt::to_string(names[i].c_str());
        EXPECT_EQ(t, table.template_at(i));
        EXPECT_EQ(i, table.find_template(names[i].c_str()));
    }
    // Left to the setup file, other case, a prefix, empty and null: none.
    for (wchar const *name : {u"seq", u"Plus", u"plu", u""})
        EXPECT_EQ(nullptr, table.get_template(name)) << Kxt::to_string(name);
}

TEST(TemplateTable, GetTemplateByAccelerator)
{
    TemplateTable table(nullptr);
    auto key = [](int k, int modifiers) { return TemplateAccelerator(static_cast<Input::Key>(k), modifiers); };
    struct Case
    {
        TemplateAccelerator accel;
        wchar const *expected;  // null: no template
    };
    std::vector<Case> const cases = {
        {TemplateAccelerator(u'?'), u"dummy"},
        {key('N', Input::modifier_control), u"negate"},
        // Same key, other modifiers; the letter typed as a character.
        {key('N', Input::modifier_control | Input::modifier_shift), nullptr},
        {TemplateAccelerator(u'N'), nullptr},
        // Void keys: the built-ins without a key have key 0 and modifiers 0, which a void key must
        // not reach.
        {TemplateAccelerator(), nullptr},
    };
    for (Case const &c : cases) {
        MathTemplate *t = table.get_template(c.accel);
        SCOPED_TRACE(std::to_string(c.accel.key()) + "/" + std::to_string(c.accel.modifiers()));
        if (c.expected == nullptr)
            EXPECT_EQ(nullptr, t) << Kxt::to_string(t ? t->type_name() : u"");
        else
            EXPECT_EQ(table.get_template(c.expected), t);
    }

    // The first of two templates with the same key wins.
    table.get_template(u"tdot_accent")->accelerator(TemplateAccelerator(u'?'));
    EXPECT_EQ(table.get_dummy_template(), table.get_template(TemplateAccelerator(u'?')));
}

TEST(TemplateTable, WalkVisitsEveryTemplateInOrderAndSkipsEmptySlots)
{
    TemplateTable table(nullptr);
    auto walk = [&table]() {
        std::vector<std::pair<std::u16string, std::u16string>> seen;
        TemplatePosition *pos = table.get_first_template_info_position();
        for (int guard = 0; pos != nullptr && guard < 100; ++guard) {
            MathOverlayTemplateInfo info;
            table.get_next_template_info(info, pos);
            EXPECT_TRUE(info.can_enter);
            seen.emplace_back(info.name, info.keyword);
        }
        EXPECT_EQ(nullptr, pos);
        return seen;
    };
    auto seen = walk();
    ASSERT_EQ(21u, seen.size());
    EXPECT_EQ(u"ci", seen[0].first);
    EXPECT_EQ(u"Identifier", seen[0].second);
    EXPECT_EQ(u"tdot_accent", seen[20].first);
    EXPECT_EQ(u"Triple Dot", seen[20].second);

    // Empty slots, at the start, inside and at the end, are skipped.
    ASSERT_TRUE(table.replace_template(0, nullptr));
    ASSERT_TRUE(table.replace_template(5, nullptr));
    ASSERT_TRUE(table.replace_template(20, nullptr));
    EXPECT_FALSE(table.replace_template(21, nullptr));
    seen = walk();
    ASSERT_EQ(18u, seen.size());
    EXPECT_EQ(u"cn", seen.front().first);
    EXPECT_EQ(u"die_accent", seen.back().first);
    EXPECT_EQ(nullptr, table.get_template(u"minus"));
}
