// tavi-render: typesets one formula in the content format with the default (or a given) setup file
// and writes it as PNG, SVG, PDF or EPS; or many of them in one run, on every core, into a folder.
// See usage_text() in options.cpp for the command line.
#include <QByteArray>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QString>
#include <QtGlobal>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "tavi/math/mathrootnode.h"
#include "tavi/math/templates/templatetable.h"
#include "tavi/qt/batchrender.h"
#include "tools/tavi-render/document.h"
#include "tools/tavi-render/options.h"
#include "tools/tavi-render/outputs.h"
#include "tools/tavi-render/progress.h"
#include "tools/tavi-render/render_host.h"
#include "tools/tavi-render/resources.h"

namespace {

QtMessageHandler qt_default_handler = nullptr;

// Qt's note that it made its own runtime folder says nothing about the formula: it is dropped, and
// every other message goes on as Qt would write it.
void filter_qt_messages(QtMsgType type, QMessageLogContext const &context, QString const &message)
{
    if (type == QtWarningMsg && message.startsWith(QLatin1String("QStandardPaths:")))
        return;
    if (qt_default_handler)
        qt_default_handler(type, context, message);
}

int fail(std::string const &message, int status)
{
    std::cerr << "tavi-render: " << message << "\n";
    return status;
}

// The inputs of a batch in their order: files as given, the .xml files of a folder by name, and the
// paths listed in --files-from after those of the command line.
bool batch_inputs(TaviRender::Options const &options, std::vector<std::string> &inputs, std::string &error)
{
    std::vector<std::string> given = options.inputs;
    if (!options.files_from.empty()) {
        std::string list;
        if (!TaviRender::read_input(options.files_from, list, error))
            return false;
        std::istringstream lines(list);
        for (std::string line; std::getline(lines, line);) {
            if (!line.empty() && line.back() == '\r')
                line.pop_back();
            if (!line.empty())
                given.push_back(line);
        }
    }
    for (std::string const &path : given) {
        QString const qpath = QString::fromStdString(path);
        if (!QFileInfo(qpath).isDir()) {
            inputs.push_back(path);
            continue;
        }
        QDir const folder(qpath);
        for (QString const &name : folder.entryList({"*.xml", "*.XML"}, QDir::Files | QDir::Readable, QDir::Name))
            inputs.push_back(folder.filePath(name).toStdString());
    }
    return true;
}

int run_batch(TaviRender::Options const &options, std::string const &setup)
{
    using namespace TaviRender;

    std::string error;
    Tavi::BatchOptions batch;
    if (!read_input(setup, batch.setup, error))
        return fail(error, 1);
    std::vector<std::string> inputs;
    if (!batch_inputs(options, inputs, error))
        return fail(error, 1);
    if (inputs.empty())
        return fail("no formula to render: the inputs hold no .xml file", 1);

    // Each input's output file; one that another input writes already is refused before drawing,
    // so that neither overwrites the other.
    QDir const out_dir(QString::fromStdString(options.output_dir));
    std::vector<Tavi::BatchItem> items;
    std::vector<std::string> refused(inputs.size());
    std::vector<std::size_t> item_of(inputs.size(), 0);
    std::map<std::string, std::string> writer_of;
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        std::string const name = output_name(options.name_pattern, inputs[i], options.format, i + 1);
        std::string const output = QDir::cleanPath(out_dir.filePath(QString::fromStdString(name))).toStdString();
        auto const known = writer_of.emplace(output, inputs[i]);
        if (!known.second) {
            refused[i] = inputs[i] + ": its output " + output + " is the output of " + known.first->second;
            continue;
        }
        QString const folder = QFileInfo(QString::fromStdString(output)).path();
        if (!QDir().mkpath(folder))
            return fail("cannot make the folder " + folder.toStdString(), 1);
        item_of[i] = items.size();
        items.push_back(Tavi::BatchItem{inputs[i], std::string(), output, inputs[i]});
    }

