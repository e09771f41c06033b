// The glyph-code tables of the math extension font, one operator a row.
#include "tavi/math/layout/extension_codes.h"

#include <cstddef>

namespace Tavi {
namespace ExtensionCodes {

namespace {

CharCodes const char_table[] = {
    // text               normal
    {u"&SmallCircle;",    214},
};

DisplayCodes const display_table[] = {
    // text                         normal display  text asc/desc  display asc/desc
    {u"&Vee;",                       87,   95,      800, 200,      1000, 400},
    {u"&Wedge;",                     86,   94,      800, 200,      1000, 400},
    {u"&CirclePlus;",                76,   77,      800, 200,      1000, 400},
    {u"&CircleTimes;",               78,   79,      800, 200,      1000, 400},
    {u"&CircleDot;",                 74,   75,      800, 200,      1000, 400},
    {u"&Sum;",                       80,   88,      800, 200,      1000, 400},
    {u"&prod;",                      81,   89,      800, 200,      1000, 400},
    {u"&coprod;",                    96,   97,      800, 200,      1000, 400},
    {u"&Intersection;",              84,  208,      800, 200,      1000, 400},
    {u"&Union;",                     83,  207,      800, 200,      1000, 400},
    {u"&UnionPlus;",                 85,  211,      800, 200,      1000, 400},
    {u"&SquareUnion;",               70,   71,      800, 200,      1000, 400},
    {u"&Integral;",                  82,   90,      856, 255,      1411, 811},
    {u"&ContourIntegral;",           72,   73,      856, 255,      1411, 811},
    {u"&PrincipalValueIntegral;",   127,  128,      856, 255,      1411, 811},
};

StackCodes const stack_table[] = {
    // text          normal  stack
    {u"|",           124,    175},
    {u"&Verbar;",    172,    176},
};

BigCodes const big_table[] = {
    // text                     normal   big1  big2  big3  big4
    {u"/",                       47,    {177,   46,  193,   44}},
    {u"\\",                      92,    {178,  171,  194,   45}},
    {u"(",                       40,    {161,  179,  181,  195}},
    {u")",                       41,    {162,  180,  182,   33}},
    {u"[",                       91,    {163,  104,  183,   34}},
    {u"]",                       93,    {164,  105,  184,   35}},
    {u"{",                      123,    {169,  110,  189,  199}},
    {u"}",                      125,    {170,  111,  190,  200}},
    {u"&LeftCeiling;",          205,    {167,  108,  187,   38}},
    {u"&RightCeiling;",         206,    {168,  109,  188,   39}},
    {u"&LeftFloor;",            203,    {165,  106,  185,   36}},
    {u"&RightFloor;",           204,    {166,  107,  186,   37}},
    {u"&LeftAngleBracket;",     209,    {173,   68,  191,   42}},
    {u"&RightAngleBracket;",    210,    {174,   69,  192,   43}},
    {u"&Sqrt;",                 213,    {112,  113,  114,  115}},
};

FenceCodes const fence_table[] = {
    // text                top  mid  bottom   heights (1/30 D)   xShift
    {u"(",                 48,  66,  64,      18, 6, 18,         291},
    {u")",                 49,  67,  65,      18, 6, 18,         472},
    {u"[",                 50,  54,  52,      18, 6, 18,           0},
    {u"]",                 51,  55,  53,      18, 6, 18,           0},
    {u"{",                 56,  62,  58,       9, 3,  9,         384},
    {u"}",                 57,  62,  59,       9, 3,  9,         384},
    {u"&LeftCeiling;",     50,  54,  54,      18, 6,  6,           0},
    {u"&RightCeiling;",    51,  55,  55,      18, 6,  6,           0},
    {u"&LeftFloor;",       54,  54,  52,       6, 6, 18,           0},
    {u"&RightFloor;",      55,  55,  53,       6, 6, 18,           0},
    {u"&Sqrt;",           118, 117, 116,       6, 6, 18,         702},
};

bool same_text(wchar const *a, wchar const *b)
{
    while (*a != 0 && *a == *b) {
        ++a;
        ++b;
    }
    return *a == *b;
}

template <class Row, std::size_t N>
Row const *find(Row const (&table)[N], wchar const *text)
{
    if (text == nullptr)
        return nullptr;
    for (Row const &row : table)
        if (same_text(row.text, text))
            return &row;
    return nullptr;
}

}  // namespace

CharCodes const *char_codes(wchar const *text) { return find(char_table, text); }
DisplayCodes const *display_codes(wchar const *text) { return find(display_table, text); }
StackCodes const *stack_codes(wchar const *text) { return find(stack_table, text); }
BigCodes const *big_codes(wchar const *text) { return find(big_table, text); }
FenceCodes const *fence_codes(wchar const *text) { return find(fence_table, text); }

wchar brace_center(wchar const *text) { return text != nullptr && same_text(text, u"{") ? 60 : 61; }

}  // namespace ExtensionCodes
}  // namespace Tavi
