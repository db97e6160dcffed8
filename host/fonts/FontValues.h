#pragma once

#include <document/Resolve.h>
#include <host/base/Budget.h>
#include <host/base/Result.h>
#include <values/Array.h>
#include <values/Stream.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

// How the fonts of a document read its values.
namespace Host {

namespace PDF = Libraries::Files::PDF;

// Why a font can't be used for text, in words that go on from "the font": "has no widths".
inline Refusal unusableFont(std::string why, Reason reason = Reason::Unsupported) noexcept
{
    return {reason, std::move(why)};
}

// The number, or the one that it refers to; absent for what is none.
std::optional<double> numberOf(const PDF::Document& document, const Ref<PDF::Value>& value) noexcept;
std::optional<double> numberAt(
    const PDF::Document& document, const PDF::Dictionary& dictionary, const char* key) noexcept;
// The same as a whole number that fits.
std::optional<std::int32_t> countOf(const PDF::Document& document, const Ref<PDF::Value>& value) noexcept;
// All of an array of numbers; empty when one of them is none.
std::vector<double> numbersOf(const PDF::Document& document, const PDF::Array& array) noexcept;
// The same of an array of so many; empty when it is no such array.
std::vector<double> numbersAt(
    const PDF::Document& document, const PDF::Dictionary& dictionary, const char* key, std::size_t count) noexcept;

// The bytes of the name, or of the one that it refers to, its escapes decoded; empty for what is none.
std::string nameOf(const PDF::Document& document, const Ref<PDF::Value>& value) noexcept;
std::string nameAt(const PDF::Document& document, const PDF::Dictionary& dictionary, const char* key) noexcept;
// The characters of the string under a key, a byte each; empty when there is none.
std::string textAt(const PDF::Document& document, const PDF::Dictionary& dictionary, const char* key) noexcept;
template <class Kind>
Ref<Kind> valueAt(const PDF::Document& document, const PDF::Dictionary& dictionary, const char* key) noexcept
{
    return PDF::resolveEntryAs<Kind>(document, dictionary, ::String::create(key));
}

// The decoded data of the stream; absent when it is larger than `limit` in bytes or than the budget, or can't be had.
std::optional<std::string> dataOf(const Ref<PDF::Document>& document, const Ref<PDF::Stream>& stream,
    std::size_t limit, Budget& budget) noexcept;

// Whether a font's name says that only some of its glyphs are embedded: "ABCDEF+Garamond".
bool hasTag(std::string_view fontName) noexcept;
std::string_view withoutTag(std::string_view fontName) noexcept;

} // namespace Host
