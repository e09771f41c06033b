// The one wide character of the library: a 16-bit UTF-16 unit, whatever the platform's wchar_t is.
// Byte counts such as (length + 1) * 2 in the clipboard formats depend on it being 16 bits.
#pragma once

#include <string>

namespace Kxt {
using wchar = char16_t;
using wstring = std::u16string;
}  // namespace Kxt

namespace Tavi {
using Kxt::wchar;
using Kxt::wstring;
}  // namespace Tavi
