// Hints: nine distinct singletons, classified by run-time class with every base holding.
#include <gtest/gtest.h>

#include <set>
#include <typeinfo>

#include "tavi/glyph/hint.h"

namespace {

using namespace Tavi;

// Which tests of dynamic_cast a hint must pass, one column per class of the tree.
struct HintRow
{
    char const *name;
    Hint const *hint;
    std::type_info const *exact;
    bool damage, damage_selection, changed, selection, edit, user_edit, user_content, user_style, dom;
};

HintRow const rows[] = {
    // name                hint                            exact                                dmg   dsel   chg    sel    edit   uedit  ucont  ustyle dom
    {"DamageAspect", &DamageAspect::object(), &typeid(DamageAspect), true, false, false, false, false, false, false, false, false},
    {"DamageSelection", &DamageSelection::object(), &typeid(DamageSelection), true, true, false, false, false, false, false, false, false},
    {"ChangedAspect", &ChangedAspect::object(), &typeid(ChangedAspect), false, false, true, false, false, false, false, false, false},
    {"SelectionChange", &SelectionChange::object(), &typeid(SelectionChange), false, false, true, true, false, false, false, false, false},
    {"EditChange", &EditChange::object(), &typeid(EditChange), false, false, true, false, true, false, false, false, false},
    {"UserEditChange", &UserEditChange::object(), &typeid(UserEditChange), false, false, true, false, true, true, false, false, false},
    {"UserContentChange", &UserContentChange::object(), &typeid(UserContentChange), false, false, true, false, true, true, true, false, false},
    {"UserStyleChange", &UserStyleChange::object(), &typeid(UserStyleChange), false, false, true, false, true, true, false, true, false},
    {"DOMEditChange", &DOMEditChange::object(), &typeid(DOMEditChange), false, false, true, false, true, false, false, false, true},
};

TEST(Hint, SingletonsAreDistinctAndClassifiedByTheirBases)
{
    std::set<Hint const *> seen;
    for (HintRow const &row : rows) {
        SCOPED_TRACE(row.name);
        Hint const *h = row.hint;
        EXPECT_TRUE(seen.insert(h).second) << "two hints share one object";
        EXPECT_TRUE(typeid(*h) == *row.exact);
        EXPECT_EQ(dynamic_cast<DamageAspect const *>(h) != nullptr, row.damage);
        EXPECT_EQ(dynamic_cast<DamageSelection const *>(h) != nullptr, row.damage_selection);
        EXPECT_EQ(dynamic_cast<ChangedAspect const *>(h) != nullptr, row.changed);
        EXPECT_EQ(dynamic_cast<SelectionChange const *>(h) != nullptr, row.selection);
        EXPECT_EQ(dynamic_cast<EditChange const *>(h) != nullptr, row.edit);
        EXPECT_EQ(dynamic_cast<UserEditChange const *>(h) != nullptr, row.user_edit);
        EXPECT_EQ(dynamic_cast<UserContentChange const *>(h) != nullptr, row.user_content);
        EXPECT_EQ(dynamic_cast<UserStyleChange const *>(h) != nullptr, row.user_style);
        EXPECT_EQ(dynamic_cast<DOMEditChange const *>(h) != nullptr, row.dom);
    }
    EXPECT_EQ(seen.size(), 9u);
    EXPECT_EQ(&UserContentChange::object(), &UserContentChange::object());
}

}  // namespace
