// Reference counting of RefCounted objects and the sharing of FixedStringBase values.
#include "tavi/kxt/fixedstring.h"
#include "tavi/kxt/resource.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// Counts its destructions in a counter that outlives it.
class Counted : public Kxt::RefCounted<Kxt::IResource> {
public:
    explicit Counted(int &destroyed) : destroyed_(&destroyed) {}
    ~Counted() override { ++*destroyed_; }

private:
    int *destroyed_;
};

TEST(RefCounted, CountsDestroysAtZeroAndCopiesStartAtZero)
{
    struct Case {
        char const *name;
        std::string steps;         // '+' is ref, '-' is unref, each on the same object
        std::vector<long> counts;  // the count after each step but the last, which ends it
    };
    std::vector<Case> const cases = {
        {"interleaved", "++-+--", {1, 2, 1, 2, 1}},
        {"unref at birth", "-", {}},  // nobody ever held it, so releasing it ends it
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.name);
        int destroyed = 0;
        Counted *object = new Counted(destroyed);
        Kxt::IResource const *resource = object;  // held through the const interface
        for (std::size_t i = 0; i < c.steps.size(); ++i) {
            c.steps[i] == '+' ? resource->ref() : resource->unref();
            ASSERT_EQ(destroyed, i + 1 == c.steps.size() ? 1 : 0) << "after step " << i + 1;
            if (i < c.counts.size()) {
                EXPECT_EQ(object->ref_count(), c.counts[i]);
                EXPECT_EQ(object->is_shared(), c.counts[i] >= 2);
            }
        }
    }

    int destroyed = 0;
    Counted *original = new Counted(destroyed);
    original->ref();
    original->ref();
    Counted *copy = new Counted(*original);
    EXPECT_EQ(copy->ref_count(), 0);
    copy->ref();
    *copy = *original;  // assignment changes the value, not who holds the target
    EXPECT_EQ(copy->ref_count(), 1);
    EXPECT_EQ(original->ref_count(), 2);
    copy->unref();
    original->unref();
    original->unref();
    EXPECT_EQ(destroyed, 2);
}

using Kxt::FixedString;

TEST(FixedString, NullEmptyTextAndSharing)
{
    struct Case {
        char const *name;
        FixedString value;
        bool null;
        std::u16string text;
    };
    Kxt::wchar const *const no_text = nullptr;
    std::vector<Case> const cases = {
        {"null pointer with a length", FixedString(no_text, 5), true, u""},
        {"empty", FixedString(u""), false, u""},
        {"first three of six", FixedString(u"abcdef", 3), false, u"abc"},
        {"inner NUL kept", FixedString(u"a\0b", 3), false, std::u16string(u"a\0b", 3)},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.value.is_null(), c.null);
        ASSERT_NE(c.value.c_str(), nullptr);
        EXPECT_EQ(c.value.str(), c.text);
        EXPECT_EQ(c.value.c_str()[c.value.length()], u'\0');
        EXPECT_EQ(c.value.use_count(), c.null ? 0 : 1);
    }

    FixedString a(u"shared");
    {
        FixedString b = a;
        FixedString c;
        c = b;
        EXPECT_EQ(a.data(), c.data());
        EXPECT_EQ(a.use_count(), 3);
    }
    EXPECT_EQ(a.use_count(), 1);
}

TEST(FixedString, Comparison)
{
    struct Case {
        FixedString a, b;
        int sign;
    };
    std::vector<Case> const cases = {
        {FixedString(), FixedString(u""), 0},            // null and empty compare equal
        {FixedString(u"a"), FixedString(u"ab"), -1},     // a prefix comes first
        {FixedString(u"\xFFFF"), FixedString(u"a"), 1},  // units compare unsigned
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(testing::Message() << c.a.length() << " vs " << c.b.length() << " units");
        int const order = c.a.compare(c.b);
        EXPECT_EQ((order > 0) - (order < 0), c.sign);
        EXPECT_EQ(c.a == c.b, c.sign == 0);
        EXPECT_EQ(c.a < c.b, c.sign < 0);
    }
}

}  // namespace
