// EditWindow: the menus, the palette, files and exports, zoom and line breaks around one formula.
#include "tools/tavi-edit/edit_window.h"

#include <QAction>
#include <QApplication>
#include <QByteArray>
#include <QClipboard>
#include <QCloseEvent>
#include <QDockWidget>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHeaderView>
#include <QInputDialog>
#include <QKeySequence>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QStatusBar>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

#include "tavi/math/mathrootnode.h"
#include "tavi/math/mathstyle.h"
#include "tavi/math/templates/templatetable.h"
#include "tavi/qt/qtaviscrollview.h"
#include "tavi/qt/qtaviwidget.h"
#include "tools/tavi-edit/table_size_dialog.h"
#include "tools/tavi-render/document.h"
#include "tools/tavi-render/outputs.h"
#include "tools/tavi-render/render_host.h"

namespace TaviEdit {

using namespace Tavi;
using TaviRender::Format;

namespace {

struct ExportKind
{
    Format format;
    char const *name;    // of the action: "export_" and this
    char const *label;   // of the menu entry
    char const *suffix;  // of the file, without the dot
    char const *filter;  // of the file dialog
};

ExportKind const export_kinds[] = {
    {Format::svg, "svg", "&SVG...", "svg", "SVG images (*.svg)"},
    {Format::pdf, "pdf", "&PDF...", "pdf", "PDF documents (*.pdf)"},
    {Format::png, "png", "P&NG...", "png", "PNG images (*.png)"},
    {Format::eps, "eps", "&EPS...", "eps", "Encapsulated PostScript (*.eps)"},
};

QString const formula_filter = QStringLiteral("Formulas (*.xml);;All files (*)");
QString const program_name = QStringLiteral("tavi-edit");

QString from_wide(wchar const *text) { return text ? QString::fromUtf16(text) : QString(); }

// A path as the C library's file calls take it.
std::string local_path(QString const &path) { return QFile::encodeName(path).toStdString(); }

// The path with the suffix added when it has none.
QString with_suffix(QString const &path, char const *suffix)
{
    return QFileInfo(path).suffix().isEmpty() ? path + "." + suffix : path;
}

// The formula's corner is the widget's: a white band on the left and top keeps the first character
// and the caret off the window's edge, while the scroll bars stay at the edges.
QWidget *framed(QWidget *shown)
{
    auto *frame = new QWidget(shown->parentWidget());
    QPalette palette = frame->palette();
    palette.setColor(QPalette::Window, Qt::white);
    frame->setPalette(palette);
    frame->setAutoFillBackground(true);
    auto *layout = new QVBoxLayout(frame);
    layout->setContentsMargins(EditWindow::formula_margin, EditWindow::formula_margin, 0, 0);
    layout->addWidget(shown);
    return frame;
}

}  // namespace

std::vector<int> const &EditWindow::zoom_levels()
{
    static std::vector<int> const levels = {25, 50, 67, 80, 100, 125, 150, 200, 300, 400};
    return levels;
}

EditWindow::EditWindow(QString const &setup_file, QWidget *parent)
    : QMainWindow(parent), formula_view_(new QTaviScrollView(this))
{
    std::string setup_error;
    bool const setup_read = !setup_file.isEmpty() &&
                            TaviRender::load_setup(*scene_.template_table(), local_path(setup_file), setup_error);
    scene_.math_style()->size(MathStyle::a_font_size, base_font_size_);
    // The empty formula of the constructor was made before the setup's placeholder existed.
    scene_.new_formula();

    // The host's order: the scene and its implementation, then the view joined to the widget.
    scene_.implementation(&scene_imp_);
    scene_imp_.add_view(&view_);
    formula_view_->widget()->setupStage(&scene_, &view_);
    formula_view_->widget()->installEventFilter(this);
    setCentralWidget(framed(formula_view_));

    scene_imp_.modified_listener([this](bool) { update_title(); });
    refresh_timer_.setSingleShot(true);
    refresh_timer_.setInterval(0);
    connect(&refresh_timer_, &QTimer::timeout, this, &EditWindow::refresh);
    scene_.change_listener([this] { refresh_timer_.start(); });
    // Paste opens when another program copies something.
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, &refresh_timer_, qOverload<>(&QTimer::start));
    scene_.array_dimensions_query(
        [this](std::size_t &rows, std::size_t &cols, wchar const *keyword) { return query_table_size(rows, cols, keyword); });

