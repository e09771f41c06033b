// The process-wide decimal point, and the one look at the environment's locale that finds it.
#include "tavi/math/templates/decimalpoint.h"

#include <clocale>
#include <cstring>
#include <string>

namespace Tavi {

namespace {

bool locale_asked = false;
// 0 until the locale has been looked at.
wchar locale_point = 0;

// The program may run under another LC_NUMERIC than the user's ("C" is usual), so the user's is put
// in force only while its conventions are read, and the program's is put back.
wchar find_locale_point()
{
    char const *current = std::setlocale(LC_NUMERIC, nullptr);
    std::string const saved = current != nullptr ? current : "C";
    wchar point = u'.';
    if (std::setlocale(LC_NUMERIC, "") != nullptr) {
        std::lconv const *conventions = std::localeconv();
        if (conventions != nullptr && conventions->decimal_point != nullptr &&
            std::strcmp(conventions->decimal_point, ",") == 0)
            point = u',';
    }
    std::setlocale(LC_NUMERIC, saved.c_str());
    return point;
}

}  // namespace

bool use_locale_decimal_point() { return locale_asked; }

void use_locale_decimal_point(bool on) { locale_asked = on; }

wchar decimal_point()
{
    if (!locale_asked)
        return u'.';
    if (locale_point == 0)
        locale_point = find_locale_point();
    return locale_point;
}

}  // namespace Tavi
