// Registration of the formula fonts with Qt's font database, and the substitutes for the families
// that free systems replace.
#include "tavi/qt/font_registry.h"

#include <QDir>
#include <QFileInfo>
#include <QFont>
#include <QFontDatabase>
#include <QStringList>

#include <map>

namespace Tavi {

namespace {

// The families that formulas name by default and no free system ships, each with the free face
// drawn in its place and, where that face lacks characters of its class, a supplement that Qt
// tries next for a missing glyph. "Symbol" needs the Adobe Symbol codes at the codes themselves:
// URW's face has them there.
struct FreeFace
{
    char const *family;
    char const *replacement;
    char const *supplement;
};

constexpr FreeFace free_faces[] = {
    //  family               replacement              supplement
    {"Times New Roman",      "Liberation Serif",      "KMT Text Supplement"},
    {"Symbol",               "Standard Symbols PS",   nullptr},
};

// The files registered so far, by canonical path, with the id the database gave each.
std::map<QString, int> &registered_files()
{
    static std::map<QString, int> files;
    return files;
}

}  // namespace

QString free_face_for(QString const &family)
{
    for (FreeFace const &face : free_faces)
        if (family == QLatin1String(face.family))
            return QString::fromLatin1(face.replacement);
    return QString();
}

int substitute_free_faces()
{
    int added = 0;
    for (FreeFace const &face : free_faces) {
        QString const family = QString::fromLatin1(face.family);
        // A host that chose substitutes of its own keeps them.
        if (!QFont::substitutes(family).isEmpty())
            continue;
        QStringList list;
        QString const replacement = QString::fromLatin1(face.replacement);
        if (!QFontDatabase::hasFamily(family) && QFontDatabase::hasFamily(replacement))
            list << replacement;
        if (face.supplement != nullptr && QFontDatabase::hasFamily(QString::fromLatin1(face.supplement)))
            list << QString::fromLatin1(face.supplement);
        if (list.isEmpty())
            continue;
        QFont::insertSubstitutions(family, list);
        added += static_cast<int>(list.size());
    }
    return added;
}

int register_fonts(QString const &folder)
{
    QDir const dir(folder);
    int held = 0;
    if (dir.exists()) {
        QStringList const files = dir.entryList({"*.ttf", "*.otf", "*.TTF", "*.OTF"},
                                                QDir::Files | QDir::Readable, QDir::Name);
        for (QString const &name : files) {
            QString const path = QFileInfo(dir.filePath(name)).canonicalFilePath();
            if (path.isEmpty())
                continue;
            auto &known = registered_files();
            if (known.find(path) == known.end()) {
                int const id = QFontDatabase::addApplicationFont(path);
                if (id < 0)
                    continue;
                known.emplace(path, id);
            }
            ++held;
        }
    }
    substitute_free_faces();
    return held;
}

}  // namespace Tavi
