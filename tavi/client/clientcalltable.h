// The machinery of the client-call tables of the DOM face: a level of an object lists its functions
// as rows of name, signature and handler, and the rows are tried in order. A handler that can't use
// the arguments (an id that names no object of the kind it needs) declines, and the next row is
// tried, as if the signature had not fitted.
#pragma once

#include <cstddef>

#include "tavi/client/clientcall.h"
#include "tavi/client/domobjectmgr.h"
#include "tavi/client/vararg.h"
#include "tavi/kxt/wchar.h"

namespace Tavi {

template <class Self>
struct ClientCallRow
{
    wchar const *name;
    char const *signature;
    // True when the call was taken; `result` then holds the answer (null for none).
    bool (*run)(Self &self, ClientCall &call, DOMObjectMgr &mgr, VarArg *&result);
};

template <class Self, std::size_t N>
bool run_client_call_rows(ClientCallRow<Self> const (&rows)[N], Self &self, long id, ClientCall &call,
                          VarArg *&result)
{
    DOMObjectMgr *mgr = dynamic_cast<DOMObjectMgr *>(call.object_mgr());
    if (mgr == nullptr)
        return false;
    for (ClientCallRow<Self> const &row : rows)
        if (call.match_signature(id, row.name, row.signature) && row.run(self, call, *mgr, result))
            return true;
    return false;
}

// An object result: its id, or "no object".
inline VarArg *client_object_result(long id)
{
    if (id == -1)
        return new NilArg;
    return new ClientObjectArg(id);
}

// The object of kind T that the argument at `index` names, or null.
template <class T>
T *client_call_object(ClientCall &call, DOMObjectMgr &mgr, long index)
{
    VarArg *arg = call.at(index);
    long id = -1;
    if (arg == nullptr || !arg->obj_val(id))
        return nullptr;
    return dynamic_cast<T *>(mgr.get_client_object(id));
}

}  // namespace Tavi
