#include <host/fields/ViewerRequest.h>

#include <forms/FormKeys.h>
#include <host/fields/FieldReading.h>
#include <host/fields/FillWarnings.h>
#include <host/fields/TextString.h>
#include <host/fields/WidgetLook.h>
#include <host/fonts/FontValues.h>
#include <host/streams/StreamBytes.h>
#include <values/BooleanObj.h>

#include <algorithm>

namespace Host {

ViewerRequest::ViewerRequest(Ref<PDF::Document> document, const FieldTree& tree) noexcept
    : _document(std::move(document)), _tree(tree)
{
}

bool ViewerRequest::isMade() const noexcept
{
    const auto flag = PDF::resolveEntryAs<PDF::Boolean>(*_document, *_tree.form(), PDF::FormKeys::needAppearances);
    return flag && flag->value();
}

void ViewerRequest::make() noexcept
{
    _isOurs = true;
    if (!isMade())
        _tree.form()->set(PDF::FormKeys::needAppearances, ::make<PDF::BooleanObj>(true));
}

std::string ViewerRequest::noteDrawn(const std::vector<std::size_t>& fields, bool isByEngine) noexcept
{
    if (!_needing && isByEngine && isMade()) {
        _needing.emplace();
        for (std::size_t i = 0; i < _tree.fields().size(); ++i)
            if (needsViewers(_tree.fields()[i]))
                _needing->insert(i);
    }
    if (!_needing)
        return {};
    for (const std::size_t field : fields)
        _needing->erase(field);
    if (_isOurs)
        return "viewers are asked to draw all fields anew (NeedAppearances), and may lose characters";
    _tree.form()->set(PDF::FormKeys::needAppearances, ::make<PDF::BooleanObj>(false));
    return "viewers are asked no more to draw all fields anew (NeedAppearances), since they may lose characters"
        + (_needing->empty() ? "" : "; they may not show the values of " + FillWarnings::listed(_tree, *_needing));
}

// Whether the field has a value that its looks don't show.
bool ViewerRequest::needsViewers(const FieldNode& field) noexcept
{
    const FieldKind kind = kindOf(field.entries);
    const auto text = field.entries.as<PDF::String>(Inherited::Value);
    if ((kind != FieldKind::Text && kind != FieldKind::ComboBox && kind != FieldKind::ListBox)
        || !field.entries[Inherited::Value] || (text && textOf(*text).empty()))
        return false;
    return std::any_of(field.widgets.begin(), field.widgets.end(), [this](const Ref<PDF::Dictionary>& widget) {
        const auto looks = valueAt<PDF::Dictionary>(*_document, *widget, "AP");
        return WidgetLook::read(*_document, *widget)
            && !(looks && showsText(valueAt<PDF::Stream>(*_document, *looks, "N")));
    });
}

bool ViewerRequest::showsText(const Ref<PDF::Stream>& look) noexcept
{
    if (!look)
        return false;
    const auto [place, isNew] = _looks.try_emplace(look.get());
    if (!isNew)
        return place->second;
    const auto content = decoded(_document, look);
    constexpr std::string_view operations[] = {"Tj", "TJ"};
    place->second = content && std::any_of(std::begin(operations), std::end(operations), [&](std::string_view each) {
        return std::search(content->begin(), content->end(), each.begin(), each.end()) != content->end();
    });
    return place->second;
}

} // namespace Host
