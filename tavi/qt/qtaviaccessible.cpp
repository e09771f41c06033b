// QTaviAccessible: the interface, its factory, the way from a widget to its selected node, and the
// value change sent when the selection moves.
#include "tavi/qt/qtaviaccessible.h"

#include "tavi/editing/mathselection.h"
#include "tavi/glyph/glyph.h"
#include "tavi/glyph/glyphscene.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/qt/qtaviwidget.h"
#include "tavi/speech/spokentext.h"

namespace {

QString to_qstring(Tavi::wstring const &text) { return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size())); }

// The first formula root in a scene's glyph tree, for scenes whose focus is not a math selection.
// Formulas sit near the top of the tree, so the search goes only a few levels down.
Tavi::MathRootNode *find_root(Tavi::Glyph *glyph, int depth)
{
    if (glyph == nullptr)
        return nullptr;
    if (auto *root = dynamic_cast<Tavi::MathRootNode *>(glyph))
        return root;
    if (depth == 0 || dynamic_cast<Tavi::MathNode *>(glyph) != nullptr)
        return nullptr;
    for (long i = 0; i < glyph->count(); ++i)
        if (Tavi::MathRootNode *root = find_root(glyph->component(i), depth - 1))
            return root;
    return nullptr;
}

Tavi::GlyphScene *scene_of(QTaviWidget *widget)
{
    return widget != nullptr ? dynamic_cast<Tavi::GlyphScene *>(widget->getScene()) : nullptr;
}

Tavi::MathSelection *math_selection(QTaviWidget *widget)
{
    Tavi::GlyphScene *scene = scene_of(widget);
    return scene != nullptr ? dynamic_cast<Tavi::MathSelection *>(scene->focus()) : nullptr;
}

}  // namespace

QTaviAccessible::QTaviAccessible(QTaviWidget *widget) : QAccessibleWidget(widget, QAccessible::Equation) {}

QAccessible::Role QTaviAccessible::role() const { return QAccessible::Equation; }

QAccessible::State QTaviAccessible::state() const
{
    QAccessible::State s = QAccessibleWidget::state();
    Tavi::GlyphScene *scene = scene_of(static_cast<QTaviWidget *>(widget()));
    s.editable = scene != nullptr && !scene->read_only();
    s.readOnly = !s.editable;
    return s;
}

QString QTaviAccessible::text(QAccessible::Text t) const
{
    auto *w = static_cast<QTaviWidget *>(widget());
    switch (t) {
    case QAccessible::Name:
        return w->accessibleName().isEmpty() ? QStringLiteral("Formula") : w->accessibleName();
    case QAccessible::Value:
        return to_qstring(Tavi::spoken_text(selected_node(w)));
    case QAccessible::Description:
        if (!w->accessibleDescription().isEmpty())
            return w->accessibleDescription();
        return to_qstring(Tavi::spoken_text(formula_node(w)));
    default:
        return QAccessibleWidget::text(t);
    }
}

void QTaviAccessible::install() { QAccessible::installFactory(&QTaviAccessible::factory); }

QAccessibleInterface *QTaviAccessible::factory(QString const &key, QObject *object)
{
    // Qt asks with the class names of the object's classes from the most derived one up, so a
    // class derived from QTaviWidget is served when its turn comes.
    if (key != QLatin1String("QTaviWidget"))
        return nullptr;
    auto *widget = qobject_cast<QTaviWidget *>(object);
    return widget != nullptr ? new QTaviAccessible(widget) : nullptr;
}

Tavi::MathNode *QTaviAccessible::selected_node(QTaviWidget *widget)
{
    if (Tavi::MathSelection *selection = math_selection(widget))
        if (Tavi::MathNode *node = selection->selected_node())
            return node;
    return formula_node(widget);
}

Tavi::MathNode *QTaviAccessible::formula_node(QTaviWidget *widget)
{
    if (Tavi::MathSelection *selection = math_selection(widget))
        if (Tavi::MathRootNode *root = selection->root_node())
            return root->child();
    Tavi::GlyphScene *scene = scene_of(widget);
    Tavi::MathRootNode *root = scene != nullptr ? find_root(scene->glyph(), 4) : nullptr;
    return root != nullptr ? root->child() : nullptr;
}

bool QTaviAccessible::announce(QTaviWidget *widget, QString &last)
{
    QString const value = to_qstring(Tavi::spoken_text(selected_node(widget)));
    if (value == last)
        return false;
    last = value;
    QAccessibleValueChangeEvent event(widget, value);
    QAccessible::updateAccessibility(&event);
    return true;
}
