// ScriptBridge: node objects, the conversion of values both ways, and the calls between them.
#include "tavi-script/scriptbridge.h"

#include <cmath>
#include <exception>
#include <memory>
#include <sstream>
#include <string>

#include <QJSEngine>
#include <QJSValueIterator>
#include <QObject>

#include "tavi/client/clientcall.h"
#include "tavi/client/domexception.h"
#include "tavi/client/flatdommixin.h"
#include "tavi/client/vararg.h"
#include "tavi/interchange/matheditcontenthandler.h"
#include "tavi/math/mathnode.h"

namespace Tavi {

// The engine's side of one id. Scripts never see it directly: each is wrapped in a proxy that turns
// every function name into a call (see wrapper_source).
class ScriptNode : public QObject
{
    Q_OBJECT

public:
    ScriptNode(ScriptBridge *bridge, long id) : bridge_(bridge), id_(id) {}
    ~ScriptNode() override
    {
        if (bridge_ == nullptr)
            return;
        if (id_ != -1)
            bridge_->release_quietly(id_);
        bridge_->forget(this);
    }

    Q_INVOKABLE QJSValue invoke(QString const &name, QJSValue const &arguments)
    {
        if (bridge_ == nullptr || id_ == -1) {
            throw_gone();
            return QJSValue();
        }
        QJSValue result = bridge_->call(id_, name, arguments);
        // A release that went through leaves nothing for this object to give back.
        if (name == QLatin1String("release") && !bridge_->engine().hasError())
            id_ = -1;
        return result;
    }

    Q_INVOKABLE double objectId() const { return static_cast<double>(id_); }

    long id() const { return id_; }
    // The bridge has given the id back already and is going.
    void orphan()
    {
        bridge_ = nullptr;
        id_ = -1;
    }

private:
    void throw_gone()
    {
        DOMException const gone(DOMException::NOT_FOUND_ERR);
        if (QJSEngine *engine = qjsEngine(this)) {
            QJSValue error = engine->newErrorObject(QJSValue::GenericError, QString::fromUtf8(gone.what()));
            error.setProperty(QStringLiteral("name"), QStringLiteral("DOMException"));
            error.setProperty(QStringLiteral("code"), static_cast<int>(gone.code()));
            engine->throwError(error);
        }
    }

    ScriptBridge *bridge_;
    long id_;
};

namespace {

// The node object a script holds: a proxy whose every property is a function that calls the
// library by that name. "id" gives the number, and "__taviNode" lets the bridge find the node again
// when the object comes back as an argument. The target holds the node, so the node lives exactly
// as long as the script can reach the proxy.
char const wrapper_source[] = R"JS(
(function (node) {
    return new Proxy({ node: node }, {
        get: function (target, name) {
            if (typeof name !== "string" || name === "then")
                return undefined;
            if (name === "__taviNode")
                return target.node;
            if (name === "id")
                return target.node.objectId();
            if (name === "toString")
                return function () { return "[tavi node " + target.node.objectId() + "]"; };
            return function () { return target.node.invoke(name, Array.prototype.slice.call(arguments)); };
        }
    });
})
)JS";

// Deeper than this a value is taken for a structure that refers to itself.
constexpr int max_depth = 64;

// The largest whole number a script's double holds exactly.
constexpr double max_exact_integer = 9007199254740992.0;

QString to_qstring(wchar const *text) { return text ? QString::fromUtf16(text) : QString(); }

std::u16string to_wide(QString const &text) { return text.toStdU16String(); }

// A formula's node as a content document, the form in which a script reads and writes formulas.
QString content_document(MathNode *node)
{
    std::ostringstream out;
    out << "<math xmlns=\"" << MathEditContentHandler::nameSpace() << "\">";
    if (node != nullptr)
        node->put_xml(out);
    out << "</math>";
    return QString::fromStdString(out.str());
}

// The text a table's key gives a script's property name.
QString key_text(VarArg const *key)
{
    wchar const *text = nullptr;
    long whole = 0;
    double number = 0.0;
    bool flag = false;
    if (key->string_val(text) || key->ident_val(text))
        return to_qstring(text);
    if (key->long_val(whole))
        return QString::number(whole);
    if (key->double_val(number))
        return QString::number(number);
    if (key->bool_val(flag))
        return flag ? QStringLiteral("true") : QStringLiteral("false");
    return QString();
}

}  // namespace

ScriptBridge::ScriptBridge(QJSEngine &engine, FlatDOMMixin &dom)
    : engine_(engine), dom_(dom), wrap_(engine.evaluate(QString::fromUtf8(wrapper_source)))
{
}

ScriptBridge::~ScriptBridge()
{
    std::set<ScriptNode *> nodes;
    nodes.swap(nodes_);
    // The node objects stay the engine's, which frees them when it collects them or at its own end;
    // until then a script that still reaches one finds an object that refuses every call.
    for (ScriptNode *node : nodes) {
        if (node->id() != -1)
            release_quietly(node->id());
        node->orphan();
    }
}

QJSValue ScriptBridge::document()
{
    try {
        return node(dom_.document_id());
    } catch (DOMException const &e) {
        throw_error(QStringLiteral("DOMException"), QString::fromUtf8(e.what()), static_cast<long>(e.code()));
    }
    return QJSValue(QJSValue::NullValue);
}

QJSValue ScriptBridge::node(long id)
{
    if (id == -1)
        return QJSValue(QJSValue::NullValue);
    ScriptNode *node = new ScriptNode(this, id);
    nodes_.insert(node);
    QJSEngine::setObjectOwnership(node, QJSEngine::JavaScriptOwnership);
    return wrap_.call(QJSValueList{engine_.newQObject(node)});
}

