// Qt_SceneImp, the scene implementation that tavi-edit's window stands on: its register of views,
// the damage that reaches each of them, the modified mark and its listener, and the modifier word
// read from Qt's keyboard state.
#include <gtest/gtest.h>

#include <QWidget>
#include <QtTest/QTest>

#include <algorithm>
#include <string>
#include <vector>

#include "tavi/glyph/scene.h"
#include "tavi/glyph/view.h"
#include "tavi/qt/qt_sceneimp.h"

namespace {

using namespace Tavi;

class CountingView : public View
{
public:
    void damage_all() override { ++damaged; }
    int damaged = 0;
};

}  // namespace

TEST(QtSceneImp, RegistersViewsOnceAndReachesEachWithDamage)
{
    struct Step
    {
        char const *what;  // "+a", "-b": add or remove view a, b or c
        long count;        // views registered after the step
    };
    Step const steps[] = {
        {"+a", 1}, {"+b", 2}, {"+a", 2}, {"-c", 2}, {"+c", 3}, {"-a", 2}, {"-a", 2}, {"-b", 1}, {"-c", 0},
    };
    CountingView views[3];
    Qt_SceneImp imp;
    Scene scene;
    scene.implementation(&imp);
    std::vector<View *> expected;
    for (Step const &step : steps) {
        View *v = &views[step.what[1] - 'a'];
        if (step.what[0] == '+') {
            imp.add_view(v);
            if (std::find(expected.begin(), expected.end(), v) == expected.end())
                expected.push_back(v);
        } else {
            imp.remove_view(v);
            expected.erase(std::remove(expected.begin(), expected.end(), v), expected.end());
        }
        ASSERT_EQ(step.count, scene.view_count()) << step.what;
        for (long i = 0; i < step.count; ++i)
            EXPECT_EQ(expected[static_cast<std::size_t>(i)], scene.view_at(i)) << step.what;
        EXPECT_EQ(nullptr, imp.view_at(step.count)) << step.what;
        EXPECT_EQ(nullptr, imp.view_at(-1)) << step.what;

        int before[3];
        for (int i = 0; i < 3; ++i)
            before[i] = views[i].damaged;
        scene.damage_all();
        for (int i = 0; i < 3; ++i) {
            bool const registered = std::find(expected.begin(), expected.end(), &views[i]) != expected.end();
            EXPECT_EQ(before[i] + (registered ? 1 : 0), views[i].damaged) << step.what << " view " << i;
        }
    }
    imp.add_view(nullptr);
    EXPECT_EQ(0, imp.view_count());
}

TEST(QtSceneImp, ModifiedMarkTellsItsListenerOfChangesOnly)
{
    Qt_SceneImp imp;
    Scene scene;
    scene.implementation(&imp);
    std::string heard;
    imp.modified_listener([&heard](bool on) { heard += on ? '1' : '0'; });
    for (bool on : {true, true, false, false, true})
        scene.modified(on);
    EXPECT_EQ("101", heard);
    EXPECT_TRUE(scene.modified());
}

// The word follows what Qt last heard of the keyboard, as a key event brings it.
TEST(QtSceneImp, ModifierStateFollowsTheKeyboard)
{
    struct Held
    {
        Qt::KeyboardModifiers modifiers;
        int word;
    };
    Held const rows[] = {
        {Qt::NoModifier, 0},
        {Qt::ShiftModifier, 1},
        {Qt::ControlModifier, 2},
        {Qt::ShiftModifier | Qt::ControlModifier, 3},
        {Qt::AltModifier | Qt::MetaModifier, 0},
        {Qt::ControlModifier | Qt::AltModifier, 2},
    };
    Qt_SceneImp imp;
    Scene scene;
    scene.implementation(&imp);
    QWidget widget;
    for (Held const &row : rows) {
        QTest::keyPress(&widget, Qt::Key_A, row.modifiers);
        EXPECT_EQ(row.word, scene.modifier_state()) << row.modifiers;
        QTest::keyRelease(&widget, Qt::Key_A, row.modifiers);
    }
}
