// Paste from programs that know no content format: the system clipboard's MathML, LaTeX and text
// imported with the host's templates, the content format still first, and text that is no formula
// left to paste as text.
#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <string>

#include "interchange/content_test_util.h"
#include "support/math_fixture.h"
#include "tavi/interchange/clipboard.h"
#include "tavi/interchange/content.h"
#include "tavi/interchange/datasource.h"
#include "tavi/kxt/stream.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/templates/templatetable.h"
#include "tavi/qt/qt_hostingframe.h"
#include "tavi/qt/qt_systemclipboard.h"

namespace {

using namespace Tavi;
using namespace TaviTest;

wchar const *const math_then_text[] = {math_edit_content_format, plain_text_format};

// The formula that paste reads for the math format, as the content format writes it; "<none>" when
// the math format is not what paste takes.
std::string pasted_formula(TemplateTable &table)
{
    if (Clipboard::object().provides(math_then_text, 2) != 1)
        return "<none>";
    Kxt::KTheapStream stream(512, 512);
    if (!Clipboard::object().get_data(1, stream))
        return "<no data>";
    Held<MathRootNode> root(
        read_math_content(table, reinterpret_cast<char const *>(stream.data()), stream.length()));
    return root.get() ? write_math_content(*root.get()) : "<not read>";
}

TEST(SystemClipboardImport, MathMLLaTeXAndTextPasteAsFormulas)
{
    TemplateTable table(nullptr);
    ASSERT_TRUE(read_default_setup(table));
    HostingFrame *old_frame = HostingFrame::install(&install_system_clipboard());
    struct Row
    {
        bool with_table;
        std::vector<std::pair<QString, std::string>> held;  // MIME type and bytes; "text" for text
        std::string body;                                     // the pasted formula, or <none>
    };
    std::string const frac = "<expr tmp=\"divide\"><num>1</num><num>2</num></expr>";
    std::string const mathml = "<math><mfrac><mn>1</mn><mn>2</mn></mfrac></math>";
    Row const rows[] = {
        {true, {{"application/mathml+xml", mathml}}, frac},
        {true, {{"text/x-latex", "\\frac{1}{2}"}}, frac},
        {true, {{"text", "\\frac{1}{2}"}}, frac},
        {true, {{"text", mathml}}, frac},
        {true, {{"text", "x^2"}}, "<expr tmp=\"power\"><ident>x</ident><num>2</num></expr>"},
        // the content format first, then MathML, then LaTeX; what does not import gives way
        {true, {{"x-application/kalex-math-edit-content", math_doc("<num>7</num>")}, {"text/x-latex", "x"}}, "<num>7</num>"},
        {true, {{"application/mathml+xml", mathml}, {"text/x-latex", "y"}}, frac},
        {true, {{"application/mathml+xml", "<math><mfrac>"}, {"text/x-latex", "y"}}, "<ident>y</ident>"},
        // text that is a word or no formula pastes as text
        {true, {{"text", "hello"}}, "<none>"},
        {true, {{"text", "12"}}, "<none>"},
        {true, {{"text", "a \\foo b"}}, "<none>"},
        // without the host's templates only the content format is a formula
        {false, {{"application/mathml+xml", mathml}, {"text", "\\frac{1}{2}"}}, "<none>"},
    };
    for (Row const &row : rows) {
        SCOPED_TRACE(row.held.front().second);
        Qt_SystemClipboard::instance().import_with(row.with_table ? &table : nullptr);
        auto *mime = new QMimeData;
        for (auto const &h : row.held) {
            if (h.first == "text")
                mime->setText(QString::fromStdString(h.second));
            else
                mime->setData(h.first, QByteArray::fromStdString(h.second));
        }
        QGuiApplication::clipboard()->setMimeData(mime);
        EXPECT_EQ(row.body == "<none>" ? row.body : math_doc(row.body), pasted_formula(table));
    }
    Qt_SystemClipboard::instance().import_with(nullptr);
    HostingFrame::install(old_frame);
}

}  // namespace
