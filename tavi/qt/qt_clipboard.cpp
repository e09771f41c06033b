// Qt_Clipboard: a clipboard that offers nothing and keeps nothing.
#include "tavi/qt/qt_clipboard.h"

namespace Tavi {

std::size_t Qt_Clipboard::provides(wchar const *const *, std::size_t) const { return 0; }

bool Qt_Clipboard::get_data(int, Kxt::KTstream &) { return false; }

void Qt_Clipboard::data(DataSource *) {}

Qt_Clipboard &Qt_Clipboard::instance()
{
    static Qt_Clipboard clipboard;
    return clipboard;
}

}  // namespace Tavi
