#include <document/ValueParser.h>

#include <document/Report.h>
#include <document/Syntax.h>
#include <platform/Limits.h>
#include <platform/StrConv.h>
#include <platform/StringUtil.h>
#include <values/ArrayObj.h>
#include <values/BooleanObj.h>
#include <values/DictionaryObj.h>
#include <values/NameObj.h>
#include <values/NullObj.h>
#include <values/NumberText.h>
#include <values/ObjectRefObj.h>
#include <values/StreamObj.h>
#include <values/StringObj.h>

#include <atomic>

// The grammar, as this reader takes it. White space is every character below 33.
//
//   object      number " " number " obj" [" " value on the same line]  line end  value
//   value       hexadecimal | dictionary [stream] | literal | name | array | word
//   word        "true" | "false" | integer | integer "." integer
//   list        what is between "[" and "]", or between "<<" and ">>": comments, hexadecimal,
//               dictionary, name, literal, array, and words, of which "null" is one and "R" makes a
//               reference of the two numbers before it
//   stream      "stream" [line end], after the dictionary of an object; the data is not read
//
// A word of an object ends at white space only; one of a list also at "%", at "/", and at the end of the
// list. "<", "(" and "[" don't end it: what they open is read, and the word goes on after it. The two readers
// of values, `readValue` and `readValueList`, look alike and deliberately differ: comments, "null" and
// references exist in lists alone, and only an object may have white space between "<" and the first digit
// of a hexadecimal string. "endobj" and "endstream" are never looked at.