    templates_ = enterable_templates(scene_);
    for (TemplateEntry const &entry : templates_)
        template_names_.push_back(entry.name.toStdU16String());

    build_file_menu();
    build_edit_menu();
    build_insert_menu();
    build_view_menu();
    QMenu *help = menuBar()->addMenu(tr("&Help"));
    add_action(help, "about", tr("&About tavi-edit"), [this] {
        QMessageBox::about(this, tr("About tavi-edit"),
                           tr("<p><b>tavi-edit</b> edits one formula at a time with the Tavi library.</p>"
                              "<p>Type to enter identifiers, numbers and operators; the Insert menu and the "
                              "palette show every template and the key that enters it. Space selects the "
                              "enclosing expression, Tab the next operand.</p>"));
    });
    build_palette();

    zoom_label_ = new QLabel(this);
    statusBar()->addPermanentWidget(zoom_label_);
    zoom_to(100);
    resize(820, 520);
    update_title();
    formula_view_->setFocus();
    refresh();

    if (!setup_read)
        warn(setup_file.isEmpty() ? tr("No setup file was found: only the built-in templates can be entered.")
                                  : tr("The setup file %1 could not be read: only the built-in templates can be "
                                       "entered.").arg(setup_file),
             setup_error);
}

EditWindow::~EditWindow()
{
    // The scene forgets the view, which goes first, and stops telling the window, which is going.
    scene_.change_listener(nullptr);
    scene_imp_.modified_listener(nullptr);
    scene_imp_.remove_view(&view_);
}

QAction *EditWindow::action(QString const &name) const { return findChild<QAction *>(name); }

template <class Slot>
QAction *EditWindow::add_action(QMenu *menu, QString const &name, QString const &text, Slot run,
                                QList<QKeySequence> const &keys, QString const &shown)
{
    auto *a = new QAction(shown.isEmpty() ? text : text + "\t" + shown, this);
    a->setObjectName(name);
    QList<QKeySequence> free;
    for (QKeySequence const &k : keys)
        if (!k.isEmpty() && !formula_takes(*scene_.template_table(), k))
            free.append(k);
    a->setShortcuts(free);
    connect(a, &QAction::triggered, this, run);
    menu->addAction(a);
    return a;
}

template <class Call>
void EditWindow::edit(Call call)
{
    call();
    formula_view_->setFocus();
    refresh();
}

// ---- Menus ----

void EditWindow::build_file_menu()
{
    QMenu *file = menuBar()->addMenu(tr("&File"));
    add_action(file, "new", tr("&New"), [this] { start_new(); }, {QKeySequence::New});
    add_action(file, "open", tr("&Open..."), [this] { open(); }, {QKeySequence::Open});
    add_action(file, "save", tr("&Save"), [this] { save(); }, {QKeySequence::Save});
    add_action(file, "save_as", tr("Save &As..."), [this] { save_as(); }, {QKeySequence::SaveAs});
    file->addSeparator();
    QMenu *exports = file->addMenu(tr("&Export"));
    for (ExportKind const &kind : export_kinds) {
        Format const format = kind.format;
        add_action(exports, QString("export_") + kind.name, tr(kind.label), [this, format] { export_as(format); });
    }
    file->addSeparator();
    add_action(file, "quit", tr("&Quit"), [this] { close(); }, {QKeySequence::Quit});
}

