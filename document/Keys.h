#pragma once

#include <platform/ConstantText.h>

// The dictionary keys that the document looks at.
namespace Libraries::Files::PDF::Keys {

inline constinit const ConstantText acroForm{"AcroForm"};
inline constinit const ConstantText contents{"Contents"};
inline constinit const ConstantText id{"ID"};
inline constinit const ConstantText kids{"Kids"};
inline constinit const ConstantText length{"Length"};
inline constinit const ConstantText pages{"Pages"};
inline constinit const ConstantText resources{"Resources"};
inline constinit const ConstantText root{"Root"};
inline constinit const ConstantText size{"Size"};
inline constinit const ConstantText type{"Type"};

} // namespace Libraries::Files::PDF::Keys
