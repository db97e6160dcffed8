#include <host/fields/FillWarnings.h>

#include <document/Resolve.h>
#include <forms/FormKeys.h>
#include <host/fields/FieldReading.h>
#include <host/fonts/FontValues.h>
#include <platform/Limits.h>
#include <values/Object.h>

#include <algorithm>

namespace Host {

namespace {

bool has(const PDF::Document& document, const PDF::Dictionary& dictionary, const char* key)
{
    return bool(resolvePresent(document, dictionary.find(::String::create(key))));
}

// Whether a script formats, validates or calculates the value, or looks at what is entered.
bool hasScript(const PDF::Document& document, const PDF::Dictionary& field)
{
    const auto actions = valueAt<PDF::Dictionary>(document, field, "AA");
    constexpr const char* triggers[] = {"F", "V", "C", "K"};
    return actions && std::any_of(std::begin(triggers), std::end(triggers), [&](const char* trigger) {
        return has(document, *actions, trigger);
    });
}

bool hasScript(const PDF::Document& document, const FieldNode& field)
{
    const auto isScripted = [&](const Ref<PDF::Dictionary>& each) { return hasScript(document, *each); };
    return isScripted(field.dictionary) || std::any_of(field.copies.begin(), field.copies.end(), isScripted)
        || std::any_of(field.widgets.begin(), field.widgets.end(), isScripted);
}

} // namespace

std::string FillWarnings::listed(const std::vector<std::string>& first, std::size_t count) noexcept
{
    std::string text;
    for (const std::string& each : first)
        text += (text.empty() ? "" : ", ") + each;
    return count > first.size() ? text + " and " + std::to_string(count - first.size()) + " more" : text;
}

FillWarnings::FillWarnings(const PDF::Document& document, const FieldTree& tree) noexcept
{
    const auto& fields = tree.fields();
    if (std::any_of(fields.begin(), fields.end(), [](const FieldNode& field) { return isSigned(field.entries); }))
        _lines.push_back("the document is signed, and the signature will no longer be valid");
    const Ref<PDF::Object> root = document.getCatalog();
    const Ref<PDF::Dictionary> catalog = root ? root->valueAsDictionary() : nullptr;
    const auto rights = catalog ? valueAt<PDF::Dictionary>(document, *catalog, "Perms") : nullptr;
    if (rights && has(document, *rights, "DocMDP"))
        _lines.push_back("the document is certified (DocMDP), and the certification will no longer be valid");
    if (rights && (has(document, *rights, "UR3") || has(document, *rights, "UR")))
        _lines.push_back("the document has usage rights (Perms), which will no longer hold");
}

void FillWarnings::add(std::vector<std::string> lines) noexcept
{
    for (std::string& line : lines)
        if (_lines.size() < Limits::maxSkipped && std::find(_lines.begin(), _lines.end(), line) == _lines.end())
            _lines.push_back(std::move(line));
}

void FillWarnings::addScripts(
    const PDF::Document& document, const PDF::Dictionary& form, const FieldNode& field) noexcept
{
    const auto order = PDF::resolveEntryAs<PDF::Array>(document, form, PDF::FormKeys::calculationOrder);
    if (order && order->size() != 0)
        add({"the form calculates fields by scripts (CO), which don't run: they keep their values"});
    if (!hasScript(document, field) || !_scripted.insert(field.path).second)
        return;
    if (_scripted.size() <= mostNamed)
        _firstScripted.push_back(field.path);
    put(_scriptLine,
        "scripts that format, check or calculate values don't run for " + listed(_firstScripted, _scripted.size()));
}

void FillWarnings::setViewers(std::string line) noexcept
{
    if (!line.empty())
        put(_viewersLine, std::move(line));
}

void FillWarnings::put(std::optional<std::size_t>& place, std::string line) noexcept
{
    if (!place) {
        place = _lines.size();
        _lines.emplace_back();
    }
    _lines[*place] = std::move(line);
}

} // namespace Host
