// Observable and Observer.
#include "tavi/glyph/observable.h"

#include <algorithm>

namespace Tavi {

Observer::~Observer() = default;

void Observer::update(Observable *) {}

void Observer::disconnect(Observable *) {}

Observable::~Observable()
{
    // Indexed for the same reason as notify: an observer may detach itself in disconnect.
    for (std::size_t i = 0; i < observers_.size(); ++i)
        observers_[i]->disconnect(this);
}

void Observable::attach(Observer *observer)
{
    observers_.push_back(observer);
}

void Observable::detach(Observer *observer)
{
    auto found = std::find(observers_.begin(), observers_.end(), observer);
    if (found != observers_.end())
        observers_.erase(found);
}

void Observable::notify()
{
    // Indexed rather than iterated: an observer that attaches or detaches during update
    // reallocates the vector, and the walk then follows the live vector instead of a stale one.
    for (std::size_t i = 0; i < observers_.size(); ++i)
        observers_[i]->update(this);
}

}  // namespace Tavi
