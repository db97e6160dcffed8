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
Ref<PDF::Value> numberValue(double number) noexcept;
Ref<PDF::Value> numbersValue(const std::vector<double>& numbers) noexcept;
// Of the bytes that it means, which may be any.
Ref<PDF::Value> nameValue(std::string_view name) noexcept;
Ref<PDF::Dictionary> dictionaryValue(std::initializer_list<std::pair<const char*, Ref<PDF::Value>>> entries) noexcept;
// A stream of these data, compressed where that is worth it. Null when that fails, with its code.
Ref<PDF::Stream> streamValue(
    const Ref<PDF::Document>& document, const Ref<PDF::Dictionary>& dictionary, std::string_view data) noexcept;
// Gives a stream that `streamValue` made other data. False when that fails, with its code.
bool replaceData(
    const Ref<PDF::Document>& document, const Ref<PDF::Stream>& stream, std::string_view data) noexcept;

} // namespace Host
