#include <document/ValueWriter.h>

#include <document/Document.h>
#include <document/LiteralString.h>
#include <document/Report.h>
#include <document/Syntax.h>
#include <platform/Limits.h>
#include <platform/StrConv.h>
#include <values/KindCast.h>
#include <values/NumberText.h>

#include <algorithm>
#include <vector>

namespace Libraries::Files::PDF {

namespace {

constexpr std::uint64_t blockSize = 65536; // of the bytes that are read and sent at a time

// The letter that stands for the character after a backslash; 0 when none does.
char escapeLetter(unsigned int c)
{
    switch (c) {
    case Syntax::backspace: return 'b';
    case Syntax::tab: return 't';
    case Syntax::lineFeed: return 'n';
    case Syntax::formFeed: return 'f';
    case Syntax::carriageReturn: return 'r';
    case '(': case ')': case '\\': return static_cast<char>(c);
    default: return 0;
    }
}

// The byte that a character from 127 up stands for; -1 when there is none.
int byteOf(unsigned int c)
{
    if (c < 256)
        return static_cast<int>(c);
    const auto row = std::find(Syntax::mappedCharacters.begin(), Syntax::mappedCharacters.end(), c);
    if (row == Syntax::mappedCharacters.end())
        return -1;
    return static_cast<int>(Syntax::firstMappedByte + (row - Syntax::mappedCharacters.begin()));
}

} // namespace

template <class Kind, class Writer>
bool ValueWriter::writeAs(const Ref<Value>& value, const char* castFailure, Writer writer) noexcept
{
    Kind* const cast = castKind<Kind>(*value);
    if (!cast)
        return report.fail(ErrInvalidArgument, castFailure);
    return writer(*cast);
}

bool ValueWriter::writeValue(const Ref<Value>& value) noexcept
{
    if (!value)
        return refuse(ErrNullArgument);
    switch (value->type()) {
    case Value::Type::Name:
        return writeAs<Name>(value, "Failed to cast name to Name", [this](const Name& name) {
            _out.append('/');
            if (const Ref<::String> text = name.value())
                _out.append(*text);
            return true;
        });
    case Value::Type::Boolean:
        return writeAs<Boolean>(value, "Failed to cast boolean to Boolean", [this](const Boolean& boolean) {
            _out.append(boolean.value() ? "true" : "false");
            return true;
        });
    case Value::Type::Number:
        return writeAs<Number>(value, "Failed to cast number to Number", [this](const Number& number) {
            writeNumber(number);
            return true;
        });
    case Value::Type::String:
        return writeAs<String>(value, "Failed to cast string to String",
            [this](const String& string) { return writeString(string); });
    case Value::Type::ObjectRef:
        return writeAs<ObjectRef>(
            value, "Failed to cast object reference to ObjectRef", [this](const ObjectRef& reference) {
                writeReference(reference);
                return true;
            });
    case Value::Type::Dictionary:
        return writeAs<Dictionary>(value, "Failed to convert dictionary to Dictionary",
            [&](Dictionary& dictionary) { return writeSource(value) || writeDictionary(dictionary); });
    case Value::Type::Stream:
        return writeAs<Stream>(value, "Failed to convert stream to Stream",
            [this](Stream& stream) { return writeStream(stream); });
    case Value::Type::Array:
        return writeAs<Array>(value, "Failed to cast array to Array",
            [&](const Array& array) { return writeSource(value) || writeArray(array); });
    case Value::Type::Null:
        return writeAs<Null>(value, "Failed to cast value to Null", [this](const Null&) {
            _out.append("null");
            return true;
        });
    case Value::Type::Invalid:
        break;
    }
    return report.fail(ErrInvalidArgument, "Writing not supported for value of type ", value->type());
}

// Deliberate: the plain text is made of the two integers, so 1.05, read as 1 and 5, goes out as 1.5, and -0.5
// without its sign.
void ValueWriter::writeNumber(const Number& number) noexcept
{
    if (_dialect == Dialect::Plain)
        appendPlainly(number, _out);
    else
        appendExactly(number, _out);
}

void ValueWriter::writeReference(const ObjectRef& reference) noexcept
{
    _out.appendNumber(reference.id());
    _out.append(' ');
    _out.appendNumber(reference.generation());
    _out.append(" R");
}

bool ValueWriter::writeString(const String& string) noexcept
{
    if (_dialect != Dialect::Plain && writeRemembered(string))
        return true;
    if (const Ref<::String> text = string.value()) {
        if (!writeLiteral(*text))
            return report.fail(ErrInvalidArgument, "Failed to convert string to PDF compatible string");
        return true;
    }
    const Ref<TConstArray<std::uint8_t>> bytes = string.data();
    if (!bytes)
        return report.fail(ErrInvalidArgument, "Invalid Stirng value");
    writeHexadecimal(*bytes, false);
    return true;
}

// Writes a string that remembers how its file had it; false for any other.
bool ValueWriter::writeRemembered(const String& string) noexcept
{
    const StringObj* own = exactly<StringObj>(string);
    const bool hasOddDigit = own && own->hasOddDigit();
    if (hasOddDigit)
        writeHexadecimal(*own->data(), true);
    const Ref<TConstArray<std::uint8_t>> source = own ? own->source() : nullptr;
    if (source)
        writeStringSource(*source);
    return hasOddDigit || source;
}

// The source of a literal string. Where angle brackets must not be, they are written as digits as far as the format
// has the string; a backslash never comes before one, since no string is read with that.
void ValueWriter::writeStringSource(const TConstArray<std::uint8_t>& source) noexcept
{
    const std::size_t end = endOfLiteral(source.data(), source.size());
    for (std::size_t i = 0; i < source.size(); ++i)
        if (const std::uint8_t c = source.data()[i]; i < end && isOctalBracket(c))
            writeOctal(c);
        else
            *_out.grow(1) = Libraries::Strings::Encodings::ANSI::Windows_1252::toCodePoint(c);
}

bool ValueWriter::writeLiteral(const ::String& text) noexcept
{
    _out.append('(');
    for (std::size_t i = 0; i < text.length(); ++i) {
        const unsigned int c = text.charAt(i);
        if (isOctal(c)) {
            if (!writeOctal(c))
                return false;
        } else if (const char letter = escapeLetter(c)) {
            _out.append('\\');
            _out.append(letter);
        } else {
            _out.append(static_cast<char>(c));
        }
    }
    _out.append(')');
    return true;
}

// Whether a character is written as the digits of its byte. A backslash is where it must come back: two of them
// represent one in the format, but not for this library.
bool ValueWriter::isOctal(unsigned int c) const noexcept
{
    return c >= 127 || (c == '\\' && _dialect != Dialect::Plain) || isOctalBracket(c);
}

bool ValueWriter::isOctalBracket(unsigned int c) const noexcept
{
    return (c == '<' || c == '>') && _dialect == Dialect::ExactTrailer;
}

bool ValueWriter::writeOctal(unsigned int c) noexcept
{
    const int byte = byteOf(c);
    if (byte < 0)
        return report.line("Failed to convert character: ", c);
    // A byte from 128 up reaches the printer as a negative number, deliberately, and comes out of it as the three
    // digits of the byte.
    _out.append('\\');
    _out.append(*StrConv::str(int(static_cast<std::int8_t>(byte)), 8, 3));
    return true;
}

// Of an odd digit the last byte is ten times its value.
void ValueWriter::writeHexadecimal(const TConstArray<std::uint8_t>& bytes, bool hasOddDigit) noexcept
{
    constexpr const char* digits = "0123456789ABCDEF";
    const std::size_t pairs = bytes.size() - (hasOddDigit ? 1 : 0);
    _out.append('<');
    for (std::size_t i = 0; i < pairs; ++i) {
        _out.append(digits[bytes.data()[i] >> 4]);
        _out.append(digits[bytes.data()[i] & 15]);
    }
    if (hasOddDigit)
        _out.append(digits[bytes.data()[pairs] / 10]);
    _out.append('>');
}

// Writes an array or a dictionary whose source was kept as that; false for any other.
bool ValueWriter::writeSource(const Ref<Value>& value) noexcept
{
    const Ref<TConstArray<std::uint8_t>> source = _sources ? _sources->of(*value) : nullptr;
    if (source)
        appendBytes(*source);
    return bool(source);
}

// Appends the characters of bytes of a file.
void ValueWriter::appendBytes(const TConstArray<std::uint8_t>& bytes) noexcept
{
    std::transform(bytes.data(), bytes.data() + bytes.size(), _out.grow(bytes.size()),
        Libraries::Strings::Encodings::ANSI::Windows_1252::toCodePoint);
}

bool ValueWriter::writeArray(const Array& array) noexcept
{
    _out.append('[');
    for (std::uint64_t i = 0; i < array.size(); ++i) {
        const Ref<Value> element = array.get(i);
        if (!element)
            return report.fail(ErrInvalidArgument, "Array element is NULL: ", i);
        _out.append(' ');
        if (!writeValue(element))
            return report.fail(ErrNoResource, "Failed to convert value of array element to buffer ", i);
    }
    _out.append(" ]");
    return true;
}

bool ValueWriter::writeDictionary(Dictionary& dictionary) noexcept
{
    _out.append("<<");
    const DictionaryObj* own = exactly<DictionaryObj>(dictionary);
    if (!(own ? writeEntries(*own) : lookUpEntries(dictionary)))
        return false;
    _out.append(" >>");
    return true;
}

bool ValueWriter::writeEntries(const DictionaryObj& dictionary) noexcept
{
    return dictionary.entries().forEach(
        [this](const Ref<::String>& key, const Ref<Value>& value) { return writeEntry(key, value); });
}

// The same for a dictionary of another class, through its interface.
bool ValueWriter::lookUpEntries(const Dictionary& dictionary) noexcept
{
    const Ref<TVector<Ref<::String>>> keys = dictionary.keys();
    if (!keys)
        return report.fail(ErrInvalidArgument, "Failed to retrieve keys of dictionary");
    for (std::size_t i = 0; i < keys->size(); ++i) {
        const Ref<::String> key = keys->get(i);
        if (!key)
            return report.fail(ErrInvalidArgument, "Failed to retrieve dictionary key ", i);
        const Ref<Value> value = dictionary.find(key);
        if (!value)
            return report.fail(ErrInvalidArgument, "Failed to retrieve value for dictionary key ", key);
        if (!writeEntry(key, value))
            return false;
    }
    return true;
}

bool ValueWriter::writeEntry(const Ref<::String>& key, const Ref<Value>& value) noexcept
{
    _out.append(" /");
    _out.append(*key);
    _out.append(' ');
    if (!writeValue(value))
        return report.fail(ErrNoResource, "Failed to convert value of dictionary key to buffer: ", key);
    return true;
}

bool ValueWriter::writeStream(Stream& stream) noexcept
{
    const Ref<Dictionary> dictionary = stream.dict();
    if (!dictionary)
        return report.fail(ErrInvalidArgument, "Stream has no dictionary");
    const Ref<Interfaces::Stripe> data = _document.streamData(Ref<Stream>(&stream), false);
    if (!data)
        return report.fail(ErrInvalidArgument, "Failed to retrieve data of stream");
    if (!writeValue(dictionary))
        return report.fail(ErrNoResource, "Failed to convert stream dictionary to buffer");
    _out.append(_lineEnding);
    _out.append(Syntax::streamKeyword);
    if (!writeStreamData(*data))
        return false;
    _out.append(Syntax::streamEnd);
    return true;
}

// The line ending before the data, the data, and, unless it ends in one itself, a line ending after it
// that `Length` doesn't count.
bool ValueWriter::writeStreamData(Interfaces::Stripe& data) noexcept
{
    const std::uint64_t count = data.size();
    if (count > Limits::maxStreamSize)
        return report.fail(ErrOutOfRange, "Stream is too large");
    if (count == 0) {
        endStreamKeyword();
        return true;
    }
    if (data.seek(0) != 0)
        return report.fail(ErrNoResource, "Failed to navigate stream data");
    endStreamKeyword();
    Interfaces::ByteReading* const bytes = _outlet ? byteReadingOf(data) : nullptr;
    return bytes ? sendBytes(*bytes, count) : writeElements(data, count);
}

// The format has no CR alone there, and reads a LF that the data begins with as a part of it.
void ValueWriter::endStreamKeyword() noexcept
{
    _out.append(_lineEnding);
    if (_dialect != Dialect::Plain && _lineEnding.equals("\r"))
        _out.append('\n');
}

bool ValueWriter::writeElements(Interfaces::Stripe& data, std::uint64_t count) noexcept
{
    const bool isReadable = data.elementSize() == sizeof(std::uint32_t);
    std::uint32_t* elements = _out.grow(isReadable ? count : 0);
    BufferDesc area = BufferDesc::plain(elements);
    if (!isReadable || data.read(area, count, waitForever) != count)
        return report.fail(ErrNoResource, "Failed to retrieve stream data");
    if (!Syntax::isLineEnd(elements[count - 1]))
        _out.append(_lineEnding);
    return true;
}

// The same past the text, a block at a time.
bool ValueWriter::sendBytes(Interfaces::ByteReading& data, std::uint64_t count) noexcept
{
    if (!_outlet->send(_out))
        return false;
    std::vector<std::uint8_t> block(std::min(count, blockSize));
    std::uint8_t last = 0;
    for (std::uint64_t left = count; left != 0;) {
        const std::uint64_t chunk = std::min<std::uint64_t>(left, block.size());
        if (data.readBytes(block.data(), chunk) != chunk)
            return report.fail(ErrNoResource, "Failed to retrieve stream data");
        if (!_outlet->send(block.data(), chunk))
            return false;
        last = block[chunk - 1];
        left -= chunk;
    }
    if (!Syntax::isLineEnd(last))
        _out.append(_lineEnding);
    return true;
}

} // namespace Libraries::Files::PDF
