// The process-wide decimal point: "." unless the host asks for the locale's, which is the user's
// decimal separator as the content reader finds it.
#include "tavi/math/templates/decimalpoint.h"

#include <atomic>

#include "tavi/interchange/decimalseparator.h"

namespace Tavi {

namespace {

// Set by the host, read by every thread that builds numbers: an atomic, so that a host may switch
// it while formulas are laid out elsewhere without a data race.
std::atomic<bool> locale_asked{false};

}  // namespace

bool use_locale_decimal_point() { return locale_asked.load(std::memory_order_relaxed); }

void use_locale_decimal_point(bool on) { locale_asked.store(on, std::memory_order_relaxed); }

wchar decimal_point() { return use_locale_decimal_point() ? decimal_separator() : u'.'; }

}  // namespace Tavi
