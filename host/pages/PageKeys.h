#pragma once

#include <platform/String.h>

// The dictionary keys of pages and of what is drawn on them.
namespace Host::PageKeys {

inline const Ref<::String> annots = ::String::create("Annots");
inline const Ref<::String> boundingBox = ::String::create("BBox");
inline const Ref<::String> contents = ::String::create("Contents");
inline const Ref<::String> cropBox = ::String::create("CropBox");
inline const Ref<::String> group = ::String::create("Group");
inline const Ref<::String> kids = ::String::create("Kids");
inline const Ref<::String> matrix = ::String::create("Matrix");
inline const Ref<::String> mediaBox = ::String::create("MediaBox");
inline const Ref<::String> pages = ::String::create("Pages");
inline const Ref<::String> parent = ::String::create("Parent");
inline const Ref<::String> resources = ::String::create("Resources");
inline const Ref<::String> root = ::String::create("Root");
inline const Ref<::String> rotate = ::String::create("Rotate");
inline const Ref<::String> subtype = ::String::create("Subtype");
inline const Ref<::String> type = ::String::create("Type");
inline const Ref<::String> userUnit = ::String::create("UserUnit");
inline const Ref<::String> xObject = ::String::create("XObject");

} // namespace Host::PageKeys
