// Observable and Observer: attach order, duplicate entries, detach of strangers, and the
// disconnect that goes out when the observable dies.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tavi/glyph/observable.h"

namespace {

using namespace Tavi;

// Writes "<name>:u" for update and "<name>:d" for disconnect into a shared journal, and checks
// that the observable passed is the one it expects.
class JournalObserver : public Observer
{
public:
    JournalObserver(std::string name, std::vector<std::string> &journal)
        : name_(std::move(name)), journal_(journal)
    {
    }
    void update(Observable *o) override
    {
        EXPECT_EQ(o, expected);
        journal_.push_back(name_ + ":u");
    }
    void disconnect(Observable *o) override
    {
        EXPECT_EQ(o, expected);
        journal_.push_back(name_ + ":d");
    }
    Observable *expected = nullptr;

private:
    std::string name_;
    std::vector<std::string> &journal_;
};

using Journal = std::vector<std::string>;

TEST(Observable, AttachOrderDuplicatesAndStrangers)
{
    struct Case
    {
        char const *what;
        std::vector<char> attach;  // 'a', 'b' or 'c', in order
        std::vector<char> detach;
        Journal notified;
    };
    Case const cases[] = {
        {"notify and disconnect follow the attach order", {'b', 'a', 'c'}, {}, {"b:u", "a:u", "c:u"}},
        {"attached twice, detached once: stays once", {'a', 'a'}, {'a'}, {"a:u"}},
        {"attached twice, called twice", {'a', 'b', 'a'}, {}, {"a:u", "b:u", "a:u"}},
        {"first of two equal entries removed", {'a', 'b', 'a'}, {'a'}, {"b:u", "a:u"}},
        {"detach of a stranger changes nothing", {'a', 'b'}, {'c'}, {"a:u", "b:u"}},
        {"detach from an empty observable", {}, {'a'}, {}},
        {"detach all", {'a', 'b'}, {'b', 'a'}, {}},
    };
    for (Case const &c : cases) {
        SCOPED_TRACE(c.what);
        Journal journal;
        JournalObserver a("a", journal), b("b", journal), cc("c", journal);
        auto pick = [&](char n) -> JournalObserver * { return n == 'a' ? &a : n == 'b' ? &b : &cc; };
        {
            Observable subject;
            for (JournalObserver *o : {&a, &b, &cc})
                o->expected = &subject;
            for (char n : c.attach)
                subject.attach(pick(n));
            for (char n : c.detach)
                subject.detach(pick(n));
            subject.notify();
            EXPECT_EQ(journal, c.notified);
            journal.clear();
        }
        // The disconnects mirror the entries that were left.
        Journal disconnected;
        for (std::string const &s : c.notified)
            disconnected.push_back(s.substr(0, 1) + ":d");
        EXPECT_EQ(journal, disconnected);
    }
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
