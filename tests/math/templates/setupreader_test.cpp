// The setup reader: faults of the file (each recorded, the rest of the file still read, the table
// still usable), the attributes of content and changecontent, replacement of templates, every layout
// element and the class and children of what it builds, the child ranges of oper "*", streams that
// fail and the block boundary, and the text collected inside tokens.
#include "setup_support.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tavi/kxt/utf.h"
#include "tavi/math/layout/layoutfixedplaceholder.h"
#include "tavi/math/layout/layoutfraction.h"
#include "tavi/math/layout/layoutlists.h"
#include "tavi/math/layout/layoutop.h"
#include "tavi/math/layout/layoutoperatorrow.h"
#include "tavi/math/layout/layoutover.h"
#include "tavi/math/layout/layoutrunningplaceholder.h"
#include "tavi/math/layout/layouttable.h"
#include "tavi/math/layout/layoutunder.h"
#include "tavi/math/layout/layoutunderover.h"
#include "tavi/math/layout/mathlayout.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/templates/mathtemplate.h"
#include "tavi/math/templates/plustemplate.h"
#include "tavi/math/templates/templatetable.h"

using namespace Tavi;
using namespace SetupTest;

namespace {

// A sound template read after a fault: it must land whatever came before.
std::string const sound_content = R"(<content id="after" arity="1"><layout><oper idx="0"/></layout></content>)";

MathLayout *layout_of(TemplateTable &table, wchar const *name)
{
    MathTemplate *t = table.get_template(name);
    return t != nullptr ? t->layout() : nullptr;
}

// The layout of a template "t" of arity 2* read from one layout expression.
std::string read_layout(TemplateTable &table, std::string const &expression, bool &ok)
{
    ok = read_setup(table, in_root(R"(<content id="t" arity="2*"><layout>)" + expression + "</layout></content>"));
    return describe_layout(layout_of(table, u"t"));
}

}  // namespace

