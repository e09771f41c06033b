// Qt_HostingFrame: the hosting frame of a Qt program. Messages that have no view to go to appear in
// message boxes without a parent window; the clipboard is the one the frame was made with, by default
// Qt_Clipboard, which holds nothing (install_system_clipboard in qt_systemclipboard.h installs a frame
// over the system clipboard instead).
#pragma once

#include "tavi/glyph/message.h"
#include "tavi/interchange/hostingframe.h"
#include "tavi/kxt/wchar.h"

class QWidget;

namespace Tavi {

class Qt_HostingFrame : public HostingFrame
{
public:
    // The clipboard is not owned and must outlive the frame.
    explicit Qt_HostingFrame(Clipboard &clipboard);
    ~Qt_HostingFrame() override;

    Clipboard &clipboard() override;
    void message(wchar const *text, wchar const *caption, MessageType type) override;

    // The frame over Qt_Clipboard, made at first use and kept until the program ends. A host installs
    // it with HostingFrame::install.
    static Qt_HostingFrame &instance();

private:
    Clipboard *clipboard_;
};

// A modal box with one OK button over `parent` (null for none): a warning for message_warning, plain
// information otherwise. Null texts are shown empty.
void show_message_box(QWidget *parent, wchar const *text, wchar const *caption, MessageType type);

}  // namespace Tavi
