// OutlineGlyphs: the glyph outlines of an SVG drawn as outlines, each distinct glyph kept once. The
// canvas asks for a text run's glyphs and marks on the generator where the run stands; finishing the
// file puts every outline once into <defs> and each mark becomes <use> elements of those outlines.
#pragma once

#include <QByteArray>
#include <QFont>
#include <QHash>
#include <QPointF>
#include <QString>

#include <vector>

namespace TaviRender {

class OutlineGlyphs
{
public:
    // The number of a run of `text` in `font` (sized for the device) among the runs shaped so far.
    int run(QFont const &font, QString const &text);

    // The generator's file with the runs' marks replaced by uses of the outlines, and the outlines
    // written into its <defs>. A file without marks comes back as it was.
    QByteArray finish(QByteArray const &svg) const;

    // Distinct outlines so far.
    int glyph_count() const { return static_cast<int>(paths_.size()); }

private:
    struct Placed
    {
        int glyph;      // index into paths_
        QPointF offset; // from the run's origin on the baseline
    };
    std::vector<std::vector<Placed>> runs_;
    QHash<QString, int> run_index_;    // font key and text
    QHash<QString, int> glyph_index_;  // font file, size, style and glyph index
    std::vector<QByteArray> paths_;    // path data of each glyph, "M..Z"
};

}  // namespace TaviRender
