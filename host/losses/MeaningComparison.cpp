#include <host/losses/MeaningComparison.h>

#include <host/base/Limits.h>

#include <algorithm>

namespace Host {

namespace {

using Kind = Meaning::Kind;

const Meaning nothing;

// Why two scalars of one kind differ, as far as what the first is written with tells.
LossKind kindOfScalar(const Meaning& meant, const Meaning& written)
{
    constexpr std::pair<Meaning::Trait, LossKind> causes[] = {
        {Meaning::LeadingZeros, LossKind::FractionZeros},
        {Meaning::RawBytes, LossKind::RawBytes},
        {Meaning::DoubledBackslashes, LossKind::DoubledBackslash},
        {Meaning::UndefinedOctals, LossKind::UndefinedOctals},
        {Meaning::OddDigits, LossKind::OddDigits},
    };
    for (const auto& [trait, kind] : causes)
        if (meant.is(trait))
            return kind;
    const bool isNumber = meant.kind == Kind::Number;
    return isNumber && meant.text == "-" + written.text ? LossKind::NumberSign : LossKind::OtherValue;
}

LossKind kindOf(const Meaning& meant, const Meaning& written)
{
    if (meant.kind == written.kind && meant.parts.empty())
        return kindOfScalar(meant, written);
    return meant.is(Meaning::GluedWord) ? LossKind::GluedWord : LossKind::OtherValue;
}

} // namespace

void MeaningComparison::add(LossKind kind, const Meaning& meant, const Meaning& written) noexcept
{
    Loss loss = _model;
    loss.kind = kind;
    loss.offset = meant.begin;
    loss.inFile = _file.slice(meant.begin, meant.end, Limits::maxLossText);
    loss.written = _written.slice(written.begin, written.end, Limits::maxLossText);
    _losses.add(std::move(loss));
}

void MeaningComparison::compare(const Meaning& meant, const Meaning& written) noexcept
{
    if (meant.kind != written.kind || meant.text != written.text)
        add(kindOf(meant, written), meant, written);
    else if (meant.kind == Kind::Array)
        compareArrays(meant, written);
    else if (meant.kind == Kind::Dictionary)
        compareDictionaries(meant, written);
    else if (meant.is(Meaning::Backslash))
        add(LossKind::ReopenedBackslash, meant, written);
}

// A word that was glued together with others shifts all that follows: then the list is one loss.
void MeaningComparison::compareArrays(const Meaning& meant, const Meaning& written) noexcept
{
    const auto isOfKind = [](const Meaning& a, const Meaning& b) { return a.kind == b.kind; };
    const bool isAlike = std::equal(
        meant.parts.begin(), meant.parts.end(), written.parts.begin(), written.parts.end(), isOfKind);
    if (meant.parts.size() != written.parts.size() || (!isAlike && meant.is(Meaning::GluedWord))) {
        add(kindOf(meant, written), meant, written);
        return;
    }
    for (std::size_t i = 0; i < meant.parts.size(); ++i)
        compare(meant.parts[i], written.parts[i]);
}

MeaningComparison::Entries MeaningComparison::entriesOf(const Meaning& dictionary) noexcept
{
    Entries entries;
    for (std::size_t i = 0; i < dictionary.parts.size(); i += 2)
        entries.emplace_back(dictionary.parts[i].text, &dictionary.parts[i + 1]);
    std::stable_sort(entries.begin(), entries.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    return entries;
}

// Lists those of which there is a later one, and gives the others.
MeaningComparison::Entries MeaningComparison::takeRepeated(const Entries& entries) noexcept
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

void MeaningComparison::compareDictionaries(const Meaning& meant, const Meaning& written) noexcept
{
    const Entries own = takeRepeated(entriesOf(meant));
    const Entries other = entriesOf(written);
    const auto isOfKind = [](const auto& a, const auto& b) {
        return a.first == b.first && a.second->kind == b.second->kind;
    };
    const bool isAlike = std::equal(own.begin(), own.end(), other.begin(), other.end(), isOfKind);
    if (!isAlike && meant.is(Meaning::GluedWord)) {
        add(LossKind::GluedWord, meant, written);
        return;
    }
    Meaning missing; // stands where the dictionary does
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
