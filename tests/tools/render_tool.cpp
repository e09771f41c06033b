// Running tavi-render through QProcess, rasterising its vector output, and ink grids.
#include "tools/render_tool.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "support/external_tools.h"

namespace TaviTest {

RenderRun run_render(std::vector<std::string> const &arguments, std::string const &input)
{
    RenderRun run;
    QStringList args;
    for (std::string const &a : arguments)
        args << QString::fromStdString(a);
    QProcess process;
    process.start(QString::fromStdString(TAVI_RENDER_PROGRAM), args);
    if (!process.waitForStarted(30000))
        return run;
    if (!input.empty())
        process.write(input.data(), static_cast<qint64>(input.size()));
    process.closeWriteChannel();
    if (!process.waitForFinished(120000)) {
        process.kill();
        process.waitForFinished(5000);
        return run;
    }
    run.started = process.exitStatus() == QProcess::NormalExit;
    run.exit_code = process.exitCode();
    run.output = process.readAllStandardOutput().toStdString();
    run.errors = process.readAllStandardError().toStdString();
    return run;
}

std::string fresh_folder(std::string const &name)
{
    QString const path = QString::fromStdString(artefact_path("tools", name));
    QDir(path).removeRecursively();
    QDir().mkpath(path);
    return path.toStdString();
}

bool file_exists(std::string const &path) { return QFileInfo::exists(QString::fromStdString(path)); }

// Runs the rasteriser `tool` (of `package`) and answers `png`, or an empty string with the reason.
static std::string rasterise(char const *tool, char const *package, std::vector<std::string> const &args,
                             std::string const &png, std::string &error)
{
    std::string const program = find_tool(tool);
    ToolRun const run = program.empty() ? ToolRun() : run_tool(program, args);
    if (program.empty())
        error = std::string(tool) + " is needed (package " + package + ")";
    else if (!run.started || run.exit_code != 0)
        error = std::string(tool) + " failed: " + run.errors;
    else
        return png;
    return std::string();
}

std::string rasterise_svg(std::string const &svg, int dpi, std::string &error)
{
    std::string const d = std::to_string(dpi);
    return rasterise("rsvg-convert", "librsvg2-bin",
                     {"--dpi-x", d, "--dpi-y", d, "--background-color", "white", "-o", svg + ".png", svg}, svg + ".png",
                     error);
}

// pdftoppm adds ".png" to the root it is given.
std::string rasterise_pdf(std::string const &pdf, int dpi, std::string &error)
{
    return rasterise("pdftoppm", "poppler-utils", {"-r", std::to_string(dpi), "-png", "-singlefile", pdf, pdf + ".raster"},
                     pdf + ".raster.png", error);
}

void grid_shape(QImage const &image, int cell, int &cols, int &rows)
{
    cols = std::max(1, static_cast<int>(std::lround(static_cast<double>(image.width()) / cell)));
    rows = std::max(1, static_cast<int>(std::lround(static_cast<double>(image.height()) / cell)));
}

InkGrid ink_grid(QImage const &image, int cols, int rows)
{
    InkGrid grid;
    grid.cols = cols;
    grid.rows = rows;
    grid.ink.assign(static_cast<std::size_t>(cols * rows), 0.0);
    int const w = image.width();
    int const h = image.height();
    // Edges at the same fractions of the image in every rendering.
    auto edge = [](int size, int k, int n) { return static_cast<int>(static_cast<long>(size) * k / n); };
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < cols; ++c) {
            int const left = edge(w, c, cols), right = edge(w, c + 1, cols);
            int const top = edge(h, r, rows), bottom = edge(h, r + 1, rows);
            long const area = static_cast<long>(right - left) * (bottom - top);
            if (area > 0)
                grid.ink[static_cast<std::size_t>(r * cols + c)] =
                    static_cast<double>(count_ink(image, left, top, right, bottom)) / static_cast<double>(area);
        }
    return grid;
}

std::vector<std::string> ink_mismatches(InkGrid const &a, InkGrid const &b, double present, double absent)
{
    if (a.cols != b.cols || a.rows != b.rows)
        return {"grids of different shape"};
    std::vector<std::string> found;
    for (int r = 0; r < a.rows; ++r)
        for (int c = 0; c < a.cols; ++c) {
            double const x = a.at(c, r);
            double const y = b.at(c, r);
            if ((x >= present && y <= absent) || (y >= present && x <= absent)) {
                char text[96];
                std::snprintf(text, sizeof text, "%d,%d %.3f/%.3f", c, r, x, y);
                found.push_back(text);
            }
        }
    return found;
}

}  // namespace TaviTest
