// QTaviWidget: the stage set-up, the scroll bars, and the events handed to the view's implementation.
#include "tavi/qt/qtaviwidget.h"

#include <algorithm>

#include <QAccessible>
#include <QScrollBar>
#include <QTimer>

#include "tavi/glyph/view.h"
#include "tavi/qt/qtaviaccessible.h"

namespace {

// Sets one bar for one axis: the range runs from the scene's near edge to the last corner that still
// fills the viewport. A scene that fits has no page to step by and sits at its near edge.
void setup_bar(QScrollBar *bar, long near_edge, long far_edge, long viewport_near, long viewport_size)
{
    long const minimum = near_edge;
    long const maximum = std::max(far_edge - viewport_size, minimum);
    long page = 0;
    long value = minimum;
    if (maximum != minimum) {
        page = viewport_size;
        value = viewport_near;
    }
    // A bar that moves while it is being set up would move the viewport with it.
    bar->blockSignals(true);
    bar->setMinimum(static_cast<int>(minimum));
    bar->setMaximum(static_cast<int>(maximum));
    bar->setPageStep(static_cast<int>(page));
    bar->setValue(static_cast<int>(value));
    bar->blockSignals(false);
}

}  // namespace

QTaviWidget::QTaviWidget(QWidget *parent, Qt::WindowFlags flags) : QTaviWidget(nullptr, nullptr, parent, flags)
{
    setFocusPolicy(Qt::StrongFocus);
}

QTaviWidget::QTaviWidget(QScrollBar *horizontal, QScrollBar *vertical, QWidget *parent, Qt::WindowFlags flags)
    : QWidget(parent, flags), imp_(this), scene_(nullptr), horizontal_(horizontal), vertical_(vertical)
{
    // Every paint covers its whole area: Qt need not clear it first.
    setAttribute(Qt::WA_OpaquePaintEvent);
    QTaviAccessible::install();
}

QTaviWidget::~QTaviWidget() = default;

void QTaviWidget::setupStage(Tavi::Scene *scene, Tavi::View *view)
{
    scene_ = scene;
    view->implementation(&imp_);
    if (horizontal_ != nullptr) {
        horizontal_->setSingleStep(static_cast<int>(Tavi::View::scroll_line));
        connect(horizontal_, &QScrollBar::valueChanged, this, &QTaviWidget::setContentsX, Qt::UniqueConnection);
    }
    if (vertical_ != nullptr) {
        vertical_->setSingleStep(static_cast<int>(Tavi::View::scroll_line));
        connect(vertical_, &QScrollBar::valueChanged, this, &QTaviWidget::setContentsY, Qt::UniqueConnection);
    }
    view->final_construct();
}

Tavi::Scene *QTaviWidget::getScene() const { return scene_; }

Tavi::View *QTaviWidget::getView() const { return imp_.view(); }

int QTaviWidget::modifierState() const { return Tavi::modifier_state(); }

void QTaviWidget::setContentsX(int x) { imp_.silent_scroll_to(Tavi::Point(x, imp_.viewport().top())); }

void QTaviWidget::setContentsY(int y) { imp_.silent_scroll_to(Tavi::Point(imp_.viewport().left(), y)); }

void QTaviWidget::emitContentsXChanged(int x)
{
    if (horizontal_ != nullptr)
        horizontal_->setValue(x);
}

void QTaviWidget::emitContentsYChanged(int y)
{
    if (vertical_ != nullptr)
        vertical_->setValue(y);
}

void QTaviWidget::setupScrollbars()
{
    Tavi::View *view = imp_.view();
    if (view == nullptr)
        return;
    Tavi::Extension const scroll = view->scene_scroll_extension();
    Tavi::Extension const viewport = view->viewport();
    if (horizontal_ != nullptr)
        setup_bar(horizontal_, scroll.left(), scroll.right(), viewport.left(), viewport.right() - viewport.left());
    if (vertical_ != nullptr)
        setup_bar(vertical_, scroll.top(), scroll.bottom(), viewport.top(), viewport.bottom() - viewport.top());
}

void QTaviWidget::paintEvent(QPaintEvent *event) { imp_.paintEvent(event); }

void QTaviWidget::timerEvent(QTimerEvent *event) { imp_.timerEvent(event); }

void QTaviWidget::keyPressEvent(QKeyEvent *event) { imp_.keyPressEvent(event); }

void QTaviWidget::keyReleaseEvent(QKeyEvent *event) { imp_.keyReleaseEvent(event); }

void QTaviWidget::mousePressEvent(QMouseEvent *event) { imp_.mousePressEvent(event); }

void QTaviWidget::mouseReleaseEvent(QMouseEvent *event) { imp_.mouseReleaseEvent(event); }

void QTaviWidget::mouseDoubleClickEvent(QMouseEvent *event) { imp_.mouseDoubleClickEvent(event); }

void QTaviWidget::mouseMoveEvent(QMouseEvent *event) { imp_.mouseMoveEvent(event); }

void QTaviWidget::wheelEvent(QWheelEvent *event) { imp_.wheelEvent(event); }

void QTaviWidget::resizeEvent(QResizeEvent *event) { imp_.resizeEvent(event); }

QTaviWidget::ViewImp::ViewImp(QTaviWidget *owner) : Qt_ViewImp(owner), owner_(owner) {}

Tavi::Scene *QTaviWidget::ViewImp::scene() const { return owner_->scene_; }

void QTaviWidget::ViewImp::scene_extension_changed() { owner_->setupScrollbars(); }

// The selection may be half-built while the damage is reported: its value is read afterwards, once.
void QTaviWidget::selectionMayHaveMoved()
{
    if (announcePending_ || !QAccessible::isActive())
        return;
    announcePending_ = true;
    QTimer::singleShot(0, this, [this] {
        announcePending_ = false;
        QTaviAccessible::announce(this, spokenValue_);
    });
}

void QTaviWidget::ViewImp::damage_all()
{
    Qt_ViewImp::damage_all();
    owner_->selectionMayHaveMoved();
}

void QTaviWidget::ViewImp::scroll_to(Tavi::Point corner)
{
    owner_->emitContentsXChanged(static_cast<int>(corner.x));
    owner_->emitContentsYChanged(static_cast<int>(corner.y));
}
