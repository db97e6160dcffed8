#include <host/base/Budget.h>

#include <document/Inspection.h>
#include <platform/Error.h>

namespace Host {

namespace {

constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();

// By `Cost`.
struct Kind {
    Limits::Allowance allowance;
    const char* label;
};
constexpr Kind kinds[] = {
    {Limits::texts, "bytes of text"},
    {Limits::storedData, "bytes of stored data"},
    {Limits::decodedData, "bytes of decoded data"},
    {Limits::copies, "copied values"},
    {Limits::steps, "steps"},
};
static_assert(std::size(kinds) == costCount);

} // namespace

Budget::Budget(std::uint64_t documentSize, std::uint64_t limitFactor) noexcept
{
    for (std::size_t i = 0; i < costCount; ++i) {
        const std::uint64_t limit = kinds[i].allowance.of(documentSize);
        _accounts[i].limit = limitFactor != 0 && limit > most / limitFactor ? most : limit * limitFactor;
    }
}

Budget::Budget(const Ref<PDF::Document>& document, std::uint64_t limitFactor) noexcept
    : Budget(sizeOf(document), limitFactor)
{
}

void Budget::setLimit(Cost cost, std::uint64_t limit, const char* option) noexcept
{
    _accounts[std::size_t(cost)] = {limit, 0, option};
}

bool Budget::exceed(Cost cost, std::uint64_t amount) noexcept
{
    Account& account = _accounts[std::size_t(cost)];
    if (!_exceeded) {
        _exceeded = cost;
        _wanted = amount > most - account.spent ? most : account.spent + amount;
    }
    account.spent = account.limit;
    return false;
}

Refusal Budget::refusal() const noexcept
{
    const std::size_t index = std::size_t(*_exceeded);
    const std::string label = kinds[index].label;
    return {Reason::LimitReached,
        "it takes " + std::to_string(_wanted) + " " + label + " or more, and the limit for a file of its size is "
            + std::to_string(_accounts[index].limit) + " (" + _accounts[index].option + " raises it)",
        ErrOutOfRange};
}

std::optional<Refusal> refuseOverlaps(const Ref<PDF::Document>& document, std::uint64_t limitFactor) noexcept
{
    Budget budget(PDF::fileSizeOf(document), limitFactor);
    const bool isWithin = budget.spend(Cost::StoredData, PDF::storedSizes(document).inFile);
    return isWithin ? std::nullopt : std::optional(budget.refusal());
}

std::uint64_t sizeOf(const Ref<PDF::Document>& document) noexcept
{
    return PDF::fileSizeOf(document) + PDF::storedSizes(document).held;
}

} // namespace Host
