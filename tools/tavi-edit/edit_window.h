// EditWindow: tavi-edit's main window. One formula in a QTaviScrollView, a menu bar over it (File,
// Edit, Insert, View, Help), a palette of the setup file's templates beside it and a status bar with
// the zoom. The formula is an EditorScene brought up on a Qt_SceneImp and a GlyphView; files are the
// content format, read and written, and exported as PNG, SVG, PDF and EPS, by tavi-render's code.
//
// Every menu entry is an action with an object name ("undo", "export_svg", "template:sqrt", ...), so
// that a script or a test can find it with findChild<QAction *>(name).
#pragma once

#include <QMainWindow>
#include <QString>
#include <QTimer>

#include <cstddef>
#include <string>
#include <vector>

#include "tavi/glyph/glyphview.h"
#include "tavi/kxt/wchar.h"
#include "tavi/qt/qt_sceneimp.h"
#include "tools/tavi-edit/editor_scene.h"
#include "tools/tavi-edit/template_keys.h"
#include "tools/tavi-render/options.h"

class QAction;
class QActionGroup;
class QKeySequence;
class QLabel;
class QMenu;
class QTaviScrollView;
class QTreeWidget;
class QTreeWidgetItem;

namespace TaviEdit {

class EditWindow : public QMainWindow
{
    Q_OBJECT

public:
    // The zoom levels that View > Zoom In and Zoom Out step through, in percent.
    static std::vector<int> const &zoom_levels();
    // The resolution of an exported PNG: sharper than a screen, as a page needs.
    static constexpr int png_export_dpi = 144;
    // The text size of exports, in points, whatever the zoom on screen.
    static constexpr double export_font_size = 12.0;
    // The white band left and above the formula, in pixels.
    static constexpr int formula_margin = 10;

    // Reads the setup file into the formula's template table; with none, or one that fails, the
    // window says so and offers the built-in templates only.
    explicit EditWindow(QString const &setup_file, QWidget *parent = nullptr);
    ~EditWindow() override;

    // Shows the formula of the file; false, with the reader's message in a message box and the
    // present formula kept, when it cannot be read.
    bool open_file(QString const &path);
    // An empty formula, to be saved under `path` (empty: untitled). Asks nothing.
    void new_file(QString const &path = QString());
    // Writes the formula in the content format; on success the file is the window's and the formula
    // is unmodified. A failure is shown in a message box.
    bool save_file(QString const &path);
    // Writes the formula in the format, as tavi-render would from the saved file. A failure is shown
    // in a message box.
    bool export_file(QString const &path, TaviRender::Format format);
    QString file_path() const { return path_; }

    // The text size on screen, in percent of the setup's size.
    int zoom() const { return zoom_; }
    void zoom_to(int percent);

    QTaviScrollView *formula_view() const { return formula_view_; }
    EditorScene &scene() { return scene_; }
    Tavi::GlyphView &view() { return view_; }
    QTreeWidget *palette() const { return palette_; }
    std::vector<TemplateEntry> const &templates() const { return templates_; }
    // The action of this object name, or null.
    QAction *action(QString const &name) const;

public slots:
    // Brings every action and palette entry in line with what the scene allows now, and the line
    // breaks with the window's width. Runs by itself shortly after each change.
    void refresh();

protected:
    void closeEvent(QCloseEvent *event) override;
    // Follows the formula widget's size, for the line breaks.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void build_file_menu();
    void build_edit_menu();
    void build_insert_menu();
    void build_view_menu();
    void build_palette();
    // A menu entry that runs `run`. `keys` become its shortcuts, except those that the formula needs
    // itself; `shown` is a key the formula handles, written beside the text only.
    template <class Slot>
    QAction *add_action(QMenu *menu, QString const &name, QString const &text, Slot run,
                        QList<QKeySequence> const &keys = {}, QString const &shown = QString());

    bool ask_to_save();
    bool save();
    bool save_as();
    void open();
    void start_new();
    void export_as(TaviRender::Format format);
    void insert_template(QString const &name);
    void insert_char_by_name();
    void insert_number();
    void toggle_read_only();
    void zoom_step(int direction);
    bool query_table_size(std::size_t &rows, std::size_t &cols, Tavi::wchar const *keyword);
    void apply_wrap();
    void update_title();
    // Runs a scene call from a menu, then gives the keyboard back to the formula.
    template <class Call>
    void edit(Call call);
    void warn(QString const &text, std::string const &details = std::string());

    // The implementation outlives the scene, which may still reach it while it goes.
    Tavi::Qt_SceneImp scene_imp_;
    EditorScene scene_;
    Tavi::GlyphView view_;
    QTaviScrollView *formula_view_;
    QTreeWidget *palette_ = nullptr;
    QMenu *insert_menu_ = nullptr;
    QMenu *view_menu_ = nullptr;
    QAction *wrap_action_ = nullptr;
    QAction *read_only_action_ = nullptr;
    QLabel *zoom_label_ = nullptr;
    QTimer refresh_timer_;

    std::vector<TemplateEntry> templates_;
    // The template names as the library takes them, one a template, in the order of templates_.
    std::vector<std::u16string> template_names_;
    QString path_;
    long base_font_size_ = 240;  // twentieths of a point, the size at 100 %
    int zoom_ = 100;
    int table_rows_ = 2;
    int table_columns_ = 2;
    QString last_char_name_;
};

}  // namespace TaviEdit
