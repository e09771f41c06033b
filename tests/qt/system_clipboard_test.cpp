// The system clipboard binding: what a copy leaves on QClipboard, what paste reads back in the
// library's formats and order, text from other programs, and (with an X display) a copy in one
// process pasted in another.
#include <gtest/gtest.h>

#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QMimeData>
#include <QProcess>
#include <QtTest/QTest>

#include <cstdio>
#include <memory>
#include <string>

#include "interchange/content_test_util.h"
#include "support/math_fixture.h"
#include "tavi/interchange/clipboard.h"
#include "tavi/interchange/content.h"
#include "tavi/interchange/datasource.h"
#include "tavi/kxt/stream.h"
#include "tavi/kxt/utf.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/templates/templatetable.h"
#include "tavi/qt/qt_hostingframe.h"
#include "tavi/qt/qt_systemclipboard.h"

namespace {

using namespace Tavi;
using namespace TaviTest;

wchar const *const math_then_text[] = {math_edit_content_format, plain_text_format};
wchar const *const text_then_math[] = {plain_text_format, math_edit_content_format};
char const quadratic_text[] = "x = (-b ± √(b^2 - 4ac))/(2a)";

std::string bytes_of(Kxt::KTmemoryStream const &stream)
{
    return std::string(reinterpret_cast<char const *>(stream.data()), stream.length());
}

// The quadratic formula of the examples and the number 12, read with the default setup, and the
// system clipboard installed for the test's length.
struct Formulas
{
    Formulas()
        : table(nullptr),
          setup_read(read_default_setup(table)),
          formula(read_math_content(table, read_whole_file(TAVI_SOURCE_DIR "/data/examples/quadratic-formula.xml"))),
          number(read_math_content(table, math_doc("<num>12</num>"))),
          old_frame(HostingFrame::install(&install_system_clipboard()))
    {
    }
    ~Formulas() { HostingFrame::install(old_frame); }

    // The bytes that the formula's own data source writes for the content format.
    std::string content_bytes()
    {
        MathNodeDataSource source(formula->child());
        Kxt::KTheapStream stream(512, 512);
        source.serialize(0, stream);
        return bytes_of(stream);
    }

    TemplateTable table;
    bool setup_read;
    Held<MathRootNode> formula, number;
    HostingFrame *old_frame;
};

// What paste gets for the format at `index` of the last list asked about.
std::string pasted(int index)
{
    Kxt::KTheapStream stream(512, 512);
    return Clipboard::object().get_data(index, stream) ? bytes_of(stream) : "<none>";
}

std::string clipboard_text()
{
    std::unique_ptr<wchar[]> text(Clipboard::text());
    return text ? Kxt::to_string(text.get()) : "<null>";
}

// Text as 16-bit units with the terminator, as paste gets it.
std::string units(char const *text)
{
    wstring const wide = Kxt::to_ustring(text);
    return std::string(reinterpret_cast<char const *>(wide.c_str()), (wide.size() + 1) * 2);
}

std::string hex_of(std::string const &bytes) { return QByteArray::fromStdString(bytes).toHex().toStdString(); }

}  // namespace

