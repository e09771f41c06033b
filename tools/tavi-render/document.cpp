// Reading the setup file and the formula. The content reader writes its reasons to std::cerr, some of
// them without a line end; they are collected during the parse and passed on line by line.
#include "tools/tavi-render/document.h"

#include <climits>
#include <cstddef>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

#include "tavi/interchange/matheditcontenthandler.h"
#include "tavi/kxt/stream.h"
#include "tavi/kxt/xmlparser.h"
#include "tavi/math/mathrootnode.h"
#include "tavi/math/templates/templatetable.h"

namespace TaviRender {

using namespace Tavi;

namespace {

// Sends std::cerr into a buffer for its lifetime, then hands the buffer on to the real stream, or to
// `target` when there is one, with a line end after every message that lacks one.
class CollectedErrors
{
public:
    explicit CollectedErrors(std::string *target) : target_(target), saved_(std::cerr.rdbuf(collected_.rdbuf())) {}
    ~CollectedErrors()
    {
        std::cerr.rdbuf(saved_);
        std::string text = collected_.str();
        if (!text.empty() && text.back() != '\n')
            text += '\n';
        if (target_)
            *target_ += text;
        else
            std::cerr << text << std::flush;
    }
    CollectedErrors(CollectedErrors const &) = delete;
    CollectedErrors &operator=(CollectedErrors const &) = delete;

private:
    std::ostringstream collected_;
    std::string *target_;
    std::streambuf *saved_;
};

}  // namespace

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
                           std::string &error, std::string *messages)
{
    if (text.size() > static_cast<std::size_t>(INT_MAX)) {
        error = source + ": the document is larger than 2 GB";
        return nullptr;
    }
    MathEditContentHandler handler(table);
    bool well_formed = false;
    std::string reason;
    long line = 0;
    long column = 0;
    {
        CollectedErrors const collect(messages);
        Kxt::Xml::Parser parser(&handler, true, nullptr);
        try {
            well_formed = parser.parse(text.data(), static_cast<int>(text.size()), true);
        } catch (BadMathEditContent const &) {
            error = source + ": the formula was refused";
            return nullptr;
        }
        reason = parser.errorString();
        line = parser.errorLine();
        column = parser.errorColumn();
    }
    if (!well_formed) {
        error = source + ":" + std::to_string(line) + ":" + std::to_string(column) + ": " + reason;
        return nullptr;
    }
    MathRootNode *root = handler.node();
    if (!root)
        error = source + ": no formula in the document";
    return root;
}

}  // namespace TaviRender
