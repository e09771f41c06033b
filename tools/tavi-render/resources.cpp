// Locating the default setup file and the formula fonts, for a program that runs from its build
// folder as well as from an install prefix.
#include "tools/tavi-render/resources.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include "tavi/qt/font_registry.h"

namespace TaviRender {

namespace {

// The folder of the program, and the prefix above it (bin/..).
QString program_dir() { return QCoreApplication::applicationDirPath(); }
QString prefix_dir() { return QDir::cleanPath(program_dir() + "/.."); }

}  // namespace

QStringList setup_file_candidates()
{
    return {
        program_dir() + "/mathsetup.xml",
        prefix_dir() + "/" TAVI_RENDER_INSTALL_DATADIR "/tavi/mathsetup.xml",
        TAVI_RENDER_SOURCE_DIR "/data/mathsetup.xml",
    };
}

QString default_setup_file()
{
    for (QString const &path : setup_file_candidates())
        if (QFileInfo(path).isFile())
            return path;
    return QString();
}

QStringList font_folder_candidates()
{
    return {
        program_dir() + "/fonts",
        prefix_dir() + "/" TAVI_RENDER_INSTALL_DATADIR "/fonts/truetype/tavi",
        TAVI_RENDER_SOURCE_DIR "/fonts",
    };
}

bool register_formula_fonts()
{
    for (QString const &folder : font_folder_candidates())
        if (QFileInfo(folder).isDir() && Tavi::register_fonts(folder) > 0)
            return true;
    Tavi::substitute_free_faces();
    return false;
}

}  // namespace TaviRender
