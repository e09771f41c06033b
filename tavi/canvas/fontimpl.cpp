// FontSpec: the interned names, hashing, comparison and the copy-on-write setters.
#include "tavi/canvas/fontimpl.h"

#include <mutex>
#include <string_view>
#include <unordered_set>

namespace Tavi {

namespace {

wchar const default_name[] = u"Arial";

}  // namespace

// The set's nodes never move, so the pointers handed out stay valid; a lock, since fonts are made on
// every thread that lays formulas out.
wchar const *FontSpec::interned(wchar const *name)
{
    static std::mutex lock;
    static std::unordered_set<wstring> *names = new std::unordered_set<wstring>;
    std::lock_guard<std::mutex> guard(lock);
    return names->emplace(name != nullptr ? name : u"").first->c_str();
}

FontSpec::FontSpec() : name_(interned(default_name)), size_(240), bits_(0) { rehash(); }

FontSpec::FontSpec(wchar const *name, long size, bool bold, bool italic)
    : name_(interned(name)), size_(size), bits_((bold ? bold_bit : 0u) | (italic ? italic_bit : 0u))
{
    rehash();
}

void FontSpec::rehash()
{
    std::uint32_t h = 0;
    for (wchar const *c = name_; *c != 0; ++c)
        h ^= *c;
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
           name_ == other.name_;  // interned: the same name is the same pointer
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
    return std::u16string_view(name_) < std::u16string_view(other.name_);
}

FontSpec *FontSpec::name(wchar const *name)
{
    wchar const *value = interned(name);
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
    // The size is no part of the hash.
    target->size_ = size;
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
