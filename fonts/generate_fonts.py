#!/usr/bin/python3
# Builds the two fonts that formulas name and no free system ships, from free fonts that Debian
# packages:
#
#   "KMT Math Ext"        the math extension font: the glyphs of Latin Modern's lmex10 (the layout of
#                         TeX's cmex10) at the positions the layouts ask for, with the normal-size
#                         fences taken from lmr10 and lmsy10. Every glyph is mapped at 0xF000 plus
#                         its position, where symbol-encoded fonts publish their codes.
#   "KMT Math Open Face"  the double-struck letters and digits of Latin Modern Math at their ASCII codes.
#
# Run with Debian's python3-fontforge; the sources come from the packages lmodern (Type 1 lmex10,
# lmsy10, lmr10) and fonts-lmodern (latinmodern-math.otf):
#
#   /usr/bin/python3 fonts/generate_fonts.py [output folder]
#
# The output is the same bytes on every run (time stamps come from SOURCE_DATE_EPOCH, fixed below).
import os
import sys

os.environ.setdefault("SOURCE_DATE_EPOCH", "1700000000")

import fontforge  # noqa: E402  (the time stamp must be set before FontForge reads it)
import psMat  # noqa: E402

TYPE1 = "/usr/share/texmf/fonts/type1/public/lm/"
LMEX = TYPE1 + "lmex10.pfb"
LMSY = TYPE1 + "lmsy10.pfb"
LMR = TYPE1 + "lmr10.pfb"
LMMATH = "/usr/share/texmf/fonts/opentype/public/lm-math/latinmodern-math.otf"

# All sources have 1000 units to the em, and so have the outputs: one unit is a thousandth of an em.
EM = 1000

# The extension font's vertical metrics. The layouts take the font's descent as their unit D and
# expect it to be three ems, the depth of cmex10's largest glyphs; the ascent covers the normal-size
# characters, which stand on the baseline like text.
EXT_ASCENT = 800
EXT_DESCENT = 3000

# How far a piece of a built-up fence reaches beyond its nominal cell at either end, so that two
# pieces stacked cell to cell overlap instead of leaving a hairline between them.
PIECE_OVERLAP = 10

# The thickness of rules added here (the overbar piece, the bar of the principal-value integrals):
# cmex10's default rule thickness.
RULE = 40

