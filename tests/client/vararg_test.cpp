// VarArg: the signature language as a table of value, signature, answer and where the pointer is
// left; lists, tables and the values that own or hold others.
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "client/client_fixture.h"
#include "tavi/client/vararg.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/templates/mathtemplate.h"
#include "tavi/math/templates/templatetable.h"

namespace {

using namespace Tavi;
using ClientTest::describe;
using ClientTest::list_of;

TableArg *table_of(std::initializer_list<std::pair<VarArg *, VarArg *>> pairs)
{
    auto *table = new TableArg;
    for (auto const &pair : pairs)
        table->push_back(pair.first, pair.second);
    return table;
}

using Make = std::function<VarArg *()>;

VarArg *long_1() { return new LongArg(1); }
VarArg *string_x() { return new StringArg(u"x"); }

struct SignatureRow
{
    char const *value;  // what the row's value is, for the failure message
    Make make;
    char const *signature;
    bool answer;
    long pointer;  // where the pointer stands afterwards, from the start; -1 for a null pointer
};

TEST(VarArg, SignatureLanguage)
{
    SignatureRow const rows[] = {
        // One letter per class; any other letter is no match and doesn't move the pointer.
        {"long", long_1, "l", true, 1},
        {"long", long_1, "s", false, 0},
        {"long", long_1, "ls", true, 1},
        {"long", long_1, "", false, 0},
        {"long", long_1, nullptr, false, -1},
        {"double", [] { return new DoubleArg(0.5); }, "d", true, 1},
        {"double", [] { return new DoubleArg(0.5); }, "l", false, 0},
        {"bool", [] { return new BoolArg(true); }, "b", true, 1},
        {"string", string_x, "s", true, 1},
        {"string", string_x, "i", false, 0},
        {"ident", [] { return new IdentArg(u"x"); }, "i", true, 1},
        {"ident", [] { return new IdentArg(u"x"); }, "s", false, 0},
        {"null", [] { return new NullArg; }, "0", true, 1},
        {"null", [] { return new NullArg; }, "n", false, 0},
        {"nil", [] { return new NilArg; }, "n", true, 1},
        {"object", [] { return new ClientObjectArg(4); }, "o", true, 1},
        {"object", [] { return new ClientObjectArg(4); }, "m", false, 0},
        {"math node", [] { return new MathNodeArg(nullptr); }, "m", true, 1},
        {"math node", [] { return new MathNodeArg(nullptr); }, "o", false, 0},
        {"domain", [] { return new DomainArg(new LongArg(1)); }, "D", true, 1},
        // Any one value.
        {"bool", [] { return new BoolArg(false); }, ".", true, 1},
        {"list", [] { return list_of({long_1()}); }, ".", true, 1},
        {"table", [] { return table_of({}); }, ".", true, 1},
        // A star that matched stays where it is; one that failed has moved onto the item it then
        // tries to eat.
        {"long", long_1, "*l", true, 0},
        {"long", long_1, "*.", true, 0},
        {"long", long_1, "*s", false, 1},
        {"long", long_1, "*[l]", false, 1},
        {"list of string", [] { return list_of({string_x()}); }, "*[l]", true, 4},
        // A plus never moves the pointer.
        {"long", long_1, "+l", true, 0},
        {"long", long_1, "+s", false, 0},
        {"list", [] { return list_of({long_1()}); }, "+[l]", true, 0},
        // Lists and tables, matched element by element up to their closing bracket.
        {"list", [] { return list_of({long_1()}); }, "[l]", true, 3},
        {"list", [] { return list_of({long_1()}); }, "[s]", false, 0},
        {"list", [] { return list_of({long_1()}); }, "[.]", true, 3},
        {"list", [] { return list_of({long_1()}); }, "l", false, 0},
        {"list", [] { return list_of({long_1()}); }, "[*l]", false, 0},
        {"empty list", [] { return list_of({}); }, "[]", true, 2},
        {"empty list", [] { return list_of({}); }, "[l]", false, 0},
        {"list of two", [] { return list_of({long_1(), string_x()}); }, "[ls]", true, 4},
        {"list of two", [] { return list_of({long_1(), string_x()}); }, "[l]", false, 0},
        {"list of two", [] { return list_of({long_1(), string_x()}); }, "[lsl]", false, 0},
        {"table", [] { return table_of({{string_x(), long_1()}}); }, "<sl>", true, 4},
        {"table", [] { return table_of({{string_x(), long_1()}}); }, "<s>", false, 0},
        {"table", [] { return table_of({{string_x(), long_1()}}); }, "<ls>", false, 0},
        {"table", [] { return table_of({{string_x(), long_1()}}); }, "[sl]", false, 0},
        // Nesting.
        {"list in list", [] { return list_of({list_of({long_1()})}); }, "[[l]]", true, 5},
        {"list in list", [] { return list_of({list_of({long_1()})}); }, "[l]", false, 0},
        {"table in list", [] { return list_of({table_of({{string_x(), long_1()}})}); }, "[<sl>]", true, 6},
        {"list in table", [] { return table_of({{string_x(), list_of({long_1()})}}); }, "<s[l]>", true, 6},
        {"list in table", [] { return table_of({{string_x(), list_of({long_1()})}}); }, "*<s[l]>l", true, 0},
    };
    for (SignatureRow const &row : rows) {
        std::unique_ptr<VarArg> value(row.make());
        char const *s = row.signature;
        bool const answer = value->match_type(s);
        long const pointer = s == nullptr ? -1 : static_cast<long>(s - row.signature);
        EXPECT_EQ(row.answer, answer) << row.value << " against \"" << (row.signature ? row.signature : "(null)") << '"';
        EXPECT_EQ(row.pointer, pointer) << row.value << " against \"" << (row.signature ? row.signature : "(null)") << '"';
    }
}

TEST(VarArg, ListsAndTablesOwnTheirValuesAndCopyDeeply)
{
    // A text is copied: the caller's buffer may change afterwards.
    char16_t buffer[] = u"abc";
    std::unique_ptr<StringArg> text(new StringArg(buffer));
    buffer[0] = u'z';
    EXPECT_EQ("s:abc", describe(text.get()));

    std::unique_ptr<ListArg> list(list_of({long_1(), table_of({{string_x(), list_of({new BoolArg(true)})}}), new NilArg}));
    std::unique_ptr<VarArg> copy(list->clone());
    EXPECT_EQ("[l:1,<s:x=[b:true]>,nil]", describe(copy.get()));
    ListArg const *copied = nullptr;
    ASSERT_TRUE(copy->list_val(copied));
    EXPECT_NE(list->at(1), copied->at(1));

    std::unique_ptr<TableArg> table(table_of({{string_x(), long_1()}, {new IdentArg(u"k"), new DoubleArg(0.5)}}));
    EXPECT_EQ(2u, table->size());
    EXPECT_EQ("i:k", describe(table->key_at(1)));
    EXPECT_EQ("d:0.5", describe(table->value_at(1)));

    // A bad index is the containers' one out-of-range error.
    std::function<void()> const bad_reads[] = {
        [&] { list->at(3); },
        [&] { table->key_at(2); },
        [&] { table->value_at(static_cast<std::size_t>(-1)); },
    };
    for (auto const &read : bad_reads) {
        try {
            read();
            ADD_FAILURE() << "no error";
        } catch (std::out_of_range const &e) {
            EXPECT_STREQ("invalid vector<T> subscript", e.what());
        }
    }
}

TEST(VarArg, MathNodeArgHoldsItsNodeWithOneReference)
{
    TemplateTable templates(nullptr);
    MathNode *node = templates.get_dummy_template()->create_node();
    node->ref();
    {
        MathNodeArg held(node);
        EXPECT_EQ(2, node->ref_count());
        std::unique_ptr<VarArg> copy(held.clone());
        EXPECT_EQ(3, node->ref_count());
        EXPECT_EQ(node, static_cast<MathNodeArg *>(copy.get())->math_node());
    }
    EXPECT_EQ(1, node->ref_count());
    node->unref();
}

}  // namespace
