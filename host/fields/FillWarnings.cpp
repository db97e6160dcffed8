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
    static const Ref<::String> key = ::String::create("AA");
    const auto actions = PDF::resolveEntryAs<PDF::Dictionary>(document, field, key);
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

std::string FillWarnings::listed(const FieldTree& tree, const std::set<std::size_t>& fields) noexcept
{
    constexpr std::size_t most = 10;
    std::string text;
    std::size_t count = 0;
    for (auto i = fields.begin(); i != fields.end() && count < most; ++i, ++count)
        text += (count == 0 ? "" : ", ") + tree.fields()[*i].path;
    return fields.size() > count ? text + " and " + std::to_string(fields.size() - count) + " more" : text;
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

void FillWarnings::addScripts(const PDF::Document& document, const FieldTree& tree, std::size_t field) noexcept
{
    const auto order = PDF::resolveEntryAs<PDF::Array>(document, *tree.form(), PDF::FormKeys::calculationOrder);
    if (order && order->size() != 0)
        add({"the form calculates fields by scripts (CO), which don't run: they keep their values"});
    if (hasScript(document, tree.fields()[field]) && _scripted.insert(field).second)
        set(Changing::Scripts,
            "scripts that format, check or calculate values don't run for " + listed(tree, _scripted));
}

void FillWarnings::set(Changing kind, std::string line) noexcept
{
    std::optional<std::size_t>& place = _places[std::size_t(kind)];
    if (place && !line.empty()) {
        _lines[*place] = std::move(line);
    } else if (place) {
        _lines.erase(_lines.begin() + std::ptrdiff_t(*place));
        for (std::optional<std::size_t>& other : _places)
            if (other > place)
                --*other;
        place.reset();
    } else if (!line.empty()) {
        place = _lines.size();
        _lines.push_back(std::move(line));
    }
}

} // namespace Host
