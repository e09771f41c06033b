// MathAttribute and MathAttribList: copies share the key text but own their values, so a change to
// one never reaches the other, and a list copies its entries deeply.
#include "tavi/math/mathattribute.h"
#include "tavi/math/mathattriblist.h"

#include <gtest/gtest.h>

#include <string>

using namespace Tavi;

namespace {

std::u16string str(wchar const *s) { return s ? std::u16string(s) : u"<null>"; }

}  // namespace

TEST(MathAttribute, CopiesShareTheKeyAndOwnTheValue)
{
    wchar value[] = u"+-";
    MathAttribute a(u"Signs", value);
    value[0] = u'X';  // the attribute holds a copy
    MathAttribute b(a);
    EXPECT_EQ(a.key(), b.key());  // one text, not two
    b.value(u"--");
    EXPECT_EQ(str(a.value()), u"+-");
    // A new key for one leaves the other's alone.
    b.key(u"Rows");
    EXPECT_EQ(str(a.key()), u"Signs");
    EXPECT_EQ(a.shared_key().use_count(), 1);

    MathAttribList list;
    list.push_back(u"Rows", u"3");
    list.push_back(nullptr);
    list.push_back(u"rowlines", nullptr);
    ASSERT_EQ(list.size(), 2u);
    MathAttribList copy(list);
    copy.at(0)->value(u"9");
    EXPECT_EQ(str(list.at(0)->value()), u"3");
    EXPECT_EQ(copy.at(1)->key(), list.at(1)->key());
    EXPECT_EQ(copy.at(1)->value(), nullptr);
    MathAttribList &same = copy;
    copy = same;
    EXPECT_EQ(str(copy.at(0)->value()), u"9");
}