void EditWindow::build_edit_menu()
{
    QMenu *menu = menuBar()->addMenu(tr("&Edit"));
    connect(menu, &QMenu::aboutToShow, this, &EditWindow::refresh);
    auto native = [](QKeySequence const &k) { return k.toString(QKeySequence::NativeText); };
    add_action(menu, "undo", tr("&Undo"), [this] { edit([this] { scene_.do_undo(); }); }, {QKeySequence::Undo});
    add_action(menu, "redo", tr("&Redo"), [this] { edit([this] { scene_.do_redo(); }); },
               {QKeySequence(Qt::CTRL | Qt::Key_Y), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)});
    menu->addSeparator();
    // These keys reach the formula, which answers them itself; the menu only names them.
    add_action(menu, "cut", tr("Cu&t"), [this] { edit([this] { scene_.do_cut(); }); }, {},
               native(QKeySequence::Cut));
    add_action(menu, "copy", tr("&Copy"), [this] { edit([this] { scene_.do_copy(); }); }, {},
               native(QKeySequence::Copy));
    add_action(menu, "paste", tr("&Paste"), [this] { edit([this] { scene_.do_paste(); }); }, {},
               native(QKeySequence::Paste));
    add_action(menu, "delete", tr("&Delete"), [this] { edit([this] { scene_.do_delete(); }); }, {},
               native(QKeySequence(Qt::Key_Delete)));
    menu->addSeparator();
    // The formula selects its whole expression on a space typed with ctrl held, but under X11 ctrl
    // and space bring no text along: the window binds the key itself.
    add_action(menu, "select_expression", tr("Select &Expression"),
               [this] { edit([this] { scene_.do_select_expression(); }); }, {QKeySequence(Qt::CTRL | Qt::Key_Space)});
    add_action(menu, "next_operand", tr("&Next Operand"), [this] { edit([this] { scene_.do_next_operand(); }); },
               {}, native(QKeySequence(Qt::Key_Tab)));
    add_action(menu, "previous_operand", tr("P&revious Operand"),
               [this] { edit([this] { scene_.do_prev_operand(); }); }, {},
               native(QKeySequence(Qt::SHIFT | Qt::Key_Tab)));
    menu->addSeparator();
    read_only_action_ = add_action(menu, "read_only", tr("Read-&only"), [this] { toggle_read_only(); });
    read_only_action_->setCheckable(true);
}

void EditWindow::build_insert_menu()
{
    insert_menu_ = menuBar()->addMenu(tr("&Insert"));
    connect(insert_menu_, &QMenu::aboutToShow, this, &EditWindow::refresh);
    add_action(insert_menu_, "char_by_name", tr("&Character by Name..."), [this] { insert_char_by_name(); });
    add_action(insert_menu_, "number", tr("N&umber..."), [this] { insert_number(); });
    insert_menu_->addSeparator();
    insert_menu_->setToolTipsVisible(true);
    // The template's key is shown, not bound: the formula takes it when it is typed.
    for (TemplateEntry const &entry : templates_) {
        QString const name = entry.name;
        QAction *a = add_action(insert_menu_, "template:" + name, entry.keyword, [this, name] { insert_template(name); },
                                {}, entry.key);
        a->setToolTip(name);
    }
}

void EditWindow::build_view_menu()
{
    QMenu *menu = menuBar()->addMenu(tr("&View"));
    add_action(menu, "zoom_in", tr("Zoom &In"), [this] { zoom_step(1); },
               {QKeySequence::ZoomIn, QKeySequence(Qt::CTRL | Qt::Key_Equal)});
    add_action(menu, "zoom_out", tr("Zoom &Out"), [this] { zoom_step(-1); }, {QKeySequence::ZoomOut});
    add_action(menu, "zoom_reset", tr("&Actual Size"), [this] { zoom_to(100); }, {QKeySequence(Qt::CTRL | Qt::Key_0)});
    menu->addSeparator();
    wrap_action_ = add_action(menu, "wrap", tr("&Wrap to Window Width"), [this] { refresh(); });
    wrap_action_->setCheckable(true);
    menu->addSeparator();
    view_menu_ = menu;
}

