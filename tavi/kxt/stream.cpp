// The memory streams: reading and writing at one position, and growing the heap stream.
#include "tavi/kxt/stream.h"

#include <cstring>
#include <exception>

namespace Kxt {

KTstream::~KTstream() = default;

KTmemoryStream::KTmemoryStream(void const *data, std::size_t length)
    : buffer_(static_cast<unsigned char *>(const_cast<void *>(data))),
      capacity_(data ? length : 0),
      length_(data ? length : 0),
      writable_(false)
{
}

KTmemoryStream::KTmemoryStream(void *buffer, std::size_t capacity, std::size_t length)
    : buffer_(static_cast<unsigned char *>(buffer)),
      capacity_(buffer ? capacity : 0),
      length_(buffer ? (length < capacity ? length : capacity) : 0)
{
}

KTstream::Status KTmemoryStream::read(void *buffer, std::size_t size, std::size_t &count)
{
    std::size_t const left = length_ - position_;
    count = size < left ? size : left;
    if (count) {
        std::memcpy(buffer, buffer_ + position_, count);
        position_ += count;
    }
    return Ok;
}

KTstream::Status KTmemoryStream::write(void const *data, std::size_t size, std::size_t &count)
{
    count = 0;
    if (!writable_)
        return ReadOnly;
    if (size > capacity_ - position_)
        grow(position_ + size);
    std::size_t const room = capacity_ - position_;
    count = size < room ? size : room;
    if (count) {
        std::memcpy(buffer_ + position_, data, count);
        position_ += count;
        if (position_ > length_)
            length_ = position_;
    }
    return count == size ? Ok : NoSpace;
}

bool KTmemoryStream::grow(std::size_t) { return false; }

void KTmemoryStream::adopt(unsigned char *buffer, std::size_t capacity)
{
    buffer_ = buffer;
    capacity_ = capacity;
}

// The block keeps two bytes more than it admits to as room for writing, so the zeros behind
// the data can never be overwritten.
KTheapStream::KTheapStream(std::size_t block, std::size_t growth)
    : growth_(growth), storage_(block + terminator_room, 0)
{
    adopt(storage_.data(), block);
}

// Grows by whole steps of `growth` until the write fits; vector::resize fills the new bytes
// with zeros, which keeps the terminator promise. A size beyond what memory can give is
// refused, and the write then answers NoSpace.
bool KTheapStream::grow(std::size_t needed)
{
    std::size_t const limit = storage_.max_size() - terminator_room;
    std::size_t room = capacity();
    if (needed <= room)
        return true;
    if (needed > limit)
        return false;
    if (growth_) {
        std::size_t const steps = (needed - room + growth_ - 1) / growth_;
        room = steps > (limit - room) / growth_ ? limit : room + steps * growth_;
    } else {
        while (room < needed)
            room = room > limit / 2 ? limit : room ? room * 2 : 1;
    }
    try {
        storage_.resize(room + terminator_room, 0);
    } catch (std::exception const &) {
        return false;
    }
    adopt(storage_.data(), room);
    return true;
}

}  // namespace Kxt
