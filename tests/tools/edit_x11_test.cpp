// tavi-edit as a user runs it: the program itself on a real X server (Xvfb), typed into by xdotool
// through the server's keyboard. The formula is saved with Ctrl+S and compared, the screen is taken
// with ImageMagick's import and the formula's ink looked for where the window shows it, Greek letters
// come in by text and by keysym, and a copy in one tavi-edit is pasted in another.
#include <gtest/gtest.h>

#include <QByteArray>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRect>
#include <QThread>

#include <algorithm>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "support/edit_session.h"
#include "support/external_tools.h"
#include "tools/render_tool.h"
#include "tools/tavi-edit/edit_window.h"

using namespace TaviTest;

namespace {

char const quadratic_body[] =
    R"(<expr tmp="eq"><ident>x</ident><expr tmp="divide"><expr tmp="plusminus"><plus sgn="-"><ident>b</ident>)"
    R"(</plus><expr tmp="sqrt"><plus sgn="+-"><expr tmp="power"><ident>b</ident><num>2</num></expr>)"
    R"(<expr tmp="implicit_times"><num>4</num><ident>a</ident><ident>c</ident></expr></plus></expr></expr>)"
    R"(<expr tmp="implicit_times"><num>2</num><ident>a</ident></expr></expr></expr>)";

// One xdotool command: "type" with text, or "key" with key names, and the pause after each key.
struct Step
{
    char const *command;
    char const *argument;
    int delay_ms;
};

// A character that is on no key of the server's keyboard (±, α, β) gets a spare key from xdotool
// for its one press, taken back after half the pause: the program must have read the lent key's
// meaning by then, and a slow one (a sanitizer's build) needs the long pause.
constexpr int fast = 20;
constexpr int lent_key = 400;

// The quadratic formula as xdotool types it: text, and control keys by name.
std::vector<Step> const quadratic_keys = {
    {"type", "x=/-b ", fast}, {"type", "±", lent_key}, {"key", "ctrl+r", fast}, {"type", "b^2 -4", fast},
    {"key", "ctrl+t", fast},  {"type", "a", fast},      {"key", "ctrl+t", fast}, {"type", "c", fast},
    {"key", "Down", fast},    {"type", "2", fast},      {"key", "ctrl+t", fast}, {"type", "a", fast},
};

std::string read_file(std::string const &path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

// The bounding box of the pixels inside `area` where the two images differ.
QRect changed_box(QImage const &a, QImage const &b, QRect const &area)
{
    QRect box;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            if (a.pixel(x, y) != b.pixel(x, y))
                box |= QRect(x, y, 1, 1);
    return box;
}

// The bounding box of the ink of an image (see count_ink for what counts).
QRect ink_box(QImage const &image)
{
    QRect box;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (count_ink(image, x, y, x + 1, y + 1) > 0)
                box |= QRect(x, y, 1, 1);
    return box;
}

// An X server of its own on a free display, and the programs that run on it. DISPLAY is set for
// this process's children while it lives.
class XServer
{
public:
    XServer()
    {
        for (char const *tool : {"Xvfb", "xdotool", "import"})
            if (find_tool(tool).empty())
                missing += std::string(missing.empty() ? "" : ", ") + tool;
        if (!missing.empty())
            return;
        // The server picks a free display and writes its number to the descriptor.
        server_.start(QString::fromStdString(find_tool("Xvfb")),
                      {"-displayfd", "1", "-screen", "0", "1024x768x24", "-nolisten", "tcp"});
        QByteArray number;
        while (!number.contains('\n') && server_.waitForReadyRead(10000))
            number += server_.readAllStandardOutput();
        if (!number.contains('\n')) {
            missing = "a running Xvfb";
            return;
        }
        display_ = ":" + number.trimmed();
        old_display_ = qgetenv("DISPLAY");
        qputenv("DISPLAY", display_);
    }
    ~XServer()
    {
        for (auto &editor : editors_) {
            editor->kill();
            editor->waitForFinished(5000);
        }
        if (server_.state() != QProcess::NotRunning) {
            server_.terminate();
            if (!server_.waitForFinished(5000))
                server_.kill();
            qputenv("DISPLAY", old_display_);
        }
    }
    XServer(XServer const &) = delete;
    XServer &operator=(XServer const &) = delete;

    // xdotool reads the text it types in the locale's encoding: UTF-8 whatever the tests run in.
    ToolRun xdotool(std::vector<std::string> const &arguments)
    {
        std::vector<std::string> line = {"LC_ALL=C.UTF-8", find_tool("xdotool")};
        line.insert(line.end(), arguments.begin(), arguments.end());
        return run_tool(find_tool("env"), line, 20000);
    }

    // Starts tavi-edit on `path` and answers its window's id, or an empty string.
    std::string start_editor(std::string const &path)
    {
        auto editor = std::make_unique<QProcess>();
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert("QT_QPA_PLATFORM", "xcb");
        editor->setProcessEnvironment(env);
        editor->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        editor->start(TAVI_EDIT_PROGRAM, {QString::fromStdString(path)});
        editors_.push_back(std::move(editor));
        // The title starts with the file's name; --sync waits for the window to be mapped.
        std::string const name = QFileInfo(QString::fromStdString(path)).fileName().toStdString();
        ToolRun const found = run_tool("timeout", {"20", find_tool("xdotool"), "search", "--sync", "--onlyvisible",
                                                   "--name", "^" + name}, 30000);
        std::istringstream ids(found.output);
        std::string id;
        ids >> id;
        return id;
    }

    // Gives the window the keyboard and plays the steps.
    void play(std::string const &window, std::vector<Step> const &steps)
    {
        xdotool({"windowfocus", "--sync", window});
        for (Step const &step : steps) {
            ToolRun const run = xdotool({step.command, "--delay", std::to_string(step.delay_ms), step.argument});
            EXPECT_EQ(0, run.exit_code) << step.command << " " << step.argument << ": " << run.errors;
        }
    }

    // The whole screen as an image, once two in a row agree: a window just mapped may not have
    // painted yet.
    QImage screenshot(std::string const &name)
    {
        std::string const path = artefact_path("tools", name);
        QImage last;
        for (int attempt = 0; attempt < 10; ++attempt) {
            ToolRun const run = run_tool(find_tool("import"), {"-window", "root", path});
            EXPECT_EQ(0, run.exit_code) << run.errors;
            QImage const shot = read_png(path);
            if (!shot.isNull() && shot == last)
                break;
            last = shot;
        }
        return last;
    }

    std::string missing;

private:
    QProcess server_;
    QByteArray display_;
    QByteArray old_display_;
    std::vector<std::unique_ptr<QProcess>> editors_;
};

// The body of the file once it has been written (it is renamed into place whole), or empty.
std::string saved_body(std::string const &path)
{
    QDeadlineTimer const deadline(10000);
    while (!deadline.hasExpired()) {
        std::string const text = read_file(path);
        if (!text.empty())
            return content_body(text);
        QThread::msleep(50);
    }
    return std::string();
}

}  // namespace

TEST(EditX11, TypedSavedShownCopiedAndPasted)
{
    XServer x;
    if (!x.missing.empty())
        GTEST_SKIP() << "needs " << x.missing << " (scripts/install-deps.sh installs them)";
    std::string const folder = fresh_folder("edit_x11");

    // One tavi-edit: the quadratic formula typed, saved and seen on the screen.
    std::string const typed = x.start_editor(folder + "/typed.xml");
    ASSERT_FALSE(typed.empty()) << "no tavi-edit window appeared";
    QImage const before = x.screenshot("tavi-edit-x11-empty.png");
    x.play(typed, quadratic_keys);
    x.play(typed, {{"key", "ctrl+s", fast}});
    EXPECT_EQ(quadratic_body, saved_body(folder + "/typed.xml"));

    QImage const after = x.screenshot("tavi-edit-x11-typed.png");
    ASSERT_FALSE(before.isNull());
    ASSERT_FALSE(after.isNull());
    ToolRun const geometry = x.xdotool({"getwindowgeometry", "--shell", typed});
    int left = 0, top = 0, width = 0, height = 0;
    std::istringstream shell(geometry.output);
    for (std::string line; std::getline(shell, line);) {
        int *field = line.rfind("X=", 0) == 0        ? &left
                     : line.rfind("Y=", 0) == 0      ? &top
                     : line.rfind("WIDTH=", 0) == 0  ? &width
                     : line.rfind("HEIGHT=", 0) == 0 ? &height
                                                     : nullptr;
        if (field)
            *field = std::stoi(line.substr(line.find('=') + 1));
    }
    ASSERT_GT(width, 400) << geometry.output;
    // The formula's corner is the widget's, under the menu bar and the margin at the window's left;
    // the palette and the status bar, which change too, lie outside this area.
    QRect const formula_area(left, top, width / 2, height - 40);
    QRect const drawn = changed_box(before, after, formula_area);
    ASSERT_FALSE(drawn.isEmpty()) << "nothing was drawn in the formula's area";
    int const margin = TaviEdit::EditWindow::formula_margin;
    EXPECT_GE(drawn.left() - left, margin - 2) << "the formula keeps off the window's edge";
    EXPECT_LT(drawn.left() - left, margin + 8) << "the formula starts at the widget's left edge";
    EXPECT_GT(drawn.top() - top, 12) << "the formula is below the menu bar";
    EXPECT_LT(drawn.top() - top, 60) << "the formula is at the widget's top";
    EXPECT_GT(count_ink(after, drawn.left(), drawn.top(), drawn.right() + 1, drawn.bottom() + 1), 300);
    // Its size is that of the same formula typeset by tavi-render at the screen's 96 dpi.
    RenderRun const rendered = run_render({folder + "/typed.xml", "--dpi", "96", "-o", folder + "/typed.png"});
    if (rendered.started && rendered.exit_code == 0) {
        QRect const ink = ink_box(read_png(folder + "/typed.png"));
        EXPECT_NEAR(ink.width(), drawn.width(), ink.width() / 5) << "screen " << drawn.width() << " png " << ink.width();
        EXPECT_NEAR(ink.height(), drawn.height(), ink.height() / 5) << "screen " << drawn.height() << " png " << ink.height();
    }

    // Copy the whole formula, paste it into a second tavi-edit, and save that one.
    x.play(typed, {{"key", "ctrl+space", fast}, {"key", "ctrl+c", fast}});
    std::string const pasted = x.start_editor(folder + "/pasted.xml");
    ASSERT_FALSE(pasted.empty());
    x.play(pasted, {{"key", "ctrl+v", fast}, {"key", "ctrl+s", fast}});
    EXPECT_EQ(quadratic_body, saved_body(folder + "/pasted.xml"));

    // α comes as text, β as the keysym of a key; xdotool lends a key to each.
    std::string const greek = x.start_editor(folder + "/greek.xml");
    ASSERT_FALSE(greek.empty());
    x.play(greek, {{"type", "α", lent_key}, {"type", "+", fast}, {"key", "Greek_beta", lent_key}, {"key", "ctrl+s", fast}});
    EXPECT_EQ(R"(<plus sgn="++"><ident>α</ident><ident>β</ident></plus>)", saved_body(folder + "/greek.xml"));
}
