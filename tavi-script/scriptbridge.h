// ScriptBridge: a scene's flat DOM seen from Qt's script engine (QJSEngine). The library leaves to
// each host how its own values become call arguments and how results come back; this is that
// mapping, written once for QJSEngine.
//
// A script works with node objects. Any function called on one becomes a client call of that name
// on the object behind it (document.documentElement(), formula.getAttribute("content"), ...), so the
// functions are exactly those the library answers; a name it doesn't know throws "No matching
// callback function.". Each node object holds the one reference that its id carries, and gives it
// back when the script calls release() on it or when the engine collects it; a node object that was
// released throws code 8 when used again. A DOMException becomes a script exception whose name is
// "DOMException", with the exception's text as message and its code as code.
//
// Values, both ways:
//
//   script              library
//   boolean             BoolArg
//   whole number        LongArg (other numbers DoubleArg)
//   string              StringArg (an IdentArg comes back as a string too)
//   null                NilArg ("no object")
//   undefined           NullArg; a call that gives nothing gives undefined
//   array               ListArg
//   other object        TableArg with IdentArg keys
//   node object         ClientObjectArg
//   string              MathNodeArg: a formula's node comes back as a content document
//   {domain: key}       DomainArg (results only)
#pragma once

#include <cstddef>
#include <set>

#include <QJSValue>
#include <QString>

class QJSEngine;

namespace Tavi {

class FlatDOMMixin;
class ScriptNode;
class VarArg;

class ScriptBridge
{
public:
    // Both must outlive the bridge.
    ScriptBridge(QJSEngine &engine, FlatDOMMixin &dom);
    // Gives back the ids of every node object still alive; those objects then refuse every call.
    ~ScriptBridge();
    ScriptBridge(ScriptBridge const &) = delete;
    ScriptBridge &operator=(ScriptBridge const &) = delete;

    // A node object for the document, holding a reference of its own.
    QJSValue document();
    // A node object that takes over the reference an id carries; null for -1.
    QJSValue node(long id);

    // One client call on the object `id`, the arguments taken from a script array. An error is
    // thrown into the engine, and the answer is then undefined.
    QJSValue call(long id, QString const &name, QJSValue const &arguments);

    // A new value, or null with `error` set for a value that can't be passed (a function, a foreign
    // object, a structure nested too deeply).
    VarArg *to_var_arg(QJSValue const &value, QString &error, int depth = 0);
    // The value for a script. Object ids are taken over by node objects.
    QJSValue from_var_arg(VarArg const *value);

    // Node objects alive, and ids the DOM holds for anybody.
    std::size_t live_nodes() const { return nodes_.size(); }

    QJSEngine &engine() { return engine_; }
    FlatDOMMixin &dom() { return dom_; }

private:
    friend class ScriptNode;

    // Gives the id back; what goes wrong on the way is not reported (the node is going anyway).
    void release_quietly(long id);
    void forget(ScriptNode *node) { nodes_.erase(node); }
    void throw_error(QString const &name, QString const &message, long code);

    QJSEngine &engine_;
    FlatDOMMixin &dom_;
    QJSValue wrap_;
    std::set<ScriptNode *> nodes_;
};

}  // namespace Tavi
