#pragma once

#include <values/Compression.h>
#include <values/Value.h>

namespace Libraries::Files::PDF {

class Dictionary;

// A dictionary plus a run of data, which is in the file or held by the object. To get at the
// data, ask `Document::streamData`.
class EXPORTED Stream : public virtual Value {
public:
    // The kind in `type`, and its name in log lines.
    static constexpr Type kind = Type::Stream;
    static constexpr const char* kindName = "Stream";

    // Where the data begins in the document's stripe, in elements; all bits set when the stream does
    // not come from a file.
    virtual std::uint64_t strmOfs() const noexcept = 0;
    virtual Ref<Dictionary> dict() const noexcept = 0;
    // What the dictionary's `Filter` says. May leave `ErrNotAvailable`, which is no failure.
    virtual Compression compression() const noexcept = 0;

    // Value
    Ref<::String> asText() const noexcept override; // "@", the offset or -1, and the dictionary
    // False for every argument, this stream included, and so is the comparison of what holds one.
    bool equal(Ref<Value> other) const noexcept override;
};

} // namespace Libraries::Files::PDF
