#!/usr/bin/python3
# Sets every formula of data/examples twice, by tavi-render and by LaTeX from the TeX in the example's
# comment, both at 12 pt and 144 dpi, and writes docs/comparison.md: the two pictures side by side
# and how far apart they are, the worst first.
#
# Needs TeX (Debian: texlive-latex-base texlive-latex-recommended dvipng) and Python's PIL and numpy
# (python3-pil python3-numpy). Usage, after a build:
#
#   /usr/bin/python3 docs/make-comparison.py [--render build/tools/tavi-render] [--before FILE]
#
# The numbers of a run are kept in docs/comparison/scores.tsv; --before names such a file from an
# earlier run, and the page then shows both.
#
# The distance of a formula is the sum of three parts, each 0 for equal pictures:
#   box     how much the ink boxes differ in width and height, relative to LaTeX's; LaTeX's width is
#           first scaled by how much narrower Tavi's text font sets the letters and digits (both
#           systems set the alphabet and the digits once for that), so that the narrower face alone
#           does not count as a fault of layout
#   columns how far the ink lies from where LaTeX has it along the formula: the ink box is cut into
#           48 bands across, and the shares of all ink up to each band's end are compared; the mean
#           difference is the fraction of the width by which the ink would have to move (an earth
#           mover's distance), so a gap or a misplaced part shows in proportion to its size
#   rows    the same over 24 bands from top to bottom: how high scripts and limits stand
# Glyphs differ (Liberation Serif against Computer Modern), so equal layouts still score a little.
import argparse
import os
import re
import shutil
import subprocess
import sys
import tempfile

import numpy
from PIL import Image

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
EXAMPLES = os.path.join(ROOT, "data", "examples")
OUT_DIR = os.path.join(ROOT, "docs", "comparison")
PAGE = os.path.join(ROOT, "docs", "comparison.md")

DPI = 144
COLUMN_BANDS = 48
ROW_BANDS = 24

# Set by both systems to compare the widths of the two text fonts: the letters as identifiers, and
# the digits.
CALIBRATION = [
    ("letters", "<ident>abcdefghijklmnopqrstuvwxyz</ident>", "abcdefghijklmnopqrstuvwxyz"),
    ("digits", "<num>0123456789</num>", "0123456789"),
]

LATEX_PREAMBLE = r"""\documentclass[12pt]{article}
\usepackage{amsmath,amssymb}
\pagestyle{empty}
\begin{document}
"""


# What the pictures still show apart, where the cause is a rule of Tavi's layout or its fonts rather
# than the setup file.
KNOWN_DIFFERENCES = """## What stays apart, and why

- **Superscripts stand higher.** Tavi raises a superscript until its descent, or the descent of the
  script font's "x", clears an ex above the baseline; TeX raises it about 0.41 em whatever its descent.
  With Liberation Serif that is some 0.6 em against 0.41 em, seen most in `e^{-x^2}` and on powers of
  parentheses.
- **Second-level scripts are larger.** The script size falls to 71 %, then to the smallest script size,
  8 pt; TeX goes to 70 % and 50 %.
- **Lowercase Greek is upright.** Greek letters named in a formula are characters of the symbol font,
  which identifiers do not slant; only the text font is set italic. Greek typed as text characters
  (U+03B1 ...) is italic in identifiers.
- **A named function keeps its thin space before a parenthesis** (`log (xy)`): spaces belong to
  operators, and the parentheses that a binding adds around an argument are the same whatever stands
  before them. `max(a, b)`, whose parenthesis is part of its layout, has none.
- **Tables are looser.** Rows stand a quarter of an em and half a line apart, columns half an em.
- **Continued fractions shrink.** A fraction in a fraction is set in the smaller style; `\\cfrac` keeps
  the display style, which Tavi has no layout for.
- **`d` and `e` are upright** in integrals and the exponential, following ISO 80000-2; the TeX of the
  examples writes them italic.
"""


def tex_of(path):
    """The TeX in the example's comment, or None."""
    with open(path, encoding="utf-8") as f:
        text = f.read()
    m = re.search(r"<!--\s*(.*?)\s*-->", text, re.S)
    return m.group(1) if m else None


def ink(path):
    """The darkness of each pixel, 0 to 1, on a white ground; transparency counts as white."""
    im = Image.open(path).convert("RGBA")
    a = numpy.asarray(im).astype(float) / 255.0
    rgb, alpha = a[:, :, :3], a[:, :, 3:4]
    grey = (rgb * alpha + (1.0 - alpha)).mean(axis=2)
    return 1.0 - grey


