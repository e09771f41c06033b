// render_formulas: the same bytes with any number of threads and one formula at a time; bad items
// among good ones named with their reasons, their files not written, nothing half-written left;
// a bad setup; the progress told on the calling thread up to the end.
#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>

#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "support/external_tools.h"
#include "support/math_fixture.h"
#include "tavi/interchange/content.h"
#include "tavi/math/templates/templatetable.h"
#include "tavi/qt/batchrender.h"

namespace {

using namespace Tavi;
using TaviTest::read_whole_file;

std::string const ns = "xmlns=\"http://www.tavi-math.org/xml/MathEditContent\"";
std::string math(std::string const &body) { return "<math " + ns + ">" + body + "</math>"; }

std::vector<BatchItem> example_items()
{
    std::vector<BatchItem> items;
    QDir const dir(TAVI_SOURCE_DIR "/data/examples");
    for (QString const &f : dir.entryList({"*.xml"}, QDir::Files, QDir::Name)) {
        BatchItem item;
        item.name = f.toStdString();
        item.content = read_whole_file(dir.filePath(f).toStdString());
        items.push_back(item);
    }
    return items;
}

BatchOptions options_with(OutputFormat format, int threads)
{
    BatchOptions options;
    options.setup = read_whole_file(TAVI_SOURCE_DIR "/data/mathsetup.xml");
    options.format = format;
    options.threads = threads;
    return options;
}

// The formula drawn alone, by a table, a root and a host of its own.
QByteArray drawn_alone(BatchItem const &item, OutputFormat format)
{
    TemplateTable table(nullptr);
    if (!TaviTest::read_default_setup(table))
        return QByteArray();
    MathRootNode *root = read_math_content(table, item.content);
    if (root == nullptr)
        return QByteArray();
    RenderHost host(root);
    host.font_size(12.0);
    QByteArray bytes;
    std::string error;
    render_formula(host, format, 96, bytes, error);
    return bytes;
}

TEST(BatchRender, SameBytesWithAnyThreadsAsAlone)
{
    std::vector<BatchItem> const items = example_items();
    ASSERT_GT(items.size(), 40u);
    // PNG: the writers' files carry the time they were made.
    std::vector<QByteArray> alone;
    for (BatchItem const &item : items)
        alone.push_back(drawn_alone(item, OutputFormat::png));
    for (int threads : {1, 2, 3}) {
        SCOPED_TRACE("threads " + std::to_string(threads));
        BatchReport const report = render_formulas(items, options_with(OutputFormat::png, threads));
        EXPECT_EQ(threads, report.threads);
        EXPECT_EQ(0u, report.failed);
        ASSERT_EQ(items.size(), report.results.size());
        for (std::size_t i = 0; i < items.size(); ++i) {
            EXPECT_TRUE(report.results[i].ok) << report.results[i].error;
            EXPECT_FALSE(alone[i].isEmpty()) << items[i].name;
            EXPECT_TRUE(report.results[i].bytes == alone[i]) << items[i].name;
        }
    }
}

TEST(BatchRender, BadItemsAreNamedAndTheOthersWritten)
{
    QString const folder = QString::fromStdString(TaviTest::artefact_path("qt", "batch-bad-items"));
    QDir(folder).removeRecursively();
    QDir().mkpath(folder);
    std::string const dir = folder.toStdString();
    std::string const good = math("<plus><num>1</num><num>2</num></plus>");
    struct Case
    {
        char const *name;
        std::string content;
        std::string path;        // read instead of the content when set
        std::string output;
        char const *error;       // a part of the reason; null for an item that is drawn
        char const *messages;    // a part of what the reader said, or null
    };
    std::vector<Case> const cases = {
        {"good", good, "", dir + "/good.png", nullptr, nullptr},
        {"malformed", "<math " + ns + "><plus>", "", dir + "/malformed.png", "malformed:1:", nullptr},
        {"refused", math("<ident><chr nm=\"nosuchname\"/></ident>"), "", dir + "/refused.png",
         "refused: the formula was refused", "chr@nm 'nosuchname' unknown"},
        {"warned", math("<plus><foo/><num>1</num><num>2</num></plus>"), "", dir + "/warned.png", nullptr,
         "unknown element or attribute 'foo'"},
        {"missing", "", dir + "/no-such.xml", dir + "/missing.png", "missing: cannot open", nullptr},
        {"unwritable", good, "", dir + "/no-folder/unwritable.png", "unwritable: cannot write", nullptr},
        {"empty", math(""), "", dir + "/empty.png", "empty: no formula", nullptr},
        // Written whole, the file cannot take the place of a folder: its temporary must go.
        {"taken", good, "", dir + "/taken", "taken: cannot write", nullptr},
    };
    QDir().mkpath(folder + "/taken/inside");
    std::vector<BatchItem> items;
    for (Case const &c : cases)
        items.push_back(BatchItem{c.path, c.content, c.output, c.name});
    BatchReport const report = render_formulas(items, options_with(OutputFormat::png, 2));
    std::size_t bad = 0;
    for (std::size_t i = 0; i < cases.size(); ++i) {
        Case const &c = cases[i];
        BatchResult const &r = report.results[i];
        SCOPED_TRACE(c.name);
        EXPECT_EQ(c.error == nullptr, r.ok) << r.error;
        EXPECT_EQ(c.error == nullptr, QFileInfo(QString::fromStdString(c.output)).isFile());
        if (c.error != nullptr) {
            ++bad;
            EXPECT_NE(std::string::npos, r.error.find(c.error)) << r.error;
        }
        if (c.messages != nullptr) {
            EXPECT_NE(std::string::npos, r.messages.find(c.messages)) << r.messages;
        }
        EXPECT_TRUE(r.bytes.isEmpty());  // written to its file instead
    }
    EXPECT_EQ(bad, report.failed);
    // The drawn files and nothing else: no temporary is left beside them.
    EXPECT_EQ("good.png warned.png",
              QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name).join(' ').toStdString());
}

