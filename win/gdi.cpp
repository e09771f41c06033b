// Gdi: the arithmetic it shares with the system, and the interface in force.
#include "win/gdi.h"

#include <atomic>
#include <cstdint>

#ifdef _WIN32
#include "win/real_gdi.h"
#else
#include "win/recording_gdi.h"
#endif

namespace Tavi {

namespace {

std::atomic<Gdi *> installed{nullptr};

Gdi &system_gdi()
{
#ifdef _WIN32
    static RealGdi gdi;
#else
    static RecordingGdi gdi;
#endif
    return gdi;
}

}  // namespace

Gdi::~Gdi() = default;

int Gdi::MulDiv(int a, int b, int c)
{
    if (c == 0)
        return -1;
    std::int64_t const product = static_cast<std::int64_t>(a) * b;
    std::int64_t const magnitude = ((product < 0 ? -product : product) + (c < 0 ? -std::int64_t{c} : c) / 2) /
                                   (c < 0 ? -std::int64_t{c} : c);
    std::int64_t const result = (product < 0) != (c < 0) ? -magnitude : magnitude;
    if (result > INT32_MAX || result < INT32_MIN)
        return -1;
    return static_cast<int>(result);
}

Gdi &Gdi::current()
{
    Gdi *gdi = installed.load();
    return gdi != nullptr ? *gdi : system_gdi();
}

Gdi *Gdi::install(Gdi *gdi) { return installed.exchange(gdi); }

}  // namespace Tavi
