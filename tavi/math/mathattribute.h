// MathAttribute: one named parameter of a math node, a key and a value. This is how the state of a
// node that isn't its children (the signs of a sum, the shape of a table) travels between a node, a
// copy of it and a template's content. Keys repeat across many nodes and are shared between copies;
// each attribute owns its value.
#pragma once

#include <optional>

#include "tavi/kxt/fixedstring.h"
#include "tavi/kxt/wchar.h"

namespace Tavi {

class MathAttribute
{
public:
    // Copies both texts; either may be null. A failed allocation raises std::bad_alloc with the text
    // "bad allocation".
    MathAttribute(wchar const *key, wchar const *value);
    // A copy shares the key and copies the value.
    MathAttribute(MathAttribute const &other) = default;
    MathAttribute &operator=(MathAttribute const &other) = default;
    ~MathAttribute();

    // Null when the attribute was given none.
    wchar const *key() const { return key_.data(); }
    wchar const *value() const { return value_ ? value_->c_str() : nullptr; }

    void key(wchar const *key);
    // Null frees the old text and leaves none.
    void value(wchar const *value);

    // The key as the shared value it is.
    Kxt::FixedString const &shared_key() const { return key_; }

private:
    Kxt::FixedString key_;
    std::optional<wstring> value_;
};

}  // namespace Tavi
