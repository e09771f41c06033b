// Qt_Clipboard: the clipboard of Qt hosting, which holds nothing. Copy and paste of the library's
// own formats are a no-op here; a host that wants the system clipboard installs a hosting frame
// with a clipboard of its own.
#pragma once

#include "tavi/interchange/clipboard.h"

namespace Tavi {

class Qt_Clipboard : public Clipboard
{
public:
    // Offers nothing: 0.
    std::size_t provides(wchar const *const *formats, std::size_t count) const override;
    // Has nothing to give: false, and the stream is left alone.
    bool get_data(int index, Kxt::KTstream &stream) override;
    // Ignores the source and does not take it over: it stays with whoever made it.
    void data(DataSource *source) override;

    static Qt_Clipboard &instance();

private:
    Qt_Clipboard() = default;
};

}  // namespace Tavi
