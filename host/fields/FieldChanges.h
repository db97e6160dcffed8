#pragma once

#include <host/fields/FieldTree.h>
#include <host/fields/FieldValue.h>

#include <optional>
#include <string>
#include <vector>

namespace Host {

// An entry of a dictionary and what it is to become; null to remove it.
struct Change {
    Ref<PDF::Dictionary> dictionary;
    Ref<::String> key;
    Ref<PDF::Value> value;
};
using Changes = std::vector<Change>;

// What a field with a new value comes to.
struct FieldUpdate {
    struct Choice {
        std::string text;
        bool isChosen = false;
    };

    Changes changes;
    bool isEmpty = false;  // no text, nothing chosen, or off
    std::string warning; // of what is kept, but not shown as it is; empty for none
    // What is seen of it, in UTF-8: a text, or what a combo box displays.
    std::string text;
    std::vector<Choice> choices; // of a list box, all of them
    // Of a button whose widgets have no looks so far: the state that each of these is to have; empty for the others.
    std::vector<std::string> drawnStates;
};

// What has to change for the field to have the value, by the rules of `FormFiller::fill`, or why it can't. Buttons
// without looks take values only where they are to be drawn. Refused, too, when the budget ends on the way.
Result<FieldUpdate> updateFor(const PDF::Document& document, const FieldNode& field, const FieldValue& value,
    bool isDrawn, Budget& budget) noexcept;
// What a field with a text or choices comes to as it is; absent for any other.
std::optional<FieldUpdate> presentUpdate(
    const PDF::Document& document, const FieldNode& field, Budget& budget) noexcept;

} // namespace Host
