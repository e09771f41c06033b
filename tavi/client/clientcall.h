// ClientCall: one request of a host, held in one list: the target's id (a ClientObjectArg), the
// function's name (a StringArg), then the arguments.
#pragma once

#include <memory>

#include "tavi/kxt/wchar.h"

namespace Tavi {

class ClientObjectMgr;
class IClientObject;
class ListArg;
class VarArg;

class ClientCall
{
public:
    // Takes the list over; the manager stays the caller's.
    ClientCall(ClientObjectMgr *mgr, ListArg *list);
    ~ClientCall();
    ClientCall(ClientCall const &) = delete;
    ClientCall &operator=(ClientCall const &) = delete;

    ClientObjectMgr *object_mgr() const { return mgr_; }
    ListArg *list() const { return list_.get(); }
    // -1 when the list doesn't begin with an object.
    long object_id() const;
    // Null for an id that names nothing.
    IClientObject *object() const;
    // The empty string when the list holds no name.
    wchar const *fname() const;
    long nargs() const;
    // The argument at the index, or null.
    VarArg *at(long index) const;

    // Whether the call is addressed to the object `id`, names `name` exactly, and its arguments
    // match `signature` to its end (a `*` that matched stays in place, so it never ends there).
    bool match_signature(long id, wchar const *name, char const *signature) const;

private:
    ClientObjectMgr *mgr_;
    std::unique_ptr<ListArg> list_;
};

}  // namespace Tavi
