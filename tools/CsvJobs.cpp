#include <tools/CsvJobs.h>

#include <host/base/ErrorWords.h>
#include <host/base/Utf8.h>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace Tools {

namespace {

using Host::Reason;
using Host::Refusal;

// Why a cell can't be part of the name of a file; null when it can.
const char* faultOf(std::string_view cell)
{
    constexpr std::size_t maxLength = 200;
    const auto isControl = [](char c) { return (c >= 0 && c < 32) || c == 127; };
    if (cell.empty())
        return "is empty";
    if (cell.size() > maxLength)
        return "is too long";
    if (cell.front() == '.')
        return "begins with a point";
    if (cell.find('/') != cell.npos)
        return "has a solidus";
    return std::any_of(cell.begin(), cell.end(), isControl) ? "has a control character" : nullptr;
}

// What is there of a file, without waiting for more: a row may be all that a pipe has so far.
CsvReader::Source sourceOf(int file, std::shared_ptr<bool> isBroken)
{
    return [file, isBroken = std::move(isBroken)](char* buffer, std::size_t size) {
        ssize_t count = 0;
        do
            count = ::read(file, buffer, size);
        while (count < 0 && errno == EINTR);
        *isBroken = *isBroken || count < 0;
        return std::size_t(std::max<ssize_t>(count, 0));
    };
}

} // namespace

Host::Result<NamePattern> NamePattern::create(std::string_view text, const std::vector<std::string>& names)
{
    NamePattern pattern;
    const Refusal unpaired{Reason::WrongArgument, "a bracket without its partner; \"{{\" is one that is meant"};
    for (std::size_t place = text.find_first_of("{}"); place != text.npos; place = text.find_first_of("{}")) {
        pattern._end += text.substr(0, place);
        text.remove_prefix(place);
        if (text.starts_with("{{") || text.starts_with("}}")) {
            pattern._end += text[0];
            text.remove_prefix(2);
            continue;
        }
        const std::size_t close = text.find('}');
        if (text[0] == '}' || close == text.npos)
            return unpaired;
        const std::string_view name = text.substr(1, close - 1);
        const auto found = std::find(names.begin(), names.end(), name);
        if (found == names.end() && name != "number")
            return Refusal{Reason::WrongArgument, "the rows have no name " + std::string(name)};
        const std::size_t column = found == names.end() ? number : std::size_t(found - names.begin());
        pattern._pieces.push_back({std::exchange(pattern._end, ""), column});
        text.remove_prefix(close + 1);
    }
    pattern._end += text;
    return pattern;
}

Host::Result<std::string> NamePattern::fileName(std::uint64_t rowNumber, const CsvRow& row) const
{
    std::string name;
    for (const Piece& piece : _pieces) {
        name += piece.text;
        if (piece.column == number) {
            name += std::to_string(rowNumber);
            continue;
        }
        const std::string& cell = row[piece.column];
        if (const char* fault = faultOf(cell))
            return Refusal{Reason::WrongArgument, "the cell \"" + std::string(Host::beginningOf(cell, 50))
                    + "\" can't be part of the name of a file: it " + fault};
        name += cell;
    }
    return name + _end;
}

bool NamePattern::isNumbered() const
{
    return std::any_of(_pieces.begin(), _pieces.end(), [](const Piece& piece) { return piece.column == number; });
}

Host::Result<CsvJobs> CsvJobs::create(
    const std::string& path, char separator, std::string in, std::string_view out)
{
    File file(std::fopen(path.c_str(), "r"), &std::fclose);
    if (!file)
        return Host::systemRefusal(Reason::Unreadable, "can't be opened", errno);
    const auto isBroken = std::make_shared<bool>(false);
    auto rows = ValueRows::create(sourceOf(fileno(file.get()), isBroken), separator);
    if (*isBroken)
        return Host::systemRefusal(Reason::Unreadable, "can't be read", errno);
    if (!rows)
        return rows.refusal();
    auto pattern = NamePattern::create(out, rows->names());
    if (!pattern)
        return pattern.refusal().withPrefix("--out " + std::string(out) + ": ");
    return CsvJobs(std::move(file), isBroken, std::move(*rows), std::move(*pattern), std::move(in));
}

bool CsvJobs::read(BatchLine& line)
{
    const auto row = _rows.next();
    if (row && row->empty())
        return false;
    ++_number;
    const auto job = std::make_shared<BatchJob>();
    job->id = _number;
    job->in = _in;
    const std::optional<Refusal> refusal = row ? readJob(*row, *job) : row.refusal();
    line = {_rows.rowLine(), _rows.bytesRead(), [job, refusal](BatchJob& result) {
                result = std::move(*job);
                return refusal;
            }};
    return true;
}

std::optional<Refusal> CsvJobs::readJob(const CsvRow& row, BatchJob& job)
{
    auto name = _out.fileName(_number, row);
    if (!name)
        return name.refusal();
    if (!_out.isNumbered() && !_made.insert(std::hash<std::string>()(*name)).second)
        return Refusal{Reason::WrongArgument, *name + " is the file of an earlier row"};
    job.values = _rows.valuesOf(row);
    job.out = std::move(*name);
    return {};
}

std::uint64_t CsvJobs::inputSize() const
{
    struct stat status;
    return fstat(fileno(_file.get()), &status) == 0 && S_ISREG(status.st_mode) ? std::uint64_t(status.st_size) : 0;
}

} // namespace Tools
