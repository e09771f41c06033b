// Kxt::FixedStringBase: an immutable string value whose text is shared by all its copies.
#pragma once

#include "tavi/kxt/wchar.h"

#include <cstddef>
#include <new>
#include <string>
#include <utility>

namespace Kxt {

// The blocks of all shared strings come from here. They are allocated out of line, which also
// keeps the compiler from mistaking the release of one holder for a free under another.
void *allocate_string_block(std::size_t size);
void free_string_block(void *block) noexcept;

// A string that never changes once made, so that copies can share one block of text with a
// count instead of copying it. Copying is cheap; changing means making a new value.
//
// A value is either null (made from nothing: the default, or a null pointer) or holds a text,
// which may be empty. `data` is null for the null value and otherwise points to the text with a
// terminating NUL; `c_str` is never null. Comparison looks at the text only: null and empty
// compare equal, and `is_null` tells them apart when that matters.
//
// The count is not atomic: values are not shared between threads.
template <class T>
class FixedStringBase {
public:
    using value_type = T;
    using size_type = std::size_t;

    FixedStringBase() noexcept = default;
    FixedStringBase(std::nullptr_t) noexcept {}
    // Copies the NUL-terminated text; a null pointer gives the null value.
    FixedStringBase(T const *text) : FixedStringBase(text, text ? std::char_traits<T>::length(text) : 0) {}
    // Copies `length` units, which may include NULs; a null pointer gives the null value.
    FixedStringBase(T const *text, size_type length) : rep_(text ? make(text, length) : nullptr) {}
    explicit FixedStringBase(std::basic_string<T> const &text) : rep_(make(text.data(), text.size())) {}

    FixedStringBase(FixedStringBase const &other) noexcept : rep_(other.rep_)
    {
        if (rep_)
            ++rep_->count;
    }
    FixedStringBase(FixedStringBase &&other) noexcept : rep_(other.rep_) { other.rep_ = nullptr; }
    FixedStringBase &operator=(FixedStringBase other) noexcept
    {
        std::swap(rep_, other.rep_);
        return *this;
    }
    ~FixedStringBase() { release(rep_); }

    bool is_null() const noexcept { return rep_ == nullptr; }
    bool empty() const noexcept { return length() == 0; }
    size_type length() const noexcept { return rep_ ? rep_->length : 0; }
    size_type size() const noexcept { return length(); }
    T const *data() const noexcept { return rep_ ? text(rep_) : nullptr; }
    T const *c_str() const noexcept { return rep_ ? text(rep_) : empty_text(); }
    T operator[](size_type index) const noexcept { return c_str()[index]; }
    T const *begin() const noexcept { return c_str(); }
    T const *end() const noexcept { return c_str() + length(); }
    std::basic_string<T> str() const { return std::basic_string<T>(c_str(), length()); }

    // How many values share this text; 0 for the null value.
    long use_count() const noexcept { return rep_ ? rep_->count : 0; }

    // Orders by unsigned code units, a shorter prefix first.
    int compare(T const *text, size_type length) const noexcept
    {
        size_type const own = this->length();
        int const order = std::char_traits<T>::compare(c_str(), text, own < length ? own : length);
        if (order != 0)
            return order;
        return own < length ? -1 : own > length ? 1 : 0;
    }
    int compare(FixedStringBase const &other) const noexcept { return compare(other.c_str(), other.length()); }
    int compare(T const *text) const noexcept
    {
        return text ? compare(text, std::char_traits<T>::length(text)) : compare(empty_text(), 0);
    }

    friend bool operator==(FixedStringBase const &a, FixedStringBase const &b) noexcept
    {
        return a.rep_ == b.rep_ || a.compare(b) == 0;
    }
    friend bool operator!=(FixedStringBase const &a, FixedStringBase const &b) noexcept { return !(a == b); }
    friend bool operator<(FixedStringBase const &a, FixedStringBase const &b) noexcept { return a.compare(b) < 0; }
    friend bool operator==(FixedStringBase const &a, T const *b) noexcept { return a.compare(b) == 0; }
    friend bool operator!=(FixedStringBase const &a, T const *b) noexcept { return a.compare(b) != 0; }

private:
    // The shared block: this header, then length + 1 units of text.
    struct Rep {
        long count;
        size_type length;
    };

    static T *text(Rep *rep) noexcept { return reinterpret_cast<T *>(rep + 1); }
    static T const *empty_text() noexcept
    {
        static T const nothing[1] = {T()};
        return nothing;
    }

    static Rep *make(T const *source, size_type length)
    {
        void *block = allocate_string_block(sizeof(Rep) + (length + 1) * sizeof(T));
        Rep *rep = new (block) Rep{1, length};
        T *chars = text(rep);
        std::char_traits<T>::copy(chars, source, length);
        chars[length] = T();
        return rep;
    }

    static void release(Rep *rep) noexcept
    {
        if (rep && --rep->count == 0) {
            rep->~Rep();
            free_string_block(rep);
        }
    }

    Rep *rep_ = nullptr;
};

using FixedString = FixedStringBase<wchar>;

}  // namespace Kxt
