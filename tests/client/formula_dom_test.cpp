// A scripted formula scene as a host sees it: a document of one formula element without children,
// whose "content" and "readonly" attributes are read and set by name. A new content is one step of
// the history, reaches the scene as a DOMEditChange (the observer hears of it and the view draws
// again), and leaves the formula selected.
#include <string>

#include <gtest/gtest.h>

#include "client/client_fixture.h"
#include "tavi/client/domexception.h"
#include "tavi/kxt/utf.h"
#include "tavi/math/mathrootnode.h"

namespace {

using namespace Tavi;
using ClientTest::b;
using ClientTest::l;
using ClientTest::nil;
using ClientTest::o;
using ClientTest::s;

using ClientTest::CallRow;

TEST(FormulaDOM, OneElementWithoutChildren)
{
    ClientTest::ScriptedHost host("mass-energy");
    std::string const before = host.scene.content();
    ASSERT_EQ(1, host.scene.document_id());
    CallRow const rows[] = {
        {1, u"nodeName",        {},                          "s:#document"},
        {1, u"length",          {},                          "l:1"},
        {1, u"documentElement", {},                          "o:2"},
        {1, u"item",            {l(0)},                      "o:2"},
        {1, u"selectedElement", {},                          "o:2"},
        {2, u"tagName",         {},                          "s:math"},
        {2, u"nodeName",        {},                          "s:math"},
        {2, u"nodeType",        {},                          "l:1"},
        {2, u"firstChild",      {},                          "nil"},
        {2, u"lastChild",       {},                          "nil"},
        {2, u"hasChildNodes",   {},                          "b:false"},
        {2, u"length",          {},                          "l:0"},
        {2, u"item",            {l(0)},                      "nil"},
        {2, u"parentNode",      {},                          "o:1"},
        {2, u"ownerDocument",   {},                          "o:1"},
        {2, u"nextSibling",     {},                          "nil"},
        {2, u"getAttribute",    {s(u"content")},             "m"},
        {2, u"getAttribute",    {s(u"readonly")},            "none"},
        {2, u"getAttribute",    {s(u"colour")},              "none"},
        {1, u"createElement",   {s(u"math")},                "o:3"},
        {1, u"createElement",   {s(u"mrow")},                "nil"},
        {3, u"parentNode",      {},                          "nil"},
        {2, u"cloneNode",       {b(true)},                   "o:4"},
        {2, u"equalNode",       {o(4)},                      "b:true"},
        {2, u"equalNode",       {o(3)},                      "b:false"},
        {1, u"selectElement",   {o(2)},                      "none"},
        // A formula shows no children, and the document keeps its one formula.
        {2, u"appendChild",     {o(3)},                      "x:3"},
        {2, u"insertBefore",    {o(3), nil()},               "x:3"},
        {2, u"removeChild",     {o(3)},                      "x:3"},
        {2, u"replaceChild",    {o(3), o(4)},                "x:3"},
        {1, u"removeChild",     {o(2)},                      "x:3"},
        {1, u"appendChild",     {o(3)},                      "x:3"},
        {1, u"appendChild",     {o(2)},                      "x:3"},
        {1, u"selectElement",   {o(3)},                      "x:8"},
        // Attributes it doesn't have, values of the wrong kind and content that can't be read.
        {2, u"setAttribute",    {s(u"colour"), s(u"red")},   "x:3"},
        {2, u"setAttribute",    {s(u"readonly"), l(1)},      "x:3"},
        {2, u"setAttribute",    {s(u"content"), l(1)},       "x:3"},
        {2, u"setAttribute",    {s(u"content"), s(u"<math")}, "x:3"},
        {2, u"setAttribute",    {s(u"content"), s(u"<other/>")}, "x:3"},
        {2, u"removeAttribute", {s(u"content")},             "x:3"},
        {2, u"removeAttribute", {s(u"colour")},              "none"},
        {2, u"setAttribute",    {s(u"content")},             "error:No matching callback function."},
        // A formula in no scene takes no content, whatever it is given.
        {3, u"setAttribute",    {s(u"content"), o(2)},       "none"},
    };
    ClientTest::run_calls(host.scene, rows);

    EXPECT_EQ(before, host.scene.content());
    EXPECT_EQ(0u, host.scene.history().undo_count());
    EXPECT_EQ(0, host.observer.updates);
    EXPECT_FALSE(host.scene.modified());
}

TEST(FormulaDOM, NewContentIsOneUndoableStep)
{
    ClientTest::ScriptedHost host("pythagorean-theorem");
    std::string const before = host.scene.content();
    std::string const after = ClientTest::example_content("mass-energy");
    long const formula = host.scene.documentElement(host.scene.document_id());
    int const redraws = host.view_imp.redraws;

    // The content is read as a node, and set from a document in the content format.
    std::unique_ptr<VarArg> old_content(host.scene.getAttribute(formula, u"content"));
    EXPECT_EQ("m", ClientTest::describe(old_content.get()));
    StringArg const text(Kxt::to_ustring(after).c_str());
    host.scene.setAttribute(formula, u"content", &text);

    EXPECT_EQ(after, host.scene.content());
    EXPECT_EQ(1u, host.scene.history().undo_count());
    EXPECT_EQ(1, host.observer.updates);
    EXPECT_GT(host.view_imp.redraws, redraws);
    EXPECT_TRUE(host.scene.modified());
    // The user can go on at once: the formula holds the selection.
    EXPECT_EQ(host.scene.formula(), host.scene.selected_element());

    ASSERT_TRUE(host.scene.do_undo());
    EXPECT_EQ(before, host.scene.content());
    EXPECT_EQ(host.scene.formula(), host.scene.selected_element());
    ASSERT_TRUE(host.scene.do_redo());
    EXPECT_EQ(after, host.scene.content());

    // The node read before is taken in again (as a copy), whole.
    host.scene.setAttribute(formula, u"content", old_content.get());
    EXPECT_EQ(before, host.scene.content());
    EXPECT_EQ(2u, host.scene.history().undo_count());
    // The undo and the redo of a change through the DOM are such changes too.
    EXPECT_EQ(4, host.observer.updates);
}

TEST(FormulaDOM, ReadOnlyFormulaRefusesNewContent)
{
    ClientTest::ScriptedHost host("pythagorean-theorem");
    std::string const before = host.scene.content();
    // Without a selection nothing else draws the view again: the scene's own redraw is seen alone.
    host.scene.deselect(host.scene.formula());
    ASSERT_EQ(nullptr, host.scene.selected_element());
    int const redraws = host.view_imp.redraws;
    CallRow const rows[] = {
        {2, u"getAttribute",    {s(u"readonly")},                  "none"},
        {2, u"setAttribute",    {s(u"readonly"), b(true)},         "none"},
        {2, u"getAttribute",    {s(u"readonly")},                  "b:true"},
        {2, u"setAttribute",    {s(u"content"), s(u"<math/>")},    "x:7"},
        {2, u"setAttribute",    {s(u"readonly"), b(false)},        "none"},
        {2, u"getAttribute",    {s(u"readonly")},                  "b:false"},
        {2, u"removeAttribute", {s(u"readonly")},                  "none"},
        {2, u"getAttribute",    {s(u"readonly")},                  "none"},
    };
    ASSERT_EQ(1, host.scene.document_id());
    ASSERT_EQ(2, host.scene.documentElement(1));
    ClientTest::run_calls(host.scene, rows);
    EXPECT_EQ(before, host.scene.content());
    // Each change of the setting is a change through the DOM too, and the view shows it.
    EXPECT_EQ(3, host.observer.updates);
    EXPECT_EQ(redraws + 3, host.view_imp.redraws);
}

// Ids still held when the scene goes are given back with it; nothing is left (the sanitizer build
// checks for leaks).
TEST(FormulaDOM, IdsStillHeldGoWithTheScene)
{
    ClientTest::ScriptedHost host("quadratic-formula");
    long const doc = host.scene.document_id();
    long const formula = host.scene.documentElement(doc);
    host.scene.cloneNode(formula, true);
    host.scene.createElement(doc, u"math");
    host.scene.parentNode(formula);
    EXPECT_EQ(4u, host.scene.held_count());
    EXPECT_EQ(2, host.scene.held_references(doc));
}

}  // namespace