# Where the glyphs of the extension font come from. Each row: position in "KMT Math Ext", source
# font, glyph name there, and how the glyph is placed:
#   "as is"        unchanged; cmex10's glyphs hang from the baseline, the normal sizes stand on it.
#   ("piece", H, S)  a piece of a built-up fence: its ink is fitted to a cell of H units below the
#                  baseline (plus the overlap), and moved S units to the left. The fence layout
#                  moves every piece S units to the right again, so that the stroke of each fence
#                  starts at the left edge of the piece glyph as the layouts expect.
#   ("piece", H, S, U) the same, then moved U units up.
#   ("raise", U)   moved U units up.
#   "cell"         moved down by one rule thickness. cmex10's sized delimiters and radicals reach
#                  that much above the baseline and stop that much short of their nominal depth
#                  (TeX lays a radical's rule over the excess). The layouts here place a sized glyph
#                  by its nominal depth, k/30 of D, and draw a radical's bar from the top of its box
#                  downward, so the ink is moved to fill exactly the cell below the baseline.
EXT_GLYPHS = [
    # position  source  glyph                        placement
    # Normal-size characters at their ASCII codes and the added positions.
    (40,  LMR,  "parenleft",                 "as is"),
    (41,  LMR,  "parenright",                "as is"),
    (47,  LMR,  "slash",                     "as is"),
    (91,  LMR,  "bracketleft",               "as is"),
    (92,  LMSY, "backslash",                 "as is"),
    (93,  LMR,  "bracketright",              "as is"),
    (123, LMSY, "braceleft",                 "as is"),
    (124, LMSY, "bar",                       "as is"),
    (125, LMSY, "braceright",                "as is"),
    (172, LMSY, "bardbl",                    "as is"),
    (203, LMSY, "floorleft",                 "as is"),
    (204, LMSY, "floorright",                "as is"),
    (205, LMSY, "ceilingleft",               "as is"),
    (206, LMSY, "ceilingright",              "as is"),
    (209, LMSY, "angbracketleft",            "as is"),
    (210, LMSY, "angbracketright",           "as is"),
    (214, LMSY, "openbullet",                "as is"),
    # The normal radical hangs 0.96 em below the baseline in lmsy10; as a normal-size character it
    # stands like the other fences, from 0.2 em below the baseline to 0.8 em above it.
    (213, LMSY, "radical",                   ("raise", 760)),
    # cmex10 codes 0 to 9, moved to 161 to 170.
    (161, LMEX, "parenleftbig",              "cell"),
    (162, LMEX, "parenrightbig",             "cell"),
    (163, LMEX, "bracketleftbig",            "cell"),
    (164, LMEX, "bracketrightbig",           "cell"),
    (165, LMEX, "floorleftbig",              "cell"),
    (166, LMEX, "floorrightbig",             "cell"),
    (167, LMEX, "ceilingleftbig",            "cell"),
    (168, LMEX, "ceilingrightbig",           "cell"),
    (169, LMEX, "braceleftbig",              "cell"),
    (170, LMEX, "bracerightbig",             "cell"),
    # cmex10 codes 10 to 32, moved to 173 to 195.
    (173, LMEX, "angbracketleftbig",         "cell"),
    (174, LMEX, "angbracketrightbig",        "cell"),
    (175, LMEX, "vextendsingle",             "as is"),
    (176, LMEX, "vextenddouble",             "as is"),
    (177, LMEX, "slashbig",                  "cell"),
    (178, LMEX, "backslashbig",              "cell"),
    (179, LMEX, "parenleftBig",              "cell"),
    (180, LMEX, "parenrightBig",             "cell"),
    (181, LMEX, "parenleftbigg",             "cell"),
    (182, LMEX, "parenrightbigg",            "cell"),
    (183, LMEX, "bracketleftbigg",           "cell"),
    (184, LMEX, "bracketrightbigg",          "cell"),
    (185, LMEX, "floorleftbigg",             "cell"),
    (186, LMEX, "floorrightbigg",            "cell"),
    (187, LMEX, "ceilingleftbigg",           "cell"),
    (188, LMEX, "ceilingrightbigg",          "cell"),
    (189, LMEX, "braceleftbigg",             "cell"),
    (190, LMEX, "bracerightbigg",            "cell"),
    (191, LMEX, "angbracketleftbigg",        "cell"),
    (192, LMEX, "angbracketrightbigg",       "cell"),
    (193, LMEX, "slashbigg",                 "cell"),
    (194, LMEX, "backslashbigg",             "cell"),
    (195, LMEX, "parenleftBigg",             "cell"),
    # cmex10 codes 33 to 127 at their own positions, but for those whose ASCII position holds a
    # normal-size character: these moved to 171, 199, 200, 207, 208 and 211.
    (33, LMEX, "parenrightBigg",            "cell"),
    (34, LMEX, "bracketleftBigg",           "cell"),
    (35, LMEX, "bracketrightBigg",          "cell"),
    (36, LMEX, "floorleftBigg",             "cell"),
    (37, LMEX, "floorrightBigg",            "cell"),
    (38, LMEX, "ceilingleftBigg",           "cell"),
    (39, LMEX, "ceilingrightBigg",          "cell"),
    (199, LMEX, "braceleftBigg",             "cell"),
    (200, LMEX, "bracerightBigg",            "cell"),
    (42, LMEX, "angbracketleftBigg",        "cell"),
    (43, LMEX, "angbracketrightBigg",       "cell"),
    (44, LMEX, "slashBigg",                 "cell"),
    (45, LMEX, "backslashBigg",             "cell"),
    (46, LMEX, "slashBig",                  "cell"),
    (171, LMEX, "backslashBig",              "cell"),
    (48,  LMEX, "parenlefttp",               ("piece", 1800, 291)),
    (49,  LMEX, "parenrighttp",              ("piece", 1800, 472)),
    (50,  LMEX, "bracketlefttp",             ("piece", 1800, 0)),
    (51,  LMEX, "bracketrighttp",            ("piece", 1800, 0)),
    (52,  LMEX, "bracketleftbt",             ("piece", 1800, 0)),
    (53,  LMEX, "bracketrightbt",            ("piece", 1800, 0)),
    (54,  LMEX, "bracketleftex",             ("piece", 600, 0)),
    (55,  LMEX, "bracketrightex",            ("piece", 600, 0)),
    (56,  LMEX, "bracelefttp",               ("piece", 900, 384)),
    (57,  LMEX, "bracerighttp",              ("piece", 900, 384)),
    (58,  LMEX, "braceleftbt",               ("piece", 900, 384)),
    (59,  LMEX, "bracerightbt",              ("piece", 900, 384)),
    (60,  LMEX, "braceleftmid",              ("piece", 1800, 384)),
    (61,  LMEX, "bracerightmid",             ("piece", 1800, 384)),
    (62,  LMEX, "braceex",                   ("piece", 300, 384)),
    (64,  LMEX, "parenleftbt",               ("piece", 1800, 291)),
    (65,  LMEX, "parenrightbt",              ("piece", 1800, 472)),
    (66,  LMEX, "parenleftex",               ("piece", 600, 291)),
    (67,  LMEX, "parenrightex",              ("piece", 600, 472)),
    (68, LMEX, "angbracketleftBig",         "cell"),
    (69, LMEX, "angbracketrightBig",        "cell"),
    (70,  LMEX, "unionsqtext",               "as is"),
    (71,  LMEX, "unionsqdisplay",            "as is"),
    (72,  LMEX, "contintegraltext",          "as is"),
    (73,  LMEX, "contintegraldisplay",       "as is"),
    (74,  LMEX, "circledottext",             "as is"),
    (75,  LMEX, "circledotdisplay",          "as is"),
    (76,  LMEX, "circleplustext",            "as is"),
    (77,  LMEX, "circleplusdisplay",         "as is"),
    (78,  LMEX, "circlemultiplytext",        "as is"),
    (79,  LMEX, "circlemultiplydisplay",     "as is"),
    (80,  LMEX, "summationtext",             "as is"),
    (81,  LMEX, "producttext",               "as is"),
    (82,  LMEX, "integraltext",              "as is"),
    (83,  LMEX, "uniontext",                 "as is"),
    (84,  LMEX, "intersectiontext",          "as is"),
    (85,  LMEX, "unionmultitext",            "as is"),
    (86,  LMEX, "logicalandtext",            "as is"),
    (87,  LMEX, "logicalortext",             "as is"),
    (88,  LMEX, "summationdisplay",          "as is"),
    (89,  LMEX, "productdisplay",            "as is"),
    (90,  LMEX, "integraldisplay",           "as is"),
    (207, LMEX, "uniondisplay",              "as is"),
    (208, LMEX, "intersectiondisplay",       "as is"),
    (211, LMEX, "unionmultidisplay",         "as is"),
    (94,  LMEX, "logicalanddisplay",         "as is"),
    (95,  LMEX, "logicalordisplay",          "as is"),
    (96,  LMEX, "coproducttext",             "as is"),
    (97,  LMEX, "coproductdisplay",          "as is"),
    (98,  LMEX, "hatwide",                   "as is"),
    (99,  LMEX, "hatwider",                  "as is"),
    (100, LMEX, "hatwidest",                 "as is"),
    (101, LMEX, "tildewide",                 "as is"),
    (102, LMEX, "tildewider",                "as is"),
    (103, LMEX, "tildewidest",               "as is"),
    (104, LMEX, "bracketleftBig",            "cell"),
    (105, LMEX, "bracketrightBig",           "cell"),
    (106, LMEX, "floorleftBig",              "cell"),
    (107, LMEX, "floorrightBig",             "cell"),
    (108, LMEX, "ceilingleftBig",            "cell"),
    (109, LMEX, "ceilingrightBig",           "cell"),
    (110, LMEX, "braceleftBig",              "cell"),
    (111, LMEX, "bracerightBig",             "cell"),
    (112, LMEX, "radicalbig",                "cell"),
    (113, LMEX, "radicalBig",                "cell"),
    (114, LMEX, "radicalbigg",               "cell"),
    (115, LMEX, "radicalBigg",               "cell"),
    # The radical's pieces already tile: the middle reaches 20 units into both neighbours.
    (116, LMEX, "radicalbt",                 ("piece", None, 702)),
    (117, LMEX, "radicalvertex",             ("piece", None, 702)),
    (118, LMEX, "radicaltp",                 ("piece", None, 702, -RULE)),
]

