// Reading the text of a number into its parts.
#include "tavi/math/templates/numberscan.h"

namespace Tavi {

namespace {

bool is_blank(wchar c) { return c >= 1 && c <= 32; }
bool is_digit(wchar c) { return c >= u'0' && c <= u'9'; }

void skip_blanks(wchar const *&p)
{
    while (is_blank(*p))
        ++p;
}

// Takes a run of digits into `out`; false when there is none.
bool take_digits(wchar const *&p, wstring &out)
{
    if (!is_digit(*p))
        return false;
    while (is_digit(*p))
        out += *p++;
    return true;
}

// An optional sign and the blanks after it; "+" counts for nothing.
void take_sign(wchar const *&p, bool &negative)
{
    if (*p != u'-' && *p != u'+')
        return;
    negative = *p == u'-';
    ++p;
    skip_blanks(p);
}

bool is_exponent_letter(wchar c) { return c == u'D' || c == u'E' || c == u'd' || c == u'e'; }

}  // namespace

bool scan_number(wchar const *text, wchar point, ScannedNumber &out)
{
    out = ScannedNumber();
    if (text == nullptr)
        return false;
    wchar const *p = text;
    skip_blanks(p);
    take_sign(p, out.negative);
    if (!take_digits(p, out.mantissa))
        return false;
    if (*p == point) {
        out.mantissa += *p++;
        if (!take_digits(p, out.mantissa))
            return false;
    }
    skip_blanks(p);
    if (*p == 0)
        return true;

    if (!is_exponent_letter(*p))
        return false;
    ++p;
    skip_blanks(p);
    take_sign(p, out.negative_exponent);
    if (!take_digits(p, out.exponent))
        return false;
    skip_blanks(p);
    return *p == 0;
}

}  // namespace Tavi
