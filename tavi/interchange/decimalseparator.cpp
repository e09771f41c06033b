// The user's decimal separator, read once from the locale.
#include "tavi/interchange/decimalseparator.h"

#include <clocale>
#include <string>

namespace Tavi {

wchar decimal_separator_of(char const *decimal_point)
{
    return decimal_point != nullptr && decimal_point[0] == ',' ? u',' : u'.';
}

namespace {

// The numeric category is switched to the user's locale only for the look, and put back at
// once: the rest of the program formats and parses numbers in the C locale.
wchar read_user_separator()
{
    char const *current = std::setlocale(LC_NUMERIC, nullptr);
    std::string const saved = current != nullptr ? current : "C";
    wchar separator = u'.';
    if (std::setlocale(LC_NUMERIC, "") != nullptr) {
        std::lconv const *conv = std::localeconv();
        separator = decimal_separator_of(conv != nullptr ? conv->decimal_point : nullptr);
    }
    std::setlocale(LC_NUMERIC, saved.c_str());
    return separator;
}

}  // namespace

wchar decimal_separator()
{
    static wchar const separator = read_user_separator();
    return separator;
}

bool replace_first(wstring &text, wchar from, wchar to)
{
    auto const at = text.find(from);
    if (at == wstring::npos)
        return false;
    text[at] = to;
    return true;
}

}  // namespace Tavi
