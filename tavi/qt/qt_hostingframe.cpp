// Qt_HostingFrame: the frame's clipboard, and the message boxes shared with the widgets.
#include "tavi/qt/qt_hostingframe.h"

#include <QMessageBox>
#include <QString>

#include "tavi/qt/qt_clipboard.h"

namespace Tavi {

void show_message_box(QWidget *parent, wchar const *text, wchar const *caption, MessageType type)
{
    QString const body = QString::fromUtf16(text != nullptr ? text : u"");
    QString const title = QString::fromUtf16(caption != nullptr ? caption : u"");
    if (type == message_warning)
        QMessageBox::warning(parent, title, body, QMessageBox::Ok);
    else
        QMessageBox::information(parent, title, body, QMessageBox::Ok);
}

Qt_HostingFrame::Qt_HostingFrame(Clipboard &clipboard) : clipboard_(&clipboard) {}

Qt_HostingFrame::~Qt_HostingFrame() = default;

Clipboard &Qt_HostingFrame::clipboard() { return *clipboard_; }

void Qt_HostingFrame::message(wchar const *text, wchar const *caption, MessageType type)
{
    show_message_box(nullptr, text, caption, type);
}

Qt_HostingFrame &Qt_HostingFrame::instance()
{
    static Qt_HostingFrame frame(Qt_Clipboard::instance());
    return frame;
}

}  // namespace Tavi
