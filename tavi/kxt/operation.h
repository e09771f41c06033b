// Kxt::Operation: the abstract base of an undoable change.
#pragma once

namespace Kxt {

// One change that can be done, taken back and done again. Whoever keeps a history owns the
// operations in it and calls undo and redo in last-in, first-out order.
//
// Each call answers whether it changed anything; a false answer means the state is as before,
// so a history need not record the operation.
class Operation {
public:
    virtual ~Operation();
    virtual bool doit() = 0;
    virtual bool undo() = 0;
    virtual bool redo() = 0;

protected:
    Operation() = default;
    Operation(Operation const &) = default;
    Operation &operator=(Operation const &) = default;
};

}  // namespace Kxt
