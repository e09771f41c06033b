// Many formulas drawn into files in one call, on several threads: for a host that renders in bulk (a
// documentation site, an exam bank, a collection of papers), where starting a program per formula
// would cost a hundred times the typesetting. The setup is read once per call and the fonts stay
// registered; each thread draws with a template table and a host of its own, so that nothing
// counted is shared between threads, and a bad formula is reported with its name while the others
// go on.
//
// Fonts are the host's business: register them (register_fonts) before the call, on the thread of
// the QGuiApplication, which must exist.
#pragma once

#include <QByteArray>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "tavi/qt/formulaoutput.h"
#include "tavi/qt/renderhost.h"

namespace Tavi {

// One formula: read from `path`, or from `content` when `path` is empty, and written to `output`.
struct BatchItem
{
    std::string path;       // a document in the content format
    std::string content;    // the document itself, when there is no path
    std::string output;     // the file to write; empty keeps the bytes in the result instead
    std::string name;       // names the formula in messages; the path when empty
};

// Draws the host's formula into bytes instead of the format: for a surface of the caller's own. It
// runs on the worker threads, several at once, each with a host of its own thread; with more than
// one thread it is also called once on the calling thread first, for a formula of one letter.
using BatchRenderer = std::function<bool(RenderHost &host, QByteArray &out, std::string &error)>;

struct BatchProgress
{
    std::size_t done = 0;    // items finished, well or not
    std::size_t failed = 0;  // of them, the ones that failed
    std::size_t total = 0;
};

struct BatchOptions
{
    std::string setup;               // the setup file's text (not its path)
    OutputFormat format = OutputFormat::png;
    BatchRenderer renderer;          // when set, draws instead of `format`
    double font_size = 12.0;         // points
    int dpi = 96;                    // PNG only
    double wrap_width = 0.0;         // points; 0 means no wrapping
    int threads = 0;                 // 0: one per core; never more than there are items
    // Called on the calling thread as items finish (not necessarily once per item) and once when
    // all are done. With one thread the calling thread draws, and calls it after every item.
    std::function<void(BatchProgress const &)> progress;
};

struct BatchResult
{
    bool ok = false;
    std::string error;      // why it failed, beginning with the item's name
    std::string messages;   // what the reader said, a line each; a formula that was drawn may have some
    QByteArray bytes;       // the drawing, for an item without an output file
};

struct BatchReport
{
    std::vector<BatchResult> results;  // one per item, in their order
    std::size_t failed = 0;
    std::string error;                 // the setup could not be used: then every item failed
    int threads = 0;                   // how many threads drew
};

// Draws every item. Each item's file is written whole or not at all (a temporary beside it is
// renamed over it); a failed item leaves its output file as it was. The answer has every item's
// result whatever happened to the others.
BatchReport render_formulas(std::vector<BatchItem> const &items, BatchOptions const &options);

// How many threads "one per core" is here: at least 1.
int core_count();

}  // namespace Tavi
