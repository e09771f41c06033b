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

struct RefSequence {
    char const *name;
    std::string steps;            // '+' is ref, '-' is unref, each on the same object
    std::vector<long> counts;     // the count after each step, while the object lives
    int destroyed_after;          // the step (1-based) after which it is gone; 0 for never
};

std::vector<RefSequence> const ref_sequences = {
    {"one holder", "+-", {1}, 2},
    {"two holders", "++--", {1, 2, 1}, 4},
    {"interleaved", "++-+--", {1, 2, 1, 2, 1}, 6},
    {"three, two leave", "+++--", {1, 2, 3, 2, 1}, 0},
    // nobody ever held it, so releasing it ends it
    {"unref at birth", "-", {}, 1},
};

TEST(RefCounted, CountsAndDestroysAtZero)
{
    for (RefSequence const &c : ref_sequences) {
        SCOPED_TRACE(c.name);
        int destroyed = 0;
        Counted *object = new Counted(destroyed);
        // Held through the const interface, as the counted holders do.
        Kxt::IResource const *resource = object;
        EXPECT_EQ(object->ref_count(), 0);
        for (std::size_t i = 0; i < c.steps.size(); ++i) {
            if (c.steps[i] == '+')
                resource->ref();
            else
                resource->unref();
            bool const gone = c.destroyed_after != 0 && static_cast<int>(i) + 1 >= c.destroyed_after;
            ASSERT_EQ(destroyed, gone ? 1 : 0) << "after step " << i + 1;
            if (!gone) {
                EXPECT_EQ(object->ref_count(), c.counts[i]);
                EXPECT_EQ(object->is_shared(), c.counts[i] >= 2);
            }
        }
        if (c.destroyed_after == 0) {
            while (object->ref_count() > 1)
                object->unref();
            object->unref();
        }
        EXPECT_EQ(destroyed, 1);
    }
}

TEST(RefCounted, CopiesStartAtZero)
{
    int destroyed = 0;
    Counted *original = new Counted(destroyed);
    original->ref();
    original->ref();

    Counted *copy = new Counted(*original);
    EXPECT_EQ(copy->ref_count(), 0);
    copy->ref();
    // Assignment changes the value, not who holds the target.
    *copy = *original;
    EXPECT_EQ(copy->ref_count(), 1);
    EXPECT_EQ(original->ref_count(), 2);

    copy->unref();
    EXPECT_EQ(destroyed, 1);
    original->unref();
    original->unref();
    EXPECT_EQ(destroyed, 2);
}

using Kxt::FixedString;

TEST(FixedString, NullEmptyAndText)
{
    struct Case {
        char const *name;
        FixedString value;
        bool null;
        std::u16string text;
    };
    Kxt::wchar const *const no_text = nullptr;
    std::vector<Case> const cases = {
        {"default", FixedString(), true, u""},
        {"nullptr", FixedString(nullptr), true, u""},
        {"null pointer", FixedString(no_text), true, u""},
        {"null pointer with a length", FixedString(no_text, 5), true, u""},
        {"empty", FixedString(u""), false, u""},
        {"empty std string", FixedString(std::u16string()), false, u""},
        {"text", FixedString(u"abc"), false, u"abc"},
        {"first three of six", FixedString(u"abcdef", 3), false, u"abc"},
        {"inner NUL kept", FixedString(u"a\0b", 3), false, std::u16string(u"a\0b", 3)},
        {"outside the BMP", FixedString(u"x\xD83D\xDE00"), false, u"x\xD83D\xDE00"},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.value.is_null(), c.null);
        EXPECT_EQ(c.value.data() == nullptr, c.null);
        ASSERT_NE(c.value.c_str(), nullptr);
        EXPECT_EQ(c.value.empty(), c.text.empty());
        EXPECT_EQ(c.value.length(), c.text.size());
        EXPECT_EQ(c.value.str(), c.text);
        EXPECT_EQ(c.value.c_str()[c.value.length()], u'\0');
        EXPECT_EQ(c.value.use_count(), c.null ? 0 : 1);
    }
}

TEST(FixedString, CopiesShareOneText)
{
    FixedString a(u"shared");
    {
        FixedString b = a;
        FixedString c;
        c = b;
        EXPECT_EQ(a.data(), b.data());
        EXPECT_EQ(a.data(), c.data());
        EXPECT_EQ(a.use_count(), 3);
        c = FixedString(u"other");
        EXPECT_EQ(a.use_count(), 2);
        EXPECT_EQ(c, u"other");
    }
    EXPECT_EQ(a.use_count(), 1);
    FixedString moved = std::move(a);
    EXPECT_EQ(moved.use_count(), 1);
    EXPECT_EQ(moved, u"shared");
}

TEST(FixedString, Comparison)
{
    struct Case {
        FixedString a, b;
        int sign;
    };
    std::vector<Case> const cases = {
        {FixedString(u"abc"), FixedString(u"abc"), 0},  // two blocks, one text
        {FixedString(), FixedString(u""), 0},           // null and empty compare equal
        {FixedString(u"a"), FixedString(u"b"), -1},
        {FixedString(u"ab"), FixedString(u"a"), 1},    // a prefix comes first
        {FixedString(u"a"), FixedString(u"ab"), -1},
        {FixedString(u"\xFFFF"), FixedString(u"a"), 1},  // units compare unsigned
        {FixedString(u"a\0a", 3), FixedString(u"a\0b", 3), -1},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(testing::Message() << c.a.length() << " vs " << c.b.length() << " units");
        int const order = c.a.compare(c.b);
        EXPECT_EQ((order > 0) - (order < 0), c.sign);
        EXPECT_EQ(c.a == c.b, c.sign == 0);
        EXPECT_EQ(c.a != c.b, c.sign != 0);
        EXPECT_EQ(c.a < c.b, c.sign < 0);
    }
    EXPECT_TRUE(FixedString(u"abc") == u"abc");
    EXPECT_TRUE(FixedString(u"abc") != u"abd");
    EXPECT_TRUE(FixedString() == static_cast<Kxt::wchar const *>(nullptr));
}

}  // namespace
