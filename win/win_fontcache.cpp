// Win_FontCache: a vector of entries under one lock, walked linearly.
#include "win/win_fontcache.h"

#include "tavi/canvas/fontimpl.h"

#include <mutex>
#include <vector>

namespace Tavi {

namespace {

struct Entry
{
    Font font;
    Gauge::CharSet char_set;
    long height;
    long angle;
    Gdi::HFONT handle;
    long uses;
};

struct Cache
{
    std::mutex lock;
    std::vector<Entry> entries;
};

// Made at first use, so that it exists before any canvas of a static constructor needs it.
Cache &cache()
{
    static Cache the_cache;
    return the_cache;
}

bool same_spec(Font const &a, Font const &b) { return a.spec() == b.spec() || a.spec()->equal(*b.spec()); }

Gdi::LOGFONTW logfont(Entry const &e)
{
    Gdi::LOGFONTW lf{};
    lf.lfHeight = -e.height;
    lf.lfWidth = 0;
    lf.lfEscapement = e.angle * 10;
    lf.lfOrientation = e.angle * 10;
    lf.lfWeight = e.font.bold() ? 700 : 400;
    lf.lfItalic = e.font.italic() ? 1 : 0;
    // Our char sets are GDI's numbers: ANSI_CHARSET, DEFAULT_CHARSET, SYMBOL_CHARSET.
    lf.lfCharSet = static_cast<unsigned char>(e.char_set);
    lf.lfOutPrecision = Gdi::out_tt_only_precis;
    wchar const *name = e.font.name();
    for (std::size_t i = 0; i < 31 && name[i] != 0; ++i)
        lf.lfFaceName[i] = name[i];
    return lf;
}

}  // namespace

std::size_t Win_FontCache::lookup(Font const &font, Gauge::CharSet char_set, long height, long angle)
{
    Cache &c = cache();
    std::lock_guard<std::mutex> const hold(c.lock);
    for (std::size_t i = 0; i < c.entries.size(); ++i) {
        Entry const &e = c.entries[i];
        if (e.height == height && e.char_set == char_set && e.angle == angle && same_spec(e.font, font))
            return i;
    }
    if (c.entries.size() >= limit)
        return 0;
    c.entries.push_back(Entry{font, char_set, height, angle, nullptr, 0});
    return c.entries.size() - 1;
}

Gdi::HFONT Win_FontCache::acquire(std::size_t index)
{
    Cache &c = cache();
    std::lock_guard<std::mutex> const hold(c.lock);
    if (index >= c.entries.size())
        return nullptr;
    Entry &e = c.entries[index];
    if (e.handle == nullptr) {
        Gdi &gdi = Gdi::current();
        Gdi::LOGFONTW const lf = logfont(e);
        e.handle = gdi.CreateFontIndirectW(&lf);
        // Out of handles: the fonts no canvas holds are made again when next wanted.
        if (e.handle == nullptr) {
            for (Entry &other : c.entries)
                if (other.uses == 0 && other.handle != nullptr) {
                    gdi.DeleteObject(other.handle);
                    other.handle = nullptr;
                }
            e.handle = gdi.CreateFontIndirectW(&lf);
        }
        if (e.handle == nullptr)
            return nullptr;
    }
    ++e.uses;
    return e.handle;
}

void Win_FontCache::release(std::size_t index)
{
    Cache &c = cache();
    std::lock_guard<std::mutex> const hold(c.lock);
    if (index < c.entries.size() && c.entries[index].uses > 0)
        --c.entries[index].uses;
}

std::size_t Win_FontCache::size()
{
    Cache &c = cache();
    std::lock_guard<std::mutex> const hold(c.lock);
    return c.entries.size();
}

long Win_FontCache::uses(std::size_t index)
{
    Cache &c = cache();
    std::lock_guard<std::mutex> const hold(c.lock);
    return index < c.entries.size() ? c.entries[index].uses : 0;
}

void Win_FontCache::clear()
{
    Cache &c = cache();
    std::lock_guard<std::mutex> const hold(c.lock);
    for (Entry &e : c.entries)
        if (e.handle != nullptr)
            Gdi::current().DeleteObject(e.handle);
    c.entries.clear();
}

}  // namespace Tavi
