// MathAttribList: the attributes of a node in order. The list owns its entries; it is walked from
// first to last and never searched by key, since a node applies its attributes in the order given.
#pragma once

#include <cstddef>
#include <vector>

#include "tavi/math/mathattribute.h"

namespace Tavi {

class MathAttribList
{
public:
    MathAttribList() = default;
    // The copy holds new attributes of the same keys (shared) and values (copied).
    MathAttribList(MathAttribList const &other);
    MathAttribList &operator=(MathAttribList const &other);
    // Deletes the entries in order.
    ~MathAttribList();

    std::size_t size() const { return entries_.size(); }
    bool empty() const { return entries_.empty(); }
    // An index outside the list raises std::out_of_range("invalid vector<T> subscript").
    MathAttribute *at(std::size_t index) const;

    // Takes over the attribute; null is ignored.
    void push_back(MathAttribute *attribute);
    void push_back(wchar const *key, wchar const *value);
    void clear();

    std::vector<MathAttribute *>::const_iterator begin() const { return entries_.begin(); }
    std::vector<MathAttribute *>::const_iterator end() const { return entries_.end(); }

private:
    std::vector<MathAttribute *> entries_;
};

}  // namespace Tavi