def ink_box(dark, threshold=0.25):
    rows = numpy.where((dark > threshold).any(axis=1))[0]
    cols = numpy.where((dark > threshold).any(axis=0))[0]
    if len(rows) == 0:
        return None
    return cols[0], rows[0], cols[-1] + 1, rows[-1] + 1


def crop(dark):
    box = ink_box(dark)
    if box is None:
        return dark[:0, :0]
    left, top, right, bottom = box
    return dark[top:bottom, left:right]


def band_shares(profile, bands):
    """The share of the profile's total in each of `bands` equal parts of its length."""
    n = len(profile)
    total = profile.sum()
    if n == 0 or total <= 0:
        return numpy.zeros(bands)
    edges = numpy.linspace(0, n, bands + 1)
    cum = numpy.concatenate([[0.0], numpy.cumsum(profile)])
    # The running sum at fractional positions, so that bands need not fall on whole pixels.
    at = numpy.interp(edges, numpy.arange(n + 1), cum)
    return numpy.diff(at) / total


def moved(tavi, latex, bands):
    """The mean difference of the running shares of ink at the ends of the bands."""
    return numpy.abs(numpy.cumsum(band_shares(tavi, bands)) - numpy.cumsum(band_shares(latex, bands))).mean()


def distance(tavi, latex, font_width):
    t, l = crop(tavi), crop(latex)
    th, tw = t.shape
    lh, lw = l.shape
    if lw == 0 or lh == 0 or tw == 0 or th == 0:
        return {"box": 9.99, "columns": 1.0, "rows": 1.0, "width": tw - lw, "height": th - lh}
    lw = lw * font_width
    box = (abs(tw - lw) + abs(th - lh)) / float(lw + lh)
    columns = moved(t.sum(axis=0), l.sum(axis=0), COLUMN_BANDS)
    rows = moved(t.sum(axis=1), l.sum(axis=1), ROW_BANDS)
    return {"box": box, "columns": columns, "rows": rows, "width": int(round(tw - lw)), "height": th - lh}


def total(d):
    return d["box"] + d["columns"] + d["rows"]


