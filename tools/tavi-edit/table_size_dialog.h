// TableSizeDialog: asks for the rows and columns of a new table (a matrix, a system of equations),
// as the library does through FormulaScene::array_dimensions_query when such a template is entered.
#pragma once

#include <QDialog>

class QSpinBox;

namespace TaviEdit {

class TableSizeDialog : public QDialog
{
    Q_OBJECT

public:
    // The largest size offered on either axis: a table past it is not a formula any more.
    static constexpr int max_size = 50;

    // `what` is the template's display name, shown in the title.
    TableSizeDialog(QString const &what, int rows, int columns, QWidget *parent = nullptr);

    int rows() const;
    int columns() const;

    QSpinBox *rows_box() const { return rows_; }
    QSpinBox *columns_box() const { return columns_; }

private:
    QSpinBox *rows_;
    QSpinBox *columns_;
};

}  // namespace TaviEdit
