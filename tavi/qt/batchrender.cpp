// render_formulas: workers that take the next item from a shared counter, each with a template table
// and a host of its own, and the calling thread waiting for them and telling the progress.
//
// What makes this safe is that nothing counted crosses a thread: every table, formula, host, font
// and canvas is made and dropped by the thread that uses it (the tables are made on the calling
// thread before the workers start, and handed over whole). What the library shares between threads
// is either read-only or guarded: the character-name index (built once under a lock), the interned
// font names (a lock), the box pools and Qt font caches (one per thread), the rules' generation (an
// atomic) and the user's decimal separator (read once, without switching the process's locale).
#include "tavi/qt/batchrender.h"

#include <QFile>

#include <atomic>
#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>
#include <thread>

#include "tavi/interchange/content.h"
#include "tavi/interchange/matheditcontenthandler.h"
#include "tavi/kxt/stream.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/templates/templatetable.h"

namespace Tavi {

namespace {

std::string name_of(BatchItem const &item, std::size_t index)
{
    if (!item.name.empty())
        return item.name;
    if (!item.path.empty())
        return item.path;
    return "formula " + std::to_string(index + 1);
}

bool read_document(std::string const &path, std::string const &name, std::string &text, std::string &error)
{
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly)) {
        error = name + ": cannot open: " + file.errorString().toStdString();
        return false;
    }
    QByteArray const bytes = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        error = name + ": cannot read: " + file.errorString().toStdString();
        return false;
    }
    text.assign(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    return true;
}

BatchResult draw_item(BatchItem const &item, std::size_t index, TemplateTable &table, BatchOptions const &options)
{
    BatchResult result;
    std::string const name = name_of(item, index);
    std::string own_text;
    if (!item.path.empty() && !read_document(item.path, name, own_text, result.error))
        return result;
    std::string const &text = item.path.empty() ? item.content : own_text;
    MathRootNode *root = read_math_document(table, text, name, result.error, &result.messages);
    if (root == nullptr)
        return result;
    QByteArray bytes;
    std::string error;
    bool drawn = false;
    {
        RenderHost host(root);
        host.font_size(options.font_size);
        host.wrap_width(options.wrap_width);
        drawn = options.renderer ? options.renderer(host, bytes, error)
                                 : render_formula(host, options.format, options.dpi, bytes, error);
    }
    if (!drawn) {
        result.error = name + ": " + (error.empty() ? std::string("it could not be drawn") : error);
        return result;
    }
    if (item.output.empty()) {
        result.bytes = std::move(bytes);
    } else if (!save_output(item.output, bytes, error)) {
        result.error = name + ": " + error;
        return result;
    }
    result.ok = true;
    return result;
}

// An exception must not leave a worker (it would end the process); it fails its item instead.
BatchResult draw_guarded(BatchItem const &item, std::size_t index, TemplateTable &table, BatchOptions const &options)
{
    try {
        return draw_item(item, index, table, options);
    } catch (std::exception const &e) {
        BatchResult result;
        result.error = name_of(item, index) + ": " + e.what();
        return result;
    } catch (...) {
        BatchResult result;
        result.error = name_of(item, index) + ": it could not be drawn";
        return result;
    }
}

// A table of the setup's templates; null when the setup has errors.
std::unique_ptr<TemplateTable> read_table(std::string const &setup)
{
    auto table = std::make_unique<TemplateTable>(nullptr);
    Kxt::KTmemoryStream stream(setup.data(), setup.size());
    if (!table->init(stream))
        return nullptr;
    return table;
}

// x = 1 + alpha: an identifier, a number, operators and a Greek letter, in the text, number and
// symbol fonts.
std::string first_text_document()
{
    return std::string("<math xmlns=\"") + MathEditContentHandler::nameSpace() +
           "\"><expr tmp=\"eq\"><ident>x</ident><plus><num>1</num><ident><chr nm=\"alpha\"/></ident></plus></expr>"
           "</math>";
}

// What the workers share: the next item to take, and the counts that the calling thread reports.
struct Run
{
    Run(std::vector<BatchItem> const &items, BatchOptions const &options, BatchReport &report)
        : items(items), options(options), report(report)
    {
    }