void EditWindow::build_palette()
{
    auto *dock = new QDockWidget(tr("Templates"), this);
    dock->setObjectName("palette_dock");
    palette_ = new QTreeWidget(dock);
    palette_->setObjectName("palette");
    palette_->setColumnCount(2);
    palette_->setHeaderLabels({tr("Template"), tr("Key")});
    palette_->setRootIsDecorated(false);
    palette_->setUniformRowHeights(true);
    palette_->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    palette_->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    palette_->header()->setStretchLastSection(false);
    // Clicking inserts, and the keyboard stays with the formula, so that typing goes on at once.
    palette_->setFocusPolicy(Qt::NoFocus);
    for (TemplateEntry const &entry : templates_) {
        auto *item = new QTreeWidgetItem(palette_, {entry.keyword, entry.key});
        item->setData(0, Qt::UserRole, entry.name);
        item->setToolTip(0, entry.key.isEmpty() ? entry.name : entry.name + " (" + entry.key + ")");
    }
    connect(palette_, &QTreeWidget::itemClicked, this,
            [this](QTreeWidgetItem *item) { insert_template(item->data(0, Qt::UserRole).toString()); });
    dock->setWidget(palette_);
    addDockWidget(Qt::RightDockWidgetArea, dock);
    resizeDocks({dock}, {240}, Qt::Horizontal);
    QAction *shown = dock->toggleViewAction();
    shown->setObjectName("show_palette");
    shown->setText(tr("Template &Palette"));
    view_menu_->addAction(shown);
}

// ---- State of the actions ----

void EditWindow::refresh()
{
    refresh_timer_.stop();
    struct Allowed
    {
        char const *name;
        bool on;
    };
    Allowed const allowed[] = {
        {"undo", scene_.can_undo()},
        {"redo", scene_.can_redo()},
        {"cut", scene_.can_cut()},
        {"copy", scene_.can_copy()},
        {"paste", scene_.can_paste()},
        {"delete", scene_.can_delete()},
        {"select_expression", scene_.can_select_expression()},
        {"next_operand", scene_.can_select_next()},
        {"previous_operand", scene_.can_select_previous()},
        {"char_by_name", scene_.can_insert_char_by_name()},
        {"number", scene_.can_insert_number()},
    };
    for (Allowed const &a : allowed)
        if (QAction *found = action(a.name))
            found->setEnabled(a.on);

    // The formula's own setting can be switched only while it does not inherit one; the menu turns
    // inheriting off first, so the entry is open whenever either switch is.
    bool read_only = false;
    bool inherits = false;
    bool const own = scene_.can_toggle_read_only(read_only);
    bool const inherit = scene_.can_toggle_inherit_read_only(inherits);
    read_only_action_->setEnabled(own || inherit);
    read_only_action_->setChecked(read_only);

    for (std::size_t i = 0; i < templates_.size(); ++i) {
        bool const open = scene_.can_insert_symbol_overlay(template_names_[i].c_str());
        if (QAction *a = action("template:" + templates_[i].name))
            a->setEnabled(open);
        if (QTreeWidgetItem *item = palette_->topLevelItem(static_cast<int>(i)))
            item->setDisabled(!open);
    }
    apply_wrap();
}

void EditWindow::apply_wrap()
{
    double points = 0.0;
    if (wrap_action_->isChecked()) {
        // The width that shows without scrolling: the view keeps a margin scrollable past the formula.
        QWidget const *shown = formula_view_->widget();
        long const pixels = std::max(1L, static_cast<long>(shown->width()) - View::scroll_margin);
        points = static_cast<double>(pixels) * 72.0 / shown->logicalDpiX();
    }
    if (points == scene_.wrap_width())
        return;
    scene_.wrap_width(points);
    scene_.scroll_to_selection();
}

