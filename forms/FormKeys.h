#pragma once

#include <platform/String.h>

// The dictionary keys that forms and fields look at.
namespace Libraries::Files::PDF::FormKeys {

inline const Ref<::String> alternateName = ::String::create("TU");
inline const Ref<::String> appearance = ::String::create("AP");
inline const Ref<::String> appearanceState = ::String::create("AS");
inline const Ref<::String> calculationOrder = ::String::create("CO");
inline const Ref<::String> defaultAppearance = ::String::create("DA");
inline const Ref<::String> defaultResources = ::String::create("DR");
inline const Ref<::String> defaultValue = ::String::create("DV");
inline const Ref<::String> fields = ::String::create("Fields");
inline const Ref<::String> fieldType = ::String::create("FT");
inline const Ref<::String> flags = ::String::create("Ff");
inline const Ref<::String> kids = ::String::create("Kids");
inline const Ref<::String> mappingName = ::String::create("TM");
inline const Ref<::String> maxLength = ::String::create("MaxLen");
inline const Ref<::String> name = ::String::create("T");
inline const Ref<::String> needAppearances = ::String::create("NeedAppearances");
inline const Ref<::String> normalAppearance = ::String::create("N");
inline const Ref<::String> options = ::String::create("Opt");
inline const Ref<::String> quadding = ::String::create("Q");
inline const Ref<::String> selectedIndices = ::String::create("I");
inline const Ref<::String> value = ::String::create("V");

} // namespace Libraries::Files::PDF::FormKeys
