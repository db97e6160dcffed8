#pragma once

#include <host/pages/PageTree.h>

#include <optional>
#include <unordered_map>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// On which pages a document shows its widgets. The pages are walked once, when it is created.
class WidgetPlaces {
public:
    // Nothing is shown by a document whose pages can't be listed.
    explicit WidgetPlaces(const Ref<PDF::Document>& document) noexcept;

    struct Found {
        std::size_t number; // of the page, from 1 on
        Ref<PDF::Object> page;
    };
    // The first page with the widget among its annotations, else the one that the widget names as its own; absent for
    // none.
    std::optional<Found> find(const PDF::Dictionary& widget) const noexcept;

private:
    using Indices = std::unordered_map<const PDF::Dictionary*, std::size_t>;

    const Ref<PDF::Document> _document;
    PageTree _tree;
    Indices _byWidget, _byPage;
};

} // namespace Host