namespace Libraries::Files::PDF {

namespace {

using Libraries::Strings::Encodings::ANSI::Windows_1252;

constexpr std::int64_t maxId = 0xFFFFFFFF;

bool isHexDigit(std::uint32_t c)
{
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

// The value of a digit for which `isHexDigit` holds.
unsigned digitValue(std::uint32_t c)
{
    return c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10;
}

bool endsName(std::uint32_t c)
{
    switch (c) {
    case '%': case '(': case ')': case '/': case '<': case '>': case '[': case ']': case '{': case '}':
        return true;
    default:
        return Syntax::isSpace(c);
    }
}

const char* invalidNumber(std::u32string_view word)
{
    return word.find(U'.') == word.npos ? "Invalid integer value " : "Invalid real value ";
}

// The string of the bytes. Deliberate: a last digit without a second one gets a "0" after it, and the
// two are read as a decimal number, so "5" is the byte 50 and "A" is refused.
Ref<ValueObj> endHexString(std::vector<std::uint8_t> bytes, std::uint32_t pending)
{
    if (pending > '9')
        return report.line(
            "Failed to convert string to hexadecimal value: ", ::String::create(pending)->append('0'));
    if (pending)
        bytes.push_back(static_cast<std::uint8_t>(digitValue(pending) * 10));
    Ref<TConstArray<std::uint8_t>> array = TConstArray<std::uint8_t>::create(bytes.data(), bytes.size());
    return pending ? make<StringObj>(std::move(array), StringObj::OddDigit()) : make<StringObj>(std::move(array));
}

Ref<Value> valueOr(Ref<ValueObj> value, const char* message, std::uint64_t position)
{
    if (!value)
        return report.line(message, position);
    return value;
}

// Counts one more array or dictionary for as long as it is read.
class Nesting {
public:
    explicit Nesting(unsigned& depth) noexcept : _depth(++depth) {}
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;
    ~Nesting() noexcept { --_depth; }

    bool isTooDeep(std::uint64_t position) const noexcept
    {
        if (_depth > Limits::maxNesting)
            report.line("Values are nested too deeply; offset: ", position);
        return _depth > Limits::maxNesting;
    }

private:
    unsigned& _depth;
};

// A number that no other opening has, as long as fewer than four billion came after it.
std::uint32_t newOpening()
{
    static std::atomic<std::uint32_t> last{0};
    return last.fetch_add(1, std::memory_order_relaxed) + 1;
}

} // namespace

ValueParser::ValueParser(ElementReader& elements) noexcept
    : _elements(elements), _opening(newOpening()), _ahead(elements)
{
    _elements.limit(Limits::maxElementsAtOnce(_elements.size()));
}

ValueParser::~ValueParser() noexcept = default;

bool ValueParser::isAt(std::uint64_t position, std::uint32_t c) noexcept
{
    std::uint32_t found = 0;
    return _elements.seek(position) && next(found) && found == c;
}

void ValueParser::note(ReadingNote note, std::uint64_t offset) noexcept
{
    _notes.add(note, _id, offset);
    // An open string may go on after the value that it is in, where no source is kept.
    if (note != ReadingNote::OpenString && _pending.size() < Limits::maxPendingNotes)
        _pending.push_back({note, offset});
    else
        _unkept.add(note, _id, offset);
}

// What was noted outside of values whose source was kept.
void ValueParser::endNotes() noexcept
{
    for (const Pending& pending : _pending)
        _unkept.add(pending.note, _id, pending.offset);
    _pending.clear();
}

ReadingNotes ValueParser::takeUnkept() noexcept
{
    endNotes();
    return _unkept;
}

// Keeps what a value with notes from `firstNote` on is written with, from `begin` to here.
void ValueParser::keepSource(const Ref<Value>& value, std::uint64_t begin, std::size_t firstNote) noexcept
{
    const std::uint64_t size = here() - begin;
    if (!_elements.isShown() || size > Limits::maxKeptSource || size > _elements.size() - _keptSize)
        return;
    std::vector<std::uint8_t> bytes;
    bytes.reserve(size);
    std::uint32_t c = 0;
    for (_elements.seek(begin); bytes.size() < size && next(c);)
        bytes.push_back(Windows_1252::toByte(c));
    if (bytes.size() < size)
        return;
    _keptSize += size;
    _sources.push_back({value, TConstArray<std::uint8_t>::create(bytes.data(), bytes.size()), _pending[firstNote].note,
        _pending.size() - firstNote, _id, _pending[firstNote].offset});
    _pending.resize(firstNote);
}

// Seeks to `offset`, and leaves the stripe after what the value took.
Ref<Object> ValueParser::readObject(std::uint32_t id, std::uint32_t generation, std::uint64_t offset) noexcept
{
    const std::uint64_t size = _elements.size();
    if (Limits::isReadTooOften(_taken, size))
        return report.line("Objects overlap too often; offset: ", offset);
    _elements.limit(Limits::maxElementsAtOnce(size));
    endNotes();
    _id = id;
    _trueEnd = 0;
    if (!readHeader(id, generation, offset))
        return nullptr;
    Ref<Value> value = readValue();
    if (!value)
        return report.line("Failed to read value of object ", id, " at ", offset);
    _taken += here() - offset;
    if (value->type() != Value::Type::Dictionary && value->type() != Value::Type::Stream)
        noteRest(_trueEnd ? _trueEnd : here(), value->type() == Value::Type::Number);
    return make<ObjectObj>(id, static_cast<std::uint16_t>(generation), std::move(value));
}

// Seeks to `offset`, and leaves the stripe where the value may begin. Of a line that goes on with the
// value no more is read than the value's first piece: a whole file may be one line.
bool ValueParser::readHeader(std::uint32_t id, std::uint32_t generation, std::uint64_t offset) noexcept
{
    if (!_elements.seek(offset))
        return false;
    std::u32string_view pieces[4];
    if (!_elements.readPieces(_line, std::size(pieces)))
        return false;
    const std::size_t count = StringUtil::split(_line, U' ', pieces);
    if (count < 3 || pieces[2] != Syntax::objectKeyword)
        return false;
    unsigned gotId = 0;
    if (!StrConv::num(pieces[0], &gotId))
        return report.line("Object id is invalid: ", ::String::create(pieces[0]), "; offset: ", offset);
    unsigned gotGeneration = 0;
    if (!StrConv::num(pieces[1], &gotGeneration) || gotGeneration > Syntax::maxGeneration)
        return report.line("Object generation is invalid: ", ::String::create(pieces[1]), "; offset: ", offset);
    if (gotId != id)
        return report.line("ID for object at ", offset, " differs; expected ", id, ", but got ", gotId);
    if (gotGeneration != generation)
        return report.line(
            "Generation for object at ", offset, " differs; expected ", generation, ", but got ", gotGeneration);
    if (count == 3)
        return true;
    // Deliberate: the piece is looked for from the start of the line, so one that also appears in
    // the header is found there.
    const std::size_t found = _line.find(pieces[3]);
    const auto place = static_cast<std::size_t>(pieces[3].data() - _line.data());
    if (found != place) {
        _trueEnd = offset + place + pieces[3].size();
        if (std::u32string_view(_line).substr(found, _line.find(U' ', found) - found) != pieces[3])
            note(ReadingNote::HeaderValue, offset + place);
    }
    return _elements.seek(offset + found);
}

// Starts after the object header. A word leaves the stripe after the white space that ended it.
Ref<Value> ValueParser::readValue() noexcept
{
    std::u32string word;
    std::uint32_t previous = 0; // white space leaves it as it is
    std::uint32_t c = 0;
    while (next(c)) {
        if (Syntax::isSpace(c)) {
            if (!Syntax::isStandardSpace(c))
                note(ReadingNote::ControlCharacter);
            if (!word.empty())
                return readTopWord(word);
            continue;
        }
        const std::uint64_t position = here();
        if (previous == '<' && isHexDigit(c))
            return valueOr(readHexString(c), "Failed to read hex string in object at ", position - 1);
        if (!word.empty() && (c == '<' || c == '(' || c == '/' || c == '['))
            note(ReadingNote::GluedWord);
        if (previous == '<' && c == '<')
            return giveBack(2) ? readDictionaryOrStream() : nullptr;
        switch (c) {
        case '<':
            break;
        case '(':
            return valueOr(readLiteralString(), "Failed to read string in object at ", position);
        case '/':
            return valueOr(readName(), "Failed to read identifer in object at ", position);
        case '[':
            return valueOr(readArray(), "Failed to read array in object at ", position);
        default:
            word += char32_t(c);
        }
        previous = c;
    }
    return nullptr;
}

// The value of a word that ended just before the present position. Deliberately neither "null" nor a
// reference: the first is refused, of the second the number is read and the rest left alone.
Ref<Value> ValueParser::readTopWord(const std::u32string& word) noexcept
{
    if (word == U"true" || word == U"false")
        return make<BooleanObj>(word == U"true");
    const Ref<ValueObj> number = numberFrom(word);
    if (!number)
        return report.line(
            invalidNumber(word), ::String::create(word), " in object; offset: ", here() - 1 - word.size());
    return number;
}

// Starts before "<<".
Ref<Value> ValueParser::readDictionaryOrStream() noexcept
{
    const std::uint64_t position = here();
    Ref<Dictionary> dictionary = readDictionary();
    if (!dictionary)
        return report.line("Failed to read dictionary in object at ", position);
    Ref<Value> value = readStreamTail(std::move(dictionary));
    if (!value)
        return report.line("Failed to read stream in object at ", position);
    return value;
}

// Starts before "<<", or before anything that comes before it, and ends after ">>".
Ref<DictionaryObj> ValueParser::readDictionary() noexcept
{
    const std::uint64_t position = here();
    const Nesting nesting(_depth);
    if (nesting.isTooDeep(position))
        return nullptr;
    std::uint32_t previous = 0;
    std::uint32_t c = 0;
    bool isAtStart = true;
    while (c != '<' || previous != '<') {
        // Right after another dictionary the search begins with its last ">".
        if (previous != 0 && !Syntax::isSpace(previous) && !(isAtStart && previous == '>'))
            note(ReadingNote::SkippedText);
        isAtStart = isAtStart && previous == 0;
        previous = c;
        if (!next(c))
            return nullptr;
    }
    const std::uint64_t begin = here() - 2;
    const std::size_t firstNote = _pending.size();
    const std::size_t first = _values.size();
    Ref<DictionaryObj> dictionary = readValueList(ListEnd::Dictionary) ? makeDictionary(first, position) : nullptr;
    if (dictionary && _pending.size() != firstNote)
        keepSource(dictionary, begin, firstNote);
    return dictionary;
}

// Takes the values from `first` on off the stack.
Ref<DictionaryObj> ValueParser::makeDictionary(std::size_t first, std::uint64_t position) noexcept
{
    const std::size_t count = _values.size() - first;
    if (count % 2 != 0)
        return report.line("Uneven number of values in dictionary: ", count, "; offset: ", position);
    DictionaryObj::Entries entries;
    entries.reserve(count / 2);
    for (std::size_t i = first; i < _values.size(); i += 2) {
        if (_values[i]->type() != Value::Type::Name)
            return report.line("Expected identifier in dictionary at ", position);
        entries.push_back({static_cast<const NameObj&>(*_values[i]).value(), std::move(_values[i + 1])});
    }
    _values.resize(first);
    Ref<DictionaryObj> dictionary = make<DictionaryObj>(std::move(entries));
    for (std::size_t i = dictionary->entries().size(); i < count / 2; ++i)
        note(ReadingNote::RepeatedKey, position);
    return dictionary;
}

// Starts after "[", ends after "]".
Ref<ValueObj> ValueParser::readArray() noexcept
{
    const Nesting nesting(_depth);
    const std::uint64_t open = here() - 1;
    const std::size_t firstNote = _pending.size();
    const std::size_t first = _values.size();
    if (nesting.isTooDeep(here()) || !readValueList(ListEnd::Array))
        return nullptr;
    const auto begin = _values.begin() + static_cast<std::ptrdiff_t>(first);
    ArrayObj::Elements elements(std::make_move_iterator(begin), std::make_move_iterator(_values.end()));
    _values.resize(first);
    Ref<ArrayObj> array = make<ArrayObj>(std::move(elements));
    if (_pending.size() != firstNote)
        keepSource(array, open, firstNote);
    return array;
}

// Starts after ">>" of an object's dictionary. The six characters that come next decide, whatever white
// space is between them; they are "endobj" when there is no stream.
Ref<Value> ValueParser::readStreamTail(Ref<Dictionary> dictionary) noexcept
{
    constexpr std::u32string_view keyword = U"stream";
    constexpr std::u32string_view end = U"endobj";
    const std::uint64_t start = here();
    std::uint64_t first = 0; // after the first of the characters
    std::u32string word;
    std::uint32_t c = 0;
    while (word.size() < keyword.size()) {
        if (!next(c))
            return nullptr;
        if (!Syntax::isSpace(c)) {
            first = word.empty() ? here() : first;
            word += char32_t(c);
        }
    }
    if (word != keyword) {
        if (word != end)
            noteRest(start, false);
        return dictionary;
    }
    if (here() - first != keyword.size() - 1)
        note(ReadingNote::StreamStart);
    std::uint64_t offset = 0;
    if (!readStreamStart(offset))
        return nullptr;
    Ref<StreamObj> stream = make<StreamObj>(std::move(dictionary), offset);
    stream->_opening = _opening;
    return stream;
}

// Starts after "stream". The data begins after one line ending, if there is one.
bool ValueParser::readStreamStart(std::uint64_t& offset) noexcept
{
    offset = here();
    std::uint32_t c = 0;
    if (!next(c))
        return false;
    if (c == ' ' || c == Syntax::tab)
        note(ReadingNote::StreamStart);
    if (c == Syntax::lineFeed)
        offset += 1;
    if (c != Syntax::carriageReturn)
        return true;
    if (!next(c))
        return false;
    offset += c == Syntax::lineFeed ? 2 : 1;
    return true;
}

// Starts after "[" or "<<", ends after "]" or ">>". The values are on the stack then, on top of those of
// the lists around.
bool ValueParser::readValueList(ListEnd end) noexcept
{
    const List list{_values.size(), _words.size()};
    std::uint32_t previous = 0; // after a nested value still the one that opened it, deliberately
    bool isComment = false;
    bool isOpening = false; // the last character was a "<" that opens nothing yet
    for (std::uint32_t c = 0; next(c); previous = c) {
        if (isOpening && c != '<' && !isHexDigit(c))
            note(ReadingNote::GluedWord);
        isOpening = false;
        if (isComment) {
            isComment = !Syntax::isLineEnd(c);
        } else if (Syntax::isSpace(c)) {
            if (!Syntax::isStandardSpace(c))
                note(ReadingNote::ControlCharacter);
            if (!endWord(list, 1))
                return false;
        } else if (c == '%') {
            if (!endWord(list, 1))
                return false;
            isComment = true;
        } else if (c == '/') {
            if (!endWord(list, 1) || !readNested(c, previous))
                return false;
        } else if (c == '<' || c == '(' || c == '[' || (previous == '<' && isHexDigit(c))) {
            // A pending word is not ended by these, and goes on after them.
            noteOpener(list, c, previous);
            isOpening = c == '<' && previous != '<';
            if (!readNested(c, previous))
                return false;
        } else if (end == ListEnd::Dictionary && c == '>' && previous == '>') {
            _words.pop_back();
            return endWord(list, 2);
        } else if (end == ListEnd::Array && c == ']') {
            return endWord(list, 1);
        } else {
            _words += char32_t(c);
        }
    }
    return false;
}

// Starts after `opener`, which opens a value, or is the first "<" and says nothing yet.
bool ValueParser::readNested(std::uint32_t opener, std::uint32_t previous) noexcept
{
    if (opener == '<' && previous != '<')
        return true;
    std::uint64_t position = here();
    Ref<ValueObj> value;
    const char* message = "Failed to read hex string in value list at offset ";
    switch (opener) {
    case '/':
        message = "Failed to read identifier in array at ";
        value = readName();
        break;
    case '(':
        message = "Failed to read string in array at offset ";
        value = readLiteralString();
        break;
    case '[':
        message = "Failed to read array in array at offset ";
        value = readArray();
        break;
    case '<':
        message = "Failed to read dictionary in array at offset ";
        position -= 2;
        if (!giveBack(2))
            return false;
        value = readDictionary();
        // Right after another dictionary the two characters given back begin with its last ">".
        if (!value && !isAt(position, '<'))
            ++position;
        break;
    default:
        position -= 1;
        value = readHexString(opener);
    }
    if (!value)
        return report.line(message, position);
    _values.push_back(std::move(value));
    if (_elements.isShown())
        _nestedEnd = here();
    return true;
}

// Notes an opener that the format takes otherwise: one at a word, and a digit after a dictionary.
void ValueParser::noteOpener(const List& list, std::uint32_t opener, std::uint32_t previous) noexcept
{
    const bool opens = opener != '<' || previous == '<';
    const bool isDigit = opener != '<' && opener != '(' && opener != '[';
    if ((opens && _words.size() != list.firstOfWord) || (isDigit && _elements.isShown() && here() - 1 == _nestedEnd))
        note(ReadingNote::GluedWord);
}

// Adds the pending word of the list, if there is one, which ended `charactersAfter` before the present
// position.
bool ValueParser::endWord(const List& list, std::uint64_t charactersAfter) noexcept
{
    const std::u32string_view word = std::u32string_view(_words).substr(list.firstOfWord);
    if (word.empty())
        return true;
    const bool isAdded = addToken(list, word, charactersAfter);
    _words.resize(list.firstOfWord);
    return isAdded;
}

bool ValueParser::addToken(const List& list, std::u32string_view token, std::uint64_t charactersAfter) noexcept
{
    const bool mayBeKeyword = token[0] >= U'A';
    if (mayBeKeyword && token == U"R")
        return addReference(list, here() - charactersAfter);
    if (mayBeKeyword && (token == U"true" || token == U"false")) {
        _values.push_back(make<BooleanObj>(token == U"true"));
        return true;
    }
    if (mayBeKeyword && token == U"null") {
        _values.push_back(make<NullObj>());
        return true;
    }
    Ref<ValueObj> number = numberFrom(token);
    if (!number)
        return report.line(invalidNumber(token), ::String::create(token), " in value list; offset: ",
            here() - charactersAfter - token.size());
    _values.push_back(std::move(number));
    return true;
}

// Makes a reference of the last two values of the list.
bool ValueParser::addReference(const List& list, std::uint64_t position) noexcept
{
    // Deliberate: the limits are those of the signed parts, so a negative number passes and is cut.
    const auto isWhole = [](const Ref<ValueObj>& value, std::int64_t limit) {
        if (value->type() != Value::Type::Number)
            return false;
        const auto& number = static_cast<const NumberObj&>(*value);
        return number.intPart() <= limit && number.fracPart() == 0;
    };
    const auto isOdd = [](const NumberObj& number) {
        const NumberObj::Spelling spelling = number.spelling();
        return number.intPart() < 0 || spelling.flags != 0 || spelling.fractionZeros != 0;
    };
    const std::size_t count = _values.size();
    if (count < list.firstValue + 2 || !isWhole(_values[count - 1], Syntax::maxGeneration)
        || !isWhole(_values[count - 2], maxId))
        return report.line("Invalid object reference in array before ", position);
    const auto& id = static_cast<const NumberObj&>(*_values[count - 2]);
    const auto& generation = static_cast<const NumberObj&>(*_values[count - 1]);
    if (isOdd(id) || isOdd(generation))
        note(ReadingNote::Reference);
    Ref<ValueObj> reference = make<ObjectRefObj>(
        static_cast<std::uint32_t>(id.intPart()), static_cast<std::uint16_t>(generation.intPart()));
    _values.pop_back();
    _values.back() = std::move(reference);
    return true;
}

// Starts after "/", ends before the character that ends the name, or, at the end of the stripe, before
// the last one. The name is taken as it is: "#" sequences aren't decoded.
Ref<ValueObj> ValueParser::readName() noexcept
{
    _text.clear();
    std::uint32_t c = 0;
    std::size_t hash = 0;
    bool isRead = next(c);
    for (; isRead && !endsName(c); isRead = next(c)) {
        _text += char32_t(c);
        hash = hash * 31 + c;
    }
    const bool isFailure = !isRead && here() < _elements.size();
    if (isFailure || !giveBack(1) || _text.empty())
        return nullptr;
    // The same few names come again and again, and names don't change: one object serves them all.
    Ref<NameObj>& known = _names[hash % _names.size()];
    if (!known || !known->text().equals(_text))
        known = make<NameObj>(::String::create(_text));
    return known;
}

// Starts after "(", ends after the ")" that closes it.
Ref<ValueObj> ValueParser::readLiteralString() noexcept
{
    _literal.begin();
    for (std::uint32_t c = 0; next(c);) {
        switch (_literal.take(c)) {
        case LiteralString::Step::More:
            break;
        case LiteralString::Step::End:
            if (const LiteralString::End end = _literal.end(); end != LiteralString::End::AsMeant)
                note(end == LiteralString::End::Open ? ReadingNote::OpenString : ReadingNote::StringEnd);
            return _literal.finish();
        case LiteralString::Step::LineEnd:
            return nullptr;
        case LiteralString::Step::BadEscape:
            return report.line("Invalid escape character ", c, " at offset ", here() - 1);
        }
    }
    return nullptr;
}

// Starts after the first digit, ends after ">". What is no digit is skipped.
Ref<ValueObj> ValueParser::readHexString(std::uint32_t firstDigit) noexcept
{
    std::vector<std::uint8_t> bytes;
    std::uint32_t pending = firstDigit; // 0 for none
    std::uint32_t c = 0;
    while (next(c)) {
        if (c == '>')
            return endHexString(std::move(bytes), pending);
        if (!isHexDigit(c)) {
            if (!Syntax::isSpace(c))
                note(ReadingNote::HexCharacter);
            continue;
        }
        if (pending)
            bytes.push_back(static_cast<std::uint8_t>(digitValue(pending) << 4 | digitValue(c)));
        pending = pending ? 0 : c;
    }
    return nullptr;
}

// Whether an object ends at a position: its keyword is next or, where that is missing, another object or the table.
bool ValueParser::isObjectEnd(std::uint64_t position) noexcept
{
    constexpr const char* ends[]
        = {Syntax::objectEnd, Syntax::xrefKeyword, Syntax::startXrefKeyword, Syntax::trailerKeyword};
    for (const char* keyword : ends) {
        _elements.seek(position);
        if (_ahead.pass(keyword))
            return true;
    }
    _elements.seek(position);
    return _ahead.passObjectStart();
}

// Notes what comes after the value of an object, which ends at `end`, unless that is the end of the object. Leaves
// the elements where they are.
void ValueParser::noteRest(std::uint64_t end, bool isNumber) noexcept
{
    if (!_ahead.isPossible())
        return;
    const std::uint64_t position = here();
    if (!isObjectEnd(end)) {
        _elements.seek(end);
        const bool isStream = !isNumber && _ahead.pass(Syntax::streamKeyword);
        _elements.seek(end);
        const bool isReference = isNumber && _ahead.passReferenceEnd();
        note(isStream ? ReadingNote::LostStream
                : isReference ? ReadingNote::ObjectReference : ReadingNote::SecondValue, end);
    }
    _elements.seek(position);
}

} // namespace Libraries::Files::PDF
