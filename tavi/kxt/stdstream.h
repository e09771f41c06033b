// KTstreamStdStream: a std::ostream that writes through to a KTstream.
#pragma once

#include "tavi/kxt/stream.h"

#include <ostream>
#include <streambuf>

namespace Kxt {

// The stream buffer behind KTstreamStdStream. It keeps no buffer of its own: every byte goes to
// the KTstream at once, so the KTstream holds all that was written without a flush, and a
// stream that refuses a write shows at once as badbit on the std::ostream.
class KTstreamBuf : public std::streambuf {
public:
    explicit KTstreamBuf(KTstream &stream) : stream_(stream) {}

protected:
    int_type overflow(int_type c) override;
    std::streamsize xsputn(char_type const *data, std::streamsize size) override;

private:
    KTstream &stream_;
};

// Lets code that writes to a std::ostream write to a KTstream. The KTstream must outlive it.
class KTstreamStdStream : public std::ostream {
public:
    explicit KTstreamStdStream(KTstream &stream);

private:
    KTstreamBuf buffer_;
};

}  // namespace Kxt

namespace Tavi {
using Kxt::KTstreamStdStream;
}  // namespace Tavi
