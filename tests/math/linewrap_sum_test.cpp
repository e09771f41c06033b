// Long sums from the built-in templates, measured through the formula root with line wrapping on:
// every line fits, lines after the first are indented, and a short sum breaks where the costs say.
//
// Recording canvas, default style (text at 240 twips, display style, wrap-lines on): a character is 10
// wide, 7 up and 1 down in ink, the text line 8 up and 2 down, "m" 10 and ex 5. The root lays the
// formula out in the width less one "m", and display style keeps 2 ex off that: a line is W - 20.
// A "+" is 10 plus 5 + 5 twentieths of 240 twips = 120 twips, which is 120 units at 1440 dpi: 130.
// The sum gives a break before each "+" a cost of 1000 and forbids one after it.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "support/math_fixture.h"
#include "support/recording_canvas.h"
#include "tavi/geometry/boxtree.h"
#include "tavi/glyph/glyphcontext.h"
#include "tavi/glyph/glyphscene.h"
#include "tavi/kxt/utf.h"
#include "tavi/math/mathnode.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/mathstyle.h"
#include "tavi/math/templates/mathtemplate.h"
#include "tavi/math/templates/templatetable.h"

namespace {

using namespace Tavi;
using TaviTest::Held;
using TaviTest::RecordingCanvas;

long const indent = 10;
long const margin = 10 + 2 * 5;  // "m" for the caret, and 2 ex of display style

// The sum of `count` terms; term k is made by `term`.
template <class Term>
MathNode *sum_of(TemplateTable &table, int count, Term term)
{
    MathNode *sum = table.get_template(u"plus")->create_node();
    for (int k = 0; k < count; ++k)
        sum->append(term(k));
    return sum;
}

// The atoms of a wrapped tree in reading order: leaves and atomic nodes; other nodes are looked into.
void collect_atoms(BoxTree const *box, std::vector<BoxTree const *> &atoms)
{
    if (box == nullptr)
        return;
    BoxTreeNode const *node = dynamic_cast<BoxTreeNode const *>(box);
    if (node == nullptr || dynamic_cast<BoxTreeAtomicNode const *>(box) != nullptr) {
        atoms.push_back(box);
        return;
    }
    for (long k = 0; k < node->count(); ++k)
        collect_atoms(node->child(k), atoms);
}

// A formula under its root, measured at width W as a scene's drawing does. The root owns the tree,
// so the atoms are good as long as this lives.
struct Wrapped
{
    Wrapped(MathNode *formula, long width) : root(new MathRootNode(formula))
    {
        GlyphContext context(&scene, nullptr, &canvas, root.get());
        BoxTree const *tree = root->request(context, BoxTreeLeaf(width, 0x7fffffff, 0x7fffffff));
        if (tree != nullptr) {
            box = tree->box();
            collect_atoms(tree, atoms);
        }
    }
    RecordingCanvas canvas;
    TaviTest::StyledScene scene;
    Held<MathRootNode> root;
    Box box;
    std::vector<BoxTree const *> atoms;
};

std::string offsets_text(std::vector<BoxTree const *> const &atoms)
{
    std::string s;
    for (BoxTree const *a : atoms)
        s += "(" + std::to_string(a->xOffset()) + "," + std::to_string(a->yOffset()) + ")";
    return s;
}

}  // namespace

