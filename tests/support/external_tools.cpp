// Running external programs for tests, and counting ink in the images they make.
#include "support/external_tools.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QStringList>

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

namespace TaviTest {

std::string find_tool(std::string const &name)
{
    return QStandardPaths::findExecutable(QString::fromStdString(name)).toStdString();
}

ToolRun run_tool(std::string const &program, std::vector<std::string> const &arguments, int timeout_ms)
{
    ToolRun run;
    QStringList args;
    for (std::string const &argument : arguments)
        args << QString::fromStdString(argument);
    QProcess process;
    process.start(QString::fromStdString(program), args);
    if (!process.waitForStarted(timeout_ms)) {
        run.errors = process.errorString().toStdString();
        return run;
    }
    process.closeWriteChannel();
    if (!process.waitForFinished(timeout_ms)) {
        process.kill();
        process.waitForFinished(5000);
        run.errors = "timed out: " + process.errorString().toStdString();
        return run;
    }
    run.started = process.exitStatus() == QProcess::NormalExit;
    run.exit_code = process.exitCode();
    run.output = process.readAllStandardOutput().toStdString();
    run.errors = process.readAllStandardError().toStdString();
    return run;
}

std::string artefact_path(std::string const &folder, std::string const &name)
{
    QDir dir(QString::fromUtf8(TAVI_TEST_OUTPUT_DIR));
    dir.mkpath(QString::fromStdString(folder));
    return dir.filePath(QString::fromStdString(folder + "/" + name)).toStdString();
}

bool write_text_file(std::string const &path, std::string const &text)
{
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << text;
    out.close();
    return static_cast<bool>(out);
}

namespace {

QImage render(char const *tool, char const *package, std::string const &text, std::string const &folder,
              std::string const &name, std::string const &suffix,
              std::vector<std::string> (*arguments)(std::string const &in, std::string const &png, std::string const &dpi),
              int dpi)
{
    std::string const program = find_tool(tool);
    std::string const in = artefact_path(folder, name + "." + suffix);
    std::string const png = artefact_path(folder, name + "_" + suffix + ".png");
    QFile::remove(QString::fromStdString(png));
    if (program.empty()) {
        ADD_FAILURE() << tool << " is needed to render the " << suffix << " (package " << package << ")";
        return QImage();
    }
    if (!write_text_file(in, text)) {
        ADD_FAILURE() << "cannot write " << in;
        return QImage();
    }
    ToolRun const run = run_tool(program, arguments(in, png, std::to_string(dpi)));
    if (!run.started || run.exit_code != 0 || run.output.find("Error") != std::string::npos ||
        run.errors.find("Error") != std::string::npos) {
        ADD_FAILURE() << tool << " failed on " << in << ": " << run.output << run.errors;
        return QImage();
    }
    return read_png(png);
}

}  // namespace

QImage render_svg(std::string const &svg, std::string const &folder, std::string const &name, int dpi)
{
    return render("rsvg-convert", "librsvg2-bin", svg, folder, name, "svg",
                  [](std::string const &in, std::string const &png, std::string const &d) {
                      return std::vector<std::string>{"--dpi-x", d, "--dpi-y", d, "--background-color", "white",
                                                      "-o", png, in};
                  },
                  dpi);
}

QImage render_eps(std::string const &eps, std::string const &folder, std::string const &name, int dpi)
{
    return render("gs", "ghostscript", eps, folder, name, "eps",
                  [](std::string const &in, std::string const &png, std::string const &d) {
                      return std::vector<std::string>{"-q", "-dSAFER", "-dBATCH", "-dNOPAUSE", "-dEPSCrop",
                                                      "-r" + d, "-sDEVICE=png16m", "-sOutputFile=" + png, in};
                  },
                  dpi);
}

QImage read_png(std::string const &path)
{
    QImage image;
    if (!image.load(QString::fromStdString(path), "PNG"))
        return QImage();
    return image.convertToFormat(QImage::Format_ARGB32);
}

long count_ink(QImage const &image, int left, int top, int right, int bottom)
{
    left = std::max(left, 0);
    top = std::max(top, 0);
    right = std::min(right, image.width());
    bottom = std::min(bottom, image.height());
    long ink = 0;
    for (int y = top; y < bottom; ++y) {
        for (int x = left; x < right; ++x) {
            QRgb const pixel = image.pixel(x, y);
            if (qAlpha(pixel) > 128 && (qRed(pixel) < 200 || qGreen(pixel) < 200 || qBlue(pixel) < 200))
                ++ink;
        }
    }
    return ink;
}

}  // namespace TaviTest