// Each fault makes init false; the elements after it are still read; a second, sound file read into
// the same table succeeds. `layout_after` says whether the later template still gets its layout: a
// failed layout end leaves its entries on the stack, so each later layout fails its count too.
TEST(SetupReader, EveryFaultIsRecordedAndTheRestOfTheFileStillLands)
{
    struct Case
    {
        char const *fault;
        bool layout_after;
    };
    Case const cases[] = {
        {R"(<unknown/>)", true},
        {R"(<unknown><content id="inner" arity="0"/></unknown>)", true},
        {R"(<content arity="0"/>)", true},                                  // no id
        {R"(<content id="a"/>)", true},                                     // no arity
        {R"(<content id="a" ARITY="1"/>)", true},                           // names are exact
        {R"(<content id="a" arity="-1"/>)", true},
        {R"(<content id="a" arity="x"/>)", true},
        {R"(<content id="a" arity="2" dummies="3"/>)", true},
        {R"(<content id="a" arity="2*" dummies="1"/>)", true},
        {R"(<content id="a" arity="1" dummies="x"/>)", true},
        {R"(<content id="a" arity="1" flatten-seq="1"/>)", true},
        {R"(<content id="a" arity="1" prio="-1"/>)", true},
        {R"(<content id="a" arity="1" prio="high"/>)", true},
        {R"(<content id="a" arity="1" enter="maybe"/>)", true},
        {R"(<content id="a" arity="1" assoc="yes"/>)", true},
        {R"(<content id="a" arity="1" accel="shift+a"/>)", true},
        {R"(<content id="plus" arity="2*"/>)", true},                       // a built-in
        {R"(<content id="a" arity="0"><content id="b" arity="0"/></content>)", true},
        {R"(<content id="a" arity="0"><mathsetup/></content>)", true},
        {R"(<content id="a" arity="0"><changecontent id="ci"/></content>)", true},
        {R"(<changecontent id="nosuch"/>)", true},
        {R"(<changecontent keywd="x"/>)", true},
        {R"(<changecontent id="plus" accel="ctrl+p"/>)", true},
        {R"(<changecontent id="plus" enter="no"/>)", true},
        {R"(<changecontent id="plus" prio="-3"/>)", true},
        {R"(<changecontent id="plus" prio="x"/>)", true},
        {R"(<layout><mi>x</mi></layout>)", false},                          // outside content
        {R"(<content id="a" arity="0"><layout/></content>)", true},
        {R"(<content id="a" arity="0"><layout><mi>x</mi><mi>y</mi></layout></content>)", false},
        {R"(<content id="a" arity="1"><layout><oper idx="x"/></layout></content>)", true},
        {R"(<content id="a" arity="1"><layout><oper idx="0" prio="-2"/></layout></content>)", true},
        {R"(<content id="a" arity="1"><layout><oper idx="0" slant="sideways"/></layout></content>)", true},
        {R"(<content id="a" arity="1"><layout><mo form="foo">+</mo></layout></content>)", true},
        {R"(<content id="a" arity="1"><layout><mo lbadness="x">+</mo></layout></content>)", true},
        {R"(<content id="a" arity="1"><layout><mo rbadness="">+</mo></layout></content>)", true},
        {R"(<content id="a" arity="1"><layout><mo lspace="-1">+</mo></layout></content>)", true},
        {R"(<content id="a" arity="1"><layout><mo rspace="x">+</mo></layout></content>)", true},
        {R"(<content id="a" arity="1"><layout><mi/></layout></content>)", true},
        {R"(<content id="a" arity="1"><layout><mi><mn>1</mn></mi></layout></content>)", true},
        {R"(<content id="a" arity="1"><layout><mrow/></layout></content>)", true},
        {R"(<content id="a" arity="1"><layout><oprow><oper/></oprow></layout></content>)", false},
        {R"(<content id="a" arity="1"><layout><oprow idx="1"><oper/><mo>,</mo></oprow></layout></content>)", true},
        {R"(<content id="a" arity="2"><layout><mfrac linethickness="-1"><oper idx="0"/><oper idx="1"/></mfrac></layout></content>)", true},
        {R"(<content id="a" arity="1"><layout><mfrac><oper idx="0"/></mfrac></layout></content>)", false},
        {R"(<content id="a" arity="1"><layout><munderover><oper idx="0"/><mo>_</mo></munderover></layout></content>)", false},
        {R"(<content id="a" arity="1"><layout><mover accent="maybe"><oper idx="0"/><mo>^</mo></mover></layout></content>)", true},
        {R"(<content id="a" arity="1"><layout><msub><oper idx="0"/></msub></layout></content>)", true},
        {R"(<content id="a" arity="1"><layout><msqrt/></layout></content>)", true},
        // The entry below the two children is an operator, not the munder.
        {R"(<content id="a" arity="1"><layout><mrow><mi>x</mi><munder><mo>+</mo><mi>y</mi><mi>z</mi></munder></mrow></layout></content>)", true},
        {R"(<content id="a" arity="1"><layout><optable rows="-1"><oper/></optable></layout></content>)", true},
        {R"(<content id="a" arity="1"><layout><optable cols="2" wrapchildren="sometimes"><oper/></optable></layout></content>)", true},
        {R"(<content id="a" arity="1"><layout><optable rows="2" cols="2"/></layout></content>)", true},
        {R"(<content id="a" arity="1"><layout><oplists cols="x"><oper/><mo>;</mo></oplists></layout></content>)", true},
        {R"(<content id="a" arity="1"><layout><oplists idx="0"><oper/><mo>;</mo></oplists></layout></content>)", true},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.fault);
        TemplateTable table(nullptr);
        EXPECT_FALSE(read_setup(table, in_root(c.fault + sound_content)));
        EXPECT_TRUE(table.setup_failed());
        MathTemplate *after = table.get_template(u"after");
        ASSERT_NE(nullptr, after);
        EXPECT_EQ(c.layout_after, after->layout() != nullptr);
        EXPECT_EQ(0u, table.setup_stack_size());
        // Built-ins are untouched by a refused replacement.
        EXPECT_NE(nullptr, dynamic_cast<PlusTemplate *>(table.get_template(u"plus")));

        EXPECT_TRUE(read_setup(table, in_root(R"(<content id="again" arity="0"><layout><mi>z</mi></layout></content>)")));
        EXPECT_NE(nullptr, layout_of(table, u"again"));
    }
}

