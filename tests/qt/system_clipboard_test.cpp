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

std::string const quadratic =
    "<expr tmp='eq'><ident>x</ident><expr tmp='divide'><expr tmp='plusminus'><plus sgn='-'><ident>b</ident></plus>"
    "<expr tmp='sqrt'><plus sgn='+-'><expr tmp='power'><ident>b</ident><num>2</num></expr>"
    "<expr tmp='implicit_times'><num>4</num><ident>a</ident><ident>c</ident></expr></plus></expr></expr>"
    "<expr tmp='implicit_times'><num>2</num><ident>a</ident></expr></expr></expr>";
char const quadratic_text[] = "x = (-b ± √(b^2 - 4ac))/(2a)";

// The default setup, the quadratic formula and the number 12 read with it, and the system clipboard
// installed for the test's length.
struct Formulas
{
    Formulas() : table(nullptr)
    {
        EXPECT_TRUE(read_default_setup(table));
        formula = std::make_unique<Held<MathRootNode>>(read_math_content(table, math_doc(quadratic)));
        number = std::make_unique<Held<MathRootNode>>(read_math_content(table, math_doc("<num>12</num>")));
        old_frame = HostingFrame::install(&install_system_clipboard());
    }
    ~Formulas() { HostingFrame::install(old_frame); }

    // The bytes that the node's own data source writes for the math format.
    static std::string content_bytes(MathNode *node)
    {
        MathNodeDataSource source(node);
        Kxt::KTheapStream stream(512, 512);
        source.serialize(0, stream);
        return std::string(reinterpret_cast<char const *>(stream.data()), stream.length());
    }

    TemplateTable table;
    std::unique_ptr<Held<MathRootNode>> formula, number;
    HostingFrame *old_frame = nullptr;
};

// What paste gets for the format at `index` of the last list asked about.
std::string pasted(int index)
{
    Kxt::KTheapStream stream(512, 512);
    if (!Clipboard::object().get_data(index, stream))
        return "<none>";
    return std::string(reinterpret_cast<char const *>(stream.data()), stream.length());
}

std::string clipboard_text()
{
    std::unique_ptr<wchar[]> text(Clipboard::text());
    return text ? Kxt::to_string(text.get()) : "<null>";
}

std::string hex_of(std::string const &bytes) { return QByteArray::fromStdString(bytes).toHex().toStdString(); }

}  // namespace

TEST(SystemClipboard, CopyLeavesEachFormatUnderItsNameAndPasteReadsItBack)
{
    Formulas f;
    ASSERT_NE(nullptr, f.formula->get());
    MathNode *formula = (*f.formula)->child();
    MathNode *number = (*f.number)->child();
    struct Row
    {
        char const *what;
        DataSource *source;
        bool has_content;
        std::string text;            // as other programs read it
        std::size_t math_first;      // provides for (math, text)
        std::size_t text_first;      // provides for (text, math)
        std::string pasted_text;     // the bytes paste gets for text/plain
    };
    Row const rows[] = {
        {"a formula, with its linear text", new MathNodeDataSource(formula), true, quadratic_text, 1, 1,
         std::string(reinterpret_cast<char const *>(Kxt::to_ustring(quadratic_text).c_str()),
                     (Kxt::to_ustring(quadratic_text).size() + 1) * 2)},
        {"a number, with its own text", new MathNodeDataSource(number), true, "12", 1, 1,
         std::string("1\0" "2\0\0\0", 6)},
        {"text", new TextSource(u"ab"), false, "ab", 2, 1, std::string("a\0b\0\0\0", 6)},
    };
    for (Row const &row : rows) {
        Clipboard::object().data(row.source);
        QMimeData const *mime = QGuiApplication::clipboard()->mimeData();
        ASSERT_NE(nullptr, mime);
        EXPECT_EQ(row.has_content, mime->hasFormat("x-application/kalex-math-edit-content")) << row.what;
        EXPECT_EQ(row.text, mime->text().toStdString()) << row.what;
        EXPECT_EQ(row.text_first, Clipboard::object().provides(text_then_math, 2)) << row.what;
        EXPECT_EQ(hex_of(row.pasted_text), hex_of(pasted(static_cast<int>(row.text_first)))) << row.what;
        EXPECT_EQ(row.math_first, Clipboard::object().provides(math_then_text, 2)) << row.what;
        EXPECT_EQ(row.text, clipboard_text()) << row.what;
    }
    // The content format comes back byte for byte.
    Clipboard::object().data(new MathNodeDataSource(formula));
    ASSERT_EQ(1u, Clipboard::object().provides(math_then_text, 2));
    std::string const bytes = pasted(1);
    EXPECT_EQ(Formulas::content_bytes(formula), bytes);
    EXPECT_NE(std::string::npos, bytes.find("tmp=\"plusminus\""));
}

TEST(SystemClipboard, OtherProgramsTextAndAnEmptyClipboard)
{
    Formulas f;
    EXPECT_EQ(&Qt_SystemClipboard::instance(), &Clipboard::object());
    QGuiApplication::clipboard()->setText("x+1");
    EXPECT_EQ(2u, Clipboard::object().provides(math_then_text, 2));
    EXPECT_TRUE(Clipboard::has_text());
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
        Clipboard::object().data(new MathNodeDataSource((*f.formula)->child()));
        std::printf("CLIP:copied\n");
        std::fflush(stdout);
        QTest::qWait(30000);  // serves the clipboard until the test ends it
        return;
    }
    if (role == "paste") {
        Formulas f;
        std::size_t const index = Clipboard::object().provides(math_then_text, 2);
        std::string const content = hex_of(pasted(static_cast<int>(index)));
        std::string const text = hex_of(clipboard_text());
        std::printf("CLIP:%zu %s %s\n", index, content.c_str(), text.c_str());
        return;
    }
    if (qEnvironmentVariableIsEmpty("DISPLAY"))
        GTEST_SKIP() << "needs an X display: run under xvfb-run";

    auto start = [](QProcess &process, char const *as) {
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("TAVI_CLIPBOARD_ROLE", as);
        env.insert("QT_QPA_PLATFORM", "xcb");
        process.setProcessEnvironment(env);
        process.start(QCoreApplication::applicationFilePath(), {"--gtest_filter=SystemClipboard.AcrossProcesses"});
    };
    auto line_of = [](QByteArray const &output) {
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
    std::string const content = hex_of(Formulas::content_bytes((*f.formula)->child()));
    EXPECT_EQ("1 " + content + " " + hex_of(quadratic_text), line_of(paster.readAllStandardOutput()));
}
