// EditWindowSession: the window brought up for a test, and key scripts sent as a keyboard sends them.
#include "tools/edit_session.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QClipboard>
#include <QDialog>
#include <QGuiApplication>
#include <QString>
#include <QtTest/QTest>

#include "support/edit_session.h"
#include "tavi/qt/qt_systemclipboard.h"
#include "tavi/qt/qtaviscrollview.h"
#include "tavi/qt/qtaviwidget.h"

namespace TaviTest {

namespace {

struct NamedKey
{
    char const *name;
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    char const *text;  // what the keyboard sends along, as X11 does
};

NamedKey const named_keys[] = {
    {"Left", Qt::Key_Left, Qt::NoModifier, ""},
    {"Right", Qt::Key_Right, Qt::NoModifier, ""},
    {"Up", Qt::Key_Up, Qt::NoModifier, ""},
    {"Down", Qt::Key_Down, Qt::NoModifier, ""},
    {"Tab", Qt::Key_Tab, Qt::NoModifier, "\t"},
    {"S-Tab", Qt::Key_Backtab, Qt::ShiftModifier, ""},
    {"Del", Qt::Key_Delete, Qt::NoModifier, "\x7f"},
    {"BS", Qt::Key_Backspace, Qt::NoModifier, "\b"},
    {"Space", Qt::Key_Space, Qt::NoModifier, " "},
    {"S-Space", Qt::Key_Space, Qt::ShiftModifier, " "},
    {"C-Space", Qt::Key_Space, Qt::ControlModifier, " "},
};

void press(QWidget *widget, Qt::Key key, QString const &text, Qt::KeyboardModifiers modifiers)
{
    QTest::sendKeyEvent(QTest::Click, widget, key, text, modifiers);
}

}  // namespace

void type_keys(QWidget *widget, std::string const &script)
{
    QString const keys = QString::fromStdString(script);
    qsizetype i = 0;
    while (i < keys.size()) {
        if (keys[i] == '{') {
            qsizetype const end = keys.indexOf('}', i);
            QString const name = keys.mid(i + 1, end - i - 1);
            i = end + 1;
            bool named = false;
            for (NamedKey const &k : named_keys) {
                if (name == k.name) {
                    press(widget, k.key, QString::fromLatin1(k.text), k.modifiers);
                    named = true;
                }
            }
            if (named)
                continue;
            // C-X, C-S-X: the control character of the letter comes along, as from a keyboard.
            Qt::KeyboardModifiers modifiers = Qt::ControlModifier;
            QString rest = name.mid(2);
            if (rest.startsWith("S-")) {
                modifiers |= Qt::ShiftModifier;
                rest = rest.mid(2);
            }
            char16_t const c = rest[0].unicode();
            QString const text = c >= u'A' && c <= u'Z' ? QString(QChar(c & 0x1f)) : QString();
            press(widget, static_cast<Qt::Key>(c), text, modifiers);
            continue;
        }
        QChar const c = keys[i++];
        char16_t const u = c.unicode();
        // Letters and digits have keys of their own; any other character comes as text only.
        Qt::Key key = Qt::Key_unknown;
        if ((u >= u'a' && u <= u'z') || (u >= u'A' && u <= u'Z'))
            key = static_cast<Qt::Key>(c.toUpper().unicode());
        else if (u >= u' ' && u < 0x7f)
            key = static_cast<Qt::Key>(u);
        Qt::KeyboardModifiers const modifiers = u >= u'A' && u <= u'Z' ? Qt::ShiftModifier : Qt::NoModifier;
        press(widget, key, QString(c), modifiers);
    }
}

EditWindowSession::EditWindowSession() : window(TAVI_SOURCE_DIR "/data/mathsetup.xml")
{
    Tavi::install_system_clipboard();
    QGuiApplication::clipboard()->clear();
    window.show();
    window.activateWindow();
    if (!QTest::qWaitForWindowActive(&window))
        ADD_FAILURE() << "the window did not become active: its shortcuts would not work";
    formula_widget()->setFocus();
    watchdog_.setInterval(1000);
    QObject::connect(&watchdog_, &QTimer::timeout, [this] {
        QWidget *modal = QApplication::activeModalWidget();
        if (modal != nullptr && modal == last_modal_) {
            ADD_FAILURE() << "an unexpected dialog: " << modal->windowTitle().toStdString();
            if (auto *dialog = qobject_cast<QDialog *>(modal))
                dialog->reject();
            else
                modal->close();
        }
        last_modal_ = modal;
    });
    watchdog_.start();
}

QWidget *EditWindowSession::formula_widget() { return window.formula_view()->widget(); }

void EditWindowSession::type(std::string const &script)
{
    type_keys(formula_widget(), script);
    QCoreApplication::processEvents();
}

bool EditWindowSession::trigger(char const *name)
{
    QCoreApplication::processEvents();
    QAction *a = window.action(name);
    if (a == nullptr || !a->isEnabled())
        return false;
    a->trigger();
    QCoreApplication::processEvents();
    return true;
}

bool EditWindowSession::enabled(char const *name)
{
    QCoreApplication::processEvents();
    QAction *a = window.action(name);
    return a != nullptr && a->isEnabled();
}

std::string EditWindowSession::body() { return content_body(window.scene().content()); }

}  // namespace TaviTest