// Faults that end the parse: a read that fails and text that is not XML. What was read before stays.
TEST(SetupReader, ReadFailureAndMalformedXmlStopTheParse)
{
    std::string const first = in_root(sound_content);
    {
        TemplateTable table(nullptr);
        // 600 bytes of padding: the first block of 512 is read and parsed, the second read fails.
        std::string const text = "<mathsetup>" + sound_content + std::string(600, ' ') +
                                 R"(<content id="late" arity="0"/></mathsetup>)";
        ScriptedStream stream(text, 512, 1);
        EXPECT_FALSE(table.init(stream));
        EXPECT_NE(nullptr, table.get_template(u"after"));
        EXPECT_EQ(nullptr, table.get_template(u"late"));
        EXPECT_EQ(2u, stream.counts.size());
    }
    {
        TemplateTable table(nullptr);
        ScriptedStream stream(first, 512, 0);
        EXPECT_FALSE(table.init(stream));
        EXPECT_EQ(nullptr, table.get_template(u"after"));
    }
    char const *malformed[] = {
        "",
        "<mathsetup><content id=\"a\" arity=\"0\"></mathsetup>",
        "<mathsetup><mo>&Sum;</mo></mathsetup>",  // an entity the parser doesn't know
    };
    for (char const *text : malformed) {
        SCOPED_TRACE(text);
        TemplateTable table(nullptr);
        EXPECT_FALSE(read_setup(table, text));
        EXPECT_EQ(0u, table.setup_stack_size());
        EXPECT_TRUE(read_setup(table, first));
    }
}

// A block of exactly 512 bytes may be followed by more, so the reader asks again; only a short read
// ends the document. Text split across blocks is collected whole.
TEST(SetupReader, ReadsInBlocksOf512AndGoesOnAfterAFullBlock)
{
    std::string const head = R"(<mathsetup><content id="t" arity="0"><layout><mi>)";
    std::string const tail = R"(</mi></layout></content></mathsetup>)";
    struct Case
    {
        std::size_t total;                 // length of the document
        std::vector<std::size_t> reads;    // what each read gave
    };
    // The identifier's text fills the document up to `total`, across the boundary at 512.
    Case const cases[] = {
        {512, {512, 0}},
        {513, {512, 1}},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.total);
        std::size_t const name_length = c.total - head.size() - tail.size();
        std::string const name(name_length, 'x');
        ScriptedStream stream(head + name + tail, 4096);
        TemplateTable table(nullptr);
        EXPECT_TRUE(table.init(stream));
        EXPECT_EQ(c.reads, stream.counts);
        MathLayout *layout = layout_of(table, u"t");
        ASSERT_EQ("ident", describe_layout(layout));
        EXPECT_EQ(name_length, static_cast<LayoutToken *>(layout)->text().length());
    }
    // A stream that gives less than asked in the middle ends the document there.
    ScriptedStream short_reads(head + std::string(600, 'y') + tail, 100);
    TemplateTable table(nullptr);
    EXPECT_FALSE(table.init(short_reads));
    EXPECT_EQ(1u, short_reads.counts.size());
}

