// Shaping a run into glyphs with their offsets (as Qt's text layout places them: kerning, ligatures,
// fallback fonts), keeping each glyph's outline once, and rewriting the generator's marks into uses.
#include "tools/tavi-render/outline_glyphs.h"

#include <QByteArrayView>
#include <QGlyphRun>
#include <QPainterPath>
#include <QRawFont>
#include <QTextLayout>


namespace TaviRender {

namespace {

// Coordinates at the generator's resolution: a hundredth of a device unit is far below what shows.
// Qt writes numbers the same in every locale (a decimal point, never a comma).
void put_number(QByteArray &out, double v)
{
    QByteArray n = QByteArray::number(v, 'f', 2);
    qsizetype end = n.size();
    while (end > 0 && n[end - 1] == '0')
        --end;
    if (end > 0 && n[end - 1] == '.')
        --end;
    n.truncate(end);
    out += n == "-0" ? QByteArray("0") : n;
}

QByteArray path_data(QPainterPath const &path)
{
    QByteArray d;
    for (int i = 0; i < path.elementCount(); ++i) {
        QPainterPath::Element const e = path.elementAt(i);
        switch (e.type) {
        case QPainterPath::MoveToElement:
            if (i > 0)
                d += 'Z';
            d += 'M';
            break;
        case QPainterPath::LineToElement:
            d += 'L';
            break;
        case QPainterPath::CurveToElement:
            d += 'C';
            break;
        case QPainterPath::CurveToDataElement:
            d += ' ';
            break;
        }
        put_number(d, e.x);
        d += ' ';
        put_number(d, e.y);
    }
    if (!d.isEmpty())
        d += 'Z';
    return d;
}

QString glyph_key(QRawFont const &font, quint32 glyph)
{
    return font.familyName() + QChar(1) + font.styleName() + QChar(1) + QString::number(font.pixelSize()) + QChar(1) +
           QString::number(font.weight()) + QChar(1) + QString::number(int(font.style())) + QChar(1) +
           QString::number(glyph);
}

// The value of attribute `name` in the element text [begin, end), or empty.
QByteArray attribute(QByteArray const &svg, qsizetype begin, qsizetype end, char const *name)
{
    QByteArray const key = QByteArray(" ") + name + "=\"";
    qsizetype const at = svg.indexOf(key, begin);
    if (at < 0 || at >= end)
        return {};
    qsizetype const from = at + key.size();
    qsizetype const to = svg.indexOf('"', from);
    return to < 0 || to > end ? QByteArray() : svg.mid(from, to - from);
}

// The generator's group tag without its font, which no longer matters once there is no text.
QByteArray without_font(QByteArray tag)
{
    qsizetype const from = tag.indexOf("font-family=");
    if (from < 0)
        return tag;
    qsizetype const style = tag.indexOf("font-style=\"", from);
    qsizetype const to = style < 0 ? -1 : tag.indexOf('"', style + 12);
    if (to >= 0)
        tag.remove(from, to + 1 - from);
    // What the font leaves of the tag's end: blanks before the '>'.
    qsizetype end = tag.size() - 1;
    while (end > 0 && (tag[end - 1] == ' ' || tag[end - 1] == '\n'))
        --end;
    return tag.remove(end, tag.size() - 1 - end);
}

bool blank(QByteArray const &svg, qsizetype from, qsizetype to)
{
    for (qsizetype i = from; i < to; ++i)
        if (svg[i] != '\n' && svg[i] != ' ')
            return false;
    return true;
}

// The text between two elements: blanks become one line break.
void copy_gap(QByteArray &out, QByteArray const &svg, qsizetype from, qsizetype to)
{
    if (!blank(svg, from, to))
        out.append(svg.constData() + from, to - from);
    else if (!out.endsWith('\n'))
        out += '\n';
}

}  // namespace

int OutlineGlyphs::run(QFont const &font, QString const &text)
{
    QString const key = font.key() + QChar(0) + text;
    auto const known = run_index_.constFind(key);
    if (known != run_index_.constEnd())
        return known.value();

    QTextLayout layout(text, font);
    layout.beginLayout();
    QTextLine const line = layout.createLine();
    layout.endLayout();
    std::vector<Placed> placed;
    // The layout's positions are from the top of its line; a run is drawn from its baseline.
    double const baseline = line.isValid() ? line.ascent() : 0.0;
    for (QGlyphRun const &glyphs : layout.glyphRuns()) {
        QRawFont const raw = glyphs.rawFont();
        QList<quint32> const indexes = glyphs.glyphIndexes();
        QList<QPointF> const positions = glyphs.positions();
        for (qsizetype i = 0; i < indexes.size(); ++i) {
            QString const gkey = glyph_key(raw, indexes[i]);
            auto found = glyph_index_.constFind(gkey);
            int id;
            if (found == glyph_index_.constEnd()) {
                id = static_cast<int>(paths_.size());
                paths_.push_back(path_data(raw.pathForGlyph(indexes[i])));
                glyph_index_.insert(gkey, id);
            } else {
                id = found.value();
            }
            // A glyph with no outline (a space) needs no use.
            if (!paths_[static_cast<std::size_t>(id)].isEmpty())
                placed.push_back({id, QPointF(positions[i].x(), positions[i].y() - baseline)});
        }
    }
    int const id = static_cast<int>(runs_.size());
    runs_.push_back(std::move(placed));
    run_index_.insert(key, id);
    return id;
}

// A mark is the generator's text element of a run's number: <text fill="C" fill-opacity="O" ...
// x="X" y="Y" ...>N</text>. Each glyph of run N becomes <use xlink:href="#gK" x= y=> in the mark's
// colour; the outlines themselves carry no colour, so that one outline serves every colour. The
// generator opens a group for every change of font; without the text, a group that closes and opens
// again with the same attributes is one group.
QByteArray OutlineGlyphs::finish(QByteArray const &svg) const
{
    QByteArray out;
    out.reserve(svg.size() / 2);
    qsizetype pos = 0;
    qsizetype const defs = svg.indexOf("<defs>");
    if (defs >= 0 && !paths_.empty()) {
        pos = defs + 6;
        out.append(svg.constData(), pos);
        out += '\n';
        for (std::size_t i = 0; i < paths_.size(); ++i) {
            if (paths_[i].isEmpty())
                continue;
            out += "<path id=\"g" + QByteArray::number(static_cast<qulonglong>(i)) + "\" fill-rule=\"nonzero\" d=\"" + paths_[i] + "\"/>\n";
        }
    }
    std::vector<QByteArray> open;   // the tags of the groups open in `out`
    QByteArray closed;              // the tag of the group closed last, while only blanks follow it
    qsizetype closed_at = -1;       // where its </g> starts in `out`
    qsizetype closed_end = -1;      // where it ends in `svg`
    for (;;) {
        qsizetype const next = svg.indexOf('<', pos);
        if (next < 0)
            break;
        QByteArrayView const here = QByteArrayView(svg).sliced(next);
        bool const text = here.startsWith("<text ");
        bool const group = here.startsWith("<g ");
        bool const end_group = here.startsWith("</g>");
        if (!text && !group && !end_group) {
            qsizetype const after = svg.indexOf('>', next);
            if (after < 0)
                break;
            copy_gap(out, svg, pos, next);
            out.append(svg.constData() + next, after + 1 - next);
            pos = after + 1;
            closed_at = -1;
            continue;
        }
        if (end_group) {
            copy_gap(out, svg, pos, next);
            closed_at = out.size();
            closed = open.empty() ? QByteArray() : open.back();
            if (!open.empty())
                open.pop_back();
            out += "</g>";
            pos = closed_end = next + 4;
            continue;
        }
        qsizetype const open_end = svg.indexOf('>', next);
        if (open_end < 0)
            break;
        if (group) {
            QByteArray const tag = without_font(svg.mid(next, open_end + 1 - next));
            if (closed_at >= 0 && tag == closed && blank(svg, closed_end, next)) {
                out.truncate(closed_at);
            } else {
                copy_gap(out, svg, pos, next);
                out += tag;
            }
            open.push_back(tag);
            pos = open_end + 1;
            closed_at = -1;
            continue;
        }
        qsizetype const close = svg.indexOf("</text>", open_end);
        if (close < 0)
            break;
        copy_gap(out, svg, pos, next);
        bool ok = false;
        int const run = svg.mid(open_end + 1, close - open_end - 1).toInt(&ok);
        QByteArray const fill = attribute(svg, next, open_end, "fill");
        QByteArray const opacity = attribute(svg, next, open_end, "fill-opacity");
        double const x = attribute(svg, next, open_end, "x").toDouble();
        double const y = attribute(svg, next, open_end, "y").toDouble();
        if (ok && run >= 0 && static_cast<std::size_t>(run) < runs_.size()) {
            for (Placed const &g : runs_[static_cast<std::size_t>(run)]) {
                out += "<use xlink:href=\"#g" + QByteArray::number(g.glyph) + "\" x=\"";
                put_number(out, x + g.offset.x());
                out += "\" y=\"";
                put_number(out, y + g.offset.y());
                out += "\" fill=\"" + fill + '"';
                if (!opacity.isEmpty() && opacity != "1")
                    out += " fill-opacity=\"" + opacity + '"';
                out += "/>";
            }
        }
        pos = close + 7;
        closed_at = -1;
    }
    out.append(svg.constData() + pos, svg.size() - pos);
    return out;
}

}  // namespace TaviRender
