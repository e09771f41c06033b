// Drawing the formula on each output surface. The Qt targets are measured first on an image of their
// resolution, with room around the formula, so that the page covers its boxes and all its ink plus
// a margin; the writers are measured by a writer of their kind. Then the formula is drawn for real,
// moved into the margin.
#include "tavi/qt/formulaoutput.h"

#include <QBuffer>
#include <QImage>
#include <QPageSize>
#include <QPdfWriter>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cmath>
#include <cstdio>
#include <sstream>
#include <system_error>

#include "tavi/qt/qt_canvas.h"
#include "tavi/qt/qt_eps_canvas.h"
#include "tavi/qt/qt_svg_canvas.h"

namespace Tavi {

OutputPage::OutputPage(Extension const &formula, double dots_per_inch)
{
    long const m = std::lround(output_margin_points * dots_per_inch / 72.0);
    width = formula.right() - formula.left() + 2 * m;
    height = formula.bottom() - formula.top() + 2 * m;
    if (width < 1)
        width = 1;
    if (height < 1)
        height = 1;
    offset = Point(m - formula.left(), m - formula.top());
}

namespace {

Extension const probe_page(0, 0, 1, 1);

void set_resolution(QImage &image, int dpi)
{
    int const dots_per_meter = static_cast<int>(std::lround(dpi / 0.0254));
    image.setDotsPerMeterX(dots_per_meter);
    image.setDotsPerMeterY(dots_per_meter);
}

// The largest image drawn to find the ink, in pixels (64 MB); past it the boxes alone make the page.
long const max_probe_pixels = 16L * 1000 * 1000;

// The formula drawn with room around it on an image of the resolution, to see where its ink really
// goes.
struct InkProbe
{
    InkProbe(RenderHost &host, int dpi)
    {
        QImage small(1, 1, QImage::Format_ARGB32_Premultiplied);
        set_resolution(small, dpi);
        extent = print_on<Qt_Canvas>(host, small, probe_page, Point(0, 0), true);
        long const w = extent.right() - extent.left();
        long const h = extent.bottom() - extent.top();
        // Room of half the formula's height and a third of an inch on each side: ink strays past the
        // boxes by a part of a line, not by more than the formula is high.
        pad = h / 2 + dpi / 3;
        long const pw = w + 2 * pad;
        long const ph = h + 2 * pad;
        if (w < 0 || h < 0 || pw * ph > max_probe_pixels)
            return;
        image = QImage(static_cast<int>(pw), static_cast<int>(ph), QImage::Format_ARGB32_Premultiplied);
        if (image.isNull())
            return;
        set_resolution(image, dpi);
        image.fill(Qt::white);
        origin = Point(pad - extent.left(), pad - extent.top());
        print_on<Qt_Canvas>(host, image, Extension(0, 0, ph, pw), origin, true);
        grow_to_ink();
    }

    // Widens the extent to the bounding box of every pixel that is not white. The image is mostly
    // the white room round the formula, and at the vector resolution it has millions of pixels: a
    // row is searched from each end for its first ink only, with the sizes read once.
    void grow_to_ink()
    {
        QRgb const white = qRgba(255, 255, 255, 255);
        int const width = image.width();
        int const height = image.height();
        int top = height, left = width, bottom = -1, right = -1;
        for (int y = 0; y < height; ++y) {
            QRgb const *line = reinterpret_cast<QRgb const *>(image.constScanLine(y));
            QRgb const *first = std::find_if(line, line + width, [white](QRgb p) { return p != white; });
            if (first == line + width)
                continue;
            QRgb const *last = line + width - 1;
            while (*last == white)
                --last;
            top = std::min(top, y);
            bottom = y;
            left = std::min(left, static_cast<int>(first - line));
            right = std::max(right, static_cast<int>(last - line));
        }
        if (bottom < 0)
            return;
        extent.merge(Extension(top - origin.y, left - origin.x, bottom + 1 - origin.y, right + 1 - origin.x));
    }

