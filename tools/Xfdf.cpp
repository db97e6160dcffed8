#include <tools/Xfdf.h>

#include <host/base/Utf8.h>
#include <host/exchange/NestedNames.h>
#include <host/exchange/ValueCollection.h>

#ifdef FILES_PDF_XFDF
#include <pugixml.hpp>
#endif

#include <charconv>
#include <cstdio>

namespace Tools {

namespace {

using Host::Reason;
using Host::Refusal;

// Whether XML takes it, as itself or by its number.
bool isXml(char32_t c)
{
    return c >= 32 ? c != 0xFFFE && c != 0xFFFF : c == '\t' || c == '\n' || c == '\r';
}

// ---- Writing

// As a text or within double quotes. Readers make line ends of attributes blanks, and of CR in texts line feeds, unless
// they are written as numbers.
std::string escaped(std::string_view text)
{
    std::string out;
    for (const char c : text)
        switch (c) {
        case '&': out += "&amp;"; break;
        case '<': out += "&lt;"; break;
        case '>': out += "&gt;"; break;
        case '"': out += "&quot;"; break;
        case '\t': out += "&#9;"; break;
        case '\n': out += "&#10;"; break;
        case '\r': out += "&#13;"; break;
        default: out += c;
        }
    return out;
}

// Why a text can't be in XML; empty when it can.
std::string faultOf(std::string_view text)
{
    std::string fault;
    const Ref<::String> characters = Host::fromUtf8(text);
    characters->forEach([&fault](char32_t c) {
        char name[64];
        std::snprintf(name, sizeof name, "XML doesn't take the character U+%04X", unsigned(c));
        if (!isXml(c))
            fault = name;
    });
    return fault;
}

std::string elementFor(std::string_view name, const Host::FormField& field)
{
    std::string out = "<field name=\"" + escaped(name) + "\"";
    if (!field.value)
        return out + "/>\n";
    out += ">";
    for (const std::string& text : *field.value)
        out += "<value>" + escaped(text) + "</value>";
    return out + (field.value->empty() ? "<value/>" : "") + "</field>\n";
}

} // namespace

Host::Result<std::string> writeXfdf(const Host::FormFields& form)
{
    const auto fields = Host::fieldsWithValues(form);
    for (const Host::FormField* field : fields) {
        std::string fault = faultOf(field->path);
        for (const std::string& text : field->value.value_or(Host::FieldTexts()))
            fault = fault.empty() ? faultOf(text) : fault;
        if (!fault.empty())
            return Refusal{Reason::Unwritable, field->path + ": " + fault};
    }
    std::string out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                      "<xfdf xmlns=\"http://ns.adobe.com/xfdf/\" xml:space=\"preserve\">\n<fields>\n";
    Host::writeNested(
        fields, [&](std::string_view name) { out += "<field name=\"" + escaped(name) + "\">\n"; },
        [&](std::string_view name, const Host::FormField& field) { out += elementFor(name, field); },
        [&] { out += "</field>\n"; });
    return out + "</fields>\n</xfdf>\n";
}

// ---- Reading

#ifdef FILES_PDF_XFDF

namespace {

// What "&" and what follows it mean. Takes them off the front of `text`; nothing when it is no reference that XML has
// itself.
std::string takeReference(std::string_view& text)
{
    constexpr std::pair<std::string_view, const char*> own[] = {
        {"&amp;", "&"}, {"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&apos;", "'"}};
    for (const auto& [name, meaning] : own)
        if (text.starts_with(name)) {
            text.remove_prefix(name.size());
            return meaning;
        }
    if (!text.starts_with("&#"))
        return {};
    const bool isHexadecimal = text.starts_with("&#x");
    const char* const begin = text.data() + (isHexadecimal ? 3 : 2);
    const char* const end = text.data() + text.size();
    std::uint32_t number = 0;
    const auto [stop, error] = std::from_chars(begin, end, number, isHexadecimal ? 16 : 10);
    const bool isCharacter = number <= 0x10FFFF && (number < 0xD800 || number > 0xDFFF) && isXml(number);
    if (error != std::errc() || stop == end || *stop != ';' || !isCharacter)
        return {};
    text.remove_prefix(std::size_t(stop + 1 - text.data()));
    return Host::toUtf8(std::u32string(1, number));
}

// A text with its references; a refusal for others, which would need a document type, and for what is not UTF-8.
Host::Result<std::string> plainText(std::string_view text)
{
    if (!Host::fromUtf8(text))
        return Refusal{Reason::BrokenRule, "a text is not in the encoding of the file"};
    std::string out;
    for (std::size_t sign = text.find('&'); sign != text.npos; sign = text.find('&')) {
        out += text.substr(0, sign);
        text.remove_prefix(sign);
        const std::string meaning = takeReference(text);
        if (meaning.empty())
            return Refusal{
                Reason::BrokenRule, "an entity that XML doesn't have: " + std::string(Host::beginningOf(text, 20))};
        out += meaning;
    }
    return out.append(text);
}

class XfdfReader {
public:
    explicit XfdfReader(std::size_t size) : _values(size) {}

