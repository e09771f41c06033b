// MathInfo: the fonts of a formula, their size at the present script level, and the state that
// layouts set and restore on the way down.
#include "tavi/math/mathinfo.h"

#include "tavi/math/mathstyle.h"

#include <algorithm>

namespace Tavi {

namespace {

wchar const text_family[] = u"Times New Roman";
wchar const symbol_family[] = u"Symbol";
wchar const extension_family[] = u"KMT Math Ext";
wchar const open_face_family[] = u"KMT Math Open Face";

// The character set of each font class, by class number.
Gauge::CharSet const class_char_set[5] = {
    Gauge::cs_ansi,     // 0 upright text
    Gauge::cs_unicode,  // 1 text
    Gauge::cs_symbol,   // 2 symbols
    Gauge::cs_symbol,   // 3 math extension
    Gauge::cs_ansi,     // 4 open face
};

// Storage slot of each class: the fonts are kept in the order 1, 0, 2, 3, 4.
int const class_slot[5] = {1, 0, 2, 3, 4};

long const default_multiplier = 71;
long const default_scriptminsize = 160;

// Multipliers beyond this (in percent) are taken as this, so that the factors of deep levels cannot
// overflow; it is also where a growing factor stops (a size far beyond any font).
long const factor_cap = 1000000000L;

}  // namespace

MathInfo::Settings::Settings()
    : font(text_family, 240, false, false),
      color(Color::black),
      scriptlevel(0),
      displaystyle(true),
      slanted_identifiers(true),
      wrap_lines(true),
      scriptminsize(default_scriptminsize),
      scriptsizemultiplier(default_multiplier)
{
}

MathInfo::MathInfo(MathStyle *style) : MathInfo(style, read_style(style)) {}

MathInfo::MathInfo(MathStyle *style, Settings const &settings)
    : math_node_(nullptr),
      child_index_(0),
      style_(style),
      fonts_{settings.font, settings.font, Font(symbol_family, 240, false, false),
             Font(extension_family, 240, false, false), Font(open_face_family, 240, false, false)},
      color_(settings.color),
      scriptlevel_(settings.scriptlevel),
      caret_pos_(-1),
      displaystyle_(settings.displaystyle),
      slanted_identifiers_(settings.slanted_identifiers),
      wrap_lines_(settings.wrap_lines),
      in_selection_(false),
      scriptminsize_(settings.scriptminsize),
      multipliers_{}
{
    // The symbol font follows the text font's weight, and every other class its size.
    Font const &text = fonts_[slot(MathString::f_text)];
    fonts_[slot(MathString::f_symbol)].bold(text.bold());
    for (MathString::Font cls : {MathString::f_symbol, MathString::f_extension, MathString::f_open_face})
        fonts_[slot(cls)].size(text.size());

    // Percent per level: level 1 is the multiplier, each further level the one before times the
    // multiplier / 100, truncated (71 gives 71, 50, 35, 24, 17).
    long const multiplier = std::min(settings.scriptsizemultiplier, factor_cap);
    multipliers_[0] = multiplier;
    for (int i = 1; i < 5; ++i)
        multipliers_[i] = multipliers_[i - 1] * multiplier / 100;
}

MathInfo::~MathInfo() = default;

// Each attribute is looked up by name, so that a style of another class with the same names serves
// as well; an attribute that the style doesn't answer keeps its default. "font" (id 1) replaces the
// text font altogether.
MathInfo::Settings MathInfo::read_style(MathStyle *style)
{
    Settings settings;
    if (style == nullptr)
        return settings;
    style->font(style->id(u"font"), settings.font);
    style->color(style->id(u"text-color"), settings.color);
    style->number(style->id(u"scriptlevel"), settings.scriptlevel);
    style->boolean(style->id(u"displaystyle"), settings.displaystyle);
    style->boolean(style->id(u"slanted-identifiers"), settings.slanted_identifiers);
    style->boolean(style->id(u"wrap-lines"), settings.wrap_lines);
    style->size(style->id(u"scriptminsize"), settings.scriptminsize);
    style->number(style->id(u"scriptsizemultiplier"), settings.scriptsizemultiplier);
    return settings;
}

int MathInfo::slot(MathString::Font cls)
{
    int const n = static_cast<int>(cls);
    return n >= 0 && n < 5 ? class_slot[n] : class_slot[MathString::f_text];
}

long MathInfo::child_index(long index)
{
    long const old = child_index_;
    child_index_ = index;
    return old;
}

Font const &MathInfo::font(MathString::Font cls) const { return fonts_[slot(cls)]; }

Gauge::CharSet MathInfo::char_set(MathString::Font cls) const
{
    int const n = static_cast<int>(cls);
    return n >= 0 && n < 5 ? class_char_set[n] : Gauge::cs_unicode;
}

bool MathInfo::displaystyle(bool on)
{
    bool const old = displaystyle_;
    displaystyle_ = on;
    return old;
}

bool MathInfo::in_selection(bool on)
{
    bool const old = in_selection_;
    in_selection_ = on;
    return old;
}

bool MathInfo::italic_fontstyle() const { return fonts_[slot(MathString::f_text)].italic(); }

// A copy with the flag changed: holders of the old font keep theirs.
void MathInfo::italic_fontstyle(bool italic)
{
    Font copy(fonts_[slot(MathString::f_text)]);
    copy.italic(italic);
    fonts_[slot(MathString::f_text)] = copy;
}

namespace {

// One step of the factor of a deep script level: factor * step / 100, truncated. Once a step changes
// nothing the rest would not either, and a growing factor stops at factor_cap, so absurd levels neither
// overflow nor take long.
long repeat_factor(long factor, long step, long times)
{
    for (long i = 0; i < times; ++i) {
        long const next = factor * step / 100;
        if (next == factor)
            break;
        if (next >= factor_cap)
            return factor_cap;
        factor = next;
    }
    return factor;
}

}  // namespace

// The size at the present script level, in twips:
//   level 0       the stored size, with no minimum;
//   levels 1..5   size * multiplier[level] / 100;
//   level >= 6    the factor starts at the level 1 multiplier m and is multiplied by m / 100,
//                 truncated, level - 1 times;
//   level < 0     the factor starts at s = 10000 / m and is multiplied by s / 100, truncated,
//                 -level - 1 times;
// and never less than scriptminsize once scaled.
long MathInfo::real_font_size(MathString::Font cls) const
{
    long const base = fonts_[slot(cls)].size();
    long const level = scriptlevel_;
    if (level == 0)
        return base;
    long const m = multipliers_[0];
    long factor;
    if (level >= 1 && level <= 5) {
        factor = multipliers_[level - 1];
    } else if (level >= 6) {
        factor = repeat_factor(m, m, level - 1);
    } else {
        // A multiplier of 0 cannot scale down a negative level; it is taken as no scaling.
        long const start = m > 0 ? 10000 / m : 100;
        factor = repeat_factor(start, start, -(level + 1));
    }
    long const size = base * factor / 100;
    return size < scriptminsize_ ? scriptminsize_ : size;
}

Font MathInfo::real_font(MathString::Font cls) const
{
    Font f(fonts_[slot(cls)]);
    f.size(real_font_size(cls));
    return f;
}

}  // namespace Tavi
