#include <host/exchange/Fdf.h>

#include <host/base/Utf8.h>
#include <host/exchange/FdfText.h>
#include <host/exchange/NestedNames.h>
#include <host/exchange/ValueCollection.h>
#include <host/fields/TextString.h>
#include <host/losses/FormatReader.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <unordered_set>

namespace Host {

namespace {

constexpr char hexDigits[] = "0123456789ABCDEF";

bool isAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 128; });
}

// ---- Reading

class FdfReader {
public:
    FdfReader(const FdfText& text, std::size_t size)
        : _text(text), _bytesLeft(Limits::maxValueTexts(size)), _values(size)
    {
    }

    Result<FieldValues> read()
    {
        const std::uint32_t trailer = _text.trailer();
        if (_text.find(trailer, "Encrypt"))
            return Refusal{Reason::Unsupported, "the file is encrypted"};
        const std::uint32_t fdf = _text.find(_text.find(trailer, "Root"), "FDF");
        if (_text.at(fdf) != "<<")
            return Refusal{Reason::BrokenRule, "not an FDF file: no FDF dictionary is in its catalog"};
        if (const std::uint32_t encoding = _text.find(fdf, "Encoding"))
            _encoding = nameOf(scalarAt(encoding));
        pushAll(_text.find(fdf, "Fields"), std::make_shared<const std::string>(), 1);
        while (!_open.empty()) {
            const Place place = std::move(_open.back());
            _open.pop_back();
            if (auto refusal = readField(place))
                return *refusal;
            if (isSpent())
                return ValueCollection::tooLarge();
        }
        return _values.take();
    }

private:
    // A field that is still to be read.
    struct Place {
        std::uint32_t dictionary;
        std::shared_ptr<const std::string> above; // the path of the field above
        std::size_t level;
    };

    void pushAll(std::uint32_t array, const std::shared_ptr<const std::string>& above, std::size_t level)
    {
        for (const std::uint32_t element : _text.elements(array))
            _open.push_back({element, above, level});
    }

    std::optional<Refusal> readField(const Place& place)
    {
        const auto refuse = [&](Reason reason, const std::string& what) {
            const std::string above = place.above->empty() ? "" : " below " + *place.above;
            return Refusal{reason, "a field" + above + " " + what};
        };
        if (_text.at(place.dictionary) != "<<")
            return refuse(Reason::BrokenRule, "is no dictionary");
        if (!_visited.insert(place.dictionary).second)
            return refuse(Reason::BrokenRule, "is listed twice, or within itself");
        if (place.level > Limits::maxFieldLevels)
            return refuse(Reason::LimitReached, "is too many levels deep");
        const FormatValue name = scalarAt(_text.find(place.dictionary, "T"));
        const bool isNamed = name.kind == FormatValue::Kind::String;
        const auto path = ValueCollection::pathBelow(*place.above, isNamed ? textOfBytes(name.text) : "");
        if (!path)
            return path.refusal();
        pushAll(_text.find(place.dictionary, "Kids"), std::make_shared<const std::string>(*path), place.level + 1);
        const std::uint32_t value = _text.find(place.dictionary, "V");
        if (value == FdfText::none || _text.at(value) == "/") // some programs write so that a button has no state
            return {};
        if (path->empty())
            return refuse(Reason::BrokenRule, "has a value and no name");
        auto read = readValue(value);
        return read ? _values.add(*path, std::move(*read)) : read.refusal().withPrefix(*path + ": ");
    }

    Result<FieldValue> readValue(std::uint32_t value)
    {
        if (_text.at(value) != "[")
            return readText(value);
        FieldTexts texts;
        for (const std::uint32_t element : _text.elements(value)) {
            auto text = readText(element);
            if (!text)
                return text.refusal();
            texts.push_back(std::move(std::get<std::string>(*text)));
        }
        return FieldValue(std::move(texts));
    }

    Result<FieldValue> readText(std::uint32_t value)
    {
        const FormatValue scalar = scalarAt(value);
        switch (scalar.kind) {
        case FormatValue::Kind::Name:
            return FieldValue(nameOf(scalar));
        case FormatValue::Kind::Number:
            return FieldValue(std::string(_text.at(value)));
        case FormatValue::Kind::String:
            if (auto text = textOfValue(scalar.text))
                return FieldValue(std::move(*text));
            return Refusal{
                Reason::Unsupported, "the text is not in the encoding " + _encoding + ", or that isn't known"};
        default:
            return isSpent() ? ValueCollection::tooLarge()
                             : Refusal{Reason::Unsupported, "the value is no text, name, number or list of them"};
        }
    }

