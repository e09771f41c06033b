// One drawing with every shape, pen style and brush pattern, a clip, a translation and turned text,
// laid out in points on a 400 by 300 point page so that any surface can draw it, and the places where
// a rendering of it must or must not carry ink.
#pragma once

#include "tavi/canvas/canvas.h"

#include <QImage>

#include <string>
#include <vector>

namespace TaviTest {

int const sample_page_width_pt = 400;
int const sample_page_height_pt = 300;

// Draws the sample. Lengths are given in points and converted for the canvas with twips_to_pixel, so
// the picture has the same size on a pixel surface as on a file writer.
void draw_sample(Tavi::Canvas &canvas);

enum class Surface { pixmap, svg, eps };

struct InkProbe
{
    char const *what;
    // In points from the page's top left: [left, right) by [top, bottom).
    double left, top, right, bottom;
    // none: not one pixel of ink; some: a few pixels at least; part: some, but less than three
    // quarters of the area (a hatch, not a solid fill); most: four fifths of the area or more.
    enum Expect { none, some, part, most } expect;
    // The surfaces the probe speaks for.
    bool pixmap, svg, eps;
};

std::vector<InkProbe> const &sample_probes();

// Checks every probe that speaks for the surface on an image of the whole page, at whatever
// resolution it was rendered; `label` names the image in failure messages.
void expect_sample_ink(QImage const &image, Surface surface, std::string const &label);

}  // namespace TaviTest
