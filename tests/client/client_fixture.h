// Scaffolding for the client tests: values written as short texts ("l:3", "o:2", "nil", ...), client
// calls made by name as a host makes them, a small tree of element glyphs under a document in a
// scene that records its change hints, and a scripted formula scene hosted with a view that counts
// its redraws.
#pragma once

#include <initializer_list>
#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

#include "tavi/client/flatdommixin.h"
#include "tavi/client/glyphdocumentmixin.h"
#include "tavi/client/scriptedformulascene.h"
#include "tavi/client/vararg.h"
#include "tavi/glyph/glyphscene.h"
#include "tavi/glyph/glyphview.h"
#include "tavi/glyph/observable.h"
#include "tavi/glyph/polyglyph.h"
#include "tavi/glyph/rendersceneimp.h"
#include "tavi/glyph/renderviewimp.h"

namespace ClientTest {

// A value as a short text: "l:3", "d:1.5", "b:true", "s:text", "i:name", "null", "nil", "o:2",
// "D(l:1)", "m", "[l:1,s:x]", "<s:k=l:1>"; "none" for a null pointer.
std::string describe(Tavi::VarArg const *value);

// Argument builders, each a new value for a call's list.
Tavi::VarArg *l(long value);
Tavi::VarArg *d(double value);
Tavi::VarArg *b(bool value);
Tavi::VarArg *s(char16_t const *text);
Tavi::VarArg *o(long id);
Tavi::VarArg *nil();

// A list of the values, which it owns.
Tavi::ListArg *list_of(std::vector<Tavi::VarArg *> const &items);

// Runs one client call, as a host would, and describes the outcome: the answer's text, or
// "error:<message>" when no function fits, or "x:<code>" when a DOMException comes out.
std::string call(Tavi::DOMObjectMgr &mgr, long id, char16_t const *name,
                 std::initializer_list<Tavi::VarArg *> args = {});

// One call of a table and the outcome it must have; run_calls runs a table in order.
struct CallRow
{
    long id;
    char16_t const *name;
    std::initializer_list<Tavi::VarArg *> args;
    char const *answer;
};
void run_calls(Tavi::DOMObjectMgr &mgr, CallRow const *rows, std::size_t count);
template <std::size_t N>
void run_calls(Tavi::DOMObjectMgr &mgr, CallRow const (&rows)[N])
{
    run_calls(mgr, rows, N);
}

// ---- A tree of element glyphs ----

// An element with children, named by its tag. It lets children in and out only while `open` is set,
// and has one attribute, "title".
class TreeElement : public Tavi::PolyGlyph<Tavi::Glyph>, public Tavi::GlyphElementMixin
{
public:
    explicit TreeElement(std::u16string tag, int *deaths = nullptr) : tag_(std::move(tag)), deaths_(deaths) {}
    ~TreeElement() override;

    void ref() const override { Tavi::Glyph::ref(); }
    void unref() const override { Tavi::Glyph::unref(); }

    Tavi::Glyph *clone(bool deep) const override;
    std::ostream &put_xml(std::ostream &out) override;

    char16_t const *tagName() override { return tag_.c_str(); }
    Tavi::VarArg *getAttribute(char16_t const *name) override;
    void setAttribute(char16_t const *name, Tavi::VarArg const *value) override;
    void removeAttribute(char16_t const *name) override;

    bool open = true;
    std::u16string title;

protected:
    Tavi::Glyph *this_glyph() override { return this; }
    bool may_remove(long) override { return open; }
    bool may_append(GlyphNodeMixin *) override { return open; }
    bool may_insert(long, GlyphNodeMixin *) override { return open; }
    bool may_replace(long, GlyphNodeMixin *) override { return open; }

private:
    std::u16string tag_;
    int *deaths_;
};

// The document at the top of the tree; it knows its scene.
class TreeDocument : public Tavi::PolyGlyph<Tavi::Glyph>, public Tavi::GlyphDocumentMixin
{
public:
    explicit TreeDocument(Tavi::GlyphScene *scene) : scene_(scene) {}
    void ref() const override { Tavi::Glyph::ref(); }
    void unref() const override { Tavi::Glyph::unref(); }
    Tavi::GlyphScene *scene() override { return scene_; }

protected:
    Tavi::Glyph *this_glyph() override { return this; }

private:
    Tavi::GlyphScene *scene_;
};

// A scene that shows a document of tree elements, is its own flat DOM, and keeps the class name of
// every change hint it hears.
class TreeScene : public Tavi::GlyphScene, public Tavi::FlatDOMMixin
{
public:
    TreeScene();
    ~TreeScene() override;
    Tavi::Glyph *glyph() override { return document_; }
    Tavi::IDocument *dom_document() override { return document_; }
    void changed(Tavi::ChangedAspect const &aspect) override;

    TreeDocument *document() const { return document_; }
    // The tree as "doc(R(A,B))", by tags.
    std::string shape();

    std::vector<std::string> hints;
    int deaths = 0;

private:
    TreeDocument *document_;
};

// ---- A scripted formula with a view ----

// A view implementation that counts how often it was asked to draw everything again.
class CountingViewImp : public Tavi::RenderViewImp
{
public:
    void damage_all() override { ++redraws; }
    int redraws = 0;
};

// The windowless scene implementation, except that it tells its view to draw everything again, as
// a host's implementation on screen does.
class RedrawingSceneImp : public Tavi::RenderSceneImp
{
public:
    void damage_all() override { Tavi::SceneImp::damage_all(); }
};

// An observer that counts its updates.
class CountingObserver : public Tavi::Observer
{
public:
    void update(Tavi::Observable *) override { ++updates; }
    int updates = 0;
};

// A ScriptedFormulaScene with the default setup, a view joined as a host joins it, and an observer
// of the changes that come through the DOM.
class ScriptedHost
{
public:
    // An empty formula, or the example of that name from data/examples.
    explicit ScriptedHost(std::string const &example = std::string());
    ~ScriptedHost();
    ScriptedHost(ScriptedHost const &) = delete;
    ScriptedHost &operator=(ScriptedHost const &) = delete;

    // The formula in the content format, without the math element around it.
    std::string body();

    Tavi::ScriptedFormulaScene scene;
    RedrawingSceneImp scene_imp;
    CountingViewImp view_imp;
    Tavi::GlyphView view;
    CountingObserver observer;
};

// The example file's formula, as the scene writes it (no XML declaration, no spaces).
std::string example_content(std::string const &example);

}  // namespace ClientTest
