// Command and FlipFlop.
#include "tavi/glyph/command.h"

namespace Tavi {

void Command::enable(bool enabled)
{
    enabled_ = enabled;
}

bool Command::enabled() const
{
    return enabled_;
}

Command::~Command() = default;

FlipFlop::~FlipFlop() = default;

bool FlipFlop::is_on() const
{
    return on_;
}

void FlipFlop::turn_on(bool on)
{
    on_ = on;
}

}  // namespace Tavi
