// The one entry of the importers: the language of a text guessed, and the text turned into the
// content format.
#include "tavi/import/importer.h"

#include <cctype>

#include "tavi/import/formulaparser.h"
#include "tavi/import/latexreader.h"
#include "tavi/import/mathmlreader.h"

namespace Tavi {

namespace {

struct LanguageRow
{
    FormulaLanguage language;
    char const *name;
};
constexpr LanguageRow languages[] = {
    {FormulaLanguage::content, "content"},
    {FormulaLanguage::latex,   "latex"},
    {FormulaLanguage::mathml,  "mathml"},
};

// LaTeX as it is often pasted: between $ $, $$ $$, \( \) or \[ \].
std::string strip_math_delimiters(std::string const &text)
{
    std::size_t b = 0, e = text.size();
    while (b < e && std::isspace(static_cast<unsigned char>(text[b])))
        ++b;
    while (e > b && std::isspace(static_cast<unsigned char>(text[e - 1])))
        --e;
    static char const *const pairs[][2] = {{"$$", "$$"}, {"\\[", "\\]"}, {"\\(", "\\)"}, {"$", "$"}};
    for (auto const &pair : pairs) {
        std::size_t const lo = std::char_traits<char>::length(pair[0]);
        std::size_t const lc = std::char_traits<char>::length(pair[1]);
        if (e - b >= lo + lc && text.compare(b, lo, pair[0]) == 0 && text.compare(e - lc, lc, pair[1]) == 0) {
            // Blanks keep the columns of the formula those of the text.
            std::string out = text;
            for (std::size_t k = 0; k < lo; ++k)
                out[b + k] = ' ';
            for (std::size_t k = 0; k < lc; ++k)
                out[e - lc + k] = ' ';
            return out;
        }
    }
    return text;
}

}  // namespace

ImportError::ImportError(std::string const &message, std::size_t line, std::size_t column)
    : std::runtime_error(message), line_(line), column_(column)
{
}

FormulaLanguage guess_language(std::string const &text)
{
    if (text.find("/xml/MathEditContent") != std::string::npos)
        return FormulaLanguage::content;
    if (text.find("http://www.w3.org/1998/Math/MathML") != std::string::npos)
        return FormulaLanguage::mathml;
    std::size_t b = 0;
    while (b < text.size() && std::isspace(static_cast<unsigned char>(text[b])))
        ++b;
    if (text.compare(b, 1, "<") == 0) {
        // An XML declaration or a comment may come first; the first element decides.
        std::size_t const math = text.find("<math", b);
        std::size_t const mml = text.find("<mml:math", b);
        // The content format also reads without its namespace; its element names tell it apart.
        static char const *const content_elements[] = {"<ident", "<num>", "<expr ", "<plus", "<plh", "<tab ",
                                                       "<isub>", "<isup>", "<iacc "};
        for (char const *element : content_elements)
            if (math != std::string::npos && text.find(element, math) != std::string::npos)
                return FormulaLanguage::content;
        if (math != std::string::npos || mml != std::string::npos)
            return FormulaLanguage::mathml;
        // Other markup is no LaTeX either: the content reader says what it lacks.
        return FormulaLanguage::content;
    }
    return FormulaLanguage::latex;
}

char const *language_name(FormulaLanguage language)
{
    for (auto const &row : languages)
        if (row.language == language)
            return row.name;
    return "";
}

bool parse_language(std::string const &name, FormulaLanguage &language)
{
    for (auto const &row : languages) {
        if (name == row.name) {
            language = row.language;
            return true;
        }
    }
    return false;
}

std::string to_content(FormulaLanguage language, std::string const &text, TemplateTable &table)
{
    switch (language) {
    case FormulaLanguage::content: return text;
    case FormulaLanguage::mathml: return write_content_document(*read_mathml(text, table));
    case FormulaLanguage::latex: break;
    }
    std::string const formula = strip_math_delimiters(text);
    TokenList const tokens = read_latex_tokens(formula);
    if (tokens.empty())
        throw ImportError("An empty formula", 0, 0);
    return write_content_document(*parse_formula(tokens, table));
}

}  // namespace Tavi
