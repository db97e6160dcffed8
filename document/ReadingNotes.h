#pragma once

#include <platform/Export.h>

#include <array>
#include <cstddef>
#include <cstdint>

namespace Libraries::Files::PDF {

// What the reading of a file takes apart otherwise than the format. It is not in the values, so a file that is written
// doesn't say what its source said.
enum class ReadingNote : std::uint8_t {
    GluedWord,        // a word that ends at a bracket, and is dropped or joined with what follows: [ 3(t) ]; a lone <, too
    SkippedText,      // something between two brackets that were taken for those of a dictionary
    HeaderValue,      // an object whose value was found in its own header: 003 0 obj 0
    ObjectReference,  // an object that is a reference, of which the number was read
    SecondValue,      // something else between the value of an object and its end
    LostStream,       // the same, of which a "stream" with a comment before it was lost
    RepeatedKey,      // a key that a dictionary has twice; the last one was kept
    StringEnd,        // a literal string that ended at another bracket, but outside of a string: (a\\) (b) (c) d)
    OpenString,       // the same, inside a string of the format or a comment, which goes on: (a\\(b)
    StreamStart,      // blanks in or after the word "stream", which count as data
    StreamEnd,        // data of a stream that goes on after its Length
    Reference,        // a reference whose numbers the format wouldn't take for one: -1 0 R, 1. 0 R
    ControlCharacter, // a character below 33 that is no white space to the format, between values
    HexCharacter,     // one in a hexadecimal string that is neither digit nor white space
    Subsection,       // a second subsection of the table, whose objects weren't read
    OtherTrailer,     // a trailer after the table that isn't the one at the end of the file, which was read
};
constexpr std::size_t readingNoteCount = std::size_t(ReadingNote::OtherTrailer) + 1;

// How often each happened, and where first.
class EXPORTED ReadingNotes {
public:
    struct Entry {
        std::uint64_t count = 0;
        std::uint64_t offset = 0; // of the first one, or shortly after it, in elements
        std::uint32_t id = 0;     // of the object that it is in; 0 for the table and the trailer
    };

    void add(ReadingNote note, std::uint32_t id, std::uint64_t offset, std::uint64_t count = 1) noexcept
    {
        Entry& entry = _entries[std::size_t(note)];
        if (entry.count == 0) {
            entry.offset = offset;
            entry.id = id;
        }
        entry.count += count;
    }
    const Entry& of(ReadingNote note) const noexcept { return _entries[std::size_t(note)]; }
    bool isEmpty() const noexcept
    {
        for (const Entry& entry : _entries)
            if (entry.count != 0)
                return false;
        return true;
    }

private:
    std::array<Entry, readingNoteCount> _entries{};
};

} // namespace Libraries::Files::PDF
