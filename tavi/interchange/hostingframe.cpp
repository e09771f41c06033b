// HostingFrame: the installed frame of the process and the default one.
#include "tavi/interchange/hostingframe.h"

#include <atomic>
#include <iostream>

#include "tavi/kxt/utf.h"
#ifdef TAVI_WITHOUT_QT
#include "tavi/interchange/memoryclipboard.h"
#else
#include "tavi/qt/qt_clipboard.h"
#endif

namespace Tavi {

namespace {

// Installed by the host on its own thread, but read by whatever thread a message comes from (a view
// with no window passes its messages here, and formulas may be drawn on worker threads): hence an
// atomic pointer. The frame itself must outlive every such reader.
std::atomic<HostingFrame *> installed_frame{nullptr};

}  // namespace

HostingFrame::~HostingFrame() = default;

HostingFrame &HostingFrame::current()
{
    HostingFrame *frame = installed_frame.load(std::memory_order_acquire);
    return frame != nullptr ? *frame : DefaultHostingFrame::instance();
}

HostingFrame *HostingFrame::install(HostingFrame *frame)
{
    return installed_frame.exchange(frame, std::memory_order_acq_rel);
}

// A build without Qt (the Windows build of the GDI canvases) keeps its clipboard in the process.
Clipboard &DefaultHostingFrame::clipboard()
{
#ifdef TAVI_WITHOUT_QT
    static MemoryClipboard clipboard;
    return clipboard;
#else
    return Qt_Clipboard::instance();
#endif
}

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
