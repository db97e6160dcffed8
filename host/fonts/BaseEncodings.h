#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Host {

// The glyph's name for each code of a simple font; empty where it has none.
using CodeNames = std::array<std::string, 256>;

// The encodings that a font's own one may start from, and those that fonts have built in.
enum class BaseEncoding { Standard, WinAnsi, MacRoman, PdfDoc, Symbol, ZapfDingbats };

// The names of an encoding.
CodeNames namesOf(BaseEncoding encoding) noexcept;
// The encoding of a name as files have it, "WinAnsiEncoding"; absent for one that isn't known.
std::optional<BaseEncoding> findEncoding(std::string_view name) noexcept;
// The code by which the Mac OS table of a TrueType program has a glyph; absent when there is none for its name.
std::optional<std::uint8_t> macOsCode(std::string_view glyph) noexcept;

} // namespace Host
