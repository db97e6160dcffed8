#pragma once

#include <host/base/Budget.h>
#include <host/pages/Edit.h>
#include <host/pages/Geometry.h>
#include <host/pages/PageTree.h>
#include <values/ObjectRef.h>
#include <values/Stream.h>

#include <map>
#include <optional>
#include <unordered_map>
#include <vector>

namespace Host {

// A page as a form XObject: content that can be drawn anywhere.
struct FormXObject {
    Ref<PDF::ObjectRef> reference;
    Rectangle box;   // what of the page is seen, in its own coordinates
    Matrix matrix;   // which its dictionary has: the turn that a viewer gives the page
    bool isDamaged = false; // the data of the page's content is, and is drawn up to that place
};

// Makes form XObjects of the pages of a document, for this or another one. Each page becomes one only once, for each
// box, and one that the document has already, with the same content and resources, is used again.
class FormXObjects {
public:
    // The edit must live as long.
    FormXObjects(Edit& edit, Ref<PDF::Document> source, std::uint64_t limitFactor) noexcept;

    // The page, cut to the box, which must have an area. `index` is that of the page among those of `pages`. It brings
    // along all that it refers to, optional content and its state included, but no annotations. Refused when content
    // or data can't be read or decoded; then the edit must not be applied.
    Result<FormXObject> make(const Page& page, std::size_t index, PageBox box) noexcept;

    PDF::ValueCopying& copying() noexcept { return _copying; }

private:
    // A form XObject that the document has.
    struct Known {
        Ref<PDF::ObjectRef> reference;
        Ref<PDF::Stream> stream;
    };
    // One in the making: its dictionary but for resources and group, and its stored data.
    struct Draft {
        Ref<PDF::Dictionary> dictionary;
        std::vector<std::uint8_t> stored;
        bool isDamaged = false;
    };

    Result<Draft> draft(const Page& page, const FormXObject& form) noexcept;
    std::optional<Refusal> fillContent(const Page& page, Draft& draft) noexcept;
    Result<Ref<PDF::ObjectRef>> complete(const Page& page, Draft& draft) noexcept;
    Ref<PDF::Value> copyResources(const Ref<PDF::Dictionary>& resources) noexcept;
    Ref<PDF::ObjectRef> findSame(const Draft& draft, const Page& page) noexcept;
    void listForms() noexcept;

    Edit& _edit;
    const Ref<PDF::Document> _source;
    PDF::ValueCopying _copying;
    std::map<std::pair<std::size_t, PageBox>, FormXObject> _made;
    std::unordered_map<const PDF::Dictionary*, Ref<PDF::Value>> _resources; // references to their copies
    std::unordered_multimap<std::size_t, Known> _known; // by the size of their stored data
    bool _isListed = false;
    Budget _budget; // whatever pages share their content
    int _triesLeft = 64;  // to find one that is the same
};

} // namespace Host
