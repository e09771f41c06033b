// The one index check of the glyph containers: an index outside [0, size) raises the standard
// out-of-range error with the words every container of the library uses.
#pragma once

#include <cstddef>
#include <stdexcept>

namespace Tavi {

inline void check_subscript(long index, std::size_t size)
{
    if (index < 0 || static_cast<std::size_t>(index) >= size)
        throw std::out_of_range("invalid vector<T> subscript");
}

}  // namespace Tavi