# Positions whose glyph is drawn here: the overbar piece and the principal-value integrals, which
# cmex10 lacks.
OVERBAR = 197
PV_INTEGRALS = [
    # position  integral of lmex10   bar from x to x   at the height of
    (127,       "integraltext",      160, 505,         -555),
    (128,       "integraldisplay",   230, 770,         -1111),
]
# The overbar piece is a rule of one thickness hanging just below the baseline, with no side
# bearings, so that copies set side by side make one line. A bar's box reaches one thickness below
# its baseline, and the bar of a radical stands with its baseline on the radical's top: the rule
# lies inside both boxes and meets the lowered radicals' top stroke.
OVERBAR_WIDTH = 250

# The open face: the double-struck letters and digits of Latin Modern Math. Seven capitals stand in
# the letterlike symbols block, the rest in the mathematical alphanumerics.
OPEN_FACE_CAPITALS = {"C": 0x2102, "H": 0x210D, "N": 0x2115, "P": 0x2119, "Q": 0x211A,
                      "R": 0x211D, "Z": 0x2124}
OPEN_FACE_ASCENT = 806
OPEN_FACE_DESCENT = 194


def open_face_source(char):
    """The code point of Latin Modern Math's double-struck form of an ASCII letter or digit."""
    if char in OPEN_FACE_CAPITALS:
        return OPEN_FACE_CAPITALS[char]
    if "A" <= char <= "Z":
        return 0x1D538 + ord(char) - ord("A")
    if "a" <= char <= "z":
        return 0x1D552 + ord(char) - ord("a")
    return 0x1D7D8 + ord(char) - ord("0")


