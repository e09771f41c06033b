// Reading the setup file and the formula; the formula is read as the library reads a document for a
// host, with its reasons and messages.
#include "tools/tavi-render/document.h"

#include <fstream>
#include <iostream>
#include <iterator>

#include "tavi/interchange/content.h"
#include "tavi/kxt/stream.h"
#include "tavi/math/templates/templatetable.h"

namespace TaviRender {

using namespace Tavi;

bool read_input(std::string const &path, std::string &data, std::string &error)
{
    if (path == "-") {
        data.assign(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>());
        if (std::cin.bad()) {
            error = "cannot read standard input";
            return false;
        }
        return true;
    }
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        error = "cannot open " + path;
        return false;
    }
    data.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    if (in.bad()) {
        error = "cannot read " + path;
        return false;
    }
    return true;
}

bool load_setup(TemplateTable &table, std::string const &path, std::string &error)
{
    std::string text;
    if (!read_input(path, text, error))
        return false;
    Kxt::KTmemoryStream stream(text.data(), text.size());
    if (!table.init(stream)) {
        error = "the setup file " + path + " has errors";
        return false;
    }
    return true;
}

MathRootNode *read_formula(TemplateTable &table, std::string const &text, std::string const &source,
                           std::string &error, std::string *messages, FormulaLanguage const *from)
{
    FormulaLanguage const language = from ? *from : guess_language(text);
    if (language == FormulaLanguage::content)
        return read_math_document(table, text, source, error, messages);
    std::string content;
    try {
        content = to_content(language, text, table);
    } catch (ImportError const &e) {
        error = source + ": " + e.what();
        return nullptr;
    }
    return read_math_document(table, content, source, error, messages);
}

}  // namespace TaviRender
