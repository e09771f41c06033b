// TableSizeDialog: two spin boxes in a form, OK and Cancel.
#include "tools/tavi-edit/table_size_dialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QSpinBox>

namespace TaviEdit {

namespace {

QSpinBox *size_box(int value, QWidget *parent)
{
    auto *box = new QSpinBox(parent);
    box->setRange(1, TableSizeDialog::max_size);
    box->setValue(value);
    return box;
}

}  // namespace

TableSizeDialog::TableSizeDialog(QString const &what, int rows, int columns, QWidget *parent)
    : QDialog(parent), rows_(size_box(rows, this)), columns_(size_box(columns, this))
{
    setWindowTitle(what.isEmpty() ? tr("Table size") : tr("%1 size").arg(what));
    rows_->setObjectName("rows");
    columns_->setObjectName("columns");
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *form = new QFormLayout(this);
    form->addRow(tr("&Rows:"), rows_);
    form->addRow(tr("&Columns:"), columns_);
    form->addRow(buttons);
    // The rows box has the focus, its text selected: typing a number replaces it at once.
    rows_->setFocus();
    rows_->selectAll();
}

int TableSizeDialog::rows() const { return rows_->value(); }

int TableSizeDialog::columns() const { return columns_->value(); }

}  // namespace TaviEdit
