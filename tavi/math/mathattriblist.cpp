// MathAttribList: an owning, ordered list of attributes.
#include "tavi/math/mathattriblist.h"

#include <memory>

#include "tavi/glyph/subscript.h"

namespace Tavi {

MathAttribList::MathAttribList(MathAttribList const &other)
{
    entries_.reserve(other.entries_.size());
    for (MathAttribute const *a : other.entries_)
        push_back(new MathAttribute(*a));
}

// The copy is made complete before the old entries go, so that a failure leaves the list as it was,
// and so that a list can be assigned to itself.
MathAttribList &MathAttribList::operator=(MathAttribList const &other)
{
    MathAttribList copy(other);
    entries_.swap(copy.entries_);
    return *this;
}

MathAttribList::~MathAttribList() { clear(); }

MathAttribute *MathAttribList::at(std::size_t index) const
{
    check_subscript(static_cast<long>(index), entries_.size());
    return entries_[index];
}

void MathAttribList::push_back(MathAttribute *attribute)
{
    if (attribute == nullptr)
        return;
    std::unique_ptr<MathAttribute> owned(attribute);
    entries_.push_back(attribute);
    owned.release();
}

void MathAttribList::push_back(wchar const *key, wchar const *value) { push_back(new MathAttribute(key, value)); }

void MathAttribList::clear()
{
    for (MathAttribute *a : entries_)
        delete a;
    entries_.clear();
}

}  // namespace Tavi
