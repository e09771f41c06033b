// The user's decimal separator, read once from the locale.
#include "tavi/interchange/decimalseparator.h"

#include <clocale>
#ifdef _WIN32
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#else
#include <langinfo.h>
#include <locale.h>
#endif

namespace Tavi {

wchar decimal_separator_of(char const *decimal_point)
{
    return decimal_point != nullptr && decimal_point[0] == ',' ? u',' : u'.';
}

namespace {

// The user's numeric conventions are read through a locale object of their own. Switching the
// process's LC_NUMERIC for the look (setlocale) would, for that moment, change how every other
// thread formats and parses numbers: a formula written on one thread could get commas in its SVG
// coordinates while another thread read its first formula.
#ifdef _WIN32
// Windows keeps the user's numbers in the user's locale settings.
wchar read_user_separator()
{
    char separator[8] = {};
    if (GetLocaleInfoA(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, separator, sizeof separator) == 0)
        return u'.';
    return decimal_separator_of(separator);
}
#else
wchar read_user_separator()
{
    locale_t const user = newlocale(LC_NUMERIC_MASK, "", locale_t(0));
    if (user == locale_t(0))
        return u'.';
    wchar const separator = decimal_separator_of(nl_langinfo_l(RADIXCHAR, user));
    freelocale(user);
    return separator;
}
#endif

}  // namespace

wchar decimal_separator()
{
    // A function-local static: the first callers on several threads wait for the one read.
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
