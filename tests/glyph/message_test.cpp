// Tests of Message: the hosting frame gets the messages without a window, a view's implementation
// those of its view, both with "Error" as the caption when none is given.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "scene_fixtures.h"
#include "tavi/glyph/message.h"
#include "tavi/glyph/renderviewimp.h"
#include "tavi/interchange/hostingframe.h"
#include "tavi/qt/qt_clipboard.h"

namespace {

using namespace Tavi;
using namespace SceneTest;

// Notes each message as "caption|text|type"; installed for its own life.
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
    View view, bare;
    view.implementation(&imp);
    {
        NotingFrame outer;
        NotingFrame frame;
        Message(u"disk full", u"Save", message_warning);
        Message(nullptr, nullptr, static_cast<MessageType>(7));
        RenderViewImp().show_message(u"from render", u"R", message_warning);
        Message(&bare, u"bare", nullptr, message_information);  // a view without a window
        Message(static_cast<View *>(nullptr), u"none", u"N", message_warning);
        Message(&view, u"windowed", nullptr, message_warning);
        EXPECT_EQ(frame.seen, (std::vector<std::string>{"Save|disk full|1", "Error||7", "R|from render|1",
                                                        "Error|bare|0", "N|none|1"}));
        EXPECT_TRUE(outer.seen.empty());
    }
    EXPECT_EQ(imp.messages, (std::vector<std::string>{"Error|windowed|1"}));
    // With no frame installed the default one writes to the error stream.
    EXPECT_EQ(&HostingFrame::current(), &DefaultHostingFrame::instance());
    testing::internal::CaptureStderr();
    Message(u"x", u"y", message_warning);
    Message(u"\u00e9t\u00e9", nullptr, message_information);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "warning: y: x\nError: \xc3\xa9t\xc3\xa9\n");
}

}  // namespace
