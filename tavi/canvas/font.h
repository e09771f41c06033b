// Font: a small handle on a shared, reference-counted FontSpec. Copies share one description; a setter that
// changes a shared description gets a new one (copy on write), so other holders keep what they had.
#pragma once

#include "tavi/kxt/wchar.h"

namespace Tavi {

class FontSpec;

class Font
{
public:
    // "Arial", 240 twips (12 points), neither bold nor italic.
    Font();
    // size in twentieths of a point.
    Font(wchar const *name, long size, bool bold, bool italic);
    Font(Font const &other);
    Font &operator=(Font const &other);
    virtual ~Font();

    wchar const *name() const;
    long size() const;
    bool bold() const;
    bool italic() const;
    unsigned long hash() const;

    void name(wchar const *name);
    void size(long size);
    void bold(bool bold);
    void italic(bool italic);

    FontSpec const *spec() const { return spec_; }

private:
    // Takes the setter's answer as the new reference and releases the old one.
    void adopt(FontSpec *spec);

    FontSpec *spec_;
};

// Same spec object, or FontSpec::equal.
bool operator==(Font const &a, Font const &b);
bool operator!=(Font const &a, Font const &b);
// FontSpec::less.
bool operator<(Font const &a, Font const &b);

}  // namespace Tavi
