// Win_FontCache: the GDI fonts of the whole process, one entry per font, char set, pixel height and
// angle, shared by every Win_* canvas on every thread. An entry's HFONT is made when a canvas first
// selects it and lives on after, since formulas use few fonts and ask for them over and over.
#pragma once

#include "tavi/canvas/font.h"
#include "tavi/canvas/gauge.h"
#include "win/gdi.h"

#include <cstddef>

namespace Tavi {

class Win_FontCache
{
public:
    // Entries stop being added here: a lookup beyond it answers entry 0.
    static constexpr std::size_t limit = 32768;

    // The index of the entry for these, appended (without a handle yet) when there is none.
    static std::size_t lookup(Font const &font, Gauge::CharSet char_set, long height, long angle);
    // The entry's font, made now if it has none, with one more use counted; null, and no use counted,
    // when it cannot be made even after the unused handles are dropped.
    static Gdi::HFONT acquire(std::size_t index);
    // One use less.
    static void release(std::size_t index);

    static std::size_t size();
    // How many canvases hold the entry.
    static long uses(std::size_t index);
    // Deletes every handle and forgets every entry: for a process that changes its Gdi.
    static void clear();
};

}  // namespace Tavi