    Extension extent;     // of the formula, in its own coordinates: boxes and ink together
    long pad = 0;
    Point origin;         // where the formula's (0, 0) stands on the image
    QImage image;         // null when the formula was too large to draw for this
};

bool render_png(RenderHost &host, int dpi, QByteArray &out, std::string &error)
{
    InkProbe const probe(host, dpi);
    OutputPage const page(probe.extent, dpi);
    if (page.width > 30000 || page.height > 30000) {
        error = "the image would be larger than 30000 pixels: lower the dpi or the font size";
        return false;
    }
    QImage image;
    QRect const crop(static_cast<int>(probe.origin.x - page.offset.x), static_cast<int>(probe.origin.y - page.offset.y),
                     static_cast<int>(page.width), static_cast<int>(page.height));
    if (!probe.image.isNull() && probe.image.rect().contains(crop)) {
        // The probe is the picture already: cut the page out of it.
        image = probe.image.copy(crop);
    } else {
        image = QImage(static_cast<int>(page.width), static_cast<int>(page.height), QImage::Format_ARGB32_Premultiplied);
        if (image.isNull()) {
            error = "no memory for an image of this size";
            return false;
        }
        image.fill(Qt::white);
        print_on<Qt_Canvas>(host, image, page.extension(), page.offset, true);
    }
    set_resolution(image, dpi);
    QBuffer buffer(&out);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, "PNG")) {
        error = "the PNG could not be encoded";
        return false;
    }
    return true;
}

void setup_pdf(QPdfWriter &writer, long width, long height)
{
    writer.setCreator("tavi-render");
    writer.setTitle("Formula");
    writer.setResolution(vector_output_dpi);
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    QSizeF const points(width * 72.0 / vector_output_dpi, height * 72.0 / vector_output_dpi);
    writer.setPageSize(QPageSize(points, QPageSize::Point, QString(), QPageSize::ExactMatch));
}

bool render_pdf(RenderHost &host, QByteArray &out)
{
    OutputPage const page(ink_extent(host, vector_output_dpi), vector_output_dpi);
    QBuffer buffer(&out);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    setup_pdf(writer, page.width, page.height);
    print_on<Qt_Canvas>(host, writer, page.extension(), page.offset, false);
    return true;
}

// The writers draw in twentieths of a point (1440 per inch) through header, drawing and footer.
template <class W>
bool render_writer(RenderHost &host, QByteArray &out)
{
    Extension measured;
    {
        std::ostringstream scratch;
        W probe(scratch, probe_page);
        measured = host.print(&probe);
    }
    OutputPage const page(measured, 1440.0);
    std::ostringstream text;
    {
        W writer(text, page.extension());
        writer.put_header("tavi-render");
        writer.translation(page.offset);
        host.print(&writer);
        writer.put_footer();
    }
    std::string const s = text.str();
    out = QByteArray(s.data(), static_cast<int>(s.size()));
    return true;
}

}  // namespace

Extension ink_extent(RenderHost &host, int dpi) { return InkProbe(host, dpi).extent; }

bool render_formula(RenderHost &host, OutputFormat format, int dpi, QByteArray &out, std::string &error)
{
    out.clear();
    switch (format) {
    case OutputFormat::png:
        return render_png(host, dpi, out, error);
    case OutputFormat::pdf:
        return render_pdf(host, out);
    case OutputFormat::eps:
        return render_writer<Qt_EPS_Canvas>(host, out);
    case OutputFormat::svg_writer:
        return render_writer<Qt_SVG_Canvas>(host, out);
    }
    error = "no output format";
    return false;
}

bool save_output(std::string const &path, QByteArray const &data, std::string &error)
{
    // A temporary beside the target, renamed over it when complete: a reader of the target sees the
    // old file or the new one, never a part. Unlike QSaveFile nothing is synced to the disk: a
    // thousand files of a batch each waiting for the disk would take many times their drawing.
    // The name is new (O_EXCL) and differs by process and by call, for writers on several threads.
    static std::atomic<unsigned long> serial{0};
    auto reason = [&path](int code) {
        return "cannot write " + path + ": " + std::error_code(code, std::generic_category()).message();
    };
    std::string temp;
    int fd = -1;
    for (int attempt = 0; attempt < 100 && fd < 0; ++attempt) {
        temp = path + ".tmp" + std::to_string(::getpid()) + "-" + std::to_string(serial.fetch_add(1));
        fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd < 0 && errno != EEXIST)
            break;
    }
    if (fd < 0) {
        error = reason(errno);
        return false;
    }
    char const *p = data.constData();
    std::size_t left = static_cast<std::size_t>(data.size());
    int failure = 0;
    while (left > 0 && failure == 0) {
        ssize_t const n = ::write(fd, p, left);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0) {
            failure = n < 0 ? errno : EIO;
            break;
        }
        p += n;
        left -= static_cast<std::size_t>(n);
    }
    if (::close(fd) != 0 && failure == 0)
        failure = errno;
    if (failure == 0 && std::rename(temp.c_str(), path.c_str()) != 0)
        failure = errno;
    if (failure != 0) {
        ::unlink(temp.c_str());
        error = reason(failure);
        return false;
    }
    return true;
}

}  // namespace Tavi
