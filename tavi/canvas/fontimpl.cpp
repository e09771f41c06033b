// FontSpec: hashing, comparison and the copy-on-write setters.
#include "tavi/canvas/fontimpl.h"

namespace Tavi {

namespace {

wchar const default_name[] = u"Arial";

}  // namespace

FontSpec::FontSpec() : name_(default_name), size_(240), bits_(0) { rehash(); }

FontSpec::FontSpec(wchar const *name, long size, bool bold, bool italic)
    : name_(name != nullptr ? name : u""), size_(size), bits_((bold ? bold_bit : 0u) | (italic ? italic_bit : 0u))
{
    rehash();
}

void FontSpec::rehash()
{
    std::uint32_t h = 0;
    for (wchar c : name_)
        h ^= c;
    h *= 4;
    if (bold())
        h ^= 1;
    if (italic())
        h ^= 2;
    bits_ = (bits_ & ~hash_mask) | (h & hash_mask);
}

bool FontSpec::equal(FontSpec const &other) const
{
    return hash() == other.hash() && size_ == other.size_ && bold() == other.bold() && italic() == other.italic() &&
           name_ == other.name_;
}

// The name compares by unsigned 16-bit units, which is what comparing char16_t strings does.
bool FontSpec::less(FontSpec const &other) const
{
    if (size_ != other.size_)
        return size_ < other.size_;
    if (bold() != other.bold())
        return !bold();
    if (italic() != other.italic())
        return !italic();
    return name_ < other.name_;
}

FontSpec *FontSpec::name(wchar const *name)
{
    wstring const value(name != nullptr ? name : u"");
    if (value == name_)
        return this;
    FontSpec *target = is_shared() ? new FontSpec(*this) : this;
    target->name_ = value;
    target->rehash();
    return target;
}

FontSpec *FontSpec::size(long size)
{
    if (size == size_)
        return this;
    FontSpec *target = is_shared() ? new FontSpec(*this) : this;
    target->size_ = size;
    target->rehash();
    return target;
}

FontSpec *FontSpec::bold(bool bold)
{
    if (bold == this->bold())
        return this;
    FontSpec *target = is_shared() ? new FontSpec(*this) : this;
    target->bits_ ^= bold_bit;
    target->rehash();
    return target;
}

FontSpec *FontSpec::italic(bool italic)
{
    if (italic == this->italic())
        return this;
    FontSpec *target = is_shared() ? new FontSpec(*this) : this;
    target->bits_ ^= italic_bit;
    target->rehash();
    return target;
}

}  // namespace Tavi
