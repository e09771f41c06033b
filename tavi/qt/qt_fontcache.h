// QtFontCache: what Qt has once answered about a font and the texts set in it, kept so that it is
// asked only once. A formula sets the same few fonts and the same short texts again and again, and
// asking QFontMetrics means shaping the text each time: the cache makes a second layout of the same
// formula nearly free of it. Each thread has a cache of its own, so no lock is taken and Qt's font
// objects stay with the thread that made them.
//
// A record stands for one font at one resolution on one kind of device, in one character set (the set decides how the
// units of a text become characters). It holds the QFont the canvas paints with, the font's line
// metrics, and per text the advance and, once asked, the ink.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include <QFont>
#include <QFontMetrics>

#include "tavi/canvas/font.h"
#include "tavi/canvas/gauge.h"

class QPaintDevice;

namespace Tavi {

struct QtFontRecord
{
    struct Text
    {
        long advance = 0;
        bool ink_known = false;
        long ascent = 0;
        long descent = 0;
        long left = 0;
        long right = 0;
    };

    QFont qfont;
    // Made for the first device the record is used with; every device of a record has its resolution.
    std::optional<QFontMetrics> metrics;
    bool line_known = false;
    long ascent = 0;
    long descent = 0;
    long leading = 0;
    bool ex_known = false;
    long ex = 0;
    long X_height = 0;
    std::unordered_map<std::u16string, Text> texts;
    // Left and right bearing of one character, by the unit as the canvas reads it.
    std::unordered_map<char16_t, std::pair<long, long>> bearings;

    QFontMetrics const &metrics_for(QPaintDevice *device);
};

class QtFontCache
{
public:
    // This thread's cache.
    static QtFontCache &local();

    // The record of the font at the resolution in the character set, for a kind of device (devType:
    // a printer answers other metrics than a screen of the same resolution); made on first use.
    QtFontRecord *record(Font const &font, Gauge::CharSet char_set, int dpi_x, int dpi_y, int device_type);

    // Texts kept per record before the record forgets them all and starts again.
    static constexpr std::size_t texts_per_record = 65536;

private:
    QtFontRecord *find_or_make(Font const &font, Gauge::CharSet char_set, int dpi_x, int dpi_y, int device_type);

    std::unordered_map<std::u16string, std::unique_ptr<QtFontRecord>> records_;
    // The last records asked for, by the very font description: a layout alternates between a few
    // fonts, and comparing one pointer is cheaper than building the key. Each entry holds its font,
    // so that the description cannot be freed and its address taken by another.
    struct Recent
    {
        Font font;
        int char_set = -1;
        int dpi_x = 0;
        int dpi_y = 0;
        int device_type = 0;
        QtFontRecord *record = nullptr;
    };
    static constexpr std::size_t recent_count = 8;
    Recent recent_[recent_count];
    std::size_t next_recent_ = 0;
};

}  // namespace Tavi