TEST(SystemClipboard, CopyLeavesEachFormatUnderItsNameAndPasteReadsItBack)
{
    Formulas f;
    ASSERT_TRUE(f.setup_read);
    ASSERT_NE(nullptr, f.formula.get());
    struct Row
    {
        DataSource *source;
        bool has_content;
        char const *text;         // as other programs read it, and as Clipboard::text gives it
        std::size_t math_first;   // provides for (math, text)
    };
    Row const rows[] = {
        {new MathNodeDataSource(f.formula->child()), true, quadratic_text, 1},  // with its linear text
        {new MathNodeDataSource(f.number->child()), true, "12", 1},             // with its own text
        {new TextSource(u"ab"), false, "ab", 2},
    };
    for (Row const &row : rows) {
        Clipboard::object().data(row.source);
        QMimeData const *mime = QGuiApplication::clipboard()->mimeData();
        ASSERT_NE(nullptr, mime);
        EXPECT_EQ(row.has_content, mime->hasFormat("x-application/kalex-math-edit-content")) << row.text;
        EXPECT_EQ(row.text, mime->text().toStdString());
        EXPECT_EQ(1u, Clipboard::object().provides(text_then_math, 2)) << row.text;
        EXPECT_EQ(hex_of(units(row.text)), hex_of(pasted(1))) << row.text;
        EXPECT_EQ(row.math_first, Clipboard::object().provides(math_then_text, 2)) << row.text;
        EXPECT_EQ(row.text, clipboard_text());
    }
    // The content format comes back byte for byte.
    Clipboard::object().data(new MathNodeDataSource(f.formula->child()));
    ASSERT_EQ(1u, Clipboard::object().provides(math_then_text, 2));
    EXPECT_EQ(f.content_bytes(), pasted(1));
}

TEST(SystemClipboard, OtherProgramsTextAndAnEmptyClipboard)
{
    Formulas f;
    EXPECT_EQ(&Qt_SystemClipboard::instance(), &Clipboard::object());
    QGuiApplication::clipboard()->setText("x+1");
    EXPECT_EQ(2u, Clipboard::object().provides(math_then_text, 2));
    EXPECT_EQ("x+1", clipboard_text());

    Clipboard::object().data(nullptr);
    EXPECT_EQ(0u, Clipboard::object().provides(math_then_text, 2));
    EXPECT_EQ("<none>", pasted(1));
    EXPECT_EQ("<null>", clipboard_text());
}

// Under X11 the clipboard is the server's: one process copies and stays, a second pastes. The test
// runs this program twice more, in the two roles, on the display it was given.
TEST(SystemClipboard, AcrossProcesses)
{
    QString const role = qEnvironmentVariable("TAVI_CLIPBOARD_ROLE");
    if (role == "copy") {
        Formulas f;
        Clipboard::object().data(new MathNodeDataSource(f.formula->child()));
        std::printf("CLIP:copied\n");
        std::fflush(stdout);
        QTest::qWait(30000);  // serves the clipboard until the test ends it
        return;
    }
    if (role == "paste") {
        Formulas f;
        std::size_t const index = Clipboard::object().provides(math_then_text, 2);
        std::string const content = hex_of(pasted(static_cast<int>(index)));
        std::printf("CLIP:%zu %s %s\n", index, content.c_str(), hex_of(clipboard_text()).c_str());
        return;
    }
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        GTEST_SKIP() << "needs an X display: run under xvfb-run";

    auto const start = [](QProcess &process, char const *as) {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("TAVI_CLIPBOARD_ROLE", as);
        env.insert("QT_QPA_PLATFORM", "xcb");
        process.setProcessEnvironment(env);
        process.start(QCoreApplication::applicationFilePath(), {"--gtest_filter=SystemClipboard.AcrossProcesses"});
    };
    auto const line_of = [](QByteArray const &output) {
        qsizetype const at = output.indexOf("CLIP:");
        return at < 0 ? std::string() : output.mid(at + 5, output.indexOf('\n', at) - at - 5).toStdString();
    };
    QProcess copier, paster;
    start(copier, "copy");
    QByteArray copied;
    while (line_of(copied).empty() && copier.waitForReadyRead(20000))
        copied += copier.readAllStandardOutput();
    ASSERT_EQ("copied", line_of(copied)) << copied.toStdString();
    start(paster, "paste");
    ASSERT_TRUE(paster.waitForFinished(30000));
    copier.kill();
    copier.waitForFinished();

    Formulas f;
    EXPECT_EQ("1 " + hex_of(f.content_bytes()) + " " + hex_of(quadratic_text),
              line_of(paster.readAllStandardOutput()));
}
