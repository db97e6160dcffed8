#pragma once

#include <platform/ElementReader.h>

#include <string_view>

namespace Libraries::Files::PDF {

// Looks at what comes after something that was read, by the rules of the format, without a need to read it. All
// looks together take no more elements than the file has; after that nothing comes. Where the elements are afterwards
// is up to the caller.
class LookAhead {
public:
    // `elements` must outlive it.
    explicit LookAhead(ElementReader& elements) noexcept : _elements(elements), _left(elements.size()) {}

    // Whether looking costs nothing, since the stripe shows its bytes; else nobody should.
    bool isPossible() const noexcept { return _elements.isShown(); }
    // Whether the keyword comes next, after white space and comments; it is passed then.
    bool pass(std::string_view keyword) noexcept;
    // Whether what makes a reference of a number comes next: a generation and "R".
    bool passReferenceEnd() noexcept;
    // Whether the header of an object comes next.
    bool passObjectStart() noexcept;

private:
    std::uint32_t next() noexcept;
    bool passNumber(std::uint32_t& next, int maxDigits) noexcept;

    ElementReader& _elements;
    std::uint64_t _left;
};

} // namespace Libraries::Files::PDF
