#pragma once

#include <document/KeptSource.h>
#include <document/LiteralString.h>
#include <document/LookAhead.h>
#include <document/ReadingNotes.h>
#include <platform/ElementReader.h>
#include <values/ObjectObj.h>

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace Libraries::Files::PDF {

class Dictionary;
class DictionaryObj;
class NameObj;

// Reads indirect objects and the values in them, one element at a time. Every reading starts at the
// elements' present position and leaves it after what it consumed. A failure is null or false with a line at each
// level; the codes are the caller's. What a single object, or the trailer, may take is limited (platform/Limits.h):
// then the file counts as at its end. The grammar is in the source.
//
// What the format takes apart otherwise is noted on the way, and changes nothing. What comes after a value is looked
// at only where the stripe shows its bytes.
class ValueParser {
public:
    // `elements` must outlive the parser.
    explicit ValueParser(ElementReader& elements) noexcept;
    ~ValueParser() noexcept;

    // The object at `offset`, whose header must show this id and generation. Objects inside each other are read
    // as often as the table names them; once they have taken too much (platform/Limits.h), it is null, with a line.
    Ref<Object> readObject(std::uint32_t id, std::uint32_t generation, std::uint64_t offset) noexcept;
    // The dictionary that follows, wherever its "<<" is.
    Ref<DictionaryObj> readDictionary() noexcept;
    // The single value of an indirect object.
    Ref<Value> readValue() noexcept;

    // Notes what is in no value, or in the value that is being read.
    void note(ReadingNote note, std::uint64_t offset) noexcept;
    // Of all that was read, and of these those in no value whose source was kept.
    const ReadingNotes& notes() const noexcept { return _notes; }
    ReadingNotes takeUnkept() noexcept;
    // Kept where the stripe shows its bytes.
    std::vector<KeptSource> takeSources() noexcept { return std::move(_sources); }
    // The number that the streams which are read here have, of their opening alone.
    std::uint32_t opening() const noexcept { return _opening; }
    // For all who look ahead in these elements.
    LookAhead& ahead() noexcept { return _ahead; }

private:
    enum class ListEnd { Array, Dictionary };
    // Where the values and the pending word of a list begin on the two stacks.
    struct List {
        std::size_t firstValue;
        std::size_t firstOfWord;
    };

    // The next element, giving some back, the present position.
    bool next(std::uint32_t& c) noexcept { return _elements.next(c); }
    bool giveBack(std::uint64_t count) noexcept { return _elements.seek(here() - count); }
    bool isAt(std::uint64_t position, std::uint32_t c) noexcept;
    std::uint64_t here() const noexcept { return _elements.tell(); }

    bool readHeader(std::uint32_t id, std::uint32_t generation, std::uint64_t offset) noexcept;
    Ref<Value> readTopWord(const std::u32string& word) noexcept;
    Ref<Value> readDictionaryOrStream() noexcept;
    bool readValueList(ListEnd end) noexcept;
    bool readNested(std::uint32_t opener, std::uint32_t previous) noexcept;
    bool endWord(const List& list, std::uint64_t charactersAfter) noexcept;
    bool addToken(const List& list, std::u32string_view token, std::uint64_t charactersAfter) noexcept;
    bool addReference(const List& list, std::uint64_t position) noexcept;
    Ref<DictionaryObj> makeDictionary(std::size_t first, std::uint64_t position) noexcept;
    Ref<ValueObj> readArray() noexcept;
    Ref<Value> readStreamTail(Ref<Dictionary> dictionary) noexcept;
    bool readStreamStart(std::uint64_t& offset) noexcept;
    void note(ReadingNote kind) noexcept { note(kind, here()); }
    void endNotes() noexcept;
    void keepSource(const Ref<Value>& value, std::uint64_t begin, std::size_t firstNote) noexcept;
    void noteOpener(const List& list, std::uint32_t opener, std::uint32_t previous) noexcept;
    bool isObjectEnd(std::uint64_t position) noexcept;
    void noteRest(std::uint64_t end, bool isNumber) noexcept;
    Ref<ValueObj> readName() noexcept;
    Ref<ValueObj> readLiteralString() noexcept;
    Ref<ValueObj> readHexString(std::uint32_t firstDigit) noexcept;

    ElementReader& _elements;
    const std::uint32_t _opening;
    std::vector<Ref<ValueObj>> _values; // of the lists that are being read, the outermost first
    std::u32string _words;              // the pending words of these lists
    std::array<Ref<NameObj>, 1024> _names;
    std::u32string _line; // these three are kept for their memory alone
    std::u32string _text;
    LiteralString _literal;
    std::uint64_t _taken = 0; // elements that objects were read from
    ReadingNotes _notes;
    ReadingNotes _unkept;
    struct Pending {
        ReadingNote note;
        std::uint64_t offset;
    };
    std::vector<Pending> _pending; // notes in the values that are being read
    std::vector<KeptSource> _sources;
    std::uint64_t _keptSize = 0; // of all sources, in bytes
    std::uint32_t _id = 0;          // of the object that is being read
    std::uint64_t _nestedEnd = 0;   // of the last nested value, where bytes are shown
    std::uint64_t _trueEnd = 0;     // of a value that was found in the object's header; 0 for any other
    LookAhead _ahead;
    unsigned _depth = 0; // of the arrays and dictionaries that are being read
};

} // namespace Libraries::Files::PDF