// Six one-character terms: the atoms are the leading sign (0 wide) and then term, "+", term, ...: a
// term is 10 and a "+" 130. Breaks can only fall before a "+", at 1000 + 3 * 200 = 1600 (atoms at
// depth 3: root, sum, atom) plus the fill cost 5000 (1 - w / L)^3 of a line w wide in the line width
// L; the lowest cost is the last gap before the line overflows. The line up to term k (from 0) is
// 140k + 10 wide.
TEST(LineWrapSum, SixTermsBreakWhereTheCostsSay)
{
    struct Case
    {
        long width;
        std::string offsets;
        Box box;
    };
    Case const cases[] = {
        // L = 730: 710 fits; x runs 0, 0, 10, 140, 150, ..., 700.
        {750, "(0,0)(0,0)(10,0)(140,0)(150,0)(280,0)(290,0)(420,0)(430,0)(560,0)(570,0)(700,0)", Box(710, 8, 2)},
        // L = 450: the fifth "+" would end at 430 + 130 = 560. Costs before the "+" signs at widths 10,
        // 150, 290, 430: 1600 + 4674, + 1481, + 225, + 0.44: break at 430. Line 2 at the indent, y
        // 2 + 8 = 10: "+" 10, term 140, "+" 150, term 280; 290 wide.
        {470, "(0,0)(0,0)(10,0)(140,0)(150,0)(280,0)(290,0)(420,0)(10,10)(140,10)(150,10)(280,10)", Box(430, 8, 12)},
        // L = 310: line 1 ends at 290 (cost 1600 + 1.3), line 2 takes two terms, 10 + 280 = 290 (cost
        // 1600 + 1.3 against 1600 + 687 after one term); it cannot join line 1 (290 + 290 > 310). Line
        // 3 at y 20.
        {330, "(0,0)(0,0)(10,0)(140,0)(150,0)(280,0)(10,10)(140,10)(150,10)(280,10)(10,20)(140,20)",
         Box(290, 8, 22)},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.width);
        TemplateTable table(nullptr);
        wchar const *const letters[] = {u"a", u"1", u"b", u"2", u"c", u"3"};
        MathNode *sum = sum_of(table, 6, [&](int k) {
            wchar const *text = letters[k];
            return table.get_template(k % 2 == 0 ? u"ci" : u"cn")->create_node(text);
        });
        Wrapped const w(sum, c.width);
        ASSERT_EQ(12u, w.atoms.size());
        EXPECT_EQ(c.offsets, offsets_text(w.atoms));
        EXPECT_EQ(c.box, w.box);
    }
}

// 200 terms of three kinds (identifier, number of the term's index, superscript) at three widths.
// Lines are told apart by their baselines: each fits the line width unless it holds a single atom
// wider than that; the first line starts at 0 and every other at the indent; reading order goes
// left to right and top to bottom.
TEST(LineWrapSum, TwoHundredTermsFitTheirLines)
{
    for (long const width : {300L, 1000L, 4000L}) {
        SCOPED_TRACE(width);
        long const lineWidth = width - margin;
        TemplateTable table(nullptr);
        MathNode *sum = sum_of(table, 200, [&](int k) -> MathNode * {
            if (k % 3 == 0)
                return table.get_template(u"ci")->create_node(u"x");
            if (k % 3 == 1)
                return table.get_template(u"cn")->create_node(Kxt::to_ustring(std::to_string(k)).c_str());
            MathNode *power = table.get_template(u"superscript")->create_node();
            power->append(table.get_template(u"ci")->create_node(u"y"));
            power->append(table.get_template(u"cn")->create_node(u"2"));
            return power;
        });
        Wrapped const w(sum, width);
        // The leading sign and every term, and a "+" before each term but the first.
        ASSERT_EQ(400u, w.atoms.size());

        struct Line
        {
            long left = 0x7fffffff;
            long right = 0;
            int atoms = 0;
            long widest = 0;
        };
        std::map<long, Line> lines;
        long lastX = -1;
        long lastY = 0;
        for (BoxTree const *a : w.atoms) {
            ASSERT_GE(a->yOffset(), lastY) << "reading order";
            if (a->yOffset() == lastY) {
                ASSERT_GE(a->xOffset(), lastX) << "reading order";
            }
            lastX = a->xOffset();
            lastY = a->yOffset();
            Line &line = lines[a->yOffset()];
            line.left = std::min(line.left, a->xOffset());
            line.right = std::max(line.right, a->xOffset() + a->width());
            line.atoms += a->width() > 0 ? 1 : 0;
            line.widest = std::max(line.widest, a->width());
        }
        ASSERT_GT(lines.size(), 2u);
        bool first = true;
        for (auto const &entry : lines) {
            SCOPED_TRACE(entry.first);
            Line const &line = entry.second;
            EXPECT_EQ(first ? 0 : indent, line.left);
            if (line.atoms > 1 || line.widest <= lineWidth - indent) {
                EXPECT_LE(line.right, lineWidth);
            }
            EXPECT_LE(line.right, w.box.width());
            first = false;
        }
        EXPECT_LE(w.box.width(), lineWidth);
    }
}
