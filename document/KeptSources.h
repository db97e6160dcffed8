#pragma once

#include <document/KeptSource.h>

#include <unordered_map>
#include <vector>

namespace Libraries::Files::PDF {

// The kept sources of a document. An exact file has each in the place of its value, so that the format and this library
// read what they read in the source.
class KeptSources {
public:
    explicit KeptSources(std::vector<KeptSource> sources) noexcept;

    // The source of the value; null when there is none, and when the value is another one by now.
    Ref<TConstArray<std::uint8_t>> of(const Value& value) const noexcept;
    bool isEmpty() const noexcept { return _sources.empty(); }
    // Adds the notes in values that have changed, and in `other`, which is written anew in any case.
    void addUnwritten(ReadingNotes& notes, const Value* other) const noexcept;

private:
    std::vector<KeptSource> _sources; // in the order of the reading
    std::unordered_map<const Value*, std::size_t> _places; // where in the list that of a value is
};

} // namespace Libraries::Files::PDF
