#include <host/losses/FileExamination.h>

#include <document/Inspection.h>
#include <document/Syntax.h>
#include <platform/Limits.h>
#include <values/Object.h>

#include <algorithm>

namespace Host {

using namespace Libraries::Files::PDF;

namespace {

// As in the text of a reference.
std::string numberOf(std::uint64_t id, std::uint64_t generation)
{
    return std::to_string(id) + " " + std::to_string(generation);
}

// Whether a comment is the line of bytes above 127 by which programs tell a file from text; each new file has one.
bool isBinaryMark(std::string_view comment)
{
    constexpr std::size_t size = 5;
    return comment.size() == size
        && std::all_of(comment.begin() + 1, comment.end(), [](char c) { return static_cast<unsigned char>(c) > 127; });
}

} // namespace

FileExamination::FileExamination(Ref<Document> document, Ref<FileStripe> file) noexcept
    : _document(std::move(document)), _text(file), _headers(std::move(file)), _chain(_text),
      _bytesReadByChain(_text.bytesRead())
{
    for (const auto& object : objectsOf(_document))
        _numbers.insert(numberOf(object->id(), object->generation()));
}

void FileExamination::setObject(const PDF::Object& object) noexcept
{
    _template.id = object.id();
    _template.generation = object.generation();
}

void FileExamination::add(
    LossKind kind, std::uint64_t offset, std::string inFile, std::string written) noexcept
{
    _losses.add({kind, _template.id, _template.generation, offset, std::move(inFile), std::move(written)});
}

void FileExamination::addComments(const std::vector<FormatReader::Range>& comments) noexcept
{
    for (const auto& [begin, end] : comments)
        if (begin != 0 && !_text.isAt(begin, Syntax::endMarker)
            && !isBinaryMark(_text.slice(begin, end, Limits::maxLossText)))
            add(LossKind::Comment, begin, _text.slice(begin, end, Limits::maxLossText));
}

void FileExamination::addLostReferences(const FormatValue& value) noexcept
{
    if (value.kind == FormatValue::Kind::Reference && isLost(value.text))
        add(LossKind::LostReference, value.begin, value.text + " R", value.text + " R");
    for (const FormatValue& part : value.parts)
        addLostReferences(part);
}

bool FileExamination::isInFile(std::uint32_t id, const TableChain::Row& row) noexcept
{
    const auto [known, isNew] = _areInFile.emplace(id, false);
    if (!isNew || isTooMuch(_headers.bytesRead()))
        return known->second;
    _headers.moveTo(row.offset);
    FormatReader reader(_headers, row.offset);
    std::uint64_t foundId = 0;
    std::uint64_t generation = 0;
    known->second = reader.readCount(foundId) && foundId == id && reader.readCount(generation)
        && generation == row.generation && reader.skipKeyword("obj");
    return known->second;
}

bool FileExamination::isLost(const std::string& reference) noexcept
{
    if (_numbers.count(reference) != 0)
        return false;
    const auto row = _chain.rows().find(static_cast<std::uint32_t>(std::stoull(reference)));
    if (row == _chain.rows().end())
        return !_chain.isWhole();
    return row->second.inUse && reference == numberOf(row->first, row->second.generation)
        && isInFile(row->first, row->second);
}

bool FileExamination::hasObject(std::uint64_t id, std::uint64_t generation) const noexcept
{
    return _numbers.count(numberOf(id, generation)) != 0;
}

bool FileExamination::isEndless() const noexcept
{
    return isTooMuch(_text.bytesRead() - _bytesReadByChain) || isTooMuch(_headers.bytesRead());
}

bool FileExamination::isTooMuch(std::uint64_t bytesRead) const noexcept
{
    return Limits::isReadTooOften(bytesRead, _text.size() + Limits::readingAllowance);
}

} // namespace Host
