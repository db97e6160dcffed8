#pragma once

#include <platform/Export.h>

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Host {

// What a file says and the file that a save makes of it doesn't say, or says differently.
enum class LossKind : std::uint8_t {
    GluedWord,          // a word that ends at a bracket, and is joined with what follows
    ObjectReference,    // an object that is a reference, of which the number remains
    EarlyValue,         // an object whose value is taken from its own header
    RepeatedKey,        // a key that a dictionary has twice; the last one remains
    OtherValue,         // any other value that is written with another meaning
    StreamData,         // data of a stream that begins or ends elsewhere
    Unwritable,         // an object that can't be written, so that there is no new file
    SecondSubsection,   // an object of the table's further subsections
    EarlierRevision,    // an object of an earlier revision that is still in force, and Prev itself
    ObjectStream,       // objects in streams: a stream that holds them, and XRefStm
    LostReference,      // a reference to an object that the new file doesn't have
    Encryption,         // Encrypt: what is in memory is encrypted
    Comment,            // means nothing to a reader of the format, so it is listed and never refused
};
// How many kinds there are, for tables by kind.
constexpr std::size_t lossKindCount = std::size_t(LossKind::Comment) + 1;

// The kind in a few words: "repeated key".
EXPORTED std::string_view lossLabel(LossKind kind) noexcept;

// One thing that a save would lose.
struct Loss {
    LossKind kind;            // of thing that is lost
    std::uint32_t id;         // of the object; 0 for the trailer and for what is in no object
    std::uint16_t generation; // of the object
    std::uint64_t offset;     // in the file, in bytes
    // The bytes in the file, and those that would be written, as far as there are any; of a text of more than
    // `Limits::maxLossText` bytes its beginning.
    std::string inFile;
    std::string written;
};

// A list of losses with its counts.
class EXPORTED Losses {
public:
    // Adds one at the end, and counts it.
    void add(Loss loss) noexcept;

    // In the order in which they were added.
    const std::vector<Loss>& all() const noexcept { return _all; }
    // What they take, in bytes.
    std::uint64_t size() const noexcept { return _size; }
    // How many there are of a kind.
    std::size_t count(LossKind kind) const noexcept { return _counts[std::size_t(kind)]; }
    // Those that change what a reader makes of the file: all but comments.
    std::size_t countOfMeaning() const noexcept { return _all.size() - count(LossKind::Comment); }
    // The counts by kind, in words, comments left out: "word glued to a bracket (2), repeated key (1)"; empty
    // when there is none.
    std::string summary() const noexcept;

private:
    std::vector<Loss> _all;
    std::uint64_t _size = 0;
    std::array<std::size_t, lossKindCount> _counts{};
};

} // namespace Host
