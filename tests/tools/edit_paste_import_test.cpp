// tavi-edit pastes formulas that other programs copied as LaTeX or MathML, over the whole formula and
// into a slot, built from the window's own templates.
#include <gtest/gtest.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <string>

#include "tools/edit_session.h"

using namespace TaviTest;

TEST(EditPasteImport, LaTeXAndMathMLFromOtherPrograms)
{
    struct Row
    {
        char const *type;      // MIME type, or "text"
        char const *data;
        char const *typed;     // typed before the paste
        std::string body;
    };
    std::string const half = R"(<expr tmp="divide"><num>1</num><num>2</num></expr>)";
    Row const rows[] = {
        {"text", "\\frac{1}{2}", "", half},
        {"application/mathml+xml", "<math><mfrac><mn>1</mn><mn>2</mn></mfrac></math>", "", half},
        {"text", "\\frac{1}{2}", "y=", R"(<expr tmp="eq"><ident>y</ident>)" + half + "</expr>"},
    };
    for (Row const &row : rows) {
        SCOPED_TRACE(row.data);
        EditWindowSession window;
        window.type(row.typed);
        auto *mime = new QMimeData;
        if (std::string(row.type) == "text")
            mime->setText(row.data);
        else
            mime->setData(row.type, row.data);
        QGuiApplication::clipboard()->setMimeData(mime);
        ASSERT_TRUE(window.trigger("paste"));
        EXPECT_EQ(row.body, window.body());
    }
}
