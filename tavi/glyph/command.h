// Command: a small value that travels down a chain of handlers. The same object first asks
// (command_state, which enables it when a handler knows it) and then acts (do_command); its
// run-time class says what is wanted. FlipFlop adds the on/off state of a toggle, which the
// handler sets during command_state so that the caller learns the toggle's present state.
#pragma once

namespace Tavi {

class Command
{
public:
    Command() = default;
    Command(Command const &) = default;
    Command &operator=(Command const &) = default;

    virtual void enable(bool enabled);
    virtual bool enabled() const;
    virtual ~Command();

private:
    bool enabled_ = false;
};

class FlipFlop : public Command
{
public:
    explicit FlipFlop(bool on) : on_(on) {}
    FlipFlop(FlipFlop const &) = default;
    FlipFlop &operator=(FlipFlop const &) = default;
    ~FlipFlop() override;

    virtual bool is_on() const;
    virtual void turn_on(bool on);

private:
    bool on_;
};

}  // namespace Tavi
