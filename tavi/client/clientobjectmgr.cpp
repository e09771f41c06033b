// ClientObjectMgr: ids, their references and the lookup of an id.
#include "tavi/client/clientobjectmgr.h"

namespace Tavi {

IClientObject::~IClientObject() = default;

ClientObjectMgr::~ClientObjectMgr() { release_all(); }

void ClientObjectMgr::external_ref(IClientObject *object)
{
    if (object == nullptr)
        return;
    long const id = object->client_object_id();
    if (id != -1) {
        auto found = objects_.find(id);
        if (found != objects_.end()) {
            object->ref();
            ++found->second->count;
            return;
        }
    }
    // An id this manager never gave (the object's id comes from elsewhere) is replaced by one of its
    // own, so that every id it hands out is one it can find again.
    long const new_id = ++next_id_;
    object->client_object_id(new_id);
    auto entry = std::make_shared<Entry>();
    entry->count = 1;
    entry->object = object;
    object->ref();
    objects_.emplace(new_id, std::move(entry));
}

void ClientObjectMgr::external_unref(IClientObject *object)
{
    if (object == nullptr)
        return;
    long const id = object->client_object_id();
    if (id == -1)
        return;
    auto found = objects_.find(id);
    if (found == objects_.end())
        return;
    std::shared_ptr<Entry> entry = found->second;
    if (--entry->count > 0) {
        object->unref();
        return;
    }
    // The id goes before the last reference does: the unref may free the object.
    object->client_object_id(-1);
    objects_.erase(found);
    entry->object = nullptr;
    object->unref();
}

IClientObject *ClientObjectMgr::get_client_object(long id)
{
    if (id == -1)
        return nullptr;
    auto found = objects_.find(id);
    return found == objects_.end() ? nullptr : found->second->object;
}

long ClientObjectMgr::held_references(long id) const
{
    auto found = objects_.find(id);
    return found == objects_.end() ? 0 : found->second->count;
}

void ClientObjectMgr::release_all()
{
    // Taken out of the map first: freeing one object may free others whose ids are held too.
    std::map<long, std::shared_ptr<Entry>> held;
    held.swap(objects_);
    for (auto &item : held) {
        Entry &entry = *item.second;
        IClientObject *object = entry.object;
        entry.object = nullptr;
        if (object == nullptr)
            continue;
        object->client_object_id(-1);
        for (long i = 0; i < entry.count; ++i)
            object->unref();
    }
}

}  // namespace Tavi
