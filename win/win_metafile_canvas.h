// Win_Metafile_Canvas: writes an enhanced metafile at 1440 units per inch (twips), measuring on a
// reference context. Text goes out a character at a time, each placed by its own measured width, so
// that a program that plays the file back with other fonts keeps every character where it was.
#pragma once

#include "win/win_canvas.h"

namespace Tavi {

class Win_Metafile_Canvas : public Win_Canvas
{
public:
    Win_Metafile_Canvas(Gdi::HDC metafile, Gdi::HDC reference, int x, int y, bool printing,
                        Extension const &extension);
    ~Win_Metafile_Canvas() override;

    // The generic family names of the setup file become fonts every Windows system has.
    void font(Font const &font, CharSet char_set, long angle) override;
    using Win_Canvas::font;
    Extent text_extent(wchar const *text, long count) override;
    void text_metrics(wchar const *text, long count, Box &box, long &left, long &right) override;
    long font_ex() const override;
    long font_X_height() const override;
    void text(wchar const *text, long count, Point p) override;
    Extent dpi() override;
    long dpi_y() override;
    double dash_len() override;
    bool short_coordinates() const override;
    void clip_rect(Rect const &r) override;
    using Win_Canvas::clip_rect;
    void no_clip_rect() override;

private:
    // How many units the character at `text` takes: two for a surrogate pair, else one.
    static long character_length(wchar const *text, long left);
};

}  // namespace Tavi