def new_font(family, postscript, ascent, descent, copyright_text):
    font = fontforge.font()
    font.encoding = "UnicodeFull"
    font.em = EM
    font.familyname = family
    font.fontname = postscript
    font.fullname = family
    font.weight = "Regular"
    font.version = "1.0"
    font.copyright = copyright_text
    font.sfntRevision = 0x00010000
    # The em square stays at 1000 units; the line metrics are those of the tables below, the same
    # in each, so that every renderer reads the same ascent and descent.
    font.ascent = EM * 4 // 5
    font.descent = EM - font.ascent
    for attr in ("os2_typoascent_add", "os2_typodescent_add", "os2_winascent_add",
                 "os2_windescent_add", "hhea_ascent_add", "hhea_descent_add"):
        setattr(font, attr, False)
    font.os2_typoascent = ascent
    font.os2_typodescent = -descent
    font.os2_typolinegap = 0
    font.os2_winascent = ascent
    font.os2_windescent = descent
    font.hhea_ascent = ascent
    font.hhea_descent = -descent
    font.hhea_linegap = 0
    font.os2_use_typo_metrics = True
    font.os2_vendor = "TAVI"
    return font


def copy_glyph(source, name, target, code, unicode_value):
    """Copies the outline and advance of glyph `name` of `source` into a new glyph at `code`."""
    source.selection.select(name)
    source.copy()
    target.selection.select(("unicode",), unicode_value)
    target.paste()
    glyph = target[unicode_value]
    glyph.unlinkRef()
    glyph.glyphname = "g%d" % code if code is not None else glyph.glyphname
    glyph.width = source[name].width
    return glyph


def fit_piece(glyph, height, shift):
    """Fits a fence piece to its cell: ink from `height` units below the baseline to the baseline,
    each end reaching PIECE_OVERLAP further; then moves it `shift` units to the left."""
    if height is not None:
        _, ymin, _, ymax = glyph.boundingBox()
        top = PIECE_OVERLAP
        bottom = -height - PIECE_OVERLAP
        scale = (top - bottom) / (ymax - ymin)
        glyph.transform(psMat.compose(psMat.translate(0, -ymin),
                                      psMat.compose(psMat.scale(1, scale),
                                                    psMat.translate(0, bottom))),
                        ("partialRefs",))
    width = glyph.width
    glyph.transform(psMat.translate(-shift, 0))
    glyph.width = width


def add_rule(glyph, x0, y0, x1, y1):
    pen = glyph.glyphPen(replace=False)
    pen.moveTo((x0, y0))
    pen.lineTo((x0, y1))
    pen.lineTo((x1, y1))
    pen.lineTo((x1, y0))
    pen.closePath()
    pen = None


def finish(font, path):
    for glyph in font.glyphs():
        glyph.removeOverlap()
        glyph.round()
        glyph.correctDirection()
    font.generate(path, flags=("opentype", "no-FFTM-table", "omit-instructions"))


