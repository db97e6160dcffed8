#include <import/ClassicFile.h>

#include <host/base/Lexer.h>
#include <import/Limits.h>
#include <import/Stop.h>
#include <import/StreamEntries.h>

#include <algorithm>

namespace Import {

namespace {

constexpr int highestGeneration = 65535;
constexpr std::uint64_t highestOffset = 9'999'999'999; // that has a place in a row
constexpr std::size_t rowLength = 20;                  // bytes
constexpr std::size_t widestLength = 20;               // digits

bool isType(QPDFObjectHandle value, const char* type)
{
    return value.getDict().isDictionaryOfType(type);
}

bool isContainer(QPDFObjectHandle value)
{
    return value.isStream() && (isType(value, "/ObjStm") || isType(value, "/XRef"));
}

// The nearest version that the core has.
std::string knownVersion(const std::string& version)
{
    const std::size_t point = std::min(version.find('.'), version.size());
    const std::string major = version.substr(0, point);
    const std::string minor = point < version.size() ? version.substr(point + 1) : "";
    if (major == "0")
        return "1.0";
    if (major == "1")
        return minor.size() == 1 && minor < "8" ? version : "1.7";
    return "2.0";
}

// Puts a number where zeros are.
void writeDigits(std::string& text, std::size_t start, std::size_t count, std::uint64_t number)
{
    for (std::size_t place = start + count; place > start; number /= 10)
        text[--place] = static_cast<char>('0' + number % 10);
}

// Passes data on to the image, and counts it.
class ImageData final : public Pipeline {
public:
    explicit ImageData(Image& image) : Pipeline("image", nullptr), _image(image) {}

    // Pipeline
    void write(const unsigned char* data, std::size_t length) override
    {
        _image.add({reinterpret_cast<const char*>(data), length});
        _length += length;
    }
    void finish() override {}

