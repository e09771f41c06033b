// MathAttribute: copying the texts, with the allocation failure reported in the system's own words.
#include "tavi/math/mathattribute.h"

#include <new>

namespace Tavi {

namespace {

class BadAllocation : public std::bad_alloc
{
public:
    char const *what() const noexcept override { return "bad allocation"; }
};

Kxt::FixedString copy_key(wchar const *key)
{
    try {
        return Kxt::FixedString(key);
    } catch (std::bad_alloc const &) {
        throw BadAllocation();
    }
}

std::optional<wstring> copy_value(wchar const *value)
{
    if (value == nullptr)
        return std::nullopt;
    try {
        return wstring(value);
    } catch (std::bad_alloc const &) {
        throw BadAllocation();
    }
}

}  // namespace

MathAttribute::MathAttribute(wchar const *key, wchar const *value) : key_(copy_key(key)), value_(copy_value(value)) {}

MathAttribute::~MathAttribute() = default;

void MathAttribute::key(wchar const *key) { key_ = copy_key(key); }

void MathAttribute::value(wchar const *value) { value_ = copy_value(value); }

}  // namespace Tavi
