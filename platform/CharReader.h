#pragma once

#include <platform/Stripe.h>
#include <platform/String.h>

// Reads the lines of a stripe of 4-byte elements, one element per character.
class EXPORTED CharReader final : public Object {
public:
    // Null for null, and for a stream that is no stripe: a character that was peeked at is given back by seeking.
    // The second argument is 0. No operation sets a code; the stripe may.
    static Ref<CharReader> create(Ref<Interfaces::Stream> stream, std::size_t) noexcept;

    // As `create`, of a stripe, which must not be null.
    explicit CharReader(Ref<Interfaces::Stripe> stripe) noexcept : _stripe(std::move(stripe)) {}

    // The next line without its terminator, which is CR, LF or CR LF, and leaves the stripe after
    // it. At the end of the input the last line, if it has a character, else null. A read that fails
    // before the end gives null, and so does a line that is longer than the stripe says it is.
    Ref<String> readLine() noexcept;

private:
    Ref<Interfaces::Stripe> _stripe;
};
