// Message: the one way the library speaks to the user. With a view, the view's implementation shows
// the message in its window; without one, the process's hosting frame does (HostingFrame::message),
// which by default writes to the standard error stream.
#pragma once

#include "tavi/kxt/wchar.h"

namespace Tavi {

class View;

// 1 asks for a warning; any other value for plain information.
enum MessageType : int {
    message_information = 0,
    message_warning = 1,
};

// Shows the message through the hosting frame. A null caption becomes "Error"; a null text is taken
// as empty.
void Message(wchar const *text, wchar const *caption, MessageType type);

// Shows the message in the view's window (ViewImp::show_message); a null view, or a view that has
// no implementation yet, goes through the hosting frame as above.
void Message(View *view, wchar const *text, wchar const *caption, MessageType type);

}  // namespace Tavi
