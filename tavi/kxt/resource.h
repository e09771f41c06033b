// Intrusive reference counting: the IResource interface and the RefCounted base that implements it.
#pragma once

#include <type_traits>

namespace Kxt {

// The interface of anything whose lifetime is shared by counted holders. Both operations are
// const so that a holder of a pointer to const can still share it.
class IResource {
public:
    virtual ~IResource();
    virtual void ref() const = 0;
    virtual void unref() const = 0;

protected:
    IResource() = default;
    IResource(IResource const &) = default;
    IResource &operator=(IResource const &) = default;
};

// Implements ref/unref of Base with a count kept inside the object.
//
// The count is 0 at birth: the first holder calls ref. The unref that takes the count to 0
// destroys the object; an unref on an object that nobody ever referenced destroys it as well,
// since no holder can be left to use it. A copy is a new object with holders of its own, so it
// starts again at 0, and assignment leaves the count of the target alone.
//
// Not thread-safe: every counted object belongs to the thread of the host's event loop.
template <class Base = IResource>
class RefCounted : public Base {
    static_assert(std::has_virtual_destructor<Base>::value,
                  "unref deletes through the base, which needs a virtual destructor");

public:
    RefCounted() = default;
    RefCounted(RefCounted const &other) : Base(other), count_(0) {}
    RefCounted &operator=(RefCounted const &other)
    {
        Base::operator=(other);
        return *this;
    }

    void ref() const override { ++count_; }
    void unref() const override
    {
        if (count_ <= 1)
            delete this;
        else
            --count_;
    }

    // How many holders share the object; two or more makes it shared, so that a
    // copy-on-write owner must copy before changing it.
    long ref_count() const { return count_; }
    bool is_shared() const { return count_ > 1; }

private:
    mutable long count_ = 0;
};

}  // namespace Kxt
