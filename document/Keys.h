#pragma once

#include <platform/String.h>

// The dictionary keys that the document looks at.
namespace Libraries::Files::PDF::Keys {

inline const Ref<::String> acroForm = ::String::create("AcroForm");
inline const Ref<::String> contents = ::String::create("Contents");
inline const Ref<::String> id = ::String::create("ID");
inline const Ref<::String> kids = ::String::create("Kids");
inline const Ref<::String> length = ::String::create("Length");
inline const Ref<::String> pages = ::String::create("Pages");
inline const Ref<::String> resources = ::String::create("Resources");
inline const Ref<::String> root = ::String::create("Root");
inline const Ref<::String> size = ::String::create("Size");
inline const Ref<::String> type = ::String::create("Type");

} // namespace Libraries::Files::PDF::Keys