// The attributes of content and what they give, with the defaults that depend on the arity.
TEST(SetupReader, ContentAttributes)
{
    struct Case
    {
        char const *attributes;
        bool ok;
        std::size_t arity;
        bool varying;
        std::size_t dummies;
        bool assoc;
        bool flatten_last;
        double priority;
    };
    double const none = 2147483647.0;
    Case const cases[] = {
        {R"(arity="2*")", true, 2, true, 2, true, true, none},
        {R"(arity="1*")", true, 1, true, 1, false, true, none},
        {R"(arity="2")", true, 2, false, 2, false, true, none},
        {R"(arity="0*")", true, 0, true, 1, false, false, none},  // a varying nullary kind gets one
        {R"(arity="0*" dummies="3")", true, 0, true, 3, false, false, none},  // unless it asks for more
        {R"(arity="*")", false, 0, true, 1, false, false, none},
        {R"(arity="2" dummies="3")", false, 2, false, 2, false, true, none},
        {R"(arity="2*" dummies="3")", true, 2, true, 3, true, true, none},
        {R"(arity="2*" assoc="0")", true, 2, true, 2, false, true, none},
        {R"(arity="3" assoc="true" flatten-last="1")", true, 3, false, 3, true, true, none},
        {R"(arity="1" prio="0")", true, 1, false, 1, false, true, 0.0},
        {R"(arity="1" prio="")", true, 1, false, 1, false, true, none},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.attributes);
        TemplateTable table(nullptr);
        EXPECT_EQ(c.ok, read_setup(table, in_root(std::string(R"(<content id="t" )") + c.attributes + "/>")));
        MathTemplate *t = table.get_template(u"t");
        ASSERT_NE(nullptr, t);
        EXPECT_EQ(c.arity, t->arity());
        EXPECT_EQ(c.varying, t->varying_arity());
        EXPECT_EQ(c.dummies, t->dummies());
        EXPECT_EQ(c.assoc, t->associative());
        EXPECT_EQ(c.flatten_last, t->flatten_last());
        EXPECT_EQ(c.priority, t->priority());
    }
}

// keywd defaults to the id, enter to true; accel is a key; flatten-seq a child range.
TEST(SetupReader, ContentNamesKeysAndFlattenRange)
{
    TemplateTable table(nullptr);
    EXPECT_TRUE(read_setup(table, in_root(R"(<content id="f" arity="1*" flatten-seq=" 1 , -1 "/>)"
                                          R"(<content id="g" keywd="Gee" enter="0" accel="ctrl + G" arity="1"/>)")));
    MathTemplate *f = table.get_template(u"f");
    MathTemplate *g = table.get_template(u"g");
    ASSERT_TRUE(f && g);
    EXPECT_EQ(u"f", wstring(f->keyword()));
    EXPECT_EQ(u"Gee", wstring(g->keyword()));
    EXPECT_FALSE(g->can_enter());
    EXPECT_EQ(TemplateAccelerator(static_cast<Input::Key>('G'), Input::modifier_control), g->accelerator());

    // With 3 children, 1..-1 is 1..2.
    MathNode *node = f->create_node();
    for (int i = 0; i < 3; ++i)
        node->append(table.get_dummy_template()->create_node());
    EXPECT_FALSE(f->flatten_sequence(node, 0));
    EXPECT_TRUE(f->flatten_sequence(node, 1));
    EXPECT_TRUE(f->flatten_sequence(node, 2));
    discard(node);

    // A failed range clears the flag.
    TemplateTable faulty(nullptr);
    EXPECT_FALSE(read_setup(faulty, in_root(R"(<content id="f" arity="1*" flatten-seq="1"/>)")));
    MathNode *other = faulty.get_template(u"f")->create_node();
    other->append(faulty.get_dummy_template()->create_node());
    EXPECT_FALSE(faulty.get_template(u"f")->flatten_sequence(other, 0));
    discard(other);
}

