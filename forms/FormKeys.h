#pragma once

#include <platform/ConstantText.h>

// The dictionary keys that forms and fields look at.
namespace Libraries::Files::PDF::FormKeys {

inline constinit const ConstantText alternateName{"TU"};
inline constinit const ConstantText appearance{"AP"};
inline constinit const ConstantText appearanceState{"AS"};
inline constinit const ConstantText calculationOrder{"CO"};
inline constinit const ConstantText defaultAppearance{"DA"};
inline constinit const ConstantText defaultResources{"DR"};
inline constinit const ConstantText defaultValue{"DV"};
inline constinit const ConstantText fields{"Fields"};
inline constinit const ConstantText fieldType{"FT"};
inline constinit const ConstantText flags{"Ff"};
inline constinit const ConstantText kids{"Kids"};
inline constinit const ConstantText mappingName{"TM"};
inline constinit const ConstantText maxLength{"MaxLen"};
inline constinit const ConstantText name{"T"};
inline constinit const ConstantText needAppearances{"NeedAppearances"};
inline constinit const ConstantText normalAppearance{"N"};
inline constinit const ConstantText options{"Opt"};
inline constinit const ConstantText quadding{"Q"};
inline constinit const ConstantText selectedIndices{"I"};
inline constinit const ConstantText value{"V"};

} // namespace Libraries::Files::PDF::FormKeys
