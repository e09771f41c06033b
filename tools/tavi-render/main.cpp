// tavi-render: typesets one formula in the content format with the default (or a given) setup file
// and writes it as PNG, SVG, PDF or EPS. See usage_text() in options.cpp for the command line.
#include <QByteArray>
#include <QGuiApplication>
#include <QString>
#include <QtGlobal>

#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "tavi/math/mathrootnode.h"
#include "tavi/math/templates/templatetable.h"
#include "tools/tavi-render/document.h"
#include "tools/tavi-render/options.h"
#include "tools/tavi-render/outputs.h"
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

    std::string error;
    Tavi::TemplateTable table(nullptr);
    if (!load_setup(table, setup, error))
        return fail(error, 1);

    std::string text;
    if (!read_input(options.input, text, error))
        return fail(error, 1);
    std::string const source = options.input == "-" ? "<stdin>" : options.input;
    Tavi::MathRootNode *root = read_formula(table, text, source, error);
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