// A content of a name that a plain template has replaces it in its slot; a built-in is refused;
// changecontent adjusts any template, built-in ones included; a second file comes on top of the first.
TEST(SetupReader, ContentReplacesPlainTemplatesAndChangecontentAdjusts)
{
    TemplateTable table(nullptr);
    std::size_t const builtins = table.template_count();
    EXPECT_TRUE(read_setup(table, in_root(R"(<content id="f" arity="1"/><content id="g" arity="0"/>)"
                                          R"(<content id="f" arity="2" keywd="Second"/>)")));
    EXPECT_EQ(builtins + 2, table.template_count());
    EXPECT_EQ(builtins, table.find_template(u"f"));
    EXPECT_EQ(u"Second", wstring(table.get_template(u"f")->keyword()));

    for (char const *builtin : {"plus", "dummy"}) {
        SCOPED_TRACE(builtin);
        MathTemplate *before = table.get_template(Kxt::to_ustring(builtin).c_str());
        EXPECT_FALSE(read_setup(table, in_root(std::string(R"(<content id=")") + builtin + R"(" arity="2"/>)")));
        EXPECT_EQ(before, table.get_template(Kxt::to_ustring(builtin).c_str()));
    }

    EXPECT_TRUE(read_setup(table, in_root(R"(<changecontent id="plus" accel="ctrl+P" keywd="Sum" enter="false" prio="5"/>)"
                                          R"(<changecontent id="f" keywd="" accel="" enter="" prio=""/>)"
                                          R"(<content id="g" arity="3"/>)")));
    MathTemplate *plus = table.get_template(u"plus");
    EXPECT_EQ(plus, table.get_template(TemplateAccelerator(static_cast<Input::Key>('P'), Input::modifier_control)));
    EXPECT_FALSE(plus->can_enter());
    EXPECT_EQ(5.0, plus->priority());
    EXPECT_EQ(3u, table.get_template(u"g")->arity());
    EXPECT_EQ(builtins + 1, table.find_template(u"g"));

    // A faulty attribute of changecontent leaves that field alone and still applies the others.
    EXPECT_FALSE(read_setup(table, in_root(R"(<changecontent id="plus" accel="ctrl+p" keywd="Total" prio="-1"/>)")));
    EXPECT_EQ(u"Total", wstring(plus->keyword()));
    EXPECT_EQ(5.0, plus->priority());
    EXPECT_EQ(plus, table.get_template(TemplateAccelerator(static_cast<Input::Key>('P'), Input::modifier_control)));
}

// Each layout element builds its class, with its children in document order.
TEST(SetupReader, LayoutElementsBuildTheirClassesAndChildren)
{
    struct Case
    {
        char const *expression;
        char const *layout;
    };
    Case const cases[] = {
        {R"(<oper idx="0"/>)", "fixed"},
        {R"(<oper/>)", "running"},
        {R"(<mo form="prefix">&amp;Sum;</mo>)", "displayop"},
        {R"(<mrow><oper idx="0"/><mo>+</mo><oper idx="1"/></mrow>)", "row(fixed,op,fixed)"},
        {R"(<oprow><oper/><mo>,</mo></oprow>)", "oprow(running,op)"},
        {R"(<mfrac><oper idx="0"/><oper idx="1"/></mfrac>)", "frac(fixed,fixed)"},
        {R"(<munderover><mo form="prefix">&amp;Sum;</mo><oper idx="0"/><oper idx="1"/></munderover>)",
         "underover(displayop,fixed,fixed)"},
        {R"(<msup><mi>e</mi><oper idx="0"/></msup>)", "sup(ident,fixed)"},
        {R"(<msubsup><mi>x</mi><oper idx="0"/><oper idx="1"/></msubsup>)", "subsup(ident,fixed,fixed)"},
        {R"(<optable><oper/><mrow><oper/><mo>,</mo></mrow></optable>)", "table(running,row(running,op))"},
        {R"(<oplists><oprow><oper/><mo>,</mo></oprow><mo>;</mo></oplists>)", "lists(oprow(running,op),op)"},
        // Nesting, and the scripts made at their end: a msub of three leaves the first on the stack.
        {R"(<mrow><msqrt><oper idx="0"/></msqrt><msup><mi>e</mi><oper idx="1"/></msup></mrow>)",
         "row(sqrt(fixed),sup(ident,fixed))"},
        {R"(<mrow><msub><mi>a</mi><mi>b</mi><mi>c</mi></msub></mrow>)", "row(ident,sub(ident,ident))"},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.expression);
        TemplateTable table(nullptr);
        bool ok = false;
        EXPECT_EQ(c.layout, read_layout(table, c.expression, ok));
        EXPECT_TRUE(ok);
    }
}

