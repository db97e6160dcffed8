#include <host/pages/PageRange.h>

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>

namespace Host {

namespace {

// Takes this word from the beginning of the text, if it is there.
bool take(std::string_view& text, std::string_view word)
{
    if (!text.starts_with(word))
        return false;
    text.remove_prefix(word.size());
    return true;
}

class RangeReader {
public:
    RangeReader(std::string_view item, std::size_t pageCount) : _item(item), _rest(item), _pageCount(pageCount) {}

    // Adds the pages of the item; the reason when it names none.
    std::optional<Refusal> read(std::vector<std::size_t>& pages)
    {
        std::size_t first = 1;
        std::size_t last = _pageCount;
        const bool isEveryPage = take(_rest, "all") || _rest.starts_with("odd") || _rest.starts_with("even");
        if (!isEveryPage) {
            if (auto refusal = readPage(first))
                return refusal;
            last = first;
            if (take(_rest, "-"))
                if (auto refusal = readPage(last))
                    return refusal;
        }
        take(_rest, ":");
        const bool isOdd = take(_rest, "odd");
        const bool isEven = !isOdd && take(_rest, "even");
        if (!_rest.empty())
            return wrong();
        const auto add = [&](std::size_t number) {
            if (isOdd == isEven || isOdd == (number % 2 == 1))
                pages.push_back(number - 1);
        };
        for (std::size_t number = first; number <= last; ++number)
            add(number);
        for (std::size_t number = first; !isEveryPage && first > last && number >= last; --number)
            add(number);
        return {};
    }

private:
    Refusal wrong() const
    {
        return {Reason::WrongArgument, "\"" + std::string(_item) + "\" names no pages"};
    }
    std::optional<Refusal> readPage(std::size_t& number)
    {
        number = _pageCount;
        if (take(_rest, "last") || take(_rest, "end") || take(_rest, "z"))
            return _pageCount > 0 ? std::nullopt : missing();
        const bool isFromEnd = take(_rest, "r");
        const auto [end, error] = std::from_chars(_rest.data(), _rest.data() + _rest.size(), number);
        if (error == std::errc::result_out_of_range)
            return missing();
        if (error != std::errc())
            return wrong();
        _rest.remove_prefix(std::size_t(end - _rest.data()));
        if (number < 1 || number > _pageCount)
            return missing();
        number = isFromEnd ? _pageCount + 1 - number : number;
        return {};
    }
    std::optional<Refusal> missing() const
    {
        return Refusal{Reason::Missing,
            "there is no page \"" + std::string(_item) + "\" among " + std::to_string(_pageCount)};
    }

    const std::string_view _item;
    std::string_view _rest;
    const std::size_t _pageCount;
};

} // namespace

Result<std::vector<std::size_t>> pagesNamed(std::string_view text, std::size_t pageCount) noexcept
{
    std::vector<std::size_t> pages;
    if (text.empty())
        text = "all";
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find(',', start), text.size());
        if (auto refusal = RangeReader(text.substr(start, end - start), pageCount).read(pages))
            return *refusal;
        start = end + 1;
    }
    return pages;
}

} // namespace Host
