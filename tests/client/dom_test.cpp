// The DOM face of a glyph tree, driven by client calls by name as a host drives it: every function
// of the table with good arguments, then wrong names and wrong arguments, then the calls that raise;
// each change reaches the scene as a DOMEditChange; every id handed out is one reference to give
// back.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "client/client_fixture.h"
#include "tavi/client/domexception.h"

namespace {

using namespace Tavi;
using ClientTest::b;
using ClientTest::l;
using ClientTest::nil;
using ClientTest::o;
using ClientTest::s;

using ClientTest::CallRow;

std::string const no_match = "error:No matching callback function.";

// The scene starts as doc(R(A,B,C)); ids are handed out in the order the calls meet the objects.
TEST(DOMCalls, EveryFunctionByNameOnATree)
{
    ClientTest::TreeScene scene;
    ASSERT_EQ(1, scene.document_id());
    CallRow const rows[] = {
        // Reading the tree.
        {1, u"nodeName",        {},                     "s:#document"},
        {1, u"nodeType",        {},                     "l:9"},
        {1, u"documentElement", {},                     "o:2"},
        {2, u"tagName",         {},                     "s:R"},
        {2, u"nodeName",        {},                     "s:R"},
        {2, u"nodeType",        {},                     "l:1"},
        {2, u"childNodes",      {},                     "o:2"},
        {2, u"length",          {},                     "l:3"},
        {2, u"item",            {l(0)},                 "o:3"},
        {2, u"item",            {l(3)},                 "nil"},
        {2, u"item",            {l(-1)},                "nil"},
        {2, u"firstChild",      {},                     "o:3"},
        {2, u"lastChild",       {},                     "o:4"},
        {3, u"nextSibling",     {},                     "o:5"},
        {4, u"nextSibling",     {},                     "nil"},
        {4, u"previousSibling", {},                     "o:5"},
        {3, u"previousSibling", {},                     "nil"},
        {3, u"parentNode",      {},                     "o:2"},
        {2, u"parentNode",      {},                     "o:1"},
        {1, u"parentNode",      {},                     "nil"},
        {3, u"ownerDocument",   {},                     "o:1"},
        {1, u"ownerDocument",   {},                     "nil"},
        {2, u"hasChildNodes",   {},                     "b:true"},
        {3, u"hasChildNodes",   {},                     "b:false"},
        {3, u"getAttribute",    {s(u"title")},          "s:A"},
        {2, u"getAttribute",    {s(u"title")},          "none"},
        {3, u"equalNode",       {o(5)},                 "b:false"},
        {3, u"equalNode",       {o(3)},                 "b:true"},
        {1, u"selectedElement", {},                     "nil"},
        {1, u"createElement",   {s(u"X")},              "nil"},
        // A copy is in no tree until it is put into one.
        {3, u"cloneNode",       {b(true)},              "o:6"},
        {6, u"equalNode",       {o(3)},                 "b:true"},
        {6, u"parentNode",      {},                     "nil"},
        {6, u"ownerDocument",   {},                     "nil"},
        // Changing it: R(A,B,C) -> R(A,B,C,A') -> R(C,A,B,A') -> R(C,B,A',A) -> R(C,A',A) -> R(C,B,A).
        {2, u"appendChild",     {o(6)},                 "o:6"},
        {2, u"length",          {},                     "l:4"},
        {2, u"insertBefore",    {o(4), o(3)},           "o:4"},
        {2, u"insertBefore",    {o(3), nil()},          "o:3"},
        {2, u"removeChild",     {o(5)},                 "o:5"},
        {2, u"replaceChild",    {o(5), o(6)},           "o:6"},
        {5, u"setAttribute",    {s(u"title"), s(u"Q")}, "none"},
        {5, u"getAttribute",    {s(u"title")},          "s:Q"},
        {5, u"removeAttribute", {s(u"title")},          "none"},
        {1, u"selectElement",   {o(5)},                 "none"},
        // Wrong names and wrong arguments change nothing.
        {2, u"nodename",        {},                     no_match.c_str()},
        {2, u"release",         {l(1)},                 no_match.c_str()},
        {2, u"item",            {},                     no_match.c_str()},
        {2, u"item",            {s(u"0")},              no_match.c_str()},
        {2, u"item",            {l(0), l(1)},           no_match.c_str()},
        {2, u"appendChild",     {l(3)},                 no_match.c_str()},
        {2, u"appendChild",     {o(99)},                no_match.c_str()},
        {2, u"insertBefore",    {o(3)},                 no_match.c_str()},
        {2, u"cloneNode",       {l(1)},                 no_match.c_str()},
        {2, u"getAttribute",    {l(1)},                 no_match.c_str()},
        {2, u"setAttribute",    {s(u"title")},          no_match.c_str()},
        {1, u"tagName",         {},                     no_match.c_str()},
        {2, u"documentElement", {},                     no_match.c_str()},
        {1, u"selectElement",   {o(1)},                 no_match.c_str()},
        // What the tree can't do raises.
        {2, u"removeChild",     {o(1)},                 "x:8"},
        {3, u"removeChild",     {o(5)},                 "x:8"},
        {1, u"selectElement",   {o(6)},                 "x:8"},
        {99, u"nodeName",       {},                     "x:8"},
        {3, u"appendChild",     {o(2)},                 "x:3"},
        {2, u"appendChild",     {o(2)},                 "x:3"},
        {2, u"replaceChild",    {o(1), o(4)},           "x:3"},
        {2, u"setAttribute",    {s(u"colour"), s(u"red")}, "x:3"},
    };
    ClientTest::run_calls(scene, rows);

    EXPECT_EQ("doc(R(C,B,A))", scene.shape());
    // Step 1 of each move is a removal of its own: eight changes, and the one selection.
    EXPECT_EQ((std::vector<std::string>{"DOMEditChange", "DOMEditChange", "DOMEditChange", "DOMEditChange",
                                        "DOMEditChange", "DOMEditChange", "DOMEditChange", "DOMEditChange",
                                        "SelectionChange"}),
              scene.hints);

    // A node that refuses changes raises code 3 and stays as it is.
    static_cast<ClientTest::TreeElement *>(scene.document()->component(0))->open = false;
    EXPECT_EQ("x:3", ClientTest::call(scene, 2, u"removeChild", {o(4)}));
    EXPECT_EQ("x:3", ClientTest::call(scene, 2, u"insertBefore", {o(6), nil()}));
    EXPECT_EQ("doc(R(C,B,A))", scene.shape());

    // Each id carries as many references as it was handed out; the copy that left the tree dies
    // with its last one.
    EXPECT_EQ(3, scene.held_references(6));
    EXPECT_EQ(0, scene.deaths);
    for (long id = 1; id <= 6; ++id) {
        long const held = scene.held_references(id);
        for (long i = 0; i < held; ++i)
            EXPECT_EQ("none", ClientTest::call(scene, id, u"release"));
        EXPECT_EQ("x:8", ClientTest::call(scene, id, u"release")) << id;
    }
    EXPECT_EQ(0u, scene.held_count());
    EXPECT_EQ(1, scene.deaths);
    // A new id is a new number.
    EXPECT_EQ(7, scene.document_id());
}

// The same operations through the flat interface and the interfaces on pointers.
TEST(DOMCalls, FlatAndPointerFaces)
{
    ClientTest::TreeScene scene;
    long const doc = scene.document_id();
    long const root = scene.documentElement(doc);
    long const a = scene.firstChild(root);
    long const c = scene.lastChild(root);
    EXPECT_EQ(u"R", std::u16string(scene.tagName(root)));
    EXPECT_EQ(INode::ELEMENT_NODE, scene.nodeType(a));
    EXPECT_EQ(3u, scene.length(scene.childNodes(root)));

    // A null reference appends: -1 in the flat form, a null pointer below it.
    EXPECT_EQ(a, scene.insertBefore(root, a, -1));
    EXPECT_EQ("doc(R(B,C,A))", scene.shape());
    INode *r = scene.get_dom_node(root);
    INode *b_node = r->firstChild();
    EXPECT_EQ(b_node, r->insertBefore(b_node, nullptr));
    EXPECT_EQ("doc(R(C,A,B))", scene.shape());
    EXPECT_EQ(scene.get_dom_node(c), r->firstChild());

    // The wrong kind of object for an id raises code 8, as an id that names nothing does.
    auto code_of = [](auto const &run) -> long {
        try {
            run();
        } catch (DOMException const &e) {
            return static_cast<long>(e.code());
        }
        return 0;
    };
    EXPECT_EQ(8, code_of([&] { scene.tagName(doc); }));
    EXPECT_EQ(8, code_of([&] { scene.documentElement(root); }));
    EXPECT_EQ(8, code_of([&] { scene.release(1000); }));
    EXPECT_EQ(8, code_of([&] { scene.removeChild(root, doc); }));
    EXPECT_EQ(8, code_of([&] { r->removeChild(nullptr); }));
    EXPECT_EQ(3, code_of([&] { r->appendChild(nullptr); }));
    EXPECT_EQ(0, code_of([&] { scene.removeChild(root, a); }));
    EXPECT_EQ("doc(R(C,B))", scene.shape());
}

TEST(DOMException, CodesAndTexts)
{
    struct Row
    {
        std::size_t code;
        char const *text;
    };
    Row const rows[] = {
        {3, "The operation is not allowed according to the DTD"},
        {7, "The node is read-only"},
        {8, "The child node was not found"},
        {0, "DOM Error"},
        {1, "DOM Error"},
        {9, "DOM Error"},
    };
    for (Row const &row : rows) {
        DOMException const e(row.code);
        EXPECT_EQ(row.code, e.code());
        EXPECT_STREQ(row.text, e.what()) << row.code;
    }
}

}  // namespace
