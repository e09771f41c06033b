// What a screen reader gets from a QTaviWidget through Qt's accessibility: an equation named
// "Formula" whose value is the spoken text of the selection, the whole formula's at first and the
// selected node's after the selection moves by the keyboard, and a value change announced only when
// the value differs from the one announced before.
#include <gtest/gtest.h>

#include <QAccessible>
#include <QtTest/QTest>

#include <string>
#include <vector>

#include "interchange/content_test_util.h"
#include "support/math_fixture.h"
#include "tavi/editing/formulascene.h"
#include "tavi/glyph/glyphview.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/qt/qt_sceneimp.h"
#include "tavi/qt/qtaviaccessible.h"
#include "tavi/qt/qtaviwidget.h"

namespace {

using namespace Tavi;
using namespace TaviTest;

// y = √(x + 1)
std::string const formula = math_doc(
    "<expr tmp='eq'><ident>y</ident><expr tmp='sqrt'><plus sgn='++'><ident>x</ident><num>1</num></plus>"
    "</expr></expr>");

}  // namespace

TEST(QtAccessible, ValueIsTheSpokenTextOfTheSelection)
{
    QTaviWidget widget;
    FormulaScene scene;
    Qt_SceneImp scene_imp;
    GlyphView view;
    ASSERT_TRUE(read_default_setup(*scene.template_table()));
    ASSERT_TRUE(scene.read_content(formula));
    scene.implementation(&scene_imp);
    scene_imp.add_view(&view);
    widget.setupStage(&scene, &view);

    QAccessibleInterface *face = QAccessible::queryAccessibleInterface(&widget);
    ASSERT_NE(face, nullptr);
    EXPECT_EQ(QAccessible::Equation, face->role());
    EXPECT_EQ("Formula", face->text(QAccessible::Name).toStdString());
    EXPECT_TRUE(face->state().editable);
    std::string const whole = "y equals the square root of x plus 1";
    EXPECT_EQ(whole, face->text(QAccessible::Value).toStdString());
    QString announced;
    EXPECT_TRUE(QTaviAccessible::announce(&widget, announced));

    // Shift and space select the first operand, tab the next one: the value follows, the
    // description stays.
    std::vector<std::string> values;
    auto const press = [&](Qt::Key key, Qt::KeyboardModifiers modifiers) {
        QTest::keyClick(&widget, key, modifiers);
        values.push_back(face->text(QAccessible::Value).toStdString());
    };
    press(Qt::Key_Space, Qt::ShiftModifier);
    press(Qt::Key_Tab, Qt::NoModifier);
    press(Qt::Key_Space, Qt::ShiftModifier);
    press(Qt::Key_Space, Qt::ShiftModifier);
    EXPECT_EQ((std::vector<std::string>{"y", "the square root of x plus 1", "x plus 1", "x"}), values);
    EXPECT_EQ(whole, face->text(QAccessible::Description).toStdString());
    EXPECT_TRUE(QTaviAccessible::announce(&widget, announced));
    EXPECT_EQ("x", announced.toStdString());
    EXPECT_FALSE(QTaviAccessible::announce(&widget, announced));

    widget.setAccessibleName("Equation 1");
    EXPECT_EQ("Equation 1", face->text(QAccessible::Name).toStdString());
}

// Only QTaviWidget and its descendants get the interface from the factory.
TEST(QtAccessible, FactoryServesOnlyTheWidget)
{
    QWidget other;
    EXPECT_EQ(nullptr, QTaviAccessible::factory("QTaviWidget", &other));
    QTaviWidget widget;
    EXPECT_EQ(nullptr, QTaviAccessible::factory("QWidget", &widget));
    QAccessibleInterface *face = QTaviAccessible::factory("QTaviWidget", &widget);
    ASSERT_NE(nullptr, face);
    QAccessible::Id const id = QAccessible::registerAccessibleInterface(face);
    EXPECT_TRUE(face->text(QAccessible::Value).isEmpty());  // no scene yet
    QAccessible::deleteAccessibleInterface(id);
}