    // Nothing of an array or a dictionary, and when so much was read that the file must repeat it.
    FormatValue scalarAt(std::uint32_t index)
    {
        const std::string_view token = _text.at(index);
        _bytesLeft -= std::min(_bytesLeft, token.size() + 1);
        if (token == "[" || token == "<<" || isSpent())
            return {};
        SourceText source{std::string(token)};
        return FormatReader(source, 0).readValue();
    }

    bool isSpent() const { return _bytesLeft == 0; }

    static std::string nameOf(const FormatValue& name)
    {
        std::u32string characters;
        for (const char c : name.text)
            characters += static_cast<unsigned char>(c);
        return textOfName(*::String::create(characters));
    }

    // None when it is in an encoding that isn't known.
    std::optional<std::string> textOfValue(const std::string& bytes) const
    {
        const bool hasMark = bytes.starts_with("\xFE\xFF") || bytes.starts_with("\xFF\xFE");
        if (_encoding.empty() || hasMark || isAscii(bytes))
            return textOfBytes(bytes);
        const bool isUtf8 = _encoding == "utf-8" || _encoding == "utf_8" || _encoding == "UTF-8";
        return isUtf8 && fromUtf8(bytes) ? std::optional(bytes) : std::nullopt;
    }

    const FdfText& _text;
    std::size_t _bytesLeft; // of names and values that may be read, the same ones again included
    std::string _encoding; // of strings without a mark; empty for the document encoding
    std::vector<Place> _open;
    std::unordered_set<std::uint32_t> _visited;
    ValueCollection _values;
};

// ---- Writing

std::string literal(std::string_view text)
{
    std::string out = "(";
    for (const char c : text)
        if (c == '(' || c == ')' || c == '\\')
            out.append({'\\', c});
        else if (c == '\r' || c == '\n')
            out.append(c == '\r' ? "\\r" : "\\n");
        else
            out += c;
    return out + ')';
}

// Two bytes for each unit, with their mark.
std::string hexadecimal(std::string_view text)
{
    std::string out = "<FEFF";
    const auto add = [&out](std::uint32_t unit) {
        for (int shift = 12; shift >= 0; shift -= 4)
            out += hexDigits[unit >> shift & 15];
    };
    if (const Ref<::String> characters = fromUtf8(text))
        characters->forEach([&](char32_t c) {
            if (c > 0xFFFF)
                add(0xD800 + ((c - 0x10000) >> 10));
            add(c > 0xFFFF ? 0xDC00 + (c & 0x3FF) : c);
        });
    return out + '>';
}

std::string stringFor(std::string_view text)
{
    const bool isPlain = std::all_of(text.begin(), text.end(),
        [](char c) { return (c >= ' ' && c <= '~') || c == '\t' || c == '\r' || c == '\n'; });
    return isPlain ? literal(text) : hexadecimal(text);
}

std::string nameFor(std::string_view text)
{
    std::string out = "/";
    for (const char c : text)
        if (c > ' ' && c <= '~' && std::string_view("#/()<>[]{}%").find(c) == std::string_view::npos)
            out += c;
        else
            out.append({'#', hexDigits[static_cast<unsigned char>(c) >> 4], hexDigits[c & 15]});
    return out;
}

std::string valueFor(const FormField& field)
{
    const bool isButton = field.kind == FieldKind::CheckBox || field.kind == FieldKind::RadioButtons;
    const FieldTexts& texts = *field.value;
    if (texts.size() == 1)
        return isButton ? nameFor(texts[0]) : stringFor(texts[0]);
    std::string out = "[";
    for (const std::string& text : texts)
        out += " " + stringFor(text);
    return out + " ]";
}

} // namespace

Result<FieldValues> readFdf(std::string_view file) noexcept
{
    const Result<FdfText> text = FdfText::read(file);
    return text ? FdfReader(*text, file.size()).read() : text.refusal();
}

std::string writeFdf(const FormFields& form) noexcept
{
    std::string out = "%FDF-1.2\n1 0 obj\n<< /FDF << /Fields [\n";
    writeNested(fieldsWithValues(form),
        [&](std::string_view name) { out += "<< /T " + stringFor(name) + " /Kids [\n"; },
        [&](std::string_view name, const FormField& field) {
            out += "<< /T " + stringFor(name) + (field.value ? " /V " + valueFor(field) : "") + " >>\n";
        },
        [&] { out += "] >>\n"; });
    return out + "] >> >>\nendobj\ntrailer\n<< /Root 1 0 R >>\n%%EOF\n";
}

} // namespace Host
