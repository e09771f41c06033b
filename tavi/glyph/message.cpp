// Message: the routing to a view's window or to the hosting frame.
#include "tavi/glyph/message.h"

#include "tavi/glyph/view.h"
#include "tavi/glyph/viewimp.h"
#include "tavi/interchange/hostingframe.h"

namespace Tavi {

namespace {

wchar const default_caption[] = u"Error";

}  // namespace

void Message(wchar const *text, wchar const *caption, MessageType type)
{
    HostingFrame::current().message(text ? text : u"", caption ? caption : default_caption, type);
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

}  // namespace Tavi
