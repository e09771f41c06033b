// QTaviScrollView: the widget and its two bars in a grid.
#include "tavi/qt/qtaviscrollview.h"

#include <QGridLayout>
#include <QScrollBar>

#include "tavi/qt/qtaviwidget.h"

QTaviScrollView::QTaviScrollView(QWidget *parent, Qt::WindowFlags flags) : QWidget(parent, flags)
{
    auto *horizontal = new QScrollBar(Qt::Horizontal, this);
    auto *vertical = new QScrollBar(Qt::Vertical, this);
    widget_ = new QTaviWidget(horizontal, vertical, this);

    setTabOrder(widget_, vertical);
    setTabOrder(vertical, horizontal);
    // Keys and clicks meant for the composite go to the drawing widget.
    setFocusProxy(widget_);
    setFocusPolicy(Qt::StrongFocus);

    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(0);
    grid->addWidget(widget_, 0, 0);
    grid->addWidget(vertical, 0, 1);
    grid->addWidget(horizontal, 1, 0);
    grid->activate();
}

QTaviScrollView::~QTaviScrollView() = default;
