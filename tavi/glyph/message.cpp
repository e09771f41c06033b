// Message: the hook, its default and the routing through a view.
#include "tavi/glyph/message.h"

#include <iostream>
#include <utility>

#include "tavi/glyph/view.h"
#include "tavi/glyph/viewimp.h"
#include "tavi/kxt/utf.h"

namespace Tavi {

namespace {

wchar const default_caption[] = u"Error";

// Without a host there is no window to put a box in: the message goes to the standard error stream,
// as "<caption>: <text>" on one line, marked as a warning when it is one.
void write_to_stderr(wchar const *text, wchar const *caption, MessageType type)
{
    std::cerr << (type == message_warning ? "warning: " : "") << Kxt::to_string(caption) << ": "
              << Kxt::to_string(text) << '\n';
}

MessageHook &installed_hook()
{
    static MessageHook hook = write_to_stderr;
    return hook;
}

}  // namespace

void Message(wchar const *text, wchar const *caption, MessageType type)
{
    MessageHook const hook = installed_hook();
    hook(text ? text : u"", caption ? caption : default_caption, type);
}

void Message(View *view, wchar const *text, wchar const *caption, MessageType type)
{
    ViewImp *imp = view ? view->implementation() : nullptr;
    if (!imp) {
        Message(text, caption, type);
        return;
    }
    imp->show_message(text ? text : u"", caption ? caption : default_caption, type);
}

MessageHook message_hook(MessageHook hook)
{
    MessageHook old = std::move(installed_hook());
    installed_hook() = hook ? std::move(hook) : MessageHook(write_to_stderr);
    return old;
}

}  // namespace Tavi