bool EditWindow::eventFilter(QObject *watched, QEvent *event)
{
    // The widget takes its new size after this; the line breaks follow once it has.
    if (watched == formula_view_->widget() && event->type() == QEvent::Resize)
        refresh_timer_.start();
    return QMainWindow::eventFilter(watched, event);
}

void EditWindow::update_title()
{
    QString const name = path_.isEmpty() ? tr("Untitled") : QFileInfo(path_).fileName();
    setWindowTitle(name + "[*] - " + program_name);
    setWindowModified(scene_.modified());
}

// ---- Files ----

void EditWindow::warn(QString const &text, std::string const &details)
{
    QString const more = QString::fromStdString(details).trimmed();
    QMessageBox::warning(this, program_name, more.isEmpty() ? text : text + "\n\n" + more);
}

bool EditWindow::open_file(QString const &path)
{
    std::string text;
    std::string error;
    std::string messages;
    std::string const file = local_path(path);
    Tavi::MathRootNode *root = nullptr;
    if (TaviRender::read_input(file, text, error))
        root = TaviRender::read_formula(*scene_.template_table(), text, file, error, &messages);
    if (root == nullptr) {
        warn(tr("%1 could not be opened.").arg(path), error + "\n" + messages);
        return false;
    }
    scene_.formula(root);
    path_ = path;
    update_title();
    statusBar()->showMessage(tr("Opened %1").arg(path), 5000);
    // The reader may have stood in for what it did not know: the user should hear of it.
    if (!messages.empty())
        warn(tr("%1 was opened with these messages:").arg(path), messages);
    return true;
}

void EditWindow::new_file(QString const &path)
{
    scene_.new_formula();
    path_ = path;
    update_title();
}

bool EditWindow::save_file(QString const &path)
{
    std::string const content = scene_.content();
    std::string error;
    if (!TaviRender::write_output(local_path(path), QByteArray(content.data(), static_cast<int>(content.size())), error)) {
        warn(tr("The formula could not be saved."), error);
        return false;
    }
    path_ = path;
    scene_.modified(false);
    update_title();
    statusBar()->showMessage(tr("Saved %1").arg(path), 5000);
    return true;
}

bool EditWindow::export_file(QString const &path, Format format)
{
    std::string error;
    Tavi::MathRootNode *root =
        TaviRender::read_formula(*scene_.template_table(), scene_.content(), "the formula", error);
    QByteArray bytes;
    bool done = root != nullptr;
    if (done) {
        TaviRender::RenderHost host(root);
        host.font_size(export_font_size);
        done = TaviRender::render(host, format, png_export_dpi, bytes, error);
    }
    if (done)
        done = TaviRender::write_output(local_path(path), bytes, error);
    if (!done) {
        warn(tr("The formula could not be exported."), error);
        return false;
    }
    statusBar()->showMessage(tr("Exported %1").arg(path), 5000);
    return true;
}

