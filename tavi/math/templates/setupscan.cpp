// Numbers in the attribute values of the setup file, read as scanf reads its integer conversions.
#include "tavi/math/templates/setupscan.h"

#include <cctype>
#include <climits>
#include <cstdlib>
#include <string>

#include "tavi/kxt/utf.h"

namespace Tavi {

namespace {

char const *skip_space(char const *p)
{
    while (*p != 0 && std::isspace(static_cast<unsigned char>(*p)))
        ++p;
    return p;
}

// One %ld conversion at p: leading white space, an optional sign and at least one decimal digit.
// strtol reads exactly that and clamps a value out of range. Moves p past what was read.
bool read_long(char const *&p, long &out)
{
    char const *start = skip_space(p);
    // Blanks between the sign and the digits are refused, as scanf refuses " - 5".
    char const *digits = start;
    if (*digits == '+' || *digits == '-')
        ++digits;
    if (*digits < '0' || *digits > '9')
        return false;
    char *end = nullptr;
    long const value = std::strtol(start, &end, 10);
    out = value;
    p = end;
    return true;
}

}  // namespace

bool scan_setup_long(wchar const *value, long &out)
{
    std::string const text = Kxt::to_string(value);
    char const *p = text.c_str();
    long v = 0;
    if (!read_long(p, v))
        return false;
    out = v;
    return true;
}

bool scan_setup_int(wchar const *value, int &out)
{
    long v = 0;
    if (!scan_setup_long(value, v))
        return false;
    out = v > INT_MAX ? INT_MAX : v < INT_MIN ? INT_MIN : static_cast<int>(v);
    return true;
}

bool scan_setup_long_pair(wchar const *value, long &first, long &second)
{
    std::string const text = Kxt::to_string(value);
    char const *p = text.c_str();
    long a = 0;
    long b = 0;
    if (!read_long(p, a))
        return false;
    p = skip_space(p);
    if (*p != ',')
        return false;
    ++p;
    if (!read_long(p, b))
        return false;
    first = a;
    second = b;
    return true;
}

}  // namespace Tavi
