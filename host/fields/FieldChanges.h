#pragma once

#include <host/fields/FieldTree.h>
#include <host/fields/FieldValue.h>

namespace Host {

// An entry of a dictionary and what it is to become; null to remove it.
struct Change {
    Ref<PDF::Dictionary> dictionary;
    Ref<::String> key;
    Ref<PDF::Value> value;
};
using Changes = std::vector<Change>;

// What has to change for the field to have the value, by the rules of `FormFiller::fill`, or why it can't.
Result<Changes> changesFor(
    const PDF::Document& document, const FieldNode& field, const FieldValue& value) noexcept;

} // namespace Host
