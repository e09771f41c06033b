// DOMException: the one exception of the DOM face of a scene. Its code is the DOM's; its text is
// what a host shows.
#pragma once

#include <cstddef>
#include <exception>

namespace Tavi {

class DOMException : public std::exception
{
public:
    static constexpr std::size_t HIERARCHY_REQUEST_ERR = 3;
    static constexpr std::size_t NO_MODIFICATION_ALLOWED_ERR = 7;
    static constexpr std::size_t NOT_FOUND_ERR = 8;

    explicit DOMException(std::size_t code) : code_(code) {}
    std::size_t code() const { return code_; }
    // The text of the code; "DOM Error" for a code without a text of its own.
    char const *what() const noexcept override;

private:
    std::size_t code_;
};

}  // namespace Tavi
