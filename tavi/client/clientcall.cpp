// ClientCall: reading the target, the name and the arguments, and testing a signature.
#include "tavi/client/clientcall.h"

#include "tavi/client/clientobjectmgr.h"
#include "tavi/client/vararg.h"

namespace Tavi {

namespace {

bool same_text(wchar const *a, wchar const *b)
{
    if (a == nullptr || b == nullptr)
        return a == b;
    while (*a != 0 && *a == *b) {
        ++a;
        ++b;
    }
    return *a == *b;
}

}  // namespace

ClientCall::ClientCall(ClientObjectMgr *mgr, ListArg *list) : mgr_(mgr), list_(list) {}

ClientCall::~ClientCall() = default;

long ClientCall::object_id() const
{
    long id = -1;
    if (!list_ || list_->size() == 0 || !list_->at(0)->obj_val(id))
        return -1;
    return id;
}

IClientObject *ClientCall::object() const
{
    long const id = object_id();
    if (id == -1 || mgr_ == nullptr)
        return nullptr;
    return mgr_->get_client_object(id);
}

wchar const *ClientCall::fname() const
{
    wchar const *name = nullptr;
    if (!list_ || list_->size() < 2 || !list_->at(1)->string_val(name))
        return u"";
    return name;
}

long ClientCall::nargs() const
{
    if (!list_ || list_->size() < 2)
        return 0;
    return static_cast<long>(list_->size()) - 2;
}

VarArg *ClientCall::at(long index) const
{
    if (index < 0 || index >= nargs())
        return nullptr;
    return list_->at(static_cast<std::size_t>(index) + 2);
}

bool ClientCall::match_signature(long id, wchar const *name, char const *signature) const
{
    if (id < 0 || !list_ || list_->size() < 2)
        return false;
    long target = -1;
    wchar const *called = nullptr;
    if (!list_->at(0)->obj_val(target) || target != id)
        return false;
    if (!list_->at(1)->string_val(called) || !same_text(called, name))
        return false;
    char const *s = signature;
    for (long i = 0; i < nargs(); ++i)
        if (!at(i)->match_type(s))
            return false;
    return s != nullptr && *s == 0;
}

}  // namespace Tavi
