// DOMException: the texts of the codes.
#include "tavi/client/domexception.h"

namespace Tavi {

namespace {

struct CodeText
{
    std::size_t code;
    char const *text;
};

constexpr CodeText code_texts[] = {
    {DOMException::HIERARCHY_REQUEST_ERR,       "The operation is not allowed according to the DTD"},
    {DOMException::NO_MODIFICATION_ALLOWED_ERR, "The node is read-only"},
    {DOMException::NOT_FOUND_ERR,               "The child node was not found"},
};

constexpr char const *other_text = "DOM Error";

}  // namespace

char const *DOMException::what() const noexcept
{
    for (CodeText const &entry : code_texts)
        if (entry.code == code_)
            return entry.text;
    return other_text;
}

}  // namespace Tavi
