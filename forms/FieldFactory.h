#pragma once

#include <document/Document.h>
#include <forms/Field.h>

#include <vector>

namespace Libraries::Files::PDF {

class Array;
class Dictionary;

// What the fields of one form share while they are built. It keeps every form finite, and small enough
// for the stack: no field is below itself, and levels and fields are limited.
class FieldBuild {
public:
    FieldBuild(Ref<Document> document, std::uint64_t maxFields) noexcept
        : _document(std::move(document)), _fieldsLeft(maxFields)
    {
    }

    const Document& document() const noexcept { return *_document; }

    // Begins the field of a dictionary, below those that were begun and not left. False, and nothing is
    // begun, when a limit is reached or the dictionary is that of such a field.
    bool enter(const Dictionary& dictionary) noexcept;
    void leave() noexcept { _path.pop_back(); }

private:
    const Ref<Document> _document;
    std::uint64_t _fieldsLeft;
    std::vector<const Dictionary*> _path; // from the top to the field in the making
};

// Builds a field, with all that is below it, for each reference of the array, in order, and appends it
// to `out`. A null array has none. Ends at the first failure, with false and a line; what was appended
// stays.
bool createFields(
    FieldBuild& build, const Ref<Array>& array, const Ref<Field>& parent, std::vector<Ref<Field>>& out) noexcept;

} // namespace Libraries::Files::PDF
