// Observable and Observer: duplicate entries, the disconnect that goes out when the observable dies,
// and an observer that leaves during the walk.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tavi/glyph/observable.h"

namespace {

using namespace Tavi;
using Journal = std::vector<std::string>;

// Writes "<name>:u" for update and "<name>:d" for disconnect into a shared journal.
class JournalObserver : public Observer
{
public:
    JournalObserver(char name, Journal &journal) : name_(1, name), journal_(journal) {}
    void update(Observable *) override { journal_.push_back(name_ + ":u"); }
    void disconnect(Observable *) override { journal_.push_back(name_ + ":d"); }

private:
    std::string name_;
    Journal &journal_;
};

// An observer attached twice is called twice; detach takes out the first of its entries only, and
// the disconnects at the observable's end mirror the entries left.
TEST(Observable, DuplicatesAndDisconnect)
{
    Journal journal;
    JournalObserver a('a', journal), b('b', journal);
    {
        Observable subject;
        subject.attach(&a);
        subject.attach(&b);
        subject.attach(&a);
        subject.notify();
        subject.detach(&a);
        subject.notify();
    }
    EXPECT_EQ(journal, (Journal{"a:u", "b:u", "a:u", "b:u", "a:u", "b:d", "a:d"}));
}

// An observer that leaves during the walk: the walk follows the live vector and does not run off it.
TEST(Observable, ObserverMayDetachItselfDuringNotify)
{
    struct Leaver : Observer
    {
        int calls = 0;
        void update(Observable *o) override
        {
            ++calls;
            o->detach(this);
        }
    };
    Leaver first, second;
    Observable subject;
    subject.attach(&first);
    subject.attach(&second);
    subject.notify();
    // first leaves at index 0, second moves into that slot and the walk ends: second is skipped.
    EXPECT_EQ(first.calls, 1);
    EXPECT_EQ(second.calls, 0);
    subject.notify();
    EXPECT_EQ(second.calls, 1);
}

}  // namespace
