// Clipboard: where copied data sources go and pasted data comes from, reached through the hosting
// frame so that the host decides what lies behind it.
#pragma once

#include "tavi/interchange/dataprovider.h"
#include "tavi/kxt/wchar.h"

namespace Tavi {

class DataSource;

class Clipboard : public IDataProvider
{
public:
    // Takes the source as the clipboard's content; by intent the clipboard owns it from then on.
    virtual void data(DataSource *source) = 0;

    // The clipboard of the current hosting frame.
    static Clipboard &object();
    // Whether it offers plain text.
    static bool has_text();
    // Its plain text as a new terminated array that the caller frees with delete[]; null when it
    // has none or can't give it.
    static wchar *text();
    // Puts a copy of the text on it as a TextSource (null as empty).
    static void text(wchar const *text);

protected:
    Clipboard() = default;
    Clipboard(Clipboard const &) = delete;
    Clipboard &operator=(Clipboard const &) = delete;
};

}  // namespace Tavi