def build_ext(out_dir):
    sources = {path: fontforge.open(path) for path in (LMEX, LMSY, LMR)}
    font = new_font("KMT Math Ext", "KMTMathExt", EXT_ASCENT, EXT_DESCENT,
                    "Glyphs from Latin Modern lmex10, lmsy10 and lmr10, "
                    "Copyright 2003-2021 B. Jackowski and J. M. Nowacki (on behalf of TeX Users Groups), "
                    "under the GUST Font License; rearranged by the Tavi font generator.")
    codes = set()
    for code, source, name, placement in EXT_GLYPHS:
        assert code not in codes, code
        codes.add(code)
        glyph = copy_glyph(sources[source], name, font, code, 0xF000 + code)
        if placement == "as is":
            continue
        if placement == "cell":
            glyph.transform(psMat.translate(0, -RULE))
        elif placement[0] == "piece":
            fit_piece(glyph, placement[1], placement[2])
            if len(placement) > 3:
                glyph.transform(psMat.translate(0, placement[3]))
        elif placement[0] == "raise":
            glyph.transform(psMat.translate(0, placement[1]))
    lmex = sources[LMEX]
    for code, name, x0, x1, y in PV_INTEGRALS:
        glyph = copy_glyph(lmex, name, font, code, 0xF000 + code)
        add_rule(glyph, x0, y - RULE // 2, x1, y + RULE // 2)
    glyph = font.createChar(0xF000 + OVERBAR, "g%d" % OVERBAR)
    add_rule(glyph, 0, -RULE, OVERBAR_WIDTH, 0)
    glyph.width = OVERBAR_WIDTH
    space = font.createChar(0x20, "space")
    space.width = 333
    finish(font, os.path.join(out_dir, "kmt-math-ext.ttf"))


def build_open_face(out_dir):
    source = fontforge.open(LMMATH)
    font = new_font("KMT Math Open Face", "KMTMathOpenFace", OPEN_FACE_ASCENT, OPEN_FACE_DESCENT,
                    "Glyphs from Latin Modern Math, "
                    "Copyright 2012-2014 B. Jackowski, P. Strzelczyk and P. Pianowski (on behalf of TeX Users Groups), "
                    "under the GUST Font License; rearranged by the Tavi font generator.")
    chars = [chr(c) for c in range(ord("A"), ord("Z") + 1)]
    chars += [chr(c) for c in range(ord("a"), ord("z") + 1)]
    chars += [chr(c) for c in range(ord("0"), ord("9") + 1)]
    for char in chars:
        name = source[open_face_source(char)].glyphname
        glyph = copy_glyph(source, name, font, None, ord(char))
        glyph.glyphname = char if char.isalpha() else "digit" + char
    space = font.createChar(0x20, "space")
    space.width = 333
    finish(font, os.path.join(out_dir, "kmt-math-open-face.ttf"))


# The text supplement: characters of the text class that Liberation Serif, the free "Times New
# Roman", lacks. Qt tries the families substituted for "Times New Roman" in turn for a missing glyph,
# so these come from here instead of whatever face the system would pick.
TEXT_SUPPLEMENT = [
    0x2035,  # reversed prime
    0x205F,  # medium mathematical space (no ink)
    0x2145,  # double-struck italic capital D
    0x2146,  # double-struck italic small d
    0x2147,  # double-struck italic small e
    0x2148,  # double-struck italic small i
    0x2423,  # open box
]
# Liberation Serif's line metrics, in thousandths of an em, so that the supplement measures like the
# face it completes.
TEXT_ASCENT = 891
TEXT_DESCENT = 216


def build_text_supplement(out_dir):
    source = fontforge.open(LMMATH)
    font = new_font("KMT Text Supplement", "KMTTextSupplement", TEXT_ASCENT, TEXT_DESCENT,
                    "Glyphs from Latin Modern Math, "
                    "Copyright 2012-2014 B. Jackowski, P. Strzelczyk and P. Pianowski (on behalf of TeX Users Groups), "
                    "under the GUST Font License; rearranged by the Tavi font generator.")
    for code in TEXT_SUPPLEMENT:
        glyph = copy_glyph(source, source[code].glyphname, font, None, code)
        glyph.glyphname = "uni%04X" % code
    space = font.createChar(0x20, "space")
    space.width = 250
    finish(font, os.path.join(out_dir, "kmt-text-supplement.ttf"))


def main():
    out_dir = sys.argv[1] if len(sys.argv) > 1 else os.path.dirname(os.path.abspath(__file__))
    build_ext(out_dir)
    build_open_face(out_dir)
    build_text_supplement(out_dir)


if __name__ == "__main__":
    main()
