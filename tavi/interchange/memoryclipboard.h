// MemoryClipboard: a clipboard that lives in the process, for hosts without a system clipboard (and
// for scripted editing). It owns the data source it was given and serializes a format only when it
// is asked for. As with every clipboard, get_data's position refers to the formats of the last
// `provides` question.
#pragma once

#include <memory>
#include <vector>

#include "tavi/interchange/clipboard.h"
#include "tavi/interchange/datasource.h"
#include "tavi/kxt/wchar.h"

namespace Tavi {

class MemoryClipboard : public Clipboard
{
public:
    MemoryClipboard();
    ~MemoryClipboard() override;

    std::size_t provides(wchar const *const *formats, std::size_t count) const override;
    bool get_data(int index, Kxt::KTstream &stream) override;
    // Takes the source over, dropping the one held before.
    void data(DataSource *source) override;

    DataSource *source() const { return source_.get(); }
    void clear() { source_.reset(); }

private:
    std::unique_ptr<DataSource> source_;
    // The formats of the last question, by name.
    mutable std::vector<wstring> asked_;
};

}  // namespace Tavi
