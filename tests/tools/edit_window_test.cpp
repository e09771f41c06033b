// tavi-edit's window in this process: formulas typed through the widget, undo and redo from the
// Edit menu, the menus' states, files saved, opened (bad ones too), exported and asked about on
// close, templates from the Insert menu and the palette with the table-size dialog, zoom and line
// breaks, and paste from one window into another.
#include <gtest/gtest.h>

#include <QAction>
#include <QDir>
#include <QFile>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTreeWidget>
#include <QtTest/QTest>

#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "support/edit_session.h"
#include "support/external_tools.h"
#include "tavi/glyph/view.h"
#include "tavi/math/mathstyle.h"
#include "tavi/math/templates/templatetable.h"
#include "tavi/qt/qtaviscrollview.h"
#include "tools/edit_session.h"
#include "tools/render_tool.h"
#include "tools/tavi-edit/table_size_dialog.h"

using namespace TaviTest;
using TaviEdit::EditWindow;
using TaviEdit::TableSizeDialog;

namespace {

char const quadratic_keys[] = "x=/-b ±{C-R}b^2 -4{C-T}a{C-T}c{Down}2{C-T}a";
char const quadratic_body[] =
    R"(<expr tmp="eq"><ident>x</ident><expr tmp="divide"><expr tmp="plusminus"><plus sgn="-"><ident>b</ident>)"
    R"(</plus><expr tmp="sqrt"><plus sgn="+-"><expr tmp="power"><ident>b</ident><num>2</num></expr>)"
    R"(<expr tmp="implicit_times"><num>4</num><ident>a</ident><ident>c</ident></expr></plus></expr></expr>)"
    R"(<expr tmp="implicit_times"><num>2</num><ident>a</ident></expr></expr></expr>)";

std::string read_file(std::string const &path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::string math_document(std::string const &body)
{
    return "<math xmlns=\"http://www.tavi-math.org/xml/MathEditContent\">" + body + "</math>";
}

// The text of the next message box, which is answered with `button`.
struct NextMessage : NextDialog<QMessageBox>
{
    explicit NextMessage(QMessageBox::StandardButton button = QMessageBox::Ok)
        : NextDialog<QMessageBox>([this, button](QMessageBox *box) {
              text = box->text().toStdString();
              box->button(button)->click();
          })
    {
    }
    std::string text;
};

}  // namespace

// Each script typed into the widget gives its formula. The control keys reach the formula with the
// control character a keyboard sends, and none of the window's shortcuts takes them.
TEST(EditWindow, TypedKeysBuildFormulas)
{
    struct Typed
    {
        char const *keys;
        char const *body;
    };
    Typed const rows[] = {
        {quadratic_keys, quadratic_body},
        {"e^i{C-T}π  +1 =0",
         R"(<expr tmp="eq"><plus sgn="++"><expr tmp="power"><ident>e</ident><expr tmp="implicit_times">)"
         R"(<ident>i</ident><ident>π</ident></expr></expr><num>1</num></plus><num>0</num></expr>)"},
        {"α+∞", R"(<plus sgn="++"><ident>α</ident><ident>∞</ident></plus>)"},
        // Ctrl+N is the formula's sign toggle, not File > New; ctrl+shift+S its sum, not Save As.
        {"x+y {C-N}", R"(<plus sgn="--"><ident>x</ident><ident>y</ident></plus>)"},
        {"{C-S-S}{Tab}k=1 {Tab}n{Tab}k",
         R"(<expr tmp="sum"><ident>k</ident><expr tmp="eq"><ident>k</ident><num>1</num></expr><ident>n</ident></expr>)"},
        {"ab{Left}{Left}{Del}", "<ident>b</ident>"},
        {"ab{BS}", "<ident>a</ident>"},
    };
    for (Typed const &row : rows) {
        EditWindowSession s;
        s.type(row.keys);
        EXPECT_EQ(row.body, s.body()) << row.keys;
    }
}

// Undo from the Edit menu walks back through each step of the typing, redo forward again, and each
// action is open exactly while there is something to take back or do again.
TEST(EditWindow, UndoAndRedoFromTheMenuRetraceTheSteps)
{
    struct Steps
    {
        char const *keys;
        std::vector<char const *> states;  // the formula after each step, the first step first
    };
    Steps const rows[] = {
        // Characters typed into one atom are one step; a template or a move ends it.
        {"ab+c", {"<ident>ab</ident>", R"(<plus sgn="++"><ident>ab</ident><plh /></plus>)",
                  R"(<plus sgn="++"><ident>ab</ident><ident>c</ident></plus>)"}},
        {"x/2{Left}{Del}", {"<ident>x</ident>", R"(<expr tmp="divide"><ident>x</ident><plh /></expr>)",
                      R"(<expr tmp="divide"><ident>x</ident><num>2</num></expr>)",
                      R"(<expr tmp="divide"><ident>x</ident><plh /></expr>)"}},
    };
    for (Steps const &row : rows) {
        EditWindowSession s;
        s.type(row.keys);
        std::vector<std::string> states{"<plh />"};
        states.insert(states.end(), row.states.begin(), row.states.end());
        EXPECT_FALSE(s.enabled("redo")) << row.keys;
        for (std::size_t i = states.size() - 1; i > 0; --i) {
            ASSERT_TRUE(s.trigger("undo")) << row.keys << " step " << i;
            EXPECT_EQ(states[i - 1], s.body()) << row.keys << " undone to " << i - 1;
        }
        EXPECT_FALSE(s.enabled("undo")) << row.keys;
        for (std::size_t i = 1; i < states.size(); ++i) {
            ASSERT_TRUE(s.trigger("redo")) << row.keys << " step " << i;
            EXPECT_EQ(states[i], s.body()) << row.keys << " redone to " << i;
        }
        EXPECT_FALSE(s.enabled("redo")) << row.keys;
        EXPECT_TRUE(s.enabled("undo")) << row.keys;
    }
}

// The Edit and Insert entries follow the scene's answers after each edit.
TEST(EditWindow, MenuEntriesFollowTheSelection)
{
    struct State
    {
        char const *keys;
        char const *action;
        bool enabled;
    };
    State const rows[] = {
        {"", "undo", false},
        {"x", "undo", true},
        {"", "delete", false},               // the one placeholder of an empty formula stays
        {"x", "delete", true},
        {"", "select_expression", false},    // the whole expression is selected already
        {"x+", "select_expression", true},
        {"x+", "next_operand", true},
        {"", "next_operand", false},
        {"12", "char_by_name", false},        // a number takes no named character
        {"x", "char_by_name", true},
        {"", "paste", false},                 // the clipboard is empty
        {"x{C-Space}{C-C}", "paste", true},
        {"x", "template:divide", true},
        {"", "read_only", true},
    };
    for (State const &row : rows) {
        EditWindowSession s;
        s.type(row.keys);
        EXPECT_EQ(row.enabled, s.enabled(row.action)) << row.keys << ": " << row.action;
    }
}

// Read-only from the menu: typing and templates are refused, the entry shows the state, and the
// menu switches it back.
TEST(EditWindow, ReadOnlyToggleStopsAndResumesEditing)
{
    EditWindowSession s;
    s.type("x+");
    ASSERT_TRUE(s.trigger("read_only"));
    EXPECT_TRUE(s.window.action("read_only")->isChecked());
    s.type("y");
    EXPECT_EQ(R"(<plus sgn="++"><ident>x</ident><plh /></plus>)", s.body());
    for (char const *name : {"undo", "delete", "template:divide", "number"})
        EXPECT_FALSE(s.enabled(name)) << name;
    EXPECT_TRUE(s.enabled("copy"));
    ASSERT_TRUE(s.trigger("read_only"));
    EXPECT_FALSE(s.window.action("read_only")->isChecked());
    s.type("y");
    EXPECT_EQ(R"(<plus sgn="++"><ident>x</ident><ident>y</ident></plus>)", s.body());
}

// Ctrl+S writes the content format to the window's file; the title loses its mark.
TEST(EditWindow, SaveWritesTheContent)
{
    std::string const folder = fresh_folder("edit_save");
    std::string const path = folder + "/typed.xml";
    EditWindowSession s;
    s.window.new_file(QString::fromStdString(path));
    s.type(quadratic_keys);
    EXPECT_TRUE(s.window.isWindowModified());
    s.type("{C-S}");
    EXPECT_EQ(math_document(quadratic_body), read_file(path));
    EXPECT_FALSE(s.window.isWindowModified());
    EXPECT_FALSE(s.window.scene().modified());

    // What was saved opens again as it was.
    EditWindowSession again;
    ASSERT_TRUE(again.window.open_file(QString::fromStdString(path)));
    EXPECT_EQ(quadratic_body, again.body());
    EXPECT_EQ(QString::fromStdString(path), again.window.file_path());
}

// A file that cannot be read shows why in a message box, in the reader's own words, and the window
// keeps its formula and goes on taking keys. A file the reader accepted with messages opens and
// shows them.
TEST(EditWindow, BadFilesShowTheReadersMessage)
{
    struct Bad
    {
        char const *name;
        char const *text;  // null: the file is not there
        bool opens;
        char const *message;
    };
    Bad const rows[] = {
        {"missing.xml", nullptr, false, "cannot open"},
        {"broken.xml", "<math xmlns=\"http://www.tavi-math.org/xml/MathEditContent\"><plus>", false,
         "broken.xml:1:"},
        {"badchar.xml", "<math xmlns=\"http://www.tavi-math.org/xml/MathEditContent\"><ident><chr nm=\"nosuchname\"/>"
                        "</ident></math>",
         false, "Error in math: chr@nm 'nosuchname' unknown"},
        {"empty.xml", "<notmath/>", false, "no formula"},
        {"unknown.xml", "<math xmlns=\"http://www.tavi-math.org/xml/MathEditContent\"><plus><foo/><num>1</num>"
                        "<num>2</num></plus></math>",
         true, "unknown element or attribute 'foo'"},
    };
    std::string const folder = fresh_folder("edit_bad_files");
    for (Bad const &row : rows) {
        std::string const path = folder + "/" + row.name;
        if (row.text) {
            ASSERT_TRUE(write_text_file(path, row.text));
        }
        EditWindowSession s;
        s.type("x");
        NextMessage box;
        EXPECT_EQ(row.opens, s.window.open_file(QString::fromStdString(path))) << row.name;
        EXPECT_TRUE(box.seen) << row.name;
        EXPECT_NE(std::string::npos, box.text.find(row.message)) << row.name << ": " << box.text;
        if (!row.opens) {
            EXPECT_EQ("<ident>x</ident>", s.body()) << row.name;
            EXPECT_TRUE(s.window.file_path().isEmpty()) << row.name;
            s.type("+y");
            EXPECT_EQ(R"(<plus sgn="++"><ident>x</ident><ident>y</ident></plus>)", s.body()) << row.name;
        }
    }
}

// Closing with unsaved changes asks: Cancel keeps the window, Discard closes it, Save writes first.
TEST(EditWindow, CloseAsksAboutUnsavedChanges)
{
    struct Answer
    {
        QMessageBox::StandardButton button;
        bool closes;
        bool saves;
    };
    Answer const rows[] = {
        {QMessageBox::Cancel, false, false},
        {QMessageBox::Discard, true, false},
        {QMessageBox::Save, true, true},
    };
    std::string const folder = fresh_folder("edit_close");
    for (Answer const &row : rows) {
        std::string const path = folder + "/answer" + std::to_string(row.button) + ".xml";
        EditWindowSession s;
        s.window.new_file(QString::fromStdString(path));
        s.type("x");
        NextMessage box(row.button);
        EXPECT_EQ(row.closes, s.window.close()) << row.button;
        EXPECT_TRUE(box.seen);
        EXPECT_EQ(row.saves, file_exists(path)) << row.button;
    }
    // Nothing to lose, nothing asked.
    EditWindowSession s;
    NextMessage box;
    EXPECT_TRUE(s.window.close());
    EXPECT_FALSE(box.seen);
}

// Every enterable template of the setup is in the Insert menu and the palette, with its key; the
// window's own shortcuts leave every key of the formula alone.
TEST(EditWindow, TemplatesAreListedWithTheirKeys)
{
    EditWindowSession s;
    std::vector<TaviEdit::TemplateEntry> const &entries = s.window.templates();
    ASSERT_GT(entries.size(), 60u);
    EXPECT_EQ(static_cast<int>(entries.size()), s.window.palette()->topLevelItemCount());
    std::set<QString> names;
    for (auto const &entry : entries) {
        EXPECT_TRUE(names.insert(entry.name).second) << entry.name.toStdString();
        EXPECT_NE(nullptr, s.window.action("template:" + entry.name)) << entry.name.toStdString();
    }

    struct Keyed
    {
        char const *name;
        char const *keyword;
        char const *key;
    };
    Keyed const rows[] = {
        {"divide", "Fraction", "/"},
        {"sqrt", "Square Root", "Ctrl+R"},
        {"sum", "Sum", "Ctrl+Shift+S"},
        {"subsupscript", "Sub- and Superscript", "Ctrl+Shift+6"},
        {"plusminus", "Plus or Minus", "±"},
        {"leq", "Less or Equal", "≤"},
    };
    for (Keyed const &row : rows) {
        QAction *a = s.window.action(QString("template:") + row.name);
        ASSERT_NE(nullptr, a) << row.name;
        EXPECT_EQ(QString(row.keyword) + "\t" + row.key, a->text()) << row.name;
    }

    Tavi::TemplateTable const &table = *s.window.scene().template_table();
    for (QAction *a : s.window.findChildren<QAction *>())
        for (QKeySequence const &k : a->shortcuts())
            EXPECT_FALSE(TaviEdit::formula_takes(table, k)) << a->objectName().toStdString() << " " << k.toString().toStdString();
    EXPECT_TRUE(s.window.action("new")->shortcuts().isEmpty());      // ctrl+N toggles signs
    EXPECT_TRUE(s.window.action("save_as")->shortcuts().isEmpty())  // ctrl+shift+S is the sum
        << s.window.action("save_as")->shortcut().toString().toStdString();
    EXPECT_EQ(QKeySequence(QKeySequence::Save), s.window.action("save")->shortcut());
}

// A template from the menu or the palette goes over the selection; a table asks for its size, and
// cancelling the dialog enters nothing.
TEST(EditWindow, TemplatesInsertFromMenuAndPalette)
{
    {
        EditWindowSession s;
        s.type("x");
        ASSERT_TRUE(s.trigger("template:sqrt"));
        EXPECT_EQ(R"(<expr tmp="sqrt"><ident>x</ident></expr>)", s.body());
    }
    {
        EditWindowSession s;
        s.type("x");
        QTreeWidget *palette = s.window.palette();
        QList<QTreeWidgetItem *> const found = palette->findItems("Fraction", Qt::MatchExactly);
        ASSERT_EQ(1, found.size());
        palette->scrollToItem(found.front());
        QTest::mouseClick(palette->viewport(), Qt::LeftButton, Qt::NoModifier,
                          palette->visualItemRect(found.front()).center());
        EXPECT_EQ(R"(<expr tmp="divide"><ident>x</ident><plh /></expr>)", s.body());
        // The keyboard stayed with the formula: typing fills the new slot.
        s.type("2");
        EXPECT_EQ(R"(<expr tmp="divide"><ident>x</ident><num>2</num></expr>)", s.body());
    }
    struct Table
    {
        int rows;
        int columns;
        bool accept;
        char const *start;  // of the formula's body
    };
    Table const tables[] = {
        {3, 2, true, R"(<tab tmp="matrix" rows="3" cols="2">)"},
        {1, 4, true, R"(<tab tmp="matrix" rows="1" cols="4">)"},
        {3, 2, false, "<plh />"},
    };
    for (Table const &t : tables) {
        EditWindowSession s;
        NextDialog<TableSizeDialog> dialog([&t](TableSizeDialog *d) {
            d->rows_box()->setValue(t.rows);
            d->columns_box()->setValue(t.columns);
            t.accept ? d->accept() : d->reject();
        });
        ASSERT_TRUE(s.trigger("template:matrix"));
        EXPECT_TRUE(dialog.seen);
        EXPECT_EQ(0u, s.body().rfind(t.start, 0)) << s.body();
    }
    // Ctrl+M asks the same, and the next table starts from the last size.
    EditWindowSession s;
    NextDialog<TableSizeDialog> first([](TableSizeDialog *d) {
        d->rows_box()->setValue(2);
        d->columns_box()->setValue(3);
        d->accept();
    });
    s.type("{C-M}");
    EXPECT_EQ(0u, s.body().rfind(R"(<tab tmp="matrix" rows="2" cols="3">)", 0)) << s.body();
    int asked_rows = 0, asked_columns = 0;
    NextDialog<TableSizeDialog> second([&](TableSizeDialog *d) {
        asked_rows = d->rows();
        asked_columns = d->columns();
        d->reject();
    });
    s.type("{C-M}");
    EXPECT_EQ(2, asked_rows);
    EXPECT_EQ(3, asked_columns);
}

// Character by name and Number ask for their text and enter it; a name that is no character changes
// nothing.
TEST(EditWindow, CharacterByNameAndNumberEnterWhatIsAsked)
{
    struct Asked
    {
        char const *action;
        char const *keys;
        char const *answer;
        char const *body;
    };
    Asked const rows[] = {
        {"char_by_name", "", "alpha", R"(<ident><chr nm="alpha"/></ident>)"},
        {"char_by_name", "x", "infin", R"(<ident>x<chr nm="infin"/></ident>)"},
        {"char_by_name", "x", "nosuchname", "<ident>x</ident>"},
        {"number", "", "42", "<num>42</num>"},
        {"number", "x+", "2.5", R"(<plus sgn="++"><ident>x</ident><num>2.5</num></plus>)"},
        {"number", "x", "not a number", "<ident>x</ident>"},
    };
    for (Asked const &row : rows) {
        EditWindowSession s;
        s.type(row.keys);
        NextDialog<QInputDialog> dialog([&row](QInputDialog *d) {
            d->setTextValue(row.answer);
            d->accept();
        });
        ASSERT_TRUE(s.trigger(row.action)) << row.action;
        EXPECT_TRUE(dialog.seen);
        EXPECT_EQ(row.body, s.body()) << row.action << " " << row.answer;
    }
}

namespace {

// The EPS header's creation date is the one line that differs between two runs.
std::string without_date(std::string const &text)
{
    std::size_t const at = text.find("%%CreationDate:");
    if (at == std::string::npos)
        return text;
    return text.substr(0, at) + text.substr(text.find('\n', at) + 1);
}

}  // namespace

// Exports are tavi-render's output for the same formula, byte for byte but for the EPS header's
// date; the PDF, which is dated inside, only starts as a PDF does.
TEST(EditWindow, ExportsAreWhatTaviRenderMakes)
{
    std::string const folder = fresh_folder("edit_export");
    EditWindowSession s;
    s.window.new_file(QString::fromStdString(folder + "/quadratic.xml"));
    s.type(quadratic_keys);
    s.type("{C-S}");
    struct Export
    {
        TaviRender::Format format;
        char const *suffix;
        bool same_bytes;
        char const *magic;
    };
    Export const rows[] = {
        {TaviRender::Format::svg, "svg", true, "<?xml"},
        {TaviRender::Format::eps, "eps", true, "%!PS-Adobe-2.0 EPSF"},
        {TaviRender::Format::png, "png", true, "\x89PNG"},
        {TaviRender::Format::pdf, "pdf", false, "%PDF-"},
    };
    for (Export const &row : rows) {
        std::string const exported = folder + "/exported." + row.suffix;
        std::string const rendered = folder + "/rendered." + row.suffix;
        ASSERT_TRUE(s.window.export_file(QString::fromStdString(exported), row.format)) << row.suffix;
        std::string const bytes = read_file(exported);
        EXPECT_EQ(0u, bytes.rfind(row.magic, 0)) << row.suffix;
        if (!row.same_bytes)
            continue;
        RenderRun const run = run_render({folder + "/quadratic.xml", "--dpi", std::to_string(EditWindow::png_export_dpi),
                                          "-o", rendered});
        if (!run.started)
            GTEST_SKIP() << "tavi-render was not built";
        ASSERT_EQ(0, run.exit_code) << run.errors;
        EXPECT_TRUE(without_date(bytes) == without_date(read_file(rendered))) << row.suffix << " differs from tavi-render's";
    }
}

// Zoom scales the formula on screen by the steps of the View menu, within its bounds.
TEST(EditWindow, ZoomScalesTheFormula)
{
    struct Step
    {
        char const *action;
        int times;
        int zoom;
    };
    Step const rows[] = {
        {"zoom_in", 1, 125}, {"zoom_in", 4, 300}, {"zoom_in", 20, 400},
        {"zoom_out", 1, 80}, {"zoom_out", 20, 25}, {"zoom_reset", 1, 100},
    };
    for (Step const &row : rows) {
        EditWindowSession s;
        for (int i = 0; i < row.times; ++i)
            ASSERT_TRUE(s.trigger(row.action));
        EXPECT_EQ(row.zoom, s.window.zoom()) << row.action << " x" << row.times;
        long size = 0;
        s.window.scene().math_style()->size(Tavi::MathStyle::a_font_size, size);
        EXPECT_EQ(240 * row.zoom / 100, size) << row.action;
    }
    // The drawn formula grows with the text.
    EditWindowSession s;
    s.type(quadratic_keys);
    auto width = [&s] {
        s.formula_widget()->repaint();
        Tavi::Extension const e = s.window.view().scene_extension();
        return e.right() - e.left();
    };
    long const normal = width();
    s.window.zoom_to(200);
    long const double_size = width();
    EXPECT_NEAR(2.0, static_cast<double>(double_size) / normal, 0.15) << normal << " " << double_size;
}

// With wrapping on, a long formula is broken to the width of the window, again at each resize, and
// the selection stays in view.
TEST(EditWindow, WrapFollowsTheWindowWidth)
{
    EditWindowSession s;
    std::string sum = "a";
    for (char c = 'b'; c <= 'z'; ++c)
        sum += std::string("+") + c;
    s.type(sum);
    QWidget *shown = s.formula_widget();
    auto extension = [&] {
        QCoreApplication::processEvents();
        shown->repaint();
        return s.window.view().scene_extension();
    };
    Tavi::Extension const one_line = extension();
    s.window.resize(400, 400);
    QCoreApplication::processEvents();
    ASSERT_LT(shown->width(), one_line.right() - one_line.left()) << "the window must be narrower than the formula";
    ASSERT_TRUE(s.trigger("wrap"));
    Tavi::Extension const wrapped = extension();
    EXPECT_LE(wrapped.right(), shown->width());
    EXPECT_GT(wrapped.bottom() - wrapped.top(), 2 * (one_line.bottom() - one_line.top()));

    s.window.resize(300, 400);
    Tavi::Extension const narrower = extension();
    EXPECT_LE(narrower.right(), shown->width());
    EXPECT_GT(narrower.bottom(), wrapped.bottom());

    // Typing at the end keeps the end in view, below the first screenful.
    s.window.resize(200, 120);
    s.type("+ω");
    extension();
    Tavi::Extension const viewport = s.window.view().viewport();
    Tavi::Extension const formula = s.window.view().scene_extension();
    EXPECT_GT(formula.bottom(), viewport.bottom() - viewport.top()) << "the formula must not fit";
    EXPECT_GE(viewport.bottom(), formula.bottom() - 30) << viewport.top();

    ASSERT_TRUE(s.trigger("wrap"));
    EXPECT_EQ(one_line.bottom() - one_line.top(), [&] {
        Tavi::Extension const e = extension();
        return e.bottom() - e.top();
    }());
}

// Copy in one window and paste in another, over the whole (empty) formula, through the system
// clipboard; the paste is undone like any edit, and can be done again after the undo.
TEST(EditWindow, CopyInOneWindowPasteInAnother)
{
    // Each window starts with the clipboard empty: both are made before the copy.
    EditWindowSession to;
    EditWindowSession slot;
    EditWindowSession from;
    from.type(quadratic_keys);
    from.type("{C-Space}{C-C}");
    ASSERT_TRUE(to.enabled("paste"));
    to.type("{C-V}");
    EXPECT_EQ(quadratic_body, to.body());
    ASSERT_TRUE(to.trigger("undo"));
    EXPECT_EQ("<plh />", to.body());
    ASSERT_TRUE(to.trigger("paste"));
    EXPECT_EQ(quadratic_body, to.body());
    // Into a slot, too.
    slot.type("y=");
    ASSERT_TRUE(slot.trigger("paste"));
    EXPECT_EQ(std::string(R"(<expr tmp="eq"><ident>y</ident>)") + quadratic_body + "</expr>", slot.body());
}
