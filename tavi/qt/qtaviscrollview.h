// QTaviScrollView: the ready-made way to show a Tavi view: a QTaviWidget with a horizontal bar under it
// and a vertical bar at its right, the whole taking the focus for the widget.
//
// A host makes one, brings its scene and view up, and hands them over:
//     auto *shown = new QTaviScrollView(parent);
//     scene->implementation(scene_imp);         // the scene first, with its SceneImp
//     shown->widget()->setupStage(scene, view);  // then the view, here joined to the widget
#pragma once

#include <QWidget>

class QScrollBar;
class QTaviWidget;

class QTaviScrollView : public QWidget
{
    Q_OBJECT

public:
    explicit QTaviScrollView(QWidget *parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    ~QTaviScrollView() override;

    // The drawing widget, owned by this one as a child.
    QTaviWidget *widget() const { return widget_; }

private:
    QTaviWidget *widget_;
};
