// Running a script: the engine, the bridge, and the message of a script that failed.
#include "tavi-script/runscript.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFile>
#include <QJSEngine>
#include <QStringList>
#include <QUrl>

#include "tavi-script/scriptbridge.h"
#include "tavi/client/flatdommixin.h"
#include "tavi/client/scriptedformulascene.h"

namespace Tavi {

namespace {

// The line in the script itself: an exception raised for a call made through a node object carries
// the line of the bridge's own proxy, so the first frame of the script's file is the one told.
int script_line(QJSValue const &exception, QStringList const &trace, QString const &file_name)
{
    for (QString const &frame : trace) {
        // function:line:column:file, where the file is a URL that may hold colons of its own.
        QStringList const parts = frame.split(QLatin1Char(':'));
        if (parts.size() < 4)
            continue;
        QString const url = parts.mid(3).join(QLatin1Char(':'));
        QUrl const where(url);
        if ((where.isLocalFile() ? where.toLocalFile() : url) == file_name)
            return parts[1].toInt();
    }
    QJSValue const line = exception.property(QStringLiteral("lineNumber"));
    return line.isNumber() ? line.toInt() : 0;
}

QString describe(QJSValue const &exception, QStringList const &trace, QString const &file_name)
{
    QString text = file_name;
    if (int const line = script_line(exception, trace, file_name))
        text += QLatin1Char(':') + QString::number(line);
    text += QStringLiteral(": ") + exception.toString();
    QJSValue const code = exception.property(QStringLiteral("code"));
    if (code.isNumber())
        text += QStringLiteral(" (code %1)").arg(code.toInt());
    return text;
}

}  // namespace

bool run_script(FlatDOMMixin &dom, QString const &program, QString const &file_name, QString &error)
{
    QJSEngine engine;
    engine.installExtensions(QJSEngine::ConsoleExtension);
    bool ok = true;
    {
        ScriptBridge bridge(engine, dom);
        engine.globalObject().setProperty(QStringLiteral("document"), bridge.document());
        QStringList trace;
        QJSValue const result = engine.evaluate(program, file_name, 1, &trace);
        if (result.isError() || !trace.isEmpty()) {
            error = describe(result, trace, file_name);
            ok = false;
        }
        engine.globalObject().deleteProperty(QStringLiteral("document"));
        // What the script let go of is given back now rather than when the host's loop next turns.
        engine.collectGarbage();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return ok;
}

bool run_script_file(FlatDOMMixin &dom, QString const &path, QString &error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        error = path + QStringLiteral(": ") + file.errorString();
        return false;
    }
    return run_script(dom, QString::fromUtf8(file.readAll()), path, error);
}

bool run_script_file(FormulaScene &scene, QString const &path, QString &error)
{
    if (auto *scripted = dynamic_cast<ScriptedFormulaScene *>(&scene))
        return run_script_file(*scripted, path, error);
    error = path + QStringLiteral(": this scene can't be scripted (it is no ScriptedFormulaScene)");
    return false;
}

bool run_script_file(ScriptedFormulaScene &scene, QString const &path, QString &error)
{
    return run_script_file(static_cast<FlatDOMMixin &>(scene), path, error);
}

}  // namespace Tavi
