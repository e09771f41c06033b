// MathAttribute and MathAttribList: shared keys and owned values, copies that don't disturb the
// original, and an owning list that copies deeply and deletes its entries.
#include "tavi/math/mathattribute.h"
#include "tavi/math/mathattriblist.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

using namespace Tavi;

namespace {

std::u16string str(wchar const *s) { return s ? std::u16string(s) : u"<null>"; }

}  // namespace

TEST(MathAttribute, CopiesShareTheKeyAndOwnTheValue)
{
    wchar key[] = u"Signs";
    wchar value[] = u"+-";
    MathAttribute a(key, value);
    // The attribute holds copies: changing the caller's buffers changes nothing.
    key[0] = u'X';
    value[0] = u'X';
    EXPECT_EQ(str(a.key()), u"Signs");
    EXPECT_EQ(str(a.value()), u"+-");

    MathAttribute b(a);
    EXPECT_EQ(a.shared_key().use_count(), 2);
    EXPECT_EQ(a.key(), b.key());  // one text, not two
    EXPECT_NE(a.value(), b.value());

    b.value(u"--");
    EXPECT_EQ(str(a.value()), u"+-");
    EXPECT_EQ(str(b.value()), u"--");
    EXPECT_EQ(a.key(), b.key());

    b.value(nullptr);
    EXPECT_EQ(b.value(), nullptr);
    EXPECT_EQ(str(a.value()), u"+-");

    // A new key for one leaves the other's alone.
    b.key(u"Rows");
    EXPECT_EQ(str(a.key()), u"Signs");
    EXPECT_EQ(str(b.key()), u"Rows");
    EXPECT_EQ(a.shared_key().use_count(), 1);

    MathAttribute none(nullptr, nullptr);
    EXPECT_EQ(none.key(), nullptr);
    EXPECT_EQ(none.value(), nullptr);
    MathAttribute empty(u"", u"");
    EXPECT_NE(empty.key(), nullptr);
    EXPECT_EQ(str(empty.value()), u"");
}

TEST(MathAttribList, OwnsCopiesAndKeepsOrder)
{
    MathAttribList list;
    EXPECT_TRUE(list.empty());
    list.push_back(u"Rows", u"3");
    list.push_back(new MathAttribute(u"Cols", u"2"));
    list.push_back(nullptr);
    list.push_back(u"rowlines", nullptr);
    ASSERT_EQ(list.size(), 3u);
    EXPECT_EQ(str(list.at(0)->key()), u"Rows");
    EXPECT_EQ(str(list.at(1)->key()), u"Cols");
    EXPECT_EQ(str(list.at(2)->key()), u"rowlines");
    EXPECT_EQ(list.at(2)->value(), nullptr);
    EXPECT_THROW(list.at(3), std::out_of_range);

    // The copy holds new attributes: the same key text, values of its own.
    MathAttribList copy(list);
    ASSERT_EQ(copy.size(), 3u);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NE(copy.at(i), list.at(i));
        EXPECT_EQ(copy.at(i)->key(), list.at(i)->key());
    }
    copy.at(0)->value(u"9");
    EXPECT_EQ(str(list.at(0)->value()), u"3");

    MathAttribList assigned;
    assigned.push_back(u"old", u"x");
    assigned = list;
    ASSERT_EQ(assigned.size(), 3u);
    EXPECT_EQ(str(assigned.at(1)->value()), u"2");
    assigned = assigned;
    EXPECT_EQ(assigned.size(), 3u);

    std::u16string keys;
    for (MathAttribute const *a : list)
        keys += str(a->key()) + u",";
    EXPECT_EQ(keys, u"Rows,Cols,rowlines,");

    list.clear();
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(copy.size(), 3u);
}
