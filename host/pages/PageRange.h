#pragma once

#include <host/base/Result.h>

#include <string_view>
#include <vector>

namespace Host {

// The pages that people name, as indices counted from 0, in their order: items with commas between them, each a page
// or a range of them, "3" or "2-5", backwards too: "5-2". A page is its number, "r1" counted from the end, or "last",
// "end" or "z". "odd" and "even" choose by number, alone or after a range, as in "2-9odd" or "2-9:odd"; "all" and
// no text at all are every page.
//
// Refused with `Reason::WrongArgument` what is none of these, and with `Missing` a page that isn't there.
Result<std::vector<std::size_t>> pagesNamed(std::string_view text, std::size_t pageCount) noexcept;

} // namespace Host
