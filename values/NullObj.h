#pragma once

#include <values/Null.h>
#include <values/ValueObj.h>

namespace Libraries::Files::PDF {

// A null value that an application makes.
class EXPORTED NullObj final : public ValueObj, public virtual Null {
public:
    NullObj() noexcept : ValueObj(kind) {}
};

} // namespace Libraries::Files::PDF
