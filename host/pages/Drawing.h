#pragma once

#include <host/base/Budget.h>
#include <host/pages/Edit.h>
#include <host/pages/Geometry.h>
#include <host/pages/Layer.h>
#include <host/pages/PageTree.h>
#include <values/ObjectRef.h>
#include <values/Stream.h>

#include <map>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace Host {

// Draws XObjects on pages of a document, as a part of an edit. Pages keep their content and all names in it: the
// XObjects get names that no resources of these pages have, in any category. Resources that several pages have are
// extended once, and pages that inherit them share a copy. What the same drawing needs on several pages is one stream.
class Drawing {
public:
    // Pages are those of `tree`, by their places in it. Both must live as long.
    Drawing(Edit& edit, const PageTree& tree, std::uint64_t limitFactor) noexcept;

    // Notes that the XObject is to be drawn, in the coordinates of the page that the matrix leads to. Of several in a
    // layer the last is on top. A page that is in the tree twice gets what either place is given. In a document with
    // structure it is an artifact, unless it has a number of marked content, by which an element has it.
    void add(std::size_t page, const Ref<PDF::ObjectRef>& xObject, const Matrix& matrix, Layer layer,
        std::optional<std::uint32_t> contentNumber = {});
    // Prepares all of it. Refused when content of a page that something goes above can't be had; then the edit must
    // not be applied.
    std::optional<Refusal> prepare() noexcept;
    // What people should know, one line each.
    const std::vector<std::string>& warnings() const noexcept { return _warnings; }

private:
    struct Item {
        std::uint32_t page;
        std::uint32_t xObject; // index among those drawn
        std::uint32_t matrix;  // likewise
        Layer layer;
        std::optional<std::uint32_t> contentNumber;
    };
    using Items = std::vector<Item>;
    // What a page gets before and after its content.
    struct Texts {
        std::string beneath;
        std::string above;
    };
    // A dictionary of resources that is there once for several pages, and the reference to it.
    struct SharedResources {
        Ref<PDF::Dictionary> dictionary;
        Ref<PDF::ObjectRef> reference;
    };

    // Names
    void chooseNames() noexcept;
    void noteNames(const PDF::Dictionary& resources) noexcept;
    std::size_t indexOf(const Ref<PDF::ObjectRef>& xObject);
    std::string nameOf(std::size_t xObject) const;
    // Content
    Texts textsOf(Items::const_iterator first, Items::const_iterator last) const;
    std::optional<Refusal> changeContents(const Page& page, std::size_t index, const Texts& texts) noexcept;
    Result<Ref<PDF::Value>> contentsOf(const Page& page, std::size_t index, const Texts& texts) noexcept;
    std::optional<Refusal> enclose(const Page& page, std::size_t index, std::vector<Ref<PDF::Value>>& contents) noexcept;
    Result<Ref<PDF::Value>> asForm(const Page& page, const std::vector<std::uint8_t>& content) noexcept;
    Ref<PDF::Value> streamOf(const std::string& text) noexcept;
    bool isTagged() const noexcept;
    // Resources
    void extendResources(const Page& page, std::size_t xObject) noexcept;
    Ref<PDF::Dictionary> resourcesToExtend(const Page& page) noexcept;

    Edit& _edit;
    const PageTree& _tree;
    Items _items;
    std::vector<Matrix> _matrices; // no two in a row are the same
    std::vector<Ref<PDF::ObjectRef>> _xObjects;
    std::unordered_map<std::uint32_t, std::size_t> _indices; // of these, by their ids
    std::uint64_t _lastNumber = 0;                           // of a name like ours that is in use
    std::unordered_set<const PDF::Dictionary*> _noted;
    bool _isTagged = false;
    std::unordered_map<std::string, Ref<PDF::Value>> _streams; // by what they draw
    // New contents by what they were, the resources that they go with, and what they get.
    std::map<std::tuple<const PDF::Value*, const PDF::Dictionary*, std::string>, Ref<PDF::Value>> _contents;
    std::unordered_map<const PDF::Dictionary*, SharedResources> _copies;          // of inherited resources; of null for none
    std::unordered_map<const PDF::Dictionary*, Ref<PDF::Dictionary>> _newXObjects; // by resources without any
    std::set<std::pair<const PDF::Dictionary*, std::size_t>> _extended;           // and by which XObject
    // What pages may take together that share their content: bytes when it is decoded, and parts.
    Budget _budget;
    std::vector<std::string> _warnings;
};

} // namespace Host
