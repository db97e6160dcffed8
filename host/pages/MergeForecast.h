#pragma once

#include <host/base/Budget.h>
#include <host/base/Result.h>
#include <host/pages/CopyCount.h>
#include <host/pages/SameContents.h>
#include <values/KeyOrder.h>

#include <map>
#include <memory>
#include <optional>
#include <unordered_map>

namespace Host {

template <class T>
using ByKey = std::map<Ref<::String>, T, PDF::KeyOrder>;

// What a name of resources refers to.
struct NamedValue {
    Ref<PDF::Value> value;
    // The merge that copies it from the foreign document, whose value this is; 0 for one that is there.
    std::size_t copiedBy = 0;
};
// A category of resources: an array, or names.
struct Category {
    bool isArray = false;
    std::vector<Ref<PDF::Value>> elements;
    ByKey<NamedValue> names;
    std::uint64_t weight = 0; // how much there is to be compared of the elements, or of the values that came with names
};
// The categories of a resources dictionary. Dictionaries that are shared in a document are shared here.
using Resources = ByKey<std::shared_ptr<Category>>;

// Does what the merges of `Document::addBackground` will do to resources, but to models of them, to find out
// how they end. In one respect it is stricter: the number that a copied object will get isn't known, so it is
// treated as one that no reference has. What the merges will walk and copy is taken off the budget; after its end the
// models are of no use.
class MergeForecast {
public:
    MergeForecast(const Ref<PDF::Document>& document, const Ref<PDF::Document>& foreign, Budget& budget) noexcept;

    // A model of the `Resources` of a page or of the root of a page tree, the same at each call; null when
    // there are none. Refused when they, or a category, can't be used in a merge.
    Result<std::shared_ptr<Resources>> resourcesOf(
        const PDF::Document& document, const PDF::Dictionary& holder) noexcept;
    // The same, of the document; new ones when there are none.
    Result<std::shared_ptr<Resources>> madeResourcesOf(const PDF::Dictionary& holder) noexcept;

    enum class Source { RootOfTree, Foreign };
    // Merges; the first reason, with category and name, when that fails or leads to wrong resources.
    std::optional<std::string> merge(Source source, const Resources& toAdd, Resources& target) noexcept;
    // Whether the last merge copied objects.
    bool hasCopied() const noexcept { return _hasCopied; }

    struct Hidden {
        std::string missing; // category and name of the first that isn't there; empty when all are
        std::string wrong;   // of one that refers to something else
    };
    // How a page that has `seen` sees what is in `wanted`, which are foreign.
    Hidden findHidden(const Resources& wanted, const Resources& seen) noexcept;

private:
    std::shared_ptr<Category> readCategory(const PDF::Document& document, const Ref<PDF::Value>& value) noexcept;
    using UsedNames = ByKey<Ref<::String>>; // from a name to its category
    std::optional<std::string> mergeNames(Source source, const Ref<::String>& key, const Category& toAdd,
        const UsedNames& used, Category& target) noexcept;
    void mergeArrays(Source source, Category& toAdd, const Category& target) noexcept;
    void spendCopy(Source source, const Ref<PDF::Value>& value) noexcept;
    bool isEqual(const NamedValue& present, const NamedValue& toAdd, Source source) const noexcept;
    bool leadToSame(const NamedValue& present, const NamedValue& foreign) noexcept;
    bool isCopying(Source source) const noexcept { return source == Source::Foreign && !_isForeignItself; }

    const Ref<PDF::Document> _document;
    const bool _isForeignItself; // its references stay as they are
    Budget& _budget;
    SameContents _contents;
    CopyCount _foreignCopies;
    // By the dictionary that they are models of; new resources by their holder.
    std::unordered_map<const PDF::Value*, std::shared_ptr<Resources>> _resources;
    std::unordered_map<const PDF::Value*, std::shared_ptr<Category>> _categories;
    std::size_t _mergeCount = 0;
    bool _hasCopied = false;
};

} // namespace Host
