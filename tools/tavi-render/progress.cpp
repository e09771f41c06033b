// The progress bar's text and its drawing: a carriage return goes back over the last line, and an
// erase to its end clears what a longer line left.
#include "tools/tavi-render/progress.h"

#include <QByteArray>

#include <cmath>

namespace TaviRender {

namespace {

constexpr int bar_width = 24;
constexpr double quiet_start = 0.5;    // seconds before the bar is first drawn
constexpr double redraw_every = 0.1;

std::string clock_time(double seconds)
{
    long const s = std::lround(seconds < 0 ? 0 : seconds);
    char text[32];
    if (s >= 3600)
        std::snprintf(text, sizeof text, "%ld:%02ld:%02ld", s / 3600, s / 60 % 60, s % 60);
    else
        std::snprintf(text, sizeof text, "%ld:%02ld", s / 60, s % 60);
    return text;
}

}  // namespace

std::string progress_line(std::size_t done, std::size_t failed, std::size_t total, double seconds)
{
    double const part = total > 0 ? static_cast<double>(done) / static_cast<double>(total) : 1.0;
    int const filled = static_cast<int>(part * bar_width);
    std::string line = "[" + std::string(static_cast<std::size_t>(filled), '#') +
                       std::string(static_cast<std::size_t>(bar_width - filled), '.') + "] " +
                       std::to_string(done) + "/" + std::to_string(total);
    if (seconds > 0 && done > 0) {
        double const rate = static_cast<double>(done) / seconds;
        // Three figures are plenty for a slow rate, and a fast one is a whole number; the point is
        // a point in every locale, as in the rest of what the program prints.
        std::string const shown =
            rate >= 100 ? std::to_string(std::lround(rate)) : QByteArray::number(rate, 'g', 3).toStdString();
        line += "  " + shown + "/s";
        if (done < total)
            line += "  " + clock_time(static_cast<double>(total - done) / rate) + " left";
        else
            line += "  in " + clock_time(seconds);
    }
    if (failed > 0)
        line += "  " + std::to_string(failed) + " failed";
    return line;
}

ProgressBar::ProgressBar(std::FILE *out, bool shown) : out_(out), shown_(shown), start_(Clock::now()), last_(start_) {}

void ProgressBar::update(std::size_t done, std::size_t failed, std::size_t total)
{
    if (!shown_)
        return;
    Clock::time_point const now = Clock::now();
    double const seconds = std::chrono::duration<double>(now - start_).count();
    bool const all = done >= total;
    if (seconds < quiet_start && !drawn_)
        return;
    if (!all && drawn_ && std::chrono::duration<double>(now - last_).count() < redraw_every)
        return;
    last_ = now;
    drawn_ = true;
    std::fprintf(out_, "\r%s\033[K", progress_line(done, failed, total, seconds).c_str());
    std::fflush(out_);
}

void ProgressBar::finish()
{
    if (drawn_) {
        std::fputc('\n', out_);
        std::fflush(out_);
    }
    drawn_ = false;
}

}  // namespace TaviRender
