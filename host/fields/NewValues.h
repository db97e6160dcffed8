#pragma once

#include <document/Editing.h>
#include <values/Dictionary.h>
#include <values/ObjectRef.h>
#include <values/Stream.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Values that fields get, made from what C++ has.
namespace Host {

namespace PDF = Libraries::Files::PDF;

// To four decimals.
Ref<PDF::Value> newNumber(double number) noexcept;
Ref<PDF::Value> newNumbers(const std::vector<double>& numbers) noexcept;
// Of the bytes that it means, which may be any.
Ref<PDF::Value> newName(std::string_view name) noexcept;
Ref<PDF::Dictionary> newDictionary(std::initializer_list<std::pair<const char*, Ref<PDF::Value>>> entries) noexcept;
// A stream of these data, compressed where that is worth it. Null when that fails, with its code.
Ref<PDF::Stream> newStream(
    const Ref<PDF::Document>& document, const Ref<PDF::Dictionary>& dictionary, std::string_view data) noexcept;
// Gives a stream that `newStream` made other data. False when that fails, with its code.
bool replaceData(const Ref<PDF::Document>& document, const Ref<PDF::Stream>& stream, std::string_view data) noexcept;

} // namespace Host
