// Tests of Message: the hosting frame gets the messages without a window, a view's implementation
// those of its view, both with "Error" as the caption when none is given.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "scene_fixtures.h"
#include "tavi/glyph/message.h"
#include "tavi/glyph/renderviewimp.h"
#include "tavi/glyph/view.h"
#include "tavi/interchange/hostingframe.h"
#include "tavi/kxt/utf.h"
#include "tavi/qt/qt_clipboard.h"

namespace {

using namespace Tavi;
using namespace SceneTest;

// A frame that notes each message as "caption|text|type", installed for its own life.
class NotingFrame : public HostingFrame
{
public:
    NotingFrame() : old_(install(this)) {}
    ~NotingFrame() override { install(old_); }
    Clipboard &clipboard() override { return Qt_Clipboard::instance(); }
    void message(wchar const *text, wchar const *caption, MessageType type) override
    {
        seen.push_back(Kxt::to_string(caption) + "|" + Kxt::to_string(text) + "|" + std::to_string(type));
    }
    std::vector<std::string> seen;

private:
    HostingFrame *old_;
};

TEST(Message, FrameOrViewGetsTextCaptionAndType)
{
    FakeViewImp imp;
    {
        NotingFrame frame;
        Message(u"disk full", u"Save", message_warning);
        Message(u"done", nullptr, message_information);
        Message(nullptr, nullptr, static_cast<MessageType>(7));
        // A render view hands its messages to the frame.
        RenderViewImp render;
        render.show_message(u"from render", u"R", message_warning);
        // A view without an implementation, or no view at all, goes to the frame too.
        View bare;
        Message(&bare, u"bare", nullptr, message_information);
        Message(static_cast<View *>(nullptr), u"none", u"N", message_warning);
        // A view with an implementation shows it in its window, with the same default caption.
        View view;
        view.implementation(&imp);
        Message(&view, u"windowed", nullptr, message_warning);

        EXPECT_EQ(frame.seen, (std::vector<std::string>{"Save|disk full|1", "Error|done|0", "Error||7",
                                                        "R|from render|1", "Error|bare|0", "N|none|1"}));
    }
    EXPECT_EQ(imp.messages, (std::vector<std::string>{"Error|windowed|1"}));
}

// Frames nest: the one installed before comes back, and without any the default frame writes to the
// error stream.
TEST(Message, DefaultFrameWritesToTheErrorStream)
{
    {
        NotingFrame outer;
        {
            NotingFrame inner;
            Message(u"x", u"y", message_warning);
            EXPECT_EQ(&HostingFrame::current(), &inner);
        }
        EXPECT_EQ(&HostingFrame::current(), &outer);
        EXPECT_TRUE(outer.seen.empty());
    }
    EXPECT_EQ(&HostingFrame::current(), &DefaultHostingFrame::instance());
    testing::internal::CaptureStderr();
    Message(u"x", u"y", message_warning);
    Message(u"\u00e9t\u00e9", nullptr, message_information);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "warning: y: x\nError: \xc3\xa9t\xc3\xa9\n");
}

}  // namespace
