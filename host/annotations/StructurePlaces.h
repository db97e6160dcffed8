#pragma once

#include <host/pages/Edit.h>
#include <host/pages/PageTree.h>

#include <map>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace Host {

// The places that annotations have in the logical structure of a document, which go to what is drawn instead of them,
// as a part of an edit.
class StructurePlaces {
public:
    // The edit must live as long.
    explicit StructurePlaces(Edit& edit) noexcept;

    // Looks for the annotations, which all go.
    void find(const std::unordered_set<const PDF::Dictionary*>& annotations) noexcept;
    // The number of marked content on the page that gets the annotation's place; none where it has no place to give.
    std::optional<std::uint32_t> give(const PDF::Dictionary& annotation, const Page& page) noexcept;
    // Changes the structure. Places that weren't given away are empty then.
    void finish() noexcept;

private:
    struct Element {
        Ref<PDF::ObjectRef> reference; // null where the element above has the dictionary itself
        Ref<PDF::Dictionary> dictionary;
    };
    struct Place {
        std::size_t element; // among those that lose an annotation
        std::vector<Ref<PDF::Value>> contents;
    };
    // The elements that the content of a page belongs to, by the numbers of marked content.
    using Contents = std::vector<Ref<PDF::Value>>;

    void visit(const Element& element, std::vector<Element>& open) noexcept;
    const PDF::Dictionary* annotationOf(const PDF::Dictionary& kid) const noexcept;
    void readParents() noexcept;
    void readParents(const PDF::Array& pairs) noexcept;
    Contents* contentsOf(const Page& page) noexcept;
    void changeKids(const Ref<PDF::Dictionary>& element) noexcept;
    void writeParents() noexcept;

    Edit& _edit;
    const PDF::Document& _document;
    Ref<PDF::Dictionary> _root; // null when the document has no structure
    const std::unordered_set<const PDF::Dictionary*>* _annotations = nullptr;
    std::unordered_set<const PDF::Value*> _visited;
    std::vector<Element> _changed; // elements that lose an annotation
    std::unordered_map<const PDF::Dictionary*, Place> _places;
    // The parent tree, which tells the elements of contents and of annotations.
    std::map<std::int64_t, Ref<PDF::Value>> _parents;
    bool _areParentsChanged = false;
    std::map<std::int64_t, Contents> _contents; // that got more, by their keys in the parent tree
    std::unordered_map<const PDF::Dictionary*, std::int64_t> _newKeys; // of pages that had none
};

} // namespace Host