void ScriptBridge::release_quietly(long id)
{
    try {
        dom_.release(id);
    } catch (std::exception const &) {
    }
}

void ScriptBridge::throw_error(QString const &name, QString const &message, long code)
{
    QJSValue error = engine_.newErrorObject(QJSValue::GenericError, message);
    error.setProperty(QStringLiteral("name"), name);
    if (code >= 0)
        error.setProperty(QStringLiteral("code"), static_cast<int>(code));
    engine_.throwError(error);
}

QJSValue ScriptBridge::call(long id, QString const &name, QJSValue const &arguments)
{
    auto *list = new ListArg;
    ClientCall call(&dom_, list);
    list->push_back(new ClientObjectArg(id));
    list->push_back(new StringArg(to_wide(name).c_str()));
    int const count = arguments.property(QStringLiteral("length")).toInt();
    for (int i = 0; i < count; ++i) {
        QString problem;
        VarArg *arg = to_var_arg(arguments.property(static_cast<quint32>(i)), problem);
        if (arg == nullptr) {
            engine_.throwError(QJSValue::TypeError, problem);
            return QJSValue();
        }
        list->push_back(arg);
    }
    try {
        bool error = false;
        std::unique_ptr<VarArg> result(dom_.dispatch(call, error));
        if (error) {
            wchar const *message = nullptr;
            throw_error(QStringLiteral("Error"),
                        result && result->string_val(message) ? to_qstring(message) : QString(), -1);
            return QJSValue();
        }
        return from_var_arg(result.get());
    } catch (DOMException const &e) {
        throw_error(QStringLiteral("DOMException"), QString::fromUtf8(e.what()), static_cast<long>(e.code()));
    } catch (std::exception const &e) {
        throw_error(QStringLiteral("Error"), QString::fromUtf8(e.what()), -1);
    }
    return QJSValue();
}

VarArg *ScriptBridge::to_var_arg(QJSValue const &value, QString &error, int depth)
{
    if (depth > max_depth) {
        error = QStringLiteral("A value nested this deeply can't be passed");
        return nullptr;
    }
    if (value.isBool())
        return new BoolArg(value.toBool());
    if (value.isNumber()) {
        double const number = value.toNumber();
        if (std::isfinite(number) && number == std::trunc(number) && std::fabs(number) <= max_exact_integer)
            return new LongArg(static_cast<long>(number));
        return new DoubleArg(number);
    }
    if (value.isString())
        return new StringArg(to_wide(value.toString()).c_str());
    if (value.isNull())
        return new NilArg;
    if (value.isUndefined())
        return new NullArg;
    if (value.isCallable()) {
        error = QStringLiteral("A function can't be passed");
        return nullptr;
    }
    if (value.isArray()) {
        std::unique_ptr<ListArg> list(new ListArg);
        int const count = value.property(QStringLiteral("length")).toInt();
        for (int i = 0; i < count; ++i) {
            VarArg *item = to_var_arg(value.property(static_cast<quint32>(i)), error, depth + 1);
            if (item == nullptr)
                return nullptr;
            list->push_back(item);
        }
        return list.release();
    }
    if (value.isObject()) {
        if (auto *node = qobject_cast<ScriptNode *>(value.property(QStringLiteral("__taviNode")).toQObject()))
            return new ClientObjectArg(node->id());
        if (value.isQObject()) {
            error = QStringLiteral("An object of the host can't be passed");
            return nullptr;
        }
        std::unique_ptr<TableArg> table(new TableArg);
        QJSValueIterator it(value);
        while (it.hasNext()) {
            it.next();
            VarArg *item = to_var_arg(it.value(), error, depth + 1);
            if (item == nullptr)
                return nullptr;
            table->push_back(new IdentArg(to_wide(it.name()).c_str()), item);
        }
        return table.release();
    }
    error = QStringLiteral("This value can't be passed");
    return nullptr;
}

QJSValue ScriptBridge::from_var_arg(VarArg const *value)
{
    if (value == nullptr)
        return QJSValue(QJSValue::UndefinedValue);
    long whole = 0;
    double number = 0.0;
    bool flag = false;
    wchar const *text = nullptr;
    ListArg const *list = nullptr;
    TableArg const *table = nullptr;
    VarArg *key = nullptr;
    if (value->obj_val(whole))
        return node(whole);
    if (value->long_val(whole))
        return QJSValue(static_cast<double>(whole));
    if (value->double_val(number))
        return QJSValue(number);
    if (value->bool_val(flag))
        return QJSValue(flag);
    if (value->string_val(text) || value->ident_val(text))
        return QJSValue(to_qstring(text));
    if (value->list_val(list)) {
        QJSValue array = engine_.newArray(static_cast<uint>(list->size()));
        for (std::size_t i = 0; i < list->size(); ++i)
            array.setProperty(static_cast<quint32>(i), from_var_arg(list->at(i)));
        return array;
    }
    if (value->table_val(table)) {
        QJSValue object = engine_.newObject();
        for (std::size_t i = 0; i < table->size(); ++i)
            object.setProperty(key_text(table->key_at(i)), from_var_arg(table->value_at(i)));
        return object;
    }
    if (value->domain_val(key)) {
        QJSValue object = engine_.newObject();
        object.setProperty(QStringLiteral("domain"), from_var_arg(key));
        return object;
    }
    if (auto const *math = dynamic_cast<MathNodeArg const *>(value))
        return QJSValue(content_document(math->math_node()));
    if (dynamic_cast<NilArg const *>(value) != nullptr)
        return QJSValue(QJSValue::NullValue);
    return QJSValue(QJSValue::UndefinedValue);
}

}  // namespace Tavi

#include "scriptbridge.moc"
