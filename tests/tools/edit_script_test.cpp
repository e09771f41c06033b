// tavi-edit --script without a display: a script rewrites a formula file in place, and a failing
// script leaves the file as it was, with the script's message and exit status 1.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "support/external_tools.h"
#include "tools/render_tool.h"

using namespace TaviTest;

namespace {

std::string read_all(std::string const &path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

}  // namespace

TEST(EditScript, RewritesTheFileOrLeavesIt)
{
    std::string const folder = fresh_folder("edit-script");
    std::string const formula = folder + "/pythagorean-theorem.xml";
    ASSERT_TRUE(write_text_file(formula, read_all(TAVI_SOURCE_DIR "/data/examples/pythagorean-theorem.xml")));
    std::string const failing = folder + "/failing.js";
    ASSERT_TRUE(write_text_file(failing, "document.documentElement().setAttribute(\"nothing\", 1);\n"));

    ToolRun const bad = run_tool(TAVI_EDIT_PROGRAM, {"-platform", "offscreen", "--script", failing, formula});
    ASSERT_TRUE(bad.started);
    EXPECT_EQ(bad.exit_code, 1);
    EXPECT_NE(bad.errors.find("failing.js:1:"), std::string::npos) << bad.errors;
    EXPECT_NE(bad.errors.find("(code 3)"), std::string::npos) << bad.errors;
    std::string const before = read_all(formula);

    ToolRun const good = run_tool(TAVI_EDIT_PROGRAM, {"-platform", "offscreen", "--script",
                                                      TAVI_SOURCE_DIR "/tests/client/scripts/rewrite.js", formula});
    ASSERT_TRUE(good.started);
    EXPECT_EQ(good.exit_code, 0) << good.errors;
    std::string const after = read_all(formula);
    EXPECT_NE(after, before);
    EXPECT_NE(after.find(R"(<expr tmp="implicit_times"><ident>c</ident><ident>c</ident></expr></expr></math>)"),
              std::string::npos)
        << after;
}