    // Draws items until none is left.
    void work(TemplateTable &table)
    {
        for (;;) {
            std::size_t const i = next.fetch_add(1, std::memory_order_relaxed);
            if (i >= items.size())
                return;
            // Each result has a slot of its own, so it is written without the lock; the caller reads
            // the slots only after joining the workers.
            report.results[i] = draw_guarded(items[i], i, table, options);
            {
                std::lock_guard<std::mutex> lock(mutex);
                ++counts.done;
                if (!report.results[i].ok)
                    ++counts.failed;
            }
            changed.notify_one();
        }
    }

    // On the calling thread while workers draw: each change of the counts is reported, the last one
    // (all done) always.
    void report_progress()
    {
        std::unique_lock<std::mutex> lock(mutex);
        std::size_t told = static_cast<std::size_t>(-1);
        for (;;) {
            changed.wait(lock, [&] { return counts.done != told; });
            BatchProgress const now = counts;
            told = now.done;
            lock.unlock();
            options.progress(now);
            lock.lock();
            if (now.done == now.total)
                return;
        }
    }

    std::vector<BatchItem> const &items;
    BatchOptions const &options;
    BatchReport &report;
    std::atomic<std::size_t> next{0};
    std::mutex mutex;
    std::condition_variable changed;
    BatchProgress counts;
};

}  // namespace

int core_count()
{
    unsigned const n = std::thread::hardware_concurrency();
    return n > 0 ? static_cast<int>(n) : 1;
}

BatchReport render_formulas(std::vector<BatchItem> const &items, BatchOptions const &options)
{
    BatchReport report;
    report.results.resize(items.size());
    std::size_t const wanted = options.threads > 0 ? static_cast<std::size_t>(options.threads) : core_count();
    std::size_t const threads = std::max<std::size_t>(1, std::min(wanted, items.size()));

    // A table per thread: templates, layouts and their fonts are counted without atomics and are
    // changed while formulas are laid out, so a table belongs to one thread. They are all read here,
    // before any drawing, so that a bad setup stops the call at once.
    std::vector<std::unique_ptr<TemplateTable>> tables;
    for (std::size_t t = 0; t < threads; ++t) {
        tables.push_back(read_table(options.setup));
        if (!tables.back()) {
            report.error = "the setup file has errors";
            for (BatchResult &r : report.results)
                r.error = report.error;
            report.failed = items.size();
            return report;
        }
    }
    report.threads = static_cast<int>(threads);

    Run run(items, options, report);
    run.counts.total = items.size();
    if (threads == 1) {
        // The calling thread draws, and reports after every item.
        for (std::size_t i = 0; i < items.size(); ++i) {
            report.results[i] = draw_guarded(items[i], i, *tables[0], options);
            ++run.counts.done;
            if (!report.results[i].ok)
                ++run.counts.failed;
            if (options.progress)
                options.progress(run.counts);
        }
    } else {
        // Qt and the libraries under it make some process-wide tables lazily, when the first text is
        // drawn, and not all of them safely for two threads at once (the gamma table of antialiased
        // text on 32-bit images, QGuiApplicationPrivate::colorProfileForA32Text, is one). A small
        // formula with text in each kind of font is drawn first, here, in the batch's own way while
        // no worker runs yet. It has a table of its own: this thread's font cache keeps the fonts it
        // drew with, which must not be those a worker counts.
        {
            std::unique_ptr<TemplateTable> const own = read_table(options.setup);
            BatchItem const first_text{std::string(), first_text_document(), std::string(), "x = 1 + alpha"};
            if (own)
                draw_guarded(first_text, 0, *own, options);
        }
        std::vector<std::thread> workers;
        workers.reserve(threads);
        for (std::size_t t = 0; t < threads; ++t)
            workers.emplace_back([&run, table = tables[t].get()] { run.work(*table); });
        if (options.progress && !items.empty())
            run.report_progress();
        for (std::thread &w : workers)
            w.join();
    }
    report.failed = run.counts.failed;
    if (items.empty() && options.progress)
        options.progress(run.counts);
    return report;
}

}  // namespace Tavi
