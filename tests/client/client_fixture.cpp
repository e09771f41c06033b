// The client tests' scaffolding: value texts, calls by name, the element tree and the scripted host.
#include "client/client_fixture.h"

#include <ostream>
#include <sstream>

#include <gtest/gtest.h>

#include "support/math_fixture.h"
#include "tavi/client/clientcall.h"
#include "tavi/client/domexception.h"
#include "tavi/glyph/hint.h"
#include "tavi/kxt/utf.h"

namespace ClientTest {

using namespace Tavi;

std::string describe(VarArg const *value)
{
    if (value == nullptr)
        return "none";
    long whole = 0;
    double number = 0.0;
    bool flag = false;
    wchar const *text = nullptr;
    ListArg const *list = nullptr;
    TableArg const *table = nullptr;
    VarArg *key = nullptr;
    std::ostringstream out;
    if (value->obj_val(whole)) {
        out << "o:" << whole;
    } else if (value->long_val(whole)) {
        out << "l:" << whole;
    } else if (value->double_val(number)) {
        out << "d:" << number;
    } else if (value->bool_val(flag)) {
        out << "b:" << (flag ? "true" : "false");
    } else if (value->string_val(text)) {
        out << "s:" << Kxt::to_string(text);
    } else if (value->ident_val(text)) {
        out << "i:" << Kxt::to_string(text);
    } else if (value->list_val(list)) {
        out << '[';
        for (std::size_t i = 0; i < list->size(); ++i)
            out << (i ? "," : "") << describe(list->at(i));
        out << ']';
    } else if (value->table_val(table)) {
        out << '<';
        for (std::size_t i = 0; i < table->size(); ++i)
            out << (i ? "," : "") << describe(table->key_at(i)) << '=' << describe(table->value_at(i));
        out << '>';
    } else if (value->domain_val(key)) {
        out << "D(" << describe(key) << ')';
    } else if (dynamic_cast<MathNodeArg const *>(value)) {
        out << 'm';
    } else if (dynamic_cast<NilArg const *>(value)) {
        out << "nil";
    } else if (dynamic_cast<NullArg const *>(value)) {
        out << "null";
    } else {
        out << '?';
    }
    return out.str();
}

VarArg *l(long value) { return new LongArg(value); }
VarArg *d(double value) { return new DoubleArg(value); }
VarArg *b(bool value) { return new BoolArg(value); }
VarArg *s(char16_t const *text) { return new StringArg(text); }
VarArg *o(long id) { return new ClientObjectArg(id); }
VarArg *nil() { return new NilArg; }

ListArg *list_of(std::vector<VarArg *> const &items)
{
    auto *list = new ListArg;
    for (VarArg *item : items)
        list->push_back(item);
    return list;
}

std::string call(DOMObjectMgr &mgr, long id, char16_t const *name, std::initializer_list<VarArg *> args)
{
    auto *list = new ListArg;
    list->push_back(new ClientObjectArg(id));
    list->push_back(new StringArg(name));
    for (VarArg *arg : args)
        list->push_back(arg);
    ClientCall request(&mgr, list);
    try {
        bool error = false;
        std::unique_ptr<VarArg> result(mgr.dispatch(request, error));
        wchar const *text = nullptr;
        if (error)
            return "error:" + (result && result->string_val(text) ? Kxt::to_string(text) : std::string());
        return describe(result.get());
    } catch (DOMException const &e) {
        return "x:" + std::to_string(e.code());
    }
}

void run_calls(DOMObjectMgr &mgr, CallRow const *rows, std::size_t count)
{
    for (std::size_t i = 0; i < count; ++i)
        EXPECT_EQ(rows[i].answer, call(mgr, rows[i].id, rows[i].name, rows[i].args))
            << "call " << rows[i].id << '.' << Kxt::to_string(rows[i].name) << " (row " << i << ')';
}

// ---- The element tree ----

TreeElement::~TreeElement()
{
    if (deaths_)
        ++*deaths_;
}

Glyph *TreeElement::clone(bool deep) const
{
    auto *copy = new TreeElement(tag_, deaths_);
    copy->title = title;
    if (deep) {
        auto *self = const_cast<TreeElement *>(this);
        for (long i = 0; i < self->count(); ++i)
            copy->append(self->component(i)->clone(true));
    }
    return copy;
}

std::ostream &TreeElement::put_xml(std::ostream &out)
{
    out << '<' << Kxt::to_string(tag_) << " title=\"" << Kxt::to_string(title) << "\">";
    for (long i = 0; i < count(); ++i)
        component(i)->put_xml(out);
    return out << "</" << Kxt::to_string(tag_) << '>';
}

VarArg *TreeElement::getAttribute(char16_t const *name)
{
    if (name == nullptr || std::u16string(name) != u"title" || title.empty())
        return nullptr;
    return new StringArg(title.c_str());
}

void TreeElement::setAttribute(char16_t const *name, VarArg const *value)
{
    wchar const *text = nullptr;
    if (name == nullptr || std::u16string(name) != u"title" || value == nullptr || !value->string_val(text))
        throw DOMException(DOMException::HIERARCHY_REQUEST_ERR);
    title = text;
    if (GlyphScene *s = scene())
        s->changed(DOMEditChange::object());
}

void TreeElement::removeAttribute(char16_t const *name)
{
    if (name != nullptr && std::u16string(name) == u"title")
        title.clear();
}

TreeScene::TreeScene() : document_(new TreeDocument(this))
{
    document_->ref();
    auto *root = new TreeElement(u"R", &deaths);
    for (char16_t const *tag : {u"A", u"B", u"C"}) {
        auto *child = new TreeElement(tag, &deaths);
        child->title = tag;
        root->append(child);
    }
    document_->append(root);
}

TreeScene::~TreeScene()
{
    release_all();
    document_->unref();
}

void TreeScene::changed(ChangedAspect const &aspect)
{
    if (dynamic_cast<DOMEditChange const *>(&aspect))
        hints.push_back("DOMEditChange");
    else if (dynamic_cast<SelectionChange const *>(&aspect))
        hints.push_back("SelectionChange");
    else
        hints.push_back("other");
    GlyphScene::changed(aspect);
}

namespace {

std::string shape_of(Glyph *glyph)
{
    std::string text = "?";
    if (auto *element = dynamic_cast<TreeElement *>(glyph))
        text = Kxt::to_string(element->tagName());
    else if (dynamic_cast<TreeDocument *>(glyph))
        text = "doc";
    if (glyph->count() == 0)
        return text;
    text += '(';
    for (long i = 0; i < glyph->count(); ++i)
        text += (i ? "," : "") + shape_of(glyph->component(i));
    return text + ')';
}

std::string read_example(std::string const &example)
{
    return TaviTest::read_whole_file(TAVI_SOURCE_DIR "/data/examples/" + example + ".xml");
}

}  // namespace

std::string TreeScene::shape() { return shape_of(document_); }

// ---- The scripted host ----

ScriptedHost::ScriptedHost(std::string const &example)
{
    TaviTest::read_default_setup(*scene.template_table());
    if (!example.empty())
        scene.read_content(read_example(example));
    scene.implementation(&scene_imp);
    view_imp.scene(&scene);
    view.implementation(&view_imp);
    scene_imp.view(&view);
    view.final_construct();
    scene.client_changes().attach(&observer);
}

ScriptedHost::~ScriptedHost()
{
    scene.client_changes().detach(&observer);
    scene_imp.view(nullptr);
}

std::string ScriptedHost::body()
{
    std::string const document = scene.content();
    std::size_t const open = document.find('>');
    std::size_t const close = document.rfind("</math>");
    return document.substr(open + 1, close - open - 1);
}

std::string example_content(std::string const &example)
{
    ScriptedHost host(example);
    return host.scene.content();
}

}  // namespace ClientTest
