// The progress bar of a long batch on a terminal: formulas done of all, the rate, the time left.
// It stays away for the first half second, so that a short batch prints nothing, and it redraws at
// most ten times a second.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdio>
#include <string>

namespace TaviRender {

// The line of the bar for `done` of `total` after `seconds`: a bar, the counts, the rate and the
// time left (or the time taken, once all are done), and the failures when there are any.
std::string progress_line(std::size_t done, std::size_t failed, std::size_t total, double seconds);

class ProgressBar
{
public:
    // Draws on `out` only when `shown` (a terminal, and not --quiet).
    ProgressBar(std::FILE *out, bool shown);
    // Told the counts as they change; draws when it is time.
    void update(std::size_t done, std::size_t failed, std::size_t total);
    // Ends the bar's line, if it was drawn, so that what follows starts on a line of its own.
    void finish();

private:
    using Clock = std::chrono::steady_clock;
    std::FILE *out_;
    bool shown_;
    bool drawn_ = false;
    Clock::time_point start_;
    Clock::time_point last_;
};

}  // namespace TaviRender
