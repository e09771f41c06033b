// HostingFrame: the installed frame of the process and the default one.
#include "tavi/interchange/hostingframe.h"

#include <iostream>

#include "tavi/kxt/utf.h"
#include "tavi/qt/qt_clipboard.h"

namespace Tavi {

namespace {

// Made at first use and kept for the process; the GUI thread is the only caller.
HostingFrame *&installed()
{
    static HostingFrame *frame = nullptr;
    return frame;
}

}  // namespace

HostingFrame::~HostingFrame() = default;

HostingFrame &HostingFrame::current()
{
    HostingFrame *frame = installed();
    return frame != nullptr ? *frame : DefaultHostingFrame::instance();
}

HostingFrame *HostingFrame::install(HostingFrame *frame)
{
    HostingFrame *old = installed();
    installed() = frame;
    return old;
}

Clipboard &DefaultHostingFrame::clipboard() { return Qt_Clipboard::instance(); }

void DefaultHostingFrame::message(wchar const *text, wchar const *caption, MessageType type)
{
    std::cerr << (type == message_warning ? "warning: " : "") << Kxt::to_string(caption) << ": "
              << Kxt::to_string(text) << '\n';
}

DefaultHostingFrame &DefaultHostingFrame::instance()
{
    static DefaultHostingFrame frame;
    return frame;
}

}  // namespace Tavi
