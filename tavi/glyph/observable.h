// The plain observer pair offered to hosts: an Observable calls update on each attached Observer,
// and tells them with disconnect when it goes away. Nothing is owned either way.
#pragma once

#include <vector>

namespace Tavi {

class Observable;

class Observer
{
public:
    virtual ~Observer();
    virtual void update(Observable *observable);
    virtual void disconnect(Observable *observable);

protected:
    Observer() = default;
};

class Observable
{
public:
    Observable() = default;
    virtual ~Observable();

    // No test for duplicates: an observer attached twice is called twice.
    virtual void attach(Observer *observer);
    // Removes the first entry equal to the observer; a stranger is ignored.
    virtual void detach(Observer *observer);
    virtual void notify();

private:
    std::vector<Observer *> observers_;
};

}  // namespace Tavi
