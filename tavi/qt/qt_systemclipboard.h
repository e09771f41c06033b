// Qt_SystemClipboard: a clipboard over the window system's, through QClipboard, so that formulas copied
// here paste into other programs and into other Tavi processes. Each format of a copied source travels
// under its own name as a MIME type; a math node also goes out as linear text ("(a + b)/2"), so that
// programs that know no formulas still get something to read, and as presentation MathML
// ("application/mathml+xml") and LaTeX ("text/x-latex") for programs that do.
//
// Paste takes formulas from programs that know no content format too, once a host names the
// templates to build them with (import_with): the math format is then also on offer when the
// clipboard holds MathML ("application/mathml+xml"), LaTeX ("text/x-latex") or text that reads as
// MathML or LaTeX, in that order after the content format itself.
//
// A host opts in with one call after making its QApplication:
//     Tavi::install_system_clipboard();
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "tavi/interchange/clipboard.h"
#include "tavi/kxt/stream.h"
#include "tavi/kxt/wchar.h"

namespace Tavi {

class Qt_HostingFrame;
class TemplateTable;

class Qt_SystemClipboard : public Clipboard
{
public:
    // The 1-based position of the first of `formats` that the system clipboard holds, or 0. The list
    // is kept for get_data, whose index refers to it.
    std::size_t provides(wchar const *const *formats, std::size_t count) const override;
    // The data of the format at `index` of the last list given to provides: "text/plain" as 16-bit
    // units with their terminator, any other format as the bytes it holds. False when the format is
    // not held (any more) or the stream refused the bytes.
    bool get_data(int index, Kxt::KTstream &stream) override;
    // Takes the source over: writes every format it names onto the system clipboard at once, and
    // deletes it. A null source empties the clipboard.
    void data(DataSource *source) override;

    static Qt_SystemClipboard &instance();

    // The templates that pasted MathML and LaTeX are built from; null (the default) pastes the
    // content format and text only. The table must outlive its use here.
    void import_with(TemplateTable *table) { import_table_ = table; }

private:
    Qt_SystemClipboard() = default;

    // The clipboard's formula as content format: its own, or imported from MathML or LaTeX. False
    // when it holds none that imports.
    bool formula_content(std::string &content) const;

    mutable std::vector<wstring> asked_;
    TemplateTable *import_table_ = nullptr;
};

// Installs, once, a Qt hosting frame whose clipboard is the system one, and answers it. Needs a
// QGuiApplication for the clipboard to work; without one, nothing is on offer and copies go nowhere.
Qt_HostingFrame &install_system_clipboard();

}  // namespace Tavi
