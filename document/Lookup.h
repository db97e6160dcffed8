#pragma once

#include <document/Document.h>
#include <values/Dictionary.h>

// Lookups whose outcomes are told apart without a look at the error slot.
namespace Libraries::Files::PDF {

// The entry as it is in the dictionary, null when there is none. False when it can't be had, which only an
// application's own dictionary says.
bool findEntry(const Dictionary& dictionary, const Ref<::String>& key, Ref<Value>& value) noexcept;

// `Document::getPages`. False with its lines and `ErrBadPages`; no pages are no failure.
bool readPages(const Document& document, StackVector<Ref<Object>>& pages) noexcept;

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
