// tavi-edit's window in this process, driven as a user drives it: keys through QtTest into the formula
// widget, with the text a real keyboard sends along (a control character with ctrl, none with the
// arrows), menu actions by their object names, and modal dialogs answered from inside their own
// event loop.
//
// Scripts: plain text is typed character by character (UTF-8 in); a key in braces is pressed:
// {Left} {Right} {Up} {Down} {Tab} {S-Tab} {Del} {BS} {Space} {S-Space} {C-Space}, and control
// combinations {C-R}, {C-S-I}, ... by letter or digit.
#pragma once

#include <QApplication>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <string>

#include "tools/tavi-edit/edit_window.h"

class QAction;

namespace TaviTest {

// Presses the keys of the script on the widget.
void type_keys(QWidget *widget, std::string const &script);

// A window with the default setup file, shown and active, the system clipboard installed and empty
// (the clipboard is emptied when each session starts).
class EditWindowSession
{
public:
    EditWindowSession();

    // Types into the formula widget, then lets the window catch up with the changes.
    void type(std::string const &script);
    // Triggers the menu action of this object name (which must exist) after the window has caught up;
    // false when it was disabled and so did nothing.
    bool trigger(char const *name);
    bool enabled(char const *name);
    // The formula without the math element around it.
    std::string body();
    QWidget *formula_widget();

    TaviEdit::EditWindow window;

private:
    // A dialog that no test answers would wait for ever: one still open at the next look is a
    // failure, and is closed.
    QTimer watchdog_;
    QWidget *last_modal_ = nullptr;
};

// Answers the next modal dialog of class D that opens while this object lives, from inside the
// dialog's event loop; `answer` must close it.
template <class D>
class NextDialog
{
public:
    explicit NextDialog(std::function<void(D *)> answer) : answer_(std::move(answer))
    {
        timer_.setInterval(5);
        QObject::connect(&timer_, &QTimer::timeout, [this] {
            if (auto *dialog = qobject_cast<D *>(QApplication::activeModalWidget())) {
                timer_.stop();
                seen = true;
                answer_(dialog);
            }
        });
        timer_.start();
    }

    bool seen = false;

private:
    std::function<void(D *)> answer_;
    QTimer timer_;
};

}  // namespace TaviTest
