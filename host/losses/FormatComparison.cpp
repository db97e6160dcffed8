#include <host/losses/FormatComparison.h>

#include <platform/Limits.h>

#include <algorithm>

namespace Host {

namespace {

using Kind = FormatValue::Kind;

const FormatValue nothing;

LossKind kindOf(const FormatValue& meant, const FormatValue& written)
{
    const bool isScalar = meant.kind == written.kind && meant.parts.empty();
    return meant.isGlued && !isScalar ? LossKind::GluedWord : LossKind::OtherValue;
}

} // namespace

void FormatComparison::add(LossKind kind, const FormatValue& meant, const FormatValue& written) noexcept
{
    Loss loss = _template;
    loss.kind = kind;
    loss.offset = meant.begin;
    loss.inFile = _file.slice(meant.begin, meant.end, Limits::maxLossText);
    loss.written = _written.slice(written.begin, written.end, Limits::maxLossText);
    _losses.add(std::move(loss));
}

void FormatComparison::compare(const FormatValue& meant, const FormatValue& written) noexcept
{
    if (meant.kind != written.kind || meant.text != written.text)
        add(kindOf(meant, written), meant, written);
    else if (meant.kind == Kind::Array)
        compareArrays(meant, written);
    else if (meant.kind == Kind::Dictionary)
        compareDictionaries(meant, written);
}

// A word that was glued together with others shifts all that follows: then the list is one loss.
void FormatComparison::compareArrays(const FormatValue& meant, const FormatValue& written) noexcept
{
    const auto isOfKind = [](const FormatValue& a, const FormatValue& b) { return a.kind == b.kind; };
    const bool isAlike = std::equal(
        meant.parts.begin(), meant.parts.end(), written.parts.begin(), written.parts.end(), isOfKind);
    if (meant.parts.size() != written.parts.size() || (!isAlike && meant.isGlued)) {
        add(kindOf(meant, written), meant, written);
        return;
    }
    for (std::size_t i = 0; i < meant.parts.size(); ++i)
        compare(meant.parts[i], written.parts[i]);
}

FormatComparison::Entries FormatComparison::entriesOf(const FormatValue& dictionary) noexcept
{
    Entries entries;
    for (std::size_t i = 0; i < dictionary.parts.size(); i += 2)
        entries.emplace_back(dictionary.parts[i].text, &dictionary.parts[i + 1]);
    std::stable_sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    return entries;
}

// Lists those of which there is a later one, and gives the others.
FormatComparison::Entries FormatComparison::takeRepeated(const Entries& entries) noexcept
{
    Entries last;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (i + 1 < entries.size() && entries[i + 1].first == entries[i].first)
            add(LossKind::RepeatedKey, *entries[i].second, nothing);
        else
            last.push_back(entries[i]);
    }
    return last;
}

void FormatComparison::compareDictionaries(const FormatValue& meant, const FormatValue& written) noexcept
{
    const Entries all = entriesOf(meant);
    const Entries other = entriesOf(written);
    const Entries own = all.size() == other.size() ? all : takeRepeated(all); // a kept source repeats them, too
    const auto isOfKind = [](const auto& a, const auto& b) {
        return a.first == b.first && a.second->kind == b.second->kind;
    };
    const bool isAlike = std::equal(own.begin(), own.end(), other.begin(), other.end(), isOfKind);
    if (!isAlike && meant.isGlued) {
        add(LossKind::GluedWord, meant, written);
        return;
    }
    FormatValue missing; // in the place of the dictionary
    missing.begin = missing.end = meant.begin;
    auto next = other.begin();
    for (const auto& [key, value] : own) {
        for (; next != other.end() && next->first < key; ++next)
            add(LossKind::OtherValue, missing, *next->second);
        const bool isThere = next != other.end() && next->first == key;
        compare(*value, isThere ? *next++->second : nothing);
    }
    for (; next != other.end(); ++next)
        add(LossKind::OtherValue, missing, *next->second);
}

} // namespace Host
