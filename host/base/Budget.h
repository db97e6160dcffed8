#pragma once

#include <document/Document.h>
#include <host/base/Refusal.h>
#include <platform/Limits.h>

#include <array>
#include <optional>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// What an operation spends on a document. `Limits` tells how much there is of each.
enum class Cost : std::uint8_t { Texts, StoredData, DecodedData, Copies, Steps };
constexpr std::size_t costCount = std::size_t(Cost::Steps) + 1;

// Counts what one operation on a document spends, where it is spent, so that no file makes it take more than a multiple
// of the file. It belongs to the operation, and to its thread.
class EXPORTED Budget {
public:
    // Of a document of so many bytes; `limitFactor` raises all limits.
    explicit Budget(std::uint64_t documentSize, std::uint64_t limitFactor = 1) noexcept;
    explicit Budget(const Ref<PDF::Document>& document, std::uint64_t limitFactor = 1) noexcept;

    // Sets the limit of one kind, which the option raises.
    void setLimit(Cost cost, std::uint64_t limit, const char* option) noexcept;
    // Counts, before it is done, what is about to be done. False when that is more than is left; after that nothing is
    // left of the kind.
    [[nodiscard]] bool spend(Cost cost, std::uint64_t amount) noexcept
    {
        Account& account = _accounts[std::size_t(cost)];
        if (amount > account.limit - account.spent)
            return exceed(cost, amount);
        account.spent += amount;
        return true;
    }
    std::uint64_t spent(Cost cost) const noexcept { return _accounts[std::size_t(cost)].spent; }
    std::uint64_t left(Cost cost) const noexcept
    {
        return _accounts[std::size_t(cost)].limit - _accounts[std::size_t(cost)].spent;
    }
    bool isExceeded() const noexcept { return _exceeded.has_value(); }
    // The refusal with `Reason::LimitReached` (`ErrOutOfRange`) for what was not there first: the limit, what was asked
    // for, and the option that raises it. Only when something was not there.
    Refusal refusal() const noexcept;

private:
    struct Account {
        std::uint64_t limit = 0;
        std::uint64_t spent = 0;
        const char* option = "limitFactor";
    };
    bool exceed(Cost cost, std::uint64_t amount) noexcept;

    std::array<Account, costCount> _accounts;
    std::optional<Cost> _exceeded; // the first of them
    std::uint64_t _wanted = 0;     // of it, in all
};

// Refuses a document whose streams overlap in its file so often that their data, each stream for itself, is more than
// `Limits::storedData`: before it is written or held.
std::optional<Refusal> refuseOverlaps(const Ref<PDF::Document>& document, std::uint64_t limitFactor) noexcept;
// What the limits grow with: the bytes of the document's file and of the data that its streams hold beside it.
std::uint64_t sizeOf(const Ref<PDF::Document>& document) noexcept;

} // namespace Host
