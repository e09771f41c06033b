// Running external programs for tests, and counting ink in the images they make.
#include "support/external_tools.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QStringList>

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
