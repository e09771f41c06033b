// The objects a host addresses by number. IClientObject is the face of such an object: it keeps the
// id its manager gave it and answers client calls. ClientObjectMgr hands the ids out and keeps each
// object alive while the host holds its id.
#pragma once

#include <cstddef>
#include <map>
#include <memory>

#include "tavi/kxt/resource.h"

namespace Tavi {

class ClientCall;
class VarArg;

class IClientObject : public Kxt::IResource
{
public:
    ~IClientObject() override;
    void ref() const override = 0;
    void unref() const override = 0;
    // -1 while the object has no id.
    virtual long client_object_id() const = 0;
    virtual void client_object_id(long id) = 0;
    // Answers one call addressed to this object; the result, which may be null, is the caller's. When
    // no function of the object fits the call, `error` is set and the result is a message.
    virtual VarArg *invoke_client_call(ClientCall *call, bool &error) = 0;

protected:
    IClientObject() = default;
};

// Each id handed out carries one reference on its object: external_ref adds one, external_unref
// takes one back, and the last one takes the id away. Ids count from 1 and are never given twice in
// the life of a manager, so a stale id finds nothing rather than somebody else's object.
class ClientObjectMgr
{
public:
    ClientObjectMgr() = default;
    ClientObjectMgr(ClientObjectMgr const &) = delete;
    ClientObjectMgr &operator=(ClientObjectMgr const &) = delete;
    // Lets go of whatever the host still holds.
    virtual ~ClientObjectMgr();

    // Gives the object an id if it has none, and one more reference.
    virtual void external_ref(IClientObject *object);
    // Takes one reference back; the last one clears the object's id. Nothing for an object without one.
    virtual void external_unref(IClientObject *object);
    // The object with the id, without a reference of its own; null for -1 or an id not held.
    virtual IClientObject *get_client_object(long id);

    // How many ids are held, and how many references the one id carries (0 when it isn't held).
    std::size_t held_count() const { return objects_.size(); }
    long held_references(long id) const;

protected:
    // Lets go of every id at once. A class whose objects live in its own members calls this first
    // thing in its destructor, before those members go.
    void release_all();

private:
    struct Entry
    {
        long count = 0;
        IClientObject *object = nullptr;
    };

    long next_id_ = 0;
    std::map<long, std::shared_ptr<Entry>> objects_;
};

}  // namespace Tavi
