// IDataProvider: the side of a clipboard that hands data out by format.
#pragma once

#include <cstddef>

#include "tavi/kxt/stream.h"
#include "tavi/kxt/wchar.h"

namespace Tavi {

class IDataProvider
{
public:
    // The 1-based position in `formats` of the first format on offer; 0 when none is.
    virtual std::size_t provides(wchar const *const *formats, std::size_t count) const = 0;
    // Writes the data of the format at that position to the stream; whether it did.
    virtual bool get_data(int index, Kxt::KTstream &stream) = 0;
    virtual ~IDataProvider();
};

}  // namespace Tavi
