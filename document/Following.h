#pragma once

#include <document/Document.h>
#include <values/Value.h>

namespace Libraries::Files::PDF {

// What is told of a reference that can't be followed: a code, and a line.
struct FollowingFailures {
    struct Told {
        std::uint32_t code;
        const char* line;
    };
    Told noObject;
    Told noValue; // of the object that it names
};

// `resolve`, told step by step. Null for a reference that can't be followed, and for null without a word.
Ref<Value> follow(const Document& document, const Ref<Value>& value, const FollowingFailures& failures) noexcept;

} // namespace Libraries::Files::PDF
