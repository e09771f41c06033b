// tavi-edit: a window that edits one formula in the content format, with the default (or a given)
// setup file. `tavi-edit FILE` opens the file, or starts a new formula to be saved under that name
// when there is no such file yet.
#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QStringList>

#include <iostream>

#include "tavi/qt/qt_systemclipboard.h"
#include "tools/tavi-edit/edit_window.h"
#include "tools/tavi-render/resources.h"

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName("tavi-edit");

    QCommandLineParser parser;
    parser.setApplicationDescription("Edits a formula in the Tavi content format.");
    parser.addHelpOption();
    QCommandLineOption const setup({"s", "setup"}, "The setup file (default: the installed mathsetup.xml).", "FILE");
    parser.addOption(setup);
    parser.addPositionalArgument("file", "The formula to open; a file that does not exist yet is made on saving.",
                                 "[FILE]");
    parser.process(app);

    if (!TaviRender::register_formula_fonts())
        std::cerr << "tavi-edit: the formula fonts were not found; symbols may be missing\n";
    // Copy and paste reach other programs and other tavi-edit windows.
    Tavi::install_system_clipboard();

    QString const setup_file = parser.isSet(setup) ? parser.value(setup) : TaviRender::default_setup_file();
    TaviEdit::EditWindow window(setup_file);
    window.show();

    QStringList const files = parser.positionalArguments();
    if (!files.isEmpty()) {
        if (QFileInfo::exists(files.front()))
            window.open_file(files.front());
        else
            window.new_file(files.front());
    }
    return app.exec();
}
