// QTaviAccessible: what assistive technology such as a screen reader sees of a QTaviWidget. It is
// an equation whose value is the spoken text of the selected node (the whole formula's when nothing
// narrower is selected), and whose description is the spoken text of the whole formula. A widget
// tells it of moves of the selection, and it sends a value change to the screen reader.
//
// Qt finds the interface through a factory. Every QTaviWidget installs it when it is made; a host
// may also call QTaviAccessible::install() itself, and calling it again does nothing.
#pragma once

#include <QAccessibleWidget>
#include <QString>

class QTaviWidget;

namespace Tavi {
class MathNode;
}

class QTaviAccessible : public QAccessibleWidget
{
public:
    explicit QTaviAccessible(QTaviWidget *widget);

    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    // Name: the widget's accessible name, or "Formula". Value: the selection's spoken text.
    // Description: the whole formula's spoken text, unless the widget has a description of its own.
    QString text(QAccessible::Text t) const override;

    // Puts the factory in Qt's list once.
    static void install();
    // The interface for a QTaviWidget or a class derived from it; null for any other object.
    static QAccessibleInterface *factory(QString const &key, QObject *object);

    // The node whose spoken text is the value: the selected node, else the whole formula; null when
    // the widget shows no formula.
    static Tavi::MathNode *selected_node(QTaviWidget *widget);
    // The top node of the formula the widget shows, or null.
    static Tavi::MathNode *formula_node(QTaviWidget *widget);

    // Sends assistive technology a value change when the widget's value differs from `last`, which
    // then holds the new one; false, and nothing sent, when the value is unchanged.
    static bool announce(QTaviWidget *widget, QString &last);
};