def render_latex(names, texs, work, out_dir):
    """One LaTeX document, a formula a page; dvipng makes a tight PNG of each page."""
    body = "\n\\newpage\n".join("$\\displaystyle %s$" % tex for tex in texs)
    with open(os.path.join(work, "all.tex"), "w", encoding="utf-8") as f:
        f.write(LATEX_PREAMBLE + body + "\n\\end{document}\n")
    run = subprocess.run(["latex", "-interaction=nonstopmode", "-halt-on-error", "all.tex"], cwd=work,
                         stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    if run.returncode != 0:
        sys.exit("make-comparison: latex failed:\n" + run.stdout[-3000:])
    subprocess.run(["dvipng", "-q", "-D", str(DPI), "-T", "tight", "-bg", "White", "-o", "page%d.png", "all.dvi"],
                   cwd=work, check=True, stdout=subprocess.DEVNULL)
    for i, name in enumerate(names):
        shutil.copyfile(os.path.join(work, "page%d.png" % (i + 1)), os.path.join(out_dir, name + "-latex.png"))


def render_tavi(render, setup, xml, png):
    env = dict(os.environ)
    env.setdefault("QT_QPA_PLATFORM", "offscreen")
    command = [render, xml, "--dpi", str(DPI), "--font-size", "12", "-o", png]
    if setup:
        command += ["--setup", setup]
    subprocess.run(command, check=True, env=env)


def font_width(render, setup):
    """How wide Tavi's text font sets the calibration texts against LaTeX's, as a ratio of ink widths."""
    with tempfile.TemporaryDirectory() as work:
        for name, content, _ in CALIBRATION:
            xml = os.path.join(work, name + ".xml")
            with open(xml, "w", encoding="utf-8") as f:
                f.write('<?xml version="1.0" encoding="UTF-8"?>\n'
                        '<math xmlns="http://www.tavi-math.org/xml/MathEditContent">%s</math>\n' % content)
            render_tavi(render, setup, xml, os.path.join(work, name + "-tavi.png"))
        render_latex([c[0] for c in CALIBRATION], [c[2] for c in CALIBRATION], work, work)
        tavi = sum(crop(ink(os.path.join(work, c[0] + "-tavi.png"))).shape[1] for c in CALIBRATION)
        latex = sum(crop(ink(os.path.join(work, c[0] + "-latex.png"))).shape[1] for c in CALIBRATION)
    return tavi / float(latex)


def read_scores(path):
    scores = {}
    with open(path, encoding="utf-8") as f:
        for line in f:
            if line.startswith("#") or not line.strip():
                continue
            name, value = line.split("\t")[:2]
            scores[name] = float(value)
    return scores


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--render", default=os.path.join(ROOT, "build", "tools", "tavi-render"))
    parser.add_argument("--setup", help="the setup file for tavi-render; else its default")
    parser.add_argument("--before", help="scores.tsv of an earlier run, shown beside this one")
    args = parser.parse_args()

    for tool in ("latex", "dvipng"):
        if shutil.which(tool) is None:
            sys.exit("make-comparison: %s is missing (apt-get install texlive-latex-base "
                     "texlive-latex-recommended dvipng)" % tool)
    before = read_scores(args.before) if args.before else None

    names, texs = [], []
    for file in sorted(os.listdir(EXAMPLES)):
        if file.endswith(".xml"):
            tex = tex_of(os.path.join(EXAMPLES, file))
            if tex:
                names.append(file[:-4])
                texs.append(tex)
    os.makedirs(OUT_DIR, exist_ok=True)

    for name in names:
        render_tavi(args.render, args.setup, os.path.join(EXAMPLES, name + ".xml"),
                    os.path.join(OUT_DIR, name + "-tavi.png"))
    with tempfile.TemporaryDirectory() as work:
        render_latex(names, texs, work, OUT_DIR)
    widths = font_width(args.render, args.setup)

    rows = []
    for name, tex in zip(names, texs):
        d = distance(ink(os.path.join(OUT_DIR, name + "-tavi.png")), ink(os.path.join(OUT_DIR, name + "-latex.png")),
                     widths)
        rows.append((total(d), name, tex, d))
    rows.sort(key=lambda r: (-r[0], r[1]))

    with open(os.path.join(OUT_DIR, "scores.tsv"), "w", encoding="utf-8") as f:
        f.write("# font width %.3f\n# name\tdistance\tbox\tcolumns\trows\twidth px\theight px\n" % widths)
        for score, name, _, d in sorted(rows, key=lambda r: r[1]):
            f.write("%s\t%.3f\t%.3f\t%.3f\t%.3f\t%d\t%d\n" % (name, score, d["box"], d["columns"], d["rows"],
                                                            d["width"], d["height"]))

    with open(PAGE, "w", encoding="utf-8") as f:
        f.write("# Tavi beside LaTeX\n\n")
        f.write("Every formula of `data/examples`, set by `tavi-render` (left) and by LaTeX from the TeX in the "
                "example's comment (right, `amsmath`, display style), both at 12 pt and %d dpi. Made by "
                "`docs/make-comparison.py`; the worst first.\n\n" % DPI)
        f.write("The distance is the sum of three parts, each 0 for equal pictures: *box*, how much the ink "
                "boxes differ in width and height relative to LaTeX's; *columns*, how far the ink lies from "
                "where LaTeX has it along the formula, as a fraction of the width (the ink box cut into %d "
                "bands across, the running share of ink at each band's end compared with LaTeX's: a gap or "
                "a misplaced part counts by its size); *rows*, the same over %d bands from top to bottom "
                "(how high scripts and limits stand). The "
                "fonts differ (Liberation Serif against Computer Modern), so even equal layouts score a "
                "little; Liberation Serif sets the alphabet and the digits %.3f times as wide as LaTeX, and "
                "LaTeX's widths are scaled by that before they are compared. Width and height are Tavi's ink "
                "box less LaTeX's so scaled, in pixels.\n\n" % (COLUMN_BANDS, ROW_BANDS, widths))
        head = "| Formula | Distance |"
        rule = "|---|---:|"
        if before is not None:
            head += " Before |"
            rule += "---:|"
        f.write(head + " Box | Columns | Rows | Width | Height |\n" + rule + "---:|---:|---:|---:|---:|\n")
        for score, name, _, d in rows:
            line = "| [%s](#%s) | %.3f |" % (name, name, score)
            if before is not None:
                line += " %s |" % ("%.3f" % before[name] if name in before else "")
            f.write(line + " %.3f | %.3f | %.3f | %+d | %+d |\n" % (d["box"], d["columns"], d["rows"], d["width"],
                                                                  d["height"]))
        f.write("\n" + KNOWN_DIFFERENCES + "\n")
        for score, name, tex, d in rows:
            f.write('<a id="%s"></a>\n\n### %s: %.3f\n\n`%s`\n\n' % (name, name, score, tex))
            f.write("| Tavi | LaTeX |\n|---|---|\n")
            f.write("| ![%s by Tavi](comparison/%s-tavi.png) | ![%s by LaTeX](comparison/%s-latex.png) |\n\n"
                    % (name, name, name, name))
    print("make-comparison: %d formulas, %s" % (len(rows), os.path.relpath(PAGE, ROOT)))


if __name__ == "__main__":
    main()