bool EditWindow::ask_to_save()
{
    if (!scene_.modified())
        return true;
    QString const name = path_.isEmpty() ? tr("the untitled formula") : QFileInfo(path_).fileName();
    QMessageBox::StandardButton const answer =
        QMessageBox::question(this, program_name, tr("Save the changes to %1?").arg(name),
                              QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
    if (answer == QMessageBox::Save)
        return save();
    return answer == QMessageBox::Discard;
}

bool EditWindow::save() { return path_.isEmpty() ? save_as() : save_file(path_); }

bool EditWindow::save_as()
{
    QString const path = QFileDialog::getSaveFileName(this, tr("Save Formula"), path_, formula_filter);
    return !path.isEmpty() && save_file(with_suffix(path, "xml"));
}

void EditWindow::open()
{
    if (!ask_to_save())
        return;
    QString const path = QFileDialog::getOpenFileName(this, tr("Open Formula"), QFileInfo(path_).path(), formula_filter);
    if (!path.isEmpty())
        open_file(path);
}

void EditWindow::start_new()
{
    if (ask_to_save())
        new_file();
}

void EditWindow::export_as(Format format)
{
    for (ExportKind const &kind : export_kinds) {
        if (kind.format != format)
            continue;
        QFileInfo const source(path_.isEmpty() ? tr("formula") : path_);
        QString const proposed = source.path() + "/" + source.completeBaseName() + "." + kind.suffix;
        QString const path = QFileDialog::getSaveFileName(this, tr("Export Formula"), proposed, tr(kind.filter));
        if (!path.isEmpty())
            export_file(with_suffix(path, kind.suffix), format);
    }
}

void EditWindow::closeEvent(QCloseEvent *event)
{
    if (ask_to_save())
        event->accept();
    else
        event->ignore();
}

// ---- Editing ----

void EditWindow::insert_template(QString const &name)
{
    std::u16string const wide = name.toStdU16String();
    edit([&] { scene_.do_insert_symbol_overlay(wide.c_str()); });
}

void EditWindow::insert_char_by_name()
{
    bool ok = false;
    QString const name = QInputDialog::getText(this, tr("Character by Name"),
                                               tr("Name of the character (such as alpha, le, rarr, infin):"),
                                               QLineEdit::Normal, last_char_name_, &ok)
                             .trimmed();
    if (!ok || name.isEmpty())
        return;
    last_char_name_ = name;
    std::u16string const wide = name.toStdU16String();
    std::string const before = scene_.content();
    edit([&] { scene_.do_insert_char_by_name(wide.c_str()); });
    if (scene_.content() == before)
        statusBar()->showMessage(tr("No character named \"%1\" could be entered here").arg(name), 5000);
}

void EditWindow::insert_number()
{
    bool ok = false;
    QString const text = QInputDialog::getText(this, tr("Number"), tr("Number (such as 42, 3.14 or 6.02e23):"),
                                               QLineEdit::Normal, QString(), &ok)
                             .trimmed();
    if (!ok || text.isEmpty())
        return;
    std::u16string const wide = text.toStdU16String();
    std::string const before = scene_.content();
    edit([&] { scene_.do_insert_number(wide.c_str()); });
    if (scene_.content() == before)
        statusBar()->showMessage(tr("\"%1\" is not a number that can be entered here").arg(text), 5000);
}

void EditWindow::toggle_read_only()
{
    edit([this] {
        bool inherits = false;
        if (scene_.can_toggle_inherit_read_only(inherits) && inherits)
            scene_.do_toggle_inherit_read_only();
        scene_.do_toggle_read_only();
    });
}

bool EditWindow::query_table_size(std::size_t &rows, std::size_t &cols, wchar const *keyword)
{
    TableSizeDialog dialog(from_wide(keyword), table_rows_, table_columns_, this);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    // The next table starts from the size of this one.
    table_rows_ = dialog.rows();
    table_columns_ = dialog.columns();
    rows = static_cast<std::size_t>(table_rows_);
    cols = static_cast<std::size_t>(table_columns_);
    return true;
}

// ---- Zoom ----

void EditWindow::zoom_to(int percent)
{
    zoom_ = std::clamp(percent, zoom_levels().front(), zoom_levels().back());
    scene_.math_style()->set_size(MathStyle::a_font_size, std::lround(base_font_size_ * zoom_ / 100.0));
    scene_.restyled();
    zoom_label_->setText(tr("Zoom %1 %").arg(zoom_));
}

void EditWindow::zoom_step(int direction)
{
    std::vector<int> const &levels = zoom_levels();
    if (direction > 0) {
        auto const next = std::upper_bound(levels.begin(), levels.end(), zoom_);
        zoom_to(next == levels.end() ? levels.back() : *next);
    } else {
        auto const below = std::lower_bound(levels.begin(), levels.end(), zoom_);
        zoom_to(below == levels.begin() ? levels.front() : *(below - 1));
    }
}

}  // namespace TaviEdit
