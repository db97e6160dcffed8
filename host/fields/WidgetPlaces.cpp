#include <host/fields/WidgetPlaces.h>

#include <document/Resolve.h>
#include <host/fonts/FontValues.h>

#include <unordered_set>

namespace Host {

WidgetPlaces::WidgetPlaces(const Ref<PDF::Document>& document) noexcept : _document(document)
{
    if (Result<PageTree> tree = pages(document))
        _tree = std::move(*tree);
    std::unordered_set<const PDF::Array*> walked; // pages may share a long list
    for (std::size_t i = 0; i < _tree.pages.size(); ++i) {
        const PDF::Dictionary& page = *_tree.pages[i].dictionary;
        if (!_byPage.try_emplace(&page, i).second)
            continue;
        const auto list = valueAt<PDF::Array>(*_document, page, "Annots");
        if (!list || !walked.insert(list.get()).second)
            continue;
        for (std::uint64_t k = 0; k < list->size(); ++k)
            if (const auto annotation = PDF::resolveAs<PDF::Dictionary>(*_document, list->get(k)))
                _byWidget.try_emplace(annotation.get(), i);
    }
}

std::optional<WidgetPlaces::Found> WidgetPlaces::find(const PDF::Dictionary& widget) const noexcept
{
    const auto in = [this](const Indices& indices, const PDF::Dictionary* key) -> std::optional<Found> {
        const auto found = indices.find(key);
        if (found == indices.end())
            return {};
        return Found{found->second + 1, _tree.pages[found->second].object};
    };
    if (const auto found = in(_byWidget, &widget))
        return found;
    return in(_byPage, valueAt<PDF::Dictionary>(*_document, widget, "P").get());
}

} // namespace Host