    Format const format = options.format;
    int const dpi = options.dpi;
    // tavi-render's own drawing, SVG outlines included, so that a batch draws byte for byte what a
    // run per formula draws.
    batch.renderer = [format, dpi](Tavi::RenderHost &host, QByteArray &out, std::string &why) {
        return render(host, format, dpi, out, why);
    };
    batch.font_size = options.font_size;
    batch.dpi = options.dpi;
    batch.wrap_width = options.width;
    batch.threads = options.jobs;
    bool const show_progress = !options.quiet && isatty(STDERR_FILENO) == 1;
    ProgressBar bar(stderr, show_progress);
    std::size_t const already_failed = inputs.size() - items.size();
    // Without a bar the calling thread is not woken for every formula.
    if (show_progress)
        batch.progress = [&bar, already_failed](Tavi::BatchProgress const &p) {
            bar.update(p.done + already_failed, p.failed + already_failed, p.total + already_failed);
        };
    Tavi::BatchReport const report = Tavi::render_formulas(items, batch);
    bar.finish();
    if (!report.error.empty())
        return fail(setup + ": " + report.error, 1);

    // Every message in the order of the inputs, each line naming its input.
    std::size_t failed = 0;
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        if (!refused[i].empty()) {
            ++failed;
            std::cerr << "tavi-render: " << refused[i] << "\n";
            continue;
        }
        Tavi::BatchResult const &r = report.results[item_of[i]];
        std::istringstream said(r.messages);
        for (std::string line; std::getline(said, line);)
            std::cerr << "tavi-render: " << inputs[i] << ": " << line << "\n";
        if (!r.ok) {
            ++failed;
            std::cerr << "tavi-render: " << r.error << "\n";
        }
    }
    if (failed > 0)
        return fail(std::to_string(failed) + " of " + std::to_string(inputs.size()) + " formulas failed", 1);
    return 0;
}

int run(TaviRender::Options const &options)
{
    using namespace TaviRender;

    if (!register_formula_fonts())
        std::cerr << "tavi-render: the formula fonts were not found; symbols may be missing\n";

    std::string setup = options.setup;
    if (setup.empty()) {
        setup = default_setup_file().toStdString();
        if (setup.empty())
            return fail("no setup file: give --setup FILE (looked for " +
                            setup_file_candidates().join(", ").toStdString() + ")",
                        1);
    }

    if (options.batch)
        return run_batch(options, setup);

    std::string error;
    Tavi::TemplateTable table(nullptr);
    if (!load_setup(table, setup, error))
        return fail(error, 1);

    std::string text;
    if (!read_input(options.input, text, error))
        return fail(error, 1);
    std::string const source = options.input == "-" ? "<stdin>" : options.input;
    Tavi::MathRootNode *root =
        read_formula(table, text, source, error, nullptr, options.from_given ? &options.from : nullptr);
    if (!root)
        return fail(error, 1);

    QByteArray bytes;
    {
        RenderHost host(root);
        host.font_size(options.font_size);
        host.wrap_width(options.width);
        if (!render(host, options.format, options.dpi, bytes, error))
            return fail(error, 1);
    }
    if (!write_output(options.output, bytes, error))
        return fail(error, 1);
    return 0;
}

}  // namespace

int main(int argc, char **argv)
{
    std::vector<std::string> arguments(argv + 1, argv + argc);
    TaviRender::ParseResult const parsed = TaviRender::parse_options(arguments);
    if (!parsed.error.empty())
        return fail(parsed.error + "\nTry 'tavi-render --help'.", 2);
    if (parsed.options.help) {
        std::cout << TaviRender::usage_text();
        return 0;
    }
    // No display is needed: fonts, images and vector devices all work on the offscreen platform.
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    qt_default_handler = qInstallMessageHandler(filter_qt_messages);
    QGuiApplication app(argc, argv);
    return run(parsed.options);
}
