#pragma once

#include <document/KeptSources.h>
#include <platform/MemOutStrm.h>
#include <platform/Stripe.h>
#include <platform/TConstArray.h>
#include <values/Value.h>

namespace Libraries::Files::PDF {

class Array;
class Dictionary;
class DictionaryObj;
class Document;
class Number;
class ObjectRef;
class Stream;
class String;

// How a file is written.
enum class Dialect {
    Plain,       // by what this library's reading keeps of values
    Exact,       // so that the format and this library read what they read in the source
    ExactTrailer // the same without a bracket pair in strings, which the way back over the trailer would count
};

// Where a text goes that takes the data of streams as bytes.
class ByteOutlet {
public:
    // Sends what there is of the text, which is empty afterwards. False when it can't be written.
    virtual bool send(MemOutStrm& text) noexcept = 0;
    virtual bool send(const std::uint8_t* bytes, std::uint64_t count) noexcept = 0;

protected:
    ~ByteOutlet() noexcept = default;
};

// Turns values into the characters that stand for them in a file, appended to a text. A failure is
// false with a line and a code at each level, the outermost composite value deciding the code; what
// was appended up to then is of no use.
class ValueWriter {
public:
    // All must outlive the writer. `document` gives the data of streams. If there is an outlet, data that can be
    // had as bytes goes there, with the text before it; a failure of the outlet is false without a line. A value with a
    // kept source is written as that.
    ValueWriter(Document& document, const ::String& lineEnding, Dialect dialect, MemOutStrm& out,
        ByteOutlet* outlet = nullptr, const KeptSources* sources = nullptr) noexcept
        : _document(document), _lineEnding(lineEnding), _dialect(dialect), _out(out), _outlet(outlet),
          _sources(sources && !sources->isEmpty() ? sources : nullptr)
    {
    }

    bool writeValue(const Ref<Value>& value) noexcept;

private:
    template <class Kind, class Writer>
    bool writeAs(const Ref<Value>& value, const char* castFailure, Writer writer) noexcept;
    void writeNumber(const Number& number) noexcept;
    void writeReference(const ObjectRef& reference) noexcept;
    bool writeString(const String& string) noexcept;
    bool writeRemembered(const String& string) noexcept;
    void writeStringSource(const TConstArray<std::uint8_t>& source) noexcept;
    bool writeLiteral(const ::String& text) noexcept;
    bool writeOctal(unsigned int c) noexcept;
    bool isOctal(unsigned int c) const noexcept;
    bool isOctalBracket(unsigned int c) const noexcept;
    void writeHexadecimal(const TConstArray<std::uint8_t>& bytes, bool hasOddDigit) noexcept;
    void appendBytes(const TConstArray<std::uint8_t>& bytes) noexcept;
    bool writeSource(const Ref<Value>& value) noexcept;
    bool writeArray(const Array& array) noexcept;
    bool writeDictionary(Dictionary& dictionary) noexcept;
    bool writeEntries(const DictionaryObj& dictionary) noexcept;
    bool lookUpEntries(const Dictionary& dictionary) noexcept;
    bool writeEntry(const Ref<::String>& key, const Ref<Value>& value) noexcept;
    bool writeStream(Stream& stream) noexcept;
    bool writeStreamData(Interfaces::Stripe& data) noexcept;
    void endStreamKeyword() noexcept;
    bool writeElements(Interfaces::Stripe& data, std::uint64_t count) noexcept;
    bool sendBytes(Interfaces::ByteReading& data, std::uint64_t count) noexcept;

    Document& _document;
    const ::String& _lineEnding;
    const Dialect _dialect;
    MemOutStrm& _out;
    ByteOutlet* const _outlet;
    const KeptSources* const _sources; // null when there are none
};

} // namespace Libraries::Files::PDF
