// MemoryClipboard.
#include "tavi/interchange/memoryclipboard.h"

#include "tavi/interchange/datasource.h"
#include "tavi/kxt/stream.h"

namespace Tavi {

MemoryClipboard::MemoryClipboard() = default;

MemoryClipboard::~MemoryClipboard() = default;

std::size_t MemoryClipboard::provides(wchar const *const *formats, std::size_t count) const
{
    asked_.clear();
    for (std::size_t i = 0; i < count; ++i)
        asked_.emplace_back(formats[i] ? formats[i] : u"");
    if (!source_)
        return 0;
    for (std::size_t i = 0; i < count; ++i)
        for (std::size_t f = 0; wchar const *name = source_->format(f); ++f)
            if (asked_[i] == name)
                return i + 1;
    return 0;
}

bool MemoryClipboard::get_data(int index, Kxt::KTstream &stream)
{
    if (!source_ || index < 1 || static_cast<std::size_t>(index) > asked_.size())
        return false;
    wstring const &wanted = asked_[static_cast<std::size_t>(index) - 1];
    for (std::size_t f = 0; wchar const *name = source_->format(f); ++f) {
        if (wanted != name)
            continue;
        Kxt::KTheapStream buffer(512, 512);
        if (!source_->serialize(f, buffer))
            return false;
        std::size_t written = 0;
        return buffer.length() == 0 ||
               (stream.write(buffer.data(), buffer.length(), written) == Kxt::KTstream::Ok &&
                written == buffer.length());
    }
    return false;
}

void MemoryClipboard::data(DataSource *source) { source_.reset(source); }

}  // namespace Tavi
