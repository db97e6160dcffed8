#pragma once

#include <platform/ConstantText.h>

// The dictionary keys of pages and of what is drawn on them.
namespace Host::PageKeys {

inline constinit const ConstantText annots{"Annots"};
inline constinit const ConstantText boundingBox{"BBox"};
inline constinit const ConstantText contents{"Contents"};
inline constinit const ConstantText cropBox{"CropBox"};
inline constinit const ConstantText group{"Group"};
inline constinit const ConstantText kids{"Kids"};
inline constinit const ConstantText matrix{"Matrix"};
inline constinit const ConstantText mediaBox{"MediaBox"};
inline constinit const ConstantText pages{"Pages"};
inline constinit const ConstantText parent{"Parent"};
inline constinit const ConstantText resources{"Resources"};
inline constinit const ConstantText root{"Root"};
inline constinit const ConstantText rotate{"Rotate"};
inline constinit const ConstantText subtype{"Subtype"};
inline constinit const ConstantText type{"Type"};
inline constinit const ConstantText userUnit{"UserUnit"};
inline constinit const ConstantText xObject{"XObject"};

} // namespace Host::PageKeys
