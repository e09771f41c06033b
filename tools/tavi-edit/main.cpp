// tavi-edit: a window that edits one formula in the content format, with the default (or a given)
// setup file. `tavi-edit FILE` opens the file, or starts a new formula to be saved under that name
// when there is no such file yet. `--script FILE.js` runs a script against the open formula: in the
// window the result is shown for the user to save; without a display (`-platform offscreen`) the
// formula is saved back to FILE and the program ends, so that formulas can be rewritten in batch.
#include <QApplication>
#include <QCommandLineParser>
#include <QGuiApplication>
#include <QMessageBox>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringList>

#include <iostream>

#include "tavi/qt/qt_systemclipboard.h"
#include "tools/tavi-edit/edit_window.h"
#include "tools/tavi-render/resources.h"

#if defined(TAVI_EDIT_SCRIPTING)
#include "tavi-script/runscript.h"
#include "tavi/client/scriptedformulascene.h"
#include "tavi/math/mathrootnode.h"
#include "tools/tavi-render/document.h"
#endif

namespace {

// Without a display: the formula of `file` (an empty one when it does not exist yet) is read, the
// script runs against it, and the result is saved back to `file`. Messages go to the standard error
// stream; the exit status is 1 on any failure, and the file is then left as it was.
int run_batch(QString const &setup_file, QString const &file, QString const &script)
{
#if defined(TAVI_EDIT_SCRIPTING)
    Tavi::ScriptedFormulaScene scene;
    std::string error;
    if (!TaviRender::load_setup(*scene.template_table(), setup_file.toStdString(), error)) {
        std::cerr << "tavi-edit: " << error << '\n';
        return 1;
    }
    if (!file.isEmpty() && QFileInfo::exists(file)) {
        std::string text;
        if (!TaviRender::read_input(file.toStdString(), text, error)) {
            std::cerr << "tavi-edit: " << error << '\n';
            return 1;
        }
        Tavi::MathRootNode *root = TaviRender::read_formula(*scene.template_table(), text, file.toStdString(), error);
        if (root == nullptr) {
            std::cerr << "tavi-edit: " << error << '\n';
            return 1;
        }
        scene.formula(root);
    }
    QString failure;
    if (!Tavi::run_script_file(scene, script, failure)) {
        std::cerr << "tavi-edit: " << failure.toStdString() << '\n';
        return 1;
    }
    if (file.isEmpty())
        return 0;
    // Written whole to a file beside the target, then put in its place.
    QSaveFile out(file);
    std::string const content = scene.content();
    if (!out.open(QIODevice::WriteOnly) || out.write(content.data(), static_cast<qint64>(content.size())) < 0 ||
        !out.commit()) {
        std::cerr << "tavi-edit: " << file.toStdString() << ": cannot be written\n";
        return 1;
    }
    return 0;
#else
    (void)setup_file;
    (void)file;
    (void)script;
    std::cerr << "tavi-edit: this build cannot run scripts (it was made without Qt Qml)\n";
    return 1;
#endif
}

}  // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName("tavi-edit");

    QCommandLineParser parser;
    parser.setApplicationDescription("Edits a formula in the Tavi content format.");
    parser.addHelpOption();
    QCommandLineOption const setup({"s", "setup"}, "The setup file (default: the installed mathsetup.xml).", "FILE");
    parser.addOption(setup);
    QCommandLineOption const script("script",
                                    "Runs the script against the formula; without a display, then saves it to FILE "
                                    "and ends.",
                                    "FILE.js");
    parser.addOption(script);
    parser.addPositionalArgument("file", "The formula to open; a file that does not exist yet is made on saving.",
                                 "[FILE]");
    parser.process(app);

    if (!TaviRender::register_formula_fonts())
        std::cerr << "tavi-edit: the formula fonts were not found; symbols may be missing\n";
    // Copy and paste reach other programs and other tavi-edit windows.
    Tavi::install_system_clipboard();

    QString const setup_file = parser.isSet(setup) ? parser.value(setup) : TaviRender::default_setup_file();
    QStringList const files = parser.positionalArguments();
    if (parser.isSet(script) && QGuiApplication::platformName() == "offscreen")
        return run_batch(setup_file, files.isEmpty() ? QString() : files.front(), parser.value(script));

    TaviEdit::EditWindow window(setup_file);
    window.show();

    bool opened = true;
    if (!files.isEmpty()) {
        if (QFileInfo::exists(files.front()))
            opened = window.open_file(files.front());
        else
            window.new_file(files.front());
    }
    if (parser.isSet(script)) {
#if defined(TAVI_EDIT_SCRIPTING)
        QString error;
        if (opened && !Tavi::run_script_file(window.scene(), parser.value(script), error))
            QMessageBox::warning(&window, "tavi-edit", error);
#else
        QMessageBox::warning(&window, "tavi-edit", "This build of tavi-edit cannot run scripts (it was made without Qt Qml).");
#endif
    }
    return app.exec();    return app.exec();
}
