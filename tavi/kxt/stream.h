// Byte streams: the KTstream interface and the memory streams behind it.
#pragma once

#include <cstddef>
#include <vector>

namespace Kxt {

// A source and sink of bytes. Each call moves what it can and reports how many bytes it moved
// and how it went. Reaching the end of the data is not a failure: a read answers Ok with fewer
// bytes than asked for, and 0 at the very end.
class KTstream {
public:
    enum Status {
        Ok,         // the call did what it could; for a write, everything was written
        NoSpace,    // a write found the stream full; `count` says how much went in
        ReadOnly,   // the stream takes no writes
        Failed,     // the device behind the stream failed
    };

    virtual ~KTstream();

    virtual Status read(void *buffer, std::size_t size, std::size_t &count) = 0;
    virtual Status write(void const *data, std::size_t size, std::size_t &count) = 0;

protected:
    KTstream() = default;
    KTstream(KTstream const &) = delete;
    KTstream &operator=(KTstream const &) = delete;
};

// The other spelling of the success status.
constexpr KTstream::Status KTstream_Ok = KTstream::Ok;

// A stream over one block of memory, with a single position for reading and writing. Writing
// past the end of what is held extends it; `data` and `length` give what is held whatever the
// position, and `rewind` goes back to the start for reading it again.
//
// Made over a caller's block it never grows: a write that does not fit puts in what fits and
// answers NoSpace. Made over constant bytes it is for reading only.
class KTmemoryStream : public KTstream {
public:
    // Nothing held and no room: every write answers NoSpace.
    KTmemoryStream() = default;
    // Reads `length` bytes that the caller keeps alive; writes answer ReadOnly.
    KTmemoryStream(void const *data, std::size_t length);
    // Writes into the caller's `capacity` bytes, of which the first `length` count as held.
    KTmemoryStream(void *buffer, std::size_t capacity, std::size_t length);

    Status read(void *buffer, std::size_t size, std::size_t &count) override;
    Status write(void const *data, std::size_t size, std::size_t &count) override;

    unsigned char const *data() const { return buffer_; }
    std::size_t length() const { return length_; }
    std::size_t capacity() const { return capacity_; }
    std::size_t position() const { return position_; }
    void rewind() { position_ = 0; }

protected:
    // Asked when a write needs `needed` bytes of room in all; a stream that can grow makes room
    // and calls `adopt`. The answer is whether it did.
    virtual bool grow(std::size_t needed);
    void adopt(unsigned char *buffer, std::size_t capacity);

private:
    unsigned char *buffer_ = nullptr;
    std::size_t capacity_ = 0;
    std::size_t length_ = 0;
    std::size_t position_ = 0;
    bool writable_ = true;
};

// A memory stream that owns its block and grows it on demand: it starts with `block` bytes and
// grows in steps of `growth` bytes (doubling when `growth` is 0).
//
// At least two zero bytes always follow the data held, so that `data` can be read as a
// NUL-terminated string of 8-bit or of 16-bit units even when the writer left the terminator
// out or wrote only part of it.
class KTheapStream : public KTmemoryStream {
public:
    KTheapStream(std::size_t block, std::size_t growth);

protected:
    bool grow(std::size_t needed) override;

private:
    static constexpr std::size_t terminator_room = 2;

    std::size_t growth_;
    std::vector<unsigned char> storage_;
};

}  // namespace Kxt

namespace Tavi {
using Kxt::KTheapStream;
using Kxt::KTmemoryStream;
using Kxt::KTstream;
using Kxt::KTstream_Ok;
}  // namespace Tavi