    std::uint64_t length() const noexcept { return _length; }

private:
    Image& _image;
    std::uint64_t _length = 0;
};

// Whether so many bytes may come of so many encrypted ones: as many by a stream cipher, by others less a first block
// and what fills the last one. libqpdf fills a last block that isn't whole with zeros.
bool isWhole(std::uint64_t encrypted, std::uint64_t decrypted)
{
    constexpr std::uint64_t block = 16;
    if (decrypted == encrypted || encrypted == block)
        return true;
    return encrypted % block == 0 && encrypted >= decrypted + block && encrypted <= decrypted + 2 * block;
}

} // namespace

ClassicFile::ClassicFile(QPDF& document, Objects objects, Source& source, Image& image, Report& report,
    std::vector<std::string>& faults)
    : _document(document), _objects(objects), _source(source), _image(image), _report(report), _faults(faults),
      _values(image.text(), *this, report), _isEncrypted(document.isEncrypted()),
      _encryption(document.getTrailer().getKey("/Encrypt").getObjGen())
{
}

void ClassicFile::write(
    const ObjectTable& table, const Replacements& replacements, const std::function<void()>& whenRead)
{
    writeHeader();
    readTable(table);
    for (int id = 1; id < static_cast<int>(_rows.size()); ++id) {
        const Row& row = _rows[static_cast<std::size_t>(id)];
        if (row.state == Row::Free)
            continue;
        QPDFObjectHandle value = objectOf(id, replacements, whenRead);
        if (replacements.count(QPDFObjGen(id, row.generation)) != 0)
            note(_report.replaced, {nullptr, static_cast<std::size_t>(id)});
        writeObject(id, value);
        if (_objects == Objects::LetGo)
            letGo(id, value);
    }
    for (std::size_t i = 0; i < _wanted.size(); ++i)
        writeObject(_wanted[i], objectOf(_wanted[i], replacements, whenRead));
    const std::uint64_t tableOffset = _image.size();
    writeTable();
    writeTrailer(tableOffset);
}

void ClassicFile::writeHeader()
{
    const std::string version = _document.getPDFVersion();
    const std::string known = knownVersion(version);
    if (known != version)
        _report.unknownVersion = version;
    _image.add("%PDF-" + known + '\n');
}

// Of two generations of an id the higher one is newer.
void ClassicFile::readTable(const ObjectTable& table)
{
    const std::uint64_t count = table.entries().size();
    const auto highest = static_cast<std::uint64_t>(count == 0 ? 0 : std::max(table.entries().back().id, 0));
    if (highest > count
        && (highest - count) * rowLength > std::max(Limits::maxGaps * _source.size(), Limits::gapAllowance))
        stop(Reason::LimitReached, "its ids go up to " + std::to_string(highest) + ", with few objects");
    _rows.resize(highest + 1);
    for (const ObjectTable::Entry& entry : table.entries()) {
        const bool isNowhere = !entry.isInStream && entry.place == 0; // which libqpdf takes for null
        if (entry.id <= 0 || isNowhere)
            continue;
        if (entry.generation < 0 || entry.generation > highestGeneration)
            stop(Reason::BrokenRule, "object " + std::to_string(entry.id) + " has an impossible generation");
        Row& row = _rows[static_cast<std::size_t>(entry.id)];
        row.generation = static_cast<std::uint16_t>(entry.generation);
        row.state = Row::Kept;
    }
}

// Whether it held other objects or the table, or is the dictionary of the encryption. The image has no use for them.
bool ClassicFile::isSetAside(QPDFObjectHandle value) const
{
    return value.getObjGen() == _encryption || isContainer(value);
}

// The object, or that which it refers to, however many others are between them; null where that leads nowhere.
QPDFObjectHandle ClassicFile::objectOf(
    int id, const Replacements& replacements, const std::function<void()>& whenRead)
{
    QPDFObjGen object(id, _rows[static_cast<std::size_t>(id)].generation);
    std::vector<QPDFObjGen> passed;
    for (;;) {
        _document.getObject(object).isNull(); // reads it: only then it is known whether it is a reference
        whenRead();
        const auto next = replacements.find(object);
        if (next == replacements.end())
            break;
        const auto [end, isNew] = _ends.try_emplace(object); // nowhere, for those that lead back to it
        if (!isNew) {
            object = end->second;
            break;
        }
        passed.push_back(object);
        object = next->second;
    }
    for (const QPDFObjGen& reference : passed)
        _ends[reference] = object;
    if (isGone(object))
        throw ObjectIsGone();
    return object.getObj() > 0 ? _document.getObject(object) : QPDFObjectHandle::newNull();
}

bool ClassicFile::isGone(QPDFObjGen object) const
{
    const auto id = static_cast<std::size_t>(std::max(object.getObj(), 0));
    return id < _rows.size() && _rows[id].isGone && _rows[id].generation == object.getGen();
}

// Throws when something was let go of that says how the data of a stream is stored: a value, or the elements of an
// array. What is deeper nobody looks at, but for names, which stay.
void ClassicFile::requireAll(QPDFObjectHandle value) const
{
    const auto require = [this](QPDFObjectHandle needed) {
        if (isGone(needed.getObjGen()))
            throw ObjectIsGone();
    };
    require(value);
    if (isFilterArray(value))
        for (const QPDFObjectHandle& element : value.getArrayAsVector())
            require(element);
}

// Numbers and names stay: they are lengths and filters of streams.
void ClassicFile::letGo(int id, QPDFObjectHandle value)
{
    Row& row = _rows[static_cast<std::size_t>(id)];
    const QPDFObjGen own(id, row.generation);
    const bool isLarge = value.isArray() || value.isDictionary() || value.isStream();
    if (value.getObjGen() != own || !isLarge || isSetAside(value))
        return;
    _document.replaceObject(own, QPDFObjectHandle::newNull());
    row.isGone = true;
}

bool ClassicFile::isFollowed(QPDFObjGen object)
{
    if (object.getObj() <= 0 || object.getGen() < 0 || object.getGen() > highestGeneration)
        return false;
    const auto id = static_cast<std::size_t>(object.getObj());
    if (id >= _rows.size() || _rows[id].state == Row::Free || _rows[id].generation != object.getGen())
        return true;
    if (_rows[id].state == Row::SetAside)
        _wanted.push_back(object.getObj());
    _rows[id].state = Row::Referenced;
    return true;
}

void ClassicFile::writeObject(int id, QPDFObjectHandle value)
{
    Row& row = _rows[static_cast<std::size_t>(id)];
    const Step step{nullptr, static_cast<std::size_t>(id)};
    if (row.state == Row::Kept && isSetAside(value)) {
        row.state = Row::SetAside;
        return;
    }
    if (value.isNull() || (value.isName() && _values.isEmptyName(value.getName(), step))) {
        row.state = Row::Free;
        return;
    }
    row.offset = _image.size();
    _image.text() += std::to_string(id) + ' ' + std::to_string(row.generation) + " obj\n";
    if (value.isStream())
        writeStream(value, step);
    else
        _values.addDirect(value, step, Place::Object);
    _image.add("\nendobj\n");
}

void ClassicFile::writeStream(QPDFObjectHandle stream, const Step& step)
{
    ValueText::Entries entries = stream.getDict().getDictAsMap();
    const auto found = entries.find("/Length");
    const bool hasLength = found != entries.end() && found->second.isInteger();
    const auto length = static_cast<std::uint64_t>(hasLength ? std::max(found->second.getIntValue(), 0LL) : 0);
    entries.erase("/Length");
    for (const char* key : {"/Filter", "/DecodeParms"})
        if (const auto entry = entries.find(key); entry != entries.end() && _objects == Objects::LetGo)
            requireAll(entry->second);
    simplifyFilters(entries);
    std::string& text = _image.text();
    text += "<< /Length ";
    const std::uint64_t lengthOffset = _image.textSize();
    text += std::to_string(length);
    const bool isStored = !_isEncrypted && hasLength && isStoredAt(stream.getParsedOffset(), length);
    if (!isStored)
        text.append(widestLength - (_image.textSize() - lengthOffset), ' ');
    _values.addEntries(entries, step, Place::Object);
    _image.add(" >>\nstream\n");
    if (isStored)
        _image.addOriginal(_source.start() + static_cast<std::uint64_t>(stream.getParsedOffset()), length);
    else
        writeData(stream, length, lengthOffset, step);
    _image.add("\nendstream");
}

// Whether the data of a stream, as it is stored, is at this place in the file, with the keywords around it.
bool ClassicFile::isStoredAt(qpdf_offset_t offset, std::uint64_t length)
{
    constexpr std::string_view before = "stream";
    constexpr std::string_view after = "endstream";
    constexpr std::string_view blanks{" \t\r\n\f\0", 6};
    constexpr std::uint64_t room = 32; // bytes on either side
    const auto start = static_cast<std::uint64_t>(std::max<qpdf_offset_t>(offset, 0));
    if (start < room || length > _source.size() || start + length > _source.size())
        return false;
    const std::string head = _source.readText(start - room, room);
    const std::string tail = _source.readText(start + length, room);
    Host::Lexer following(tail);
    const std::size_t headEnd = head.find_last_not_of(blanks) + 1;
    return std::string_view(head).substr(0, headEnd).ends_with(before) && following.token() == after
        && (!following.isAtEnd() || tail.size() < room);
}

// `length` is what the dictionary says, and was written at `lengthOffset` with blanks after it.
void ClassicFile::writeData(QPDFObjectHandle stream, std::uint64_t length, std::uint64_t lengthOffset, const Step& step)
{
    ImageData data(_image);
    const std::string name = "object " + std::to_string(step.number);
    if (!stream.pipeStreamData(&data, nullptr, 0, qpdf_dl_none))
        _faults.push_back("the data of " + name + " can't be read");
    else if (_isEncrypted && !isWhole(length, data.length()))
        _faults.push_back("the encrypted data of " + name + " isn't whole");
    std::string digits = std::to_string(data.length());
    digits.resize(widestLength, ' ');
    _image.replaceText(lengthOffset, digits);
}

void ClassicFile::writeTable()
{
    if (_image.size() > highestOffset)
        stop(Reason::LimitReached, "what is in it takes more bytes than a table can tell");
    _image.add("xref\n0 " + std::to_string(_rows.size()) + '\n');
    for (const Row& row : _rows) {
        const bool isInUse = row.state == Row::Kept || row.state == Row::Referenced;
        std::string text = "0000000000 00000 f \n";
        writeDigits(text, 0, 10, isInUse ? row.offset : 0);
        writeDigits(text, 11, 5, isInUse ? row.generation : highestGeneration);
        text[17] = isInUse ? 'n' : 'f';
        _image.add(text);
    }
}

void ClassicFile::writeTrailer(std::uint64_t table)
{
    QPDFObjectHandle trailer = _document.getTrailer();
    ValueText::Entries entries = trailer.getDictAsMap();
    for (const char* key : {"/Prev", "/XRefStm", "/Encrypt", "/Size"})
        entries.erase(key);
    if (trailer.isDictionaryOfType("/XRef"))
        for (const char* key : {"/Type", "/W", "/Index", "/Length", "/Filter", "/DecodeParms", "/DL"})
            entries.erase(key);
    _image.text() += "trailer\n<< /Size " + std::to_string(_rows.size());
    _values.addEntries(entries, {}, Place::Trailer);
    _image.add(" >>\nstartxref\n" + std::to_string(table) + "\n%%EOF\n");
}

} // namespace Import
