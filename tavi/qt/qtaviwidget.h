// QTaviWidget: the widget that shows a Tavi view. It holds the view's implementation, hands it the
// widget's events, and keeps two optional scroll bars in step with the view: their ranges follow the
// scene's size and the viewport, and moving them moves the viewport. QTaviScrollView
// (qtaviscrollview.h) puts one together with its bars.
//
// Bringing a formula on screen: make the scene and join it to its SceneImp, make the view, then call
// setupStage(scene, view), which joins the view to this widget and runs its final_construct.
//
// Screen readers see the widget through QTaviAccessible (qtaviaccessible.h), whose factory the
// constructors install: the formula's spoken text, and the selection's as the value.
#pragma once

#include <QWidget>

#include "tavi/qt/qt_viewimp.h"

class QScrollBar;

namespace Tavi {
class Scene;
class View;
}  // namespace Tavi

class QTaviWidget : public QWidget
{
    Q_OBJECT

public:
    // No scroll bars; the widget takes the focus by tab and by click.
    explicit QTaviWidget(QWidget *parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    // Scrolls with the given bars, either of which may be null; they are not owned. The focus policy
    // is left to the caller, whose composite usually lends its own focus to the widget.
    QTaviWidget(QScrollBar *horizontal, QScrollBar *vertical, QWidget *parent = nullptr,
                Qt::WindowFlags flags = Qt::WindowFlags());
    ~QTaviWidget() override;

    // Joins the view to this widget, connects the bars, and calls the view's final_construct. Neither
    // the scene nor the view is owned; the view must not outlive the widget.
    virtual void setupStage(Tavi::Scene *scene, Tavi::View *view);
    virtual Tavi::Scene *getScene() const;
    virtual Tavi::View *getView() const;

    // The modifier word of the keyboard as it is now (Tavi::modifier_state).
    int modifierState() const;

public slots:
    // Move the viewport's left or top edge to the scene coordinate, without touching the bars: this
    // is where the bars' moves arrive.
    virtual void setContentsX(int x);
    virtual void setContentsY(int y);

protected:
    // Move the bars, which then move the viewport through the slots above.
    void emitContentsXChanged(int x);
    void emitContentsYChanged(int y);
    // Sets each bar's range and page from the view's scroll extension and viewport.
    void setupScrollbars();

    void paintEvent(QPaintEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

public:
    // The implementation inside the widget: it answers for the widget's scene, and scrolls and sets
    // up ranges through the widget's bars.
    class ViewImp : public Tavi::Qt_ViewImp
    {
    public:
        explicit ViewImp(QTaviWidget *owner);

        Tavi::Scene *scene() const override;
        void scene_extension_changed() override;
        // Also tells assistive technology that the selection may have moved.
        void damage_all() override;
        // Moves the bars; the viewport follows through their signals. An axis without a bar stays.
        void scroll_to(Tavi::Point corner) override;

    private:
        QTaviWidget *owner_;
    };

private:
    // Announces the spoken text of the selection to assistive technology, if it listens, once the
    // change at hand is over.
    void selectionMayHaveMoved();

    ViewImp imp_;
    Tavi::Scene *scene_;
    QScrollBar *horizontal_;
    QScrollBar *vertical_;
    QString spokenValue_;  // the value last announced
    bool announcePending_ = false;
};
