// TemplateAccelerator: the text form of the setup file (modifier words in any case, "+" between, a
// digit or capital after modifiers, shift alone refused), equality and the void test.
#include "tavi/math/templates/templateaccelerator.h"

#include <gtest/gtest.h>

using namespace Tavi;

TEST(TemplateAccelerator, ParsesTheTextForm)
{
    struct Case
    {
        char16_t const *text;
        bool ok;
        int key;
        int modifiers;
    } const cases[] = {
        // Plain typed characters: any character, modifiers -1.
        {u"+", true, 43, -1},
        {u"  ?\t", true, 63, -1},
        {u"a", true, 97, -1},
        // Key combinations: digit or capital, shift 1 and ctrl 2 added up.
        {u"ctrl+A", true, 65, 2},
        {u"CTRL + shift + 1", true, 49, 3},
        {u" ctrl\r\n+\t9 ", true, 57, 2},
        // Blank or null text: success, and nothing can match.
        {u"", true, 0, 0},
        // Failures keep the modifiers read so far and no key.
        {u"shift+A", false, 0, 1},          // shift alone is refused
        {u"ctrl+a", false, 0, 2},           // lower case after a modifier
        {u"ctrl", false, 0, 0},             // no "+"
        {u"ctrlA", false, 0, 0},
        {u"ctrl+AB", false, 0, 2},          // more than one key
    };
    for (Case const &c : cases) {
        TemplateAccelerator a(Input::key_f1, 3);
        EXPECT_EQ(a.parse(c.text), c.ok) << std::string(c.text, c.text + std::char_traits<char16_t>::length(c.text));
        EXPECT_EQ(a.key(), c.key) << "key of case " << (&c - cases);
        EXPECT_EQ(a.modifiers(), c.modifiers) << "modifiers of case " << (&c - cases);
    }
}

TEST(TemplateAccelerator, VoidAndEquality)
{
    struct Case
    {
        TemplateAccelerator accelerator;
        bool is_void;
    } const cases[] = {
        {TemplateAccelerator(), true},
        // A typed character is never a modifier key, whatever its code.
        {TemplateAccelerator(static_cast<char16_t>(17)), false},
        {TemplateAccelerator(Input::key_control, Input::modifier_control), true},
        {TemplateAccelerator(Input::key_escape, 0), false},
    };
    for (Case const &c : cases)
        EXPECT_EQ(c.accelerator.is_void(), c.is_void) << c.accelerator.key() << "/" << c.accelerator.modifiers();

    // Both fields take part: the character "N" is not ctrl+N, nor is it the key N without modifiers.
    TemplateAccelerator const ctrl_n(Input::key_n, Input::modifier_control);
    TemplateAccelerator parsed;
    ASSERT_TRUE(parsed.parse(u"ctrl+N"));
    EXPECT_EQ(parsed, ctrl_n);
    EXPECT_NE(TemplateAccelerator(u'N'), ctrl_n);
    EXPECT_NE(TemplateAccelerator(Input::key_n, 0), ctrl_n);
}
