// FontSpec: the shared, reference-counted description of a font (name, size in twips, bold, italic).
// It is never changed while shared: its setters copy on write and answer the object to hold from now on.
#pragma once

#include "tavi/kxt/resource.h"
#include "tavi/kxt/wchar.h"

#include <cstdint>

namespace Tavi {

class FontSpec : public Kxt::RefCounted<Kxt::IResource>
{
public:
    // "Arial", 240 twips (12 points), neither bold nor italic.
    FontSpec();
    // A null name is taken as empty.
    FontSpec(wchar const *name, long size, bool bold, bool italic);

    wchar const *name() const { return name_; }
    long size() const { return size_; }
    bool bold() const { return (bits_ & bold_bit) != 0; }
    bool italic() const { return (bits_ & italic_bit) != 0; }
    unsigned long hash() const { return bits_ & hash_mask; }

    // XOR of the name's 16-bit units, times 4, XOR 1 if bold, XOR 2 if italic, low 30 bits kept.
    // The size is not part of it.
    void rehash();

    // Hash first (the cheap refusal), then size, bold, italic, and the name unit by unit.
    bool equal(FontSpec const &other) const;
    // By size, then bold, then italic (false before true), then name by unsigned 16-bit units.
    bool less(FontSpec const &other) const;

    // Copy on write. The same value answers this object; an object held once is changed in place and
    // answered; a shared one is left untouched and a new spec with the change is answered. The caller
    // takes the answer as its new reference.
    FontSpec *name(wchar const *name);
    FontSpec *size(long size);
    FontSpec *bold(bool bold);
    FontSpec *italic(bool italic);

protected:
    ~FontSpec() override = default;

private:
    FontSpec(FontSpec const &other) = default;
    FontSpec &operator=(FontSpec const &) = delete;

    static constexpr std::uint32_t hash_mask = 0x3fffffffu;
    static constexpr std::uint32_t bold_bit = 0x40000000u;
    static constexpr std::uint32_t italic_bit = 0x80000000u;

    // Every name is kept once for the life of the program (fonts are few): a copy of a description
    // copies a pointer, and equal names are the same pointer.
    static wchar const *interned(wchar const *name);

    wchar const *name_;
    long size_;
    // hash in the low 30 bits, bold in bit 30, italic in bit 31.
    std::uint32_t bits_;
};

}  // namespace Tavi
