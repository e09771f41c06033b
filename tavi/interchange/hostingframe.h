// HostingFrame: the process's link to what only the host has, the clipboard and a place to show
// messages. A host installs a frame of its own; until it does, a default frame answers.
#pragma once

#include "tavi/glyph/message.h"
#include "tavi/kxt/wchar.h"

namespace Tavi {

class Clipboard;

class HostingFrame
{
public:
    virtual Clipboard &clipboard() = 0;
    // Shows a message to the user; the text and the caption are never null when the free Message
    // functions call it.
    virtual void message(wchar const *text, wchar const *caption, MessageType type) = 0;
    virtual ~HostingFrame();

    // The installed frame, else the default one.
    static HostingFrame &current();
    // Installs `frame`, which the caller keeps alive while it is installed, and answers the frame
    // installed before (null for the default). Null puts the default frame back.
    static HostingFrame *install(HostingFrame *frame);

protected:
    HostingFrame() = default;
    HostingFrame(HostingFrame const &) = delete;
    HostingFrame &operator=(HostingFrame const &) = delete;
};

// The frame of a process whose host installed none: the Qt clipboard, and messages on the
// standard error stream as "caption: text", a warning marked "warning: " in front.
class DefaultHostingFrame : public HostingFrame
{
public:
    Clipboard &clipboard() override;
    void message(wchar const *text, wchar const *caption, MessageType type) override;

    static DefaultHostingFrame &instance();

private:
    DefaultHostingFrame() = default;
};

}  // namespace Tavi
