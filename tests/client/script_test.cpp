// The bridge to Qt's script engine: values both ways, functions called by name on node objects,
// DOMException as a script exception with its code and text, ids given back when a script lets go
// of its node objects, and a script kept in the repository that rewrites an example formula.
#if TAVI_SCRIPT_TESTS

#include <memory>
#include <string>

#include <QCoreApplication>
#include <QEvent>
#include <QJSEngine>

#include <gtest/gtest.h>

#include "client/client_fixture.h"
#include "tavi-script/runscript.h"
#include "tavi-script/scriptbridge.h"
#include "tavi/client/vararg.h"
#include "tavi/editing/formulascene.h"

namespace {

using namespace Tavi;

// A scripted formula, an engine and a bridge, with `document` set as run_script sets it.
struct Bridged
{
    explicit Bridged(std::string const &example = "pythagorean-theorem") : host(example), bridge(engine, host.scene)
    {
        engine.globalObject().setProperty(QStringLiteral("document"), bridge.document());
    }

    // The script's value as text; an exception as "throw <name> <code> <message>".
    std::string run(QString const &program)
    {
        QJSValue const result = engine.evaluate(program);
        if (result.isError())
            return "throw " + result.property(QStringLiteral("name")).toString().toStdString() + ' ' +
                   result.property(QStringLiteral("code")).toString().toStdString() + ' ' +
                   result.property(QStringLiteral("message")).toString().toStdString();
        return result.toString().toStdString();
    }

