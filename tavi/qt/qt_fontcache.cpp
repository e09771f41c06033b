// QtFontCache.
#include "tavi/qt/qt_fontcache.h"

#include <QString>

namespace Tavi {

QFontMetrics const &QtFontRecord::metrics_for(QPaintDevice *device)
{
    if (!metrics)
        metrics.emplace(qfont, device);
    return *metrics;
}

QtFontCache &QtFontCache::local()
{
    static thread_local QtFontCache cache;
    return cache;
}

// Qt takes whole points: the size in twips is divided by 20 with truncation, so 12.5 points (250
// twips) select 12.
QtFontRecord *QtFontCache::record(Font const &font, Gauge::CharSet char_set, int dpi_x, int dpi_y, int device_type)
{
    for (Recent const &r : recent_)
        if (r.record != nullptr && r.font.spec() == font.spec() && r.char_set == char_set && r.dpi_x == dpi_x &&
            r.dpi_y == dpi_y && r.device_type == device_type)
            return r.record;
    QtFontRecord *found = find_or_make(font, char_set, dpi_x, dpi_y, device_type);
    recent_[next_recent_] = Recent{font, char_set, dpi_x, dpi_y, device_type, found};
    next_recent_ = (next_recent_ + 1) % recent_count;
    return found;
}

QtFontRecord *QtFontCache::find_or_make(Font const &font, Gauge::CharSet char_set, int dpi_x, int dpi_y,
                                        int device_type)
{
    long const points = font.size() / 20;
    // The key: every field that changes what Qt answers, then the family name.
    std::u16string key;
    key.reserve(24);
    auto put = [&key](long v) {
        key.push_back(static_cast<char16_t>(v & 0xffff));
        key.push_back(static_cast<char16_t>((v >> 16) & 0xffff));
    };
    put(points);
    put(dpi_x);
    put(dpi_y);
    put(device_type);
    key.push_back(static_cast<char16_t>((font.bold() ? 1 : 0) | (font.italic() ? 2 : 0)));
    key.push_back(static_cast<char16_t>(char_set));
    if (wchar const *name = font.name())
        key.append(name);
    auto found = records_.find(key);
    if (found != records_.end())
        return found->second.get();

    auto made = std::make_unique<QtFontRecord>();
    if (points > 0)
        made->qfont.setPointSizeF(static_cast<qreal>(points));
    if (font.bold())
        made->qfont.setWeight(QFont::Bold);
    if (font.italic())
        made->qfont.setStyle(QFont::StyleItalic);
    made->qfont.setFamily(QString::fromUtf16(font.name()));
    QtFontRecord *record = made.get();
    records_.emplace(std::move(key), std::move(made));
    return record;
}

}  // namespace Tavi
