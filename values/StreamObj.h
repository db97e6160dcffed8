#pragma once

#include <platform/Stripe.h>
#include <values/Stream.h>
#include <values/ValueObj.h>

namespace Libraries::Files::PDF {

// The stream as the document holds it. Unlike the other implementations it is there for applications
// too: data is attached through it. No operation touches the dictionary: `Length` and `Filter` are
// the caller's work, or that of `Document::setStreamData`.
//
// The data that a stream holds is a stripe of 4-byte elements, one per stored byte, its code point in
// Windows-1252. It isn't looked at when it is attached: with elements of another width a save fails, with
// `ErrWriteObject`, and so does the cloning of the stream. Who reads the data moves its position.
class EXPORTED StreamObj final : public ValueObj, public virtual Stream {
public:
    // A stream whose data is in the document's file. `dict` must not be null.
    StreamObj(Ref<Dictionary> dict, std::uint64_t offset) noexcept;
    // A stream with its data in hand, stored as its dictionary says. This is no change.
    StreamObj(Ref<Dictionary> dict, Ref<Interfaces::Stripe> data) noexcept;
    ~StreamObj() noexcept override;

    // Stream
    std::uint64_t strmOfs() const noexcept override { return _offset; }
    Ref<Dictionary> dict() const noexcept override;
    Compression compression() const noexcept override;
    bool changed() const noexcept override { return _changed; } // the dictionary's state doesn't count

    // The data held; null when it is only in the file. Ask for this first and for the offset after.
    Ref<Interfaces::Stripe> strmData() const noexcept { return _data; }
    // Replaces the data held, and counts as a change; null leaves the stream without any.
    void strmData(Ref<Interfaces::Stripe> data) noexcept;
    // Forgets that the data was changed.
    void resetChanged() noexcept { _changed = false; }

private:
    friend class DocumentObj;
    friend class ValueParser;

    const Ref<Dictionary> _dict;
    Ref<Interfaces::Stripe> _data;
    const std::uint64_t _offset;
    bool _changed = false;
    std::uint32_t _opening = 0; // the number of the one that read it from a file; 0 for a stream that wasn't read
};

} // namespace Libraries::Files::PDF
