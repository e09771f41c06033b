// Writing wide text to narrow streams as UTF-8: escaped for XML, or plain.
#pragma once

#include "tavi/kxt/wchar.h"

#include <iosfwd>

namespace Kxt {

// Writes `text` as XML character data in UTF-8, fit for element content and for attribute
// values in either kind of quotes:
//  - & < > " ' become &amp; &lt; &gt; &quot; &apos;
//  - tab, line feed and carriage return become &#9; &#10; &#13;, which a reader keeps as they
//    are even in an attribute value, where it would otherwise turn them into blanks;
//  - the other control characters below U+0020, and U+FFFE and U+FFFF, cannot appear in an
//    XML 1.0 document at all, not even as references, and are written as U+FFFD;
//  - a surrogate pair becomes one four-byte sequence, a lone surrogate U+FFFD.
// A null `text` writes nothing.
void putCData(std::ostream &out, wchar const *text);

}  // namespace Kxt

// Writes a NUL-terminated wide string narrowed to UTF-8, with no escaping; lone surrogates become
// U+FFFD and a null pointer writes nothing. It is declared outside any namespace because
// argument-dependent lookup looks only in std for these arguments, and the using-declarations
// below make it visible where Tavi and Kxt code declares operators of its own. Being an exact
// match, it wins over the standard output of a pointer as an address.
std::ostream &operator<<(std::ostream &out, Kxt::wchar const *text);

namespace Kxt {
using ::operator<<;
}  // namespace Kxt

namespace Tavi {
using ::operator<<;
}  // namespace Tavi
