// The PostScript prolog of the EPS writer: the hatch patterns, the Latin-1 fonts and the short
// operators that the drawing code emits. It is one fixed text, kept here as a table of lines.
#include "tavi/canvas/eps_canvas.h"

#include <ostream>

namespace Tavi {

namespace {

// Hatch tiles are uncoloured (PaintType 2): the colour comes with each use, through `P` or `ep`.
// They are made while the prolog runs, so their 5.5 point step is in the page's own space and does
// not shrink with the drawing's twentieth-of-a-point scale.
//
// Every font is re-encoded to ISO Latin 1, the only encoding whose codes text may carry here.
//
// `F` builds the font with a negated y size: the page's y axis runs downwards, and the font must not
// stand on its head. `es` scales back before stroking so that the line width stays round.
char const *const prolog_lines[] = {
    "<< /PatternType 1 /PaintType 2 /TilingType 3 /BBox [-2.75 -2.75 2.75 2.75] /XStep 5.5 /YStep 5.5",
    "/PaintProc { pop [] 0 setdash 0.4 setlinewidth 0 -2.75 moveto 0 2.75 lineto stroke } bind",
    ">> matrix makepattern /HpV exch def",
    "<< /PatternType 1 /PaintType 2 /TilingType 3 /BBox [-2.75 -2.75 2.75 2.75] /XStep 5.5 /YStep 5.5",
    "/PaintProc { pop [] 0 setdash 0.4 setlinewidth -2.75 0 moveto 2.75 0 lineto stroke } bind",
    ">> matrix makepattern /HpH exch def",
    "<< /PatternType 1 /PaintType 2 /TilingType 3 /BBox [-2.75 -2.75 2.75 2.75] /XStep 5.5 /YStep 5.5",
    "/PaintProc { pop [] 0 setdash 0.4 setlinewidth -2.75 -2.75 moveto 2.75 2.75 lineto stroke } bind",
    ">> matrix makepattern /HpD exch def",
    "<< /PatternType 1 /PaintType 2 /TilingType 3 /BBox [-2.75 -2.75 2.75 2.75] /XStep 5.5 /YStep 5.5",
    "/PaintProc { pop [] 0 setdash 0.4 setlinewidth -2.75 2.75 moveto 2.75 -2.75 lineto stroke } bind",
    ">> matrix makepattern /HpBD exch def",
    "<< /PatternType 1 /PaintType 2 /TilingType 3 /BBox [-2.75 -2.75 2.75 2.75] /XStep 5.5 /YStep 5.5",
    "/PaintProc { pop [] 0 setdash 0.4 setlinewidth 0 -2.75 moveto 0 2.75 lineto"
    " -2.75 0 moveto 2.75 0 lineto stroke } bind",
    ">> matrix makepattern /HpC exch def",
    "<< /PatternType 1 /PaintType 2 /TilingType 3 /BBox [-2.75 -2.75 2.75 2.75] /XStep 5.5 /YStep 5.5",
    "/PaintProc { pop [] 0 setdash 0.4 setlinewidth -2.75 -2.75 moveto 2.75 2.75 lineto"
    " -2.75 2.75 moveto 2.75 -2.75 lineto stroke } bind",
    ">> matrix makepattern /HpXC exch def",

    "/Times-Roman findfont dup length dict begin { 1 index /FID ne { def } { pop pop } ifelse } forall",
    "/Encoding ISOLatin1Encoding def currentdict end /Ti exch definefont pop",
    "/Times-Italic findfont dup length dict begin { 1 index /FID ne { def } { pop pop } ifelse } forall",
    "/Encoding ISOLatin1Encoding def currentdict end /TiI exch definefont pop",
    "/Times-Bold findfont dup length dict begin { 1 index /FID ne { def } { pop pop } ifelse } forall",
    "/Encoding ISOLatin1Encoding def currentdict end /TiB exch definefont pop",
    "/Times-BoldItalic findfont dup length dict begin { 1 index /FID ne { def } { pop pop } ifelse } forall",
    "/Encoding ISOLatin1Encoding def currentdict end /TiBI exch definefont pop",
    "/Helvetica findfont dup length dict begin { 1 index /FID ne { def } { pop pop } ifelse } forall",
    "/Encoding ISOLatin1Encoding def currentdict end /He exch definefont pop",
    "/Helvetica-Oblique findfont dup length dict begin { 1 index /FID ne { def } { pop pop } ifelse } forall",
    "/Encoding ISOLatin1Encoding def currentdict end /HeI exch definefont pop",
    "/Helvetica-Bold findfont dup length dict begin { 1 index /FID ne { def } { pop pop } ifelse } forall",
    "/Encoding ISOLatin1Encoding def currentdict end /HeB exch definefont pop",
    "/Helvetica-BoldOblique findfont dup length dict begin { 1 index /FID ne { def } { pop pop } ifelse } forall",
    "/Encoding ISOLatin1Encoding def currentdict end /HeBI exch definefont pop",
    "/Courier findfont dup length dict begin { 1 index /FID ne { def } { pop pop } ifelse } forall",
    "/Encoding ISOLatin1Encoding def currentdict end /Co exch definefont pop",
    "/Courier-Oblique findfont dup length dict begin { 1 index /FID ne { def } { pop pop } ifelse } forall",
    "/Encoding ISOLatin1Encoding def currentdict end /CoI exch definefont pop",
    "/Courier-Bold findfont dup length dict begin { 1 index /FID ne { def } { pop pop } ifelse } forall",
    "/Encoding ISOLatin1Encoding def currentdict end /CoB exch definefont pop",
    "/Courier-BoldOblique findfont dup length dict begin { 1 index /FID ne { def } { pop pop } ifelse } forall",
    "/Encoding ISOLatin1Encoding def currentdict end /CoBI exch definefont pop",

    "/l { lineto } bind def",
    "/m { moveto } bind def",
    "/d { setdash } bind def",
    "/f { fill } bind def",
    "/f* { eofill } bind def",
    "/h { closepath } bind def",
    "/q { gsave } bind def",
    "/Q { grestore } bind def",
    "/rg { setrgbcolor } bind def",
    "/s { closepath stroke } bind def",
    "/S { stroke } bind def",
    "/sc { setcolor } bind def",
    "/Tj { show } bind def",
    "/w { setlinewidth } bind def",
    "/a { arc } bind def",
    "/n { newpath } bind def",
    "/t { translate } bind def",
    "/r { rotate } bind def",
    "/rf { rectfill } bind def",
    "/rc { rectclip } bind def",
    "/rs { rectstroke } bind def",
    "/D { [] 0 setdash } bind def",
    "/c { 0 360 arc } bind def",
    "/P { [/Pattern /DeviceRGB] setcolorspace setcolor } bind def",
    "/size 0 def",
    "/F { /size exch def findfont [size 0 0 size neg 0 0] makefont setfont } bind def",
    "/xr 0 def",
    "/yr 0 def",
    "/es { /yr exch def /xr exch def gsave translate xr yr div 1 scale newpath 0 0 yr 0 360 arc"
    " yr xr div 1 scale stroke grestore } bind def",
    "/ef { /yr exch def /xr exch def gsave translate xr yr div 1 scale newpath 0 0 yr 0 360 arc"
    " fill grestore } bind def",
    "/x 0 def",
    "/y 0 def",
    "/ep { /yr exch def /xr exch def /y exch def /x exch def gsave P x y translate xr yr div 1 scale"
    " newpath 0 0 yr 0 360 arc fill grestore } bind def",
    "/ang 0 def",
    "/Tr { /ang exch def gsave translate ang rotate 0 0 moveto show grestore } bind def",
};

}  // namespace

void EPS_Canvas::put_prolog()
{
    for (char const *line : prolog_lines)
        stream_ << line << '\n';
}

}  // namespace Tavi