// The attributes that the layout elements pass on.
TEST(SetupReader, LayoutAttributesReachTheLayouts)
{
    TemplateTable table(nullptr);
    bool ok = false;
    read_layout(table, R"(<mrow><oper idx="-1" prio="7" slant="noslantedidents"/><oper idx="0" slant="true"/>)"
                       R"(<oper idx="0" slant="0"/><oper idx="0"/>)"
                       R"(<mo form="postfix" lbadness="-5" rbadness=" 7 " rspace=" 9 ">!</mo>)"
                       R"(<mfrac linethickness="3"><oper idx="0"/><oper idx="1"/></mfrac>)"
                       R"(<munder accent="true"><oper idx="0"/><mo>_</mo></munder>)"
                       R"(<mover><oper idx="0"/><mo>^</mo></mover>)"
                       R"(<munderover accent="1" align="left"><oper idx="0"/><mo>_</mo><mo>^</mo></munderover>)"
                       R"(<optable rows="2" cols="3" rowlines="nS" framelines="" columnalign="lr" wrapchildren="true"><oper/></optable>)"
                       R"(<oplists rows="1" cols=" 4 "><oper/><mo>;</mo></oplists></mrow>)",
                ok);
    EXPECT_TRUE(ok);
    MathLayout *row = layout_of(table, u"t");
    ASSERT_EQ(11, row->count());

    auto *fixed = dynamic_cast<LayoutFixedPlaceholder *>(row->component(0));
    ASSERT_NE(nullptr, fixed);
    EXPECT_EQ(-1, fixed->fixed_index());
    EXPECT_EQ(LayoutPlaceholder::noslantedidents, fixed->slanting());
    EXPECT_NE(nullptr, fixed->parens());  // a priority above 0 brings parentheses
    EXPECT_EQ(LayoutPlaceholder::slanted, static_cast<LayoutPlaceholder *>(row->component(1))->slanting());
    EXPECT_EQ(LayoutPlaceholder::unslanted, static_cast<LayoutPlaceholder *>(row->component(2))->slanting());

    auto *op = dynamic_cast<LayoutOp *>(row->component(4));
    ASSERT_NE(nullptr, op);
    EXPECT_EQ(-5.0, op->lbadness());
    EXPECT_EQ(7.0, op->rbadness());
    // A space of the mo replaces the dictionary's for this use only; the other stays the dictionary's.
    EXPECT_EQ(3, op->lspace());
    EXPECT_EQ(9, op->rspace());
    LayoutOp *record = table.get_layout_op(u"!", LayoutOp::postfix, 0, 0);
    record->ref();
    EXPECT_EQ(0, record->rspace());
    record->unref();

    EXPECT_EQ(3, static_cast<LayoutFraction *>(row->component(5))->linethickness());
    EXPECT_TRUE(static_cast<LayoutUnder *>(row->component(6))->accent());
    auto *underover = static_cast<LayoutUnderOver *>(row->component(8));
    EXPECT_TRUE(underover->accent());
    EXPECT_EQ('l', underover->align());

    auto *grid = dynamic_cast<LayoutTable *>(row->component(9));
    ASSERT_NE(nullptr, grid);
    std::size_t rows = 0;
    std::size_t cols = 0;
    grid->dimension(rows, cols);
    EXPECT_EQ(2u, rows);
    EXPECT_EQ(3u, cols);
    EXPECT_EQ(u"nS", wstring(grid->row_lines()));
    EXPECT_EQ(nullptr, grid->frame_lines());
    EXPECT_EQ(u"lr", wstring(grid->column_align()));
    EXPECT_TRUE(grid->wrap_children());

    auto *lists = dynamic_cast<LayoutLists *>(row->component(10));
    ASSERT_NE(nullptr, lists);
    lists->dimension(rows, cols);
    EXPECT_EQ(4u, cols);

    // An unknown operator text makes a record of the asked form, kept by the table.
    std::size_t const operators = table.operator_count();
    read_layout(table, R"(<mo form="prefix">sgn</mo>)", ok);
    EXPECT_TRUE(ok);
    EXPECT_EQ(operators + 1, table.operator_count());
}