TEST(BatchRender, ABadSetupFailsEveryItem)
{
    BatchOptions options = options_with(OutputFormat::png, 2);
    options.setup = "<mathsetup><nonsense";
    std::vector<BatchItem> const items(3, BatchItem{"", math("<num>1</num>"), "", ""});
    BatchReport const report = render_formulas(items, options);
    EXPECT_FALSE(report.error.empty());
    EXPECT_EQ(3u, report.failed);
    for (BatchResult const &r : report.results)
        EXPECT_FALSE(r.ok);
}

TEST(BatchRender, ProgressIsToldOnTheCallingThreadToTheEnd)
{
    std::vector<BatchItem> items = example_items();
    items.push_back(BatchItem{"", "not xml", "", "bad"});
    for (int threads : {1, 2}) {
        BatchOptions options = options_with(OutputFormat::svg_writer, threads);
        std::vector<BatchProgress> told;
        std::thread::id const caller = std::this_thread::get_id();
        bool elsewhere = false;
        options.progress = [&](BatchProgress const &p) {
            told.push_back(p);
            elsewhere = elsewhere || std::this_thread::get_id() != caller;
        };
        render_formulas(items, options);
        SCOPED_TRACE("threads " + std::to_string(threads));
        EXPECT_FALSE(elsewhere);
        ASSERT_FALSE(told.empty());
        for (std::size_t i = 1; i < told.size(); ++i)
            EXPECT_LT(told[i - 1].done, told[i].done);
        EXPECT_EQ(items.size(), told.back().done);
        EXPECT_EQ(items.size(), told.back().total);
        EXPECT_EQ(1u, told.back().failed);
        if (threads == 1) {
            EXPECT_EQ(items.size(), told.size());
        }
    }
}

}  // namespace
