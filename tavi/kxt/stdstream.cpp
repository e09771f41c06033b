// Writing a std::ostream through to a KTstream.
#include "tavi/kxt/stdstream.h"

namespace Kxt {

KTstreamBuf::int_type KTstreamBuf::overflow(int_type c)
{
    if (traits_type::eq_int_type(c, traits_type::eof()))
        return traits_type::not_eof(c);
    char const byte = traits_type::to_char_type(c);
    std::size_t count = 0;
    if (stream_.write(&byte, 1, count) != KTstream::Ok || count != 1)
        return traits_type::eof();
    return c;
}

std::streamsize KTstreamBuf::xsputn(char_type const *data, std::streamsize size)
{
    if (size <= 0)
        return 0;
    std::size_t count = 0;
    stream_.write(data, static_cast<std::size_t>(size), count);
    return static_cast<std::streamsize>(count);
}

// The base is built before the member it will use, so it starts with no buffer and is
// given one once the member exists; rdbuf clears the badbit that the null buffer set.
KTstreamStdStream::KTstreamStdStream(KTstream &stream) : std::ostream(nullptr), buffer_(stream)
{
    rdbuf(&buffer_);
}

}  // namespace Kxt
