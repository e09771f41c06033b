// Clipboard: the static entries that every clipboard shares, and IDataProvider's destructor.
#include "tavi/interchange/clipboard.h"

#include <algorithm>

#include "tavi/interchange/datasource.h"
#include "tavi/interchange/hostingframe.h"

namespace Tavi {

IDataProvider::~IDataProvider() = default;

Clipboard &Clipboard::object() { return HostingFrame::current().clipboard(); }

bool Clipboard::has_text()
{
    wchar const *const formats[] = {plain_text_format};
    return object().provides(formats, 1) != 0;
}

wchar *Clipboard::text()
{
    Clipboard &clipboard = object();
    wchar const *const formats[] = {plain_text_format};
    std::size_t const index = clipboard.provides(formats, 1);
    if (index == 0)
        return nullptr;
    // Block and growth of 512 bytes: a clipboard text is mostly short.
    Kxt::KTheapStream stream(512, 512);
    if (!clipboard.get_data(static_cast<int>(index), stream))
        return nullptr;
    stream.rewind();
    // The data is a terminated 16-bit string; a provider that left the terminator out still
    // ends at the data's end.
    std::size_t const units = stream.length() / sizeof(wchar);
    wstring text(units, u'\0');
    if (units > 0)
        std::copy_n(stream.data(), units * sizeof(wchar), reinterpret_cast<unsigned char *>(&text[0]));
    std::size_t const length = std::min(text.find(u'\0'), units);
    auto *copy = new wchar[length + 1];
    std::copy_n(text.data(), length, copy);
    copy[length] = 0;
    return copy;
}

void Clipboard::text(wchar const *text) { object().data(new TextSource(text)); }

}  // namespace Tavi