    // What the engine has let go of is given back.
    void collect()
    {
        engine.collectGarbage();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    ClientTest::ScriptedHost host;
    QJSEngine engine;
    ScriptBridge bridge;
};

TEST(ScriptBridge, ValuesBothWays)
{
    Bridged b;
    struct In
    {
        char const *script;
        char const *value;
    };
    In const ins[] = {
        {"true", "b:true"},
        {"3", "l:3"},
        {"-4", "l:-4"},
        {"2.5", "d:2.5"},
        {"1e300", "d:1e+300"},
        {"'x'", "s:x"},
        {"null", "nil"},
        {"undefined", "null"},
        {"[1, 'a', [false]]", "[l:1,s:a,[b:false]]"},
        {"({k: 1, m: [null]})", "<i:k=l:1,i:m=[nil]>"},
        {"document", "o:1"},
        {"[document]", "[o:1]"},
        {"(function () {})", "none"},
        {"(function () { var a = []; a.push(a); return a; })()", "none"},
    };
    for (In const &in : ins) {
        QString problem;
        std::unique_ptr<VarArg> value(b.bridge.to_var_arg(b.engine.evaluate(QString::fromUtf8(in.script)), problem));
        EXPECT_EQ(in.value, ClientTest::describe(value.get())) << in.script;
        EXPECT_EQ(value == nullptr, !problem.isEmpty()) << in.script;
    }

    struct Out
    {
        VarArg *value;
        char const *shown;  // JSON of the value, or its type where JSON can't show it
    };
    auto *list = new ListArg;
    list->push_back(new LongArg(3));
    list->push_back(new IdentArg(u"i"));
    auto *table = new TableArg;
    table->push_back(new StringArg(u"k"), new BoolArg(true));
    table->push_back(new LongArg(2), new DoubleArg(0.5));
    Out const outs[] = {
        {new LongArg(-7), "-7"},
        {new DoubleArg(0.25), "0.25"},
        {new StringArg(u"t"), "\"t\""},
        {new NilArg, "null"},
        {new NullArg, "undefined"},
        {nullptr, "undefined"},
        {list, "[3,\"i\"]"},
        {table, "{\"2\":0.5,\"k\":true}"},
        {new DomainArg(new StringArg(u"d")), "{\"domain\":\"d\"}"},
        {new ClientObjectArg(b.host.scene.document_id()), "#document"},
    };
    QJSValue const show = b.engine.evaluate(QStringLiteral(
        "(function (v) { if (v === undefined) return 'undefined';"
        " if (v && v.id !== undefined) return v.nodeName(); return JSON.stringify(v); })"));
    for (Out const &out : outs) {
        std::unique_ptr<VarArg> value(out.value);
        EXPECT_EQ(out.shown, show.call({b.bridge.from_var_arg(value.get())}).toString().toStdString())
            << ClientTest::describe(value.get());
    }
    // A formula's node reads as a content document.
    long const formula = b.host.scene.documentElement(1);
    std::unique_ptr<VarArg> content(b.host.scene.getAttribute(formula, u"content"));
    b.host.scene.release(formula);
    EXPECT_EQ(b.host.scene.content(), b.bridge.from_var_arg(content.get()).toString().toStdString());
}

TEST(ScriptBridge, FunctionsByNameAndExceptions)
{
    Bridged b;
    struct Row
    {
        char const *script;
        char const *answer;
    };
    Row const rows[] = {
        {"document.nodeName()", "#document"},
        {"document.id", "1"},
        {"var f = document.documentElement(); f.tagName()", "math"},
        {"f.id", "2"},
        {"[f.hasChildNodes(), f.firstChild(), f.length(), f.item(0)].join()", "false,,0,"},
        {"f.firstChild() === null", "true"},
        {"document.item(0).equalNode(f)", "true"},
        {"f.getAttribute('readonly') === undefined", "true"},
        {"f.getAttribute('content').indexOf('<math xmlns=')", "0"},
        {"String(f)", "[tavi node 2]"},
        // Wrong names, wrong arguments, and what the DOM refuses.
        {"f.frobnicate()", "throw Error undefined No matching callback function."},
        {"f.appendChild(document)", "throw DOMException 3 The operation is not allowed according to the DTD"},
        {"document.removeChild(document)", "throw DOMException 8 The child node was not found"},
        {"f.setAttribute('readonly', true); f.setAttribute('content', '<math/>')", "throw DOMException 7 The node is read-only"},
        {"f.removeAttribute('readonly'); f.setAttribute('content', '<math')", "throw DOMException 3 The operation is not allowed according to the DTD"},
        {"f.insertBefore(function () {}, null)", "throw TypeError undefined A function can't be passed"},
        // A released node object refuses every further call.
        {"var c = f.cloneNode(true); c.release(); c.tagName()", "throw DOMException 8 The child node was not found"},
        {"c.release()", "throw DOMException 8 The child node was not found"},
    };
    for (Row const &row : rows)
        EXPECT_EQ(row.answer, b.run(QString::fromUtf8(row.script))) << row.script;
    EXPECT_EQ(0u, b.host.scene.history().undo_count());
}

TEST(ScriptBridge, IdsAreGivenBackWhenTheScriptLetsGo)
{
    Bridged b;
    long const doc = 1;
    long const formula = 2;
    // Ten node objects for one formula: ten references, one id.
    b.run(QStringLiteral("var kept = []; for (var i = 0; i < 10; ++i) kept.push(document.documentElement()); kept[9].id"));
    EXPECT_EQ(10, b.host.scene.held_references(formula));
    EXPECT_EQ(11u, b.bridge.live_nodes());

    // An explicit release gives one back at once; dropping the rest gives them back when collected.
    b.run(QStringLiteral("kept[0].release()"));
    EXPECT_EQ(9, b.host.scene.held_references(formula));
    b.run(QStringLiteral("kept = null"));
    b.collect();
    EXPECT_EQ(0, b.host.scene.held_references(formula));
    EXPECT_EQ(1u, b.host.scene.held_count());
    EXPECT_EQ(1, b.host.scene.held_references(doc));
    EXPECT_EQ(1u, b.bridge.live_nodes());
}

// A bridge that goes first gives back everything its node objects still hold.
TEST(ScriptBridge, ABridgeThatGoesGivesBackEveryId)
{
    ClientTest::ScriptedHost host("pythagorean-theorem");
    QJSEngine engine;
    {
        ScriptBridge bridge(engine, host.scene);
        engine.globalObject().setProperty(QStringLiteral("document"), bridge.document());
        engine.evaluate(QStringLiteral("var f = document.documentElement(); var c = f.cloneNode(true);"));
        EXPECT_EQ(3u, host.scene.held_count());
    }
    EXPECT_EQ(0u, host.scene.held_count());
    QJSValue const late = engine.evaluate(QStringLiteral("f.tagName()"));
    EXPECT_TRUE(late.isError());
    EXPECT_EQ(8, late.property(QStringLiteral("code")).toInt());
}

TEST(RunScript, RewriteAnExampleThroughItsContent)
{
    ClientTest::ScriptedHost host("pythagorean-theorem");
    QString error;
    ASSERT_TRUE(run_script_file(host.scene, QStringLiteral(TAVI_SOURCE_DIR "/tests/client/scripts/rewrite.js"), error))
        << error.toStdString();
    EXPECT_EQ("<math xmlns=\"http://www.tavi-math.org/xml/MathEditContent\"><expr tmp=\"eq\"><plus sgn=\"++\">"
              "<expr tmp=\"power\"><ident>a</ident><num>2</num></expr>"
              "<expr tmp=\"power\"><ident>b</ident><num>2</num></expr></plus>"
              "<expr tmp=\"implicit_times\"><ident>c</ident><ident>c</ident></expr></expr></math>",
              host.scene.content());
    // One step, told to the observer, drawn again; the script holds nothing any more.
    EXPECT_EQ(1u, host.scene.history().undo_count());
    EXPECT_EQ(1, host.observer.updates);
    EXPECT_GT(host.view_imp.redraws, 0);
    EXPECT_EQ(0u, host.scene.held_count());
    ASSERT_TRUE(host.scene.do_undo());
    EXPECT_EQ(ClientTest::example_content("pythagorean-theorem"), host.scene.content());
}

TEST(RunScript, FailuresAreReportedWithWhereAndWhat)
{
    ClientTest::ScriptedHost host("mass-energy");
    struct Row
    {
        char const *program;
        char const *error;
    };
    Row const rows[] = {
        {"document.nodeName()", ""},
        {"var f = document.documentElement();\nf.appendChild(document);",
         "t.js:2: DOMException: The operation is not allowed according to the DTD (code 3)"},
        {"document.nosuch();", "t.js:1: Error: No matching callback function."},
        {"throw new Error('stop');", "t.js:1: Error: stop"},
        {"var = ;", "t.js:1: SyntaxError: Expected token `identifier'"},
    };
    for (Row const &row : rows) {
        QString error;
        bool const ok = run_script(host.scene, QString::fromUtf8(row.program), QStringLiteral("t.js"), error);
        EXPECT_EQ(*row.error == 0, ok) << row.program;
        EXPECT_EQ(row.error, error.toStdString()) << row.program;
        EXPECT_EQ(0u, host.scene.held_count()) << row.program;
    }

    QString error;
    EXPECT_FALSE(run_script_file(host.scene, QStringLiteral("/nonexistent/x.js"), error));
    EXPECT_TRUE(error.startsWith(QStringLiteral("/nonexistent/x.js: "))) << error.toStdString();
    FormulaScene plain;
    EXPECT_FALSE(run_script_file(plain, QStringLiteral(TAVI_SOURCE_DIR "/tests/client/scripts/rewrite.js"), error));
    EXPECT_TRUE(error.contains(QStringLiteral("can't be scripted"))) << error.toStdString();
}

}  // namespace

#endif