    // All fields that are children of an element.
    std::optional<Refusal> readFields(const pugi::xml_node& parent, const std::string& above, std::size_t level)
    {
        if (level > Limits::maxFieldLevels)
            return Refusal{Reason::LimitReached, "fields are nested too deep"};
        for (const pugi::xml_node& field : parent.children("field")) {
            const auto name = plainText(field.attribute("name").value());
            if (!name)
                return name.refusal();
            const auto path = Host::ValueCollection::pathBelow(above, *name);
            if (!path)
                return path.refusal();
            if (auto refusal = readValues(field, *path))
                return refusal->withPrefix(*path + ": ");
            if (auto refusal = readFields(field, *path, level + 1))
                return refusal;
        }
        return {};
    }
    Host::FieldValues take() { return _values.take(); }

private:
    std::optional<Refusal> readValues(const pugi::xml_node& field, const std::string& path)
    {
        Host::FieldTexts texts;
        for (const pugi::xml_node& value : field.children("value")) {
            texts.emplace_back();
            for (const pugi::xml_node& part : value.children()) {
                const bool isRaw = part.type() == pugi::node_cdata;
                const auto text = isRaw ? Host::Result<std::string>(part.value()) : plainText(part.value());
                if (!text)
                    return text.refusal();
                texts.back() += *text;
            }
            if (!Host::fromUtf8(texts.back()))
                return Refusal{Reason::BrokenRule, "the text is not in the encoding of the file"};
        }
        if (texts.empty())
            return {};
        if (path.empty())
            return Refusal{Reason::BrokenRule, "a field has a value and no name"};
        return _values.add(path, texts.size() == 1 ? Host::FieldValue(texts[0]) : Host::FieldValue(texts));
    }

    Host::ValueCollection _values;
};

// Whether a file in the encoding that it declares is read as it means it. Others would be taken for UTF-8.
bool isKnown(std::string encoding)
{
    for (char& c : encoding)
        c = static_cast<char>(c >= 'A' && c <= 'Z' ? c + ('a' - 'A') : c);
    return encoding.empty() || encoding.starts_with("utf-") || encoding == "utf8" || encoding == "us-ascii"
        || encoding == "iso-8859-1" || encoding == "latin1";
}

} // namespace

Host::Result<Host::FieldValues> readXfdf(std::string_view file)
{
    pugi::xml_document document;
    constexpr unsigned options = pugi::parse_cdata | pugi::parse_eol | pugi::parse_ws_pcdata
        | pugi::parse_wconv_attribute | pugi::parse_declaration | pugi::parse_doctype;
    const auto parsed = document.load_buffer(file.data(), file.size(), options);
    if (!parsed)
        return Refusal{Reason::BrokenRule,
            "byte " + std::to_string(parsed.offset) + ": " + parsed.description()};
    for (const pugi::xml_node& node : document.children()) {
        if (node.type() == pugi::node_doctype)
            return Refusal{Reason::Unsupported, "the file has a document type"};
        const std::string encoding = node.type() == pugi::node_declaration ? node.attribute("encoding").value() : "";
        if (!isKnown(encoding))
            return Refusal{Reason::Unsupported, "the file is in an encoding that isn't known"
                    + (Host::fromUtf8(encoding) ? ": " + encoding : "")};
    }
    const pugi::xml_node root = document.child("xfdf");
    if (!root)
        return Refusal{Reason::BrokenRule, "not an XFDF file: it has no xfdf element"};
    XfdfReader reader(file.size());
    for (const pugi::xml_node& fields : root.children("fields"))
        if (auto refusal = reader.readFields(fields, "", 1))
            return *refusal;
    return reader.take();
}

#else

Host::Result<Host::FieldValues> readXfdf(std::string_view)
{
    return Refusal{Reason::Unsupported, "XFDF can't be read: this program was built without pugixml"};
}

#endif

} // namespace Tools
