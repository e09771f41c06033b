// Fuzzing character decoding: any bytes, as UTF-8, decoded into a formula's text. A text that decodes
// gives back, in its text form, a text that decodes into the same string.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "tavi/kxt/utf.h"
#include "tavi/math/mathstring.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const *data, std::size_t size)
{
    Tavi::wstring const text = Kxt::to_ustring(std::string(reinterpret_cast<char const *>(data), size));
    Tavi::MathString first;
    if (!Tavi::MathString::decode(text.c_str(), text.size(), first))
        return 0;
    Tavi::wstring const form = first.text_form();
    Tavi::MathString second;
    if (!Tavi::MathString::decode(form.c_str(), form.size(), second) || !(second == first))
        std::abort();
    return 0;
}