// oper idx="*" takes the range of the latest oprow, optable or oplists that started, and that range
// stays in force after the element ends, even into the next template.
TEST(SetupReader, RunningPlaceholdersTakeTheLatestRange)
{
    TemplateTable table(nullptr);
    EXPECT_TRUE(read_setup(table, in_root(
        R"(<content id="a" arity="2*"><layout><mrow>)"
        R"(<oprow idx="0,1"><oprow idx=" 2 , -2 "><oper/><mo>+</mo></oprow><oper/></oprow>)"
        R"(<optable idx="3,4"><oper/></optable><oplists idx="5,6"><oper/><mo>;</mo></oplists><oper/>)"
        R"(</mrow></layout></content>)"
        R"(<content id="b" arity="1*"><layout><oper/></layout></content>)")));
    struct Expect
    {
        std::vector<long> path;
        long first, last;
    };
    // The outer oprow's own range is what its start read: 0,1; its oper came after the inner one.
    Expect const expected[] = {
        {{0}, 0, 1}, {{0, 0, 0}, 2, -2}, {{0, 1}, 2, -2}, {{1, 0}, 3, 4}, {{3}, 5, 6},
    };
    for (Expect const &e : expected) {
        Glyph *g = layout_of(table, u"a");
        std::string where;
        for (long i : e.path) {
            g = g->component(i);
            where += std::to_string(i) + " ";
        }
        SCOPED_TRACE(where);
        auto *range = dynamic_cast<LayoutRangeImpl *>(g);
        ASSERT_NE(nullptr, range);
        EXPECT_EQ(e.first, range->first());
        EXPECT_EQ(e.last, range->last());
    }
    auto *next = dynamic_cast<LayoutRunningPlaceholder *>(layout_of(table, u"b"));
    ASSERT_NE(nullptr, next);
    EXPECT_EQ(5, next->first());
    EXPECT_EQ(6, next->last());

    // A failed range is 0,0.
    EXPECT_FALSE(read_setup(table, in_root(R"(<content id="c" arity="1*"><layout><oprow idx="x"><oper/><mo>,</mo></oprow></layout></content>)")));
    auto *zero = dynamic_cast<LayoutRunningPlaceholder *>(layout_of(table, u"c")->component(0));
    ASSERT_NE(nullptr, zero);
    EXPECT_EQ(0, zero->first());
    EXPECT_EQ(0, zero->last());
}

// Whitespace and text between elements never reach a token; the text of a token is kept whole.
TEST(SetupReader, TextIsCollectedOnlyInsideTokens)
{
    TemplateTable spaced(nullptr);
    EXPECT_TRUE(read_setup(spaced, in_root(" text <content id=\"t\" arity=\"0\">\n <layout>\n  <mi> x </mi>\n </layout>\n</content>\n")));
    EXPECT_EQ(3u, static_cast<LayoutToken *>(layout_of(spaced, u"t"))->text().length());
}
