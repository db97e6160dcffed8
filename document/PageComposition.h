#pragma once

#include <document/DocumentObj.h>
#include <document/StreamCopy.h>
#include <platform/Reporter.h>
#include <values/KeyOrder.h>
#include <values/Stream.h>

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <unordered_map>
#include <unordered_set>

// The working classes of `addBackground`. What they know lasts for one call.

namespace Libraries::Files::PDF {

class CloningStep;

// Copies values of the source document into the target. A reference is followed: what it leads to becomes a
// new object of the target, each time anew. Where the source is the target, references stay as they are. What a
// failure leaves in the table of objects is told at each operation; ids that were given out are not taken back.
class DocumentObj::Cloning {
public:
    Cloning(DocumentObj& target, Ref<Document> source) noexcept;
    ~Cloning() noexcept;

    const Document& source() const noexcept { return *_source; }
    // The copy, which shares nothing that can change. Null with a line at each level, and the code of the
    // outermost one that failed; objects that were added for references before the failing one stay.
    Ref<Value> cloneValue(Ref<Value> value) noexcept;
    // A reference to a new object that holds the copy; objects that it refers to have lower ids. Null with
    // `ErrNoResource`, and the table as it was before, or with `ErrNullArgument`.
    Ref<ObjectRef> cloneObject(Ref<Value> value) noexcept;

private:
    class ReferenceStep;
    // The data of a stream that was copied; the stream is held so that its address stays its own.
    struct CopiedStream {
        Ref<Stream> stream;
        StreamCopy copy;
    };

    bool begin(const Ref<Value>& part, Ref<Value>& clone) noexcept;
    bool beginReference(const Ref<ObjectRef>& reference, Ref<Value>& clone) noexcept;
    bool open(const Ref<Dictionary>& dictionary) noexcept;
    bool open(const Ref<Stream>& stream) noexcept;
    bool open(const Ref<Array>& array) noexcept;
    bool handOn(Ref<Value>& clone, Ref<Value>& part) noexcept;
    Failure abandon() noexcept;
    Ref<Interfaces::Stripe> copyData(const Ref<Stream>& stream) noexcept;
    StreamCopy readData(const Ref<Stream>& stream) noexcept;

    DocumentObj& _target;
    const Ref<Document> _source;
    std::vector<std::unique_ptr<CloningStep>> _open; // the values whose parts are being cloned, outermost first
    std::unordered_set<const PDF::Object*> _inProgress; // the objects among them
    std::unordered_map<const Stream*, CopiedStream> _copies;
};

// Merges dictionaries of resources into one of a document. A name is free, or in use by an equal value,
// or the merge fails; names are never changed.
class DocumentObj::Merging {
public:
    // The `Resources` of a page or of the root of a page tree, resolved in `document`: the live dictionary;
    // when there are none, `resources` stays null. False with a line and `ErrBadObject`.
    static bool readResources(
        const Dictionary& dictionary, const Document& document, Ref<Dictionary>& resources) noexcept;

    // `cloning` copies into `document` what is taken over from its source.
    Merging(const Document& document, Cloning& cloning) noexcept : _document(document), _cloning(cloning) {}

    // Merges `toAdd`, of the cloning's source, into `target`, of the document. False with a line and no
    // code of its own; what was merged before the fault stays.
    bool merge(const Dictionary& toAdd, Dictionary& target) noexcept;

private:
    // A category of resources: the live dictionary or array, the other one null.
    struct Category {
        Ref<::String> name;
        Ref<Dictionary> dictionary;
        Ref<Array> array;
    };
    struct Wording;

    template <class Visitor>
    static bool forEachCategory(
        const Dictionary& resources, const Document& document, const Wording& wording, Visitor visit) noexcept;
    static bool readCategory(
        const Ref<Value>& value, const Document& document, const Wording& wording, Category& category) noexcept;
    static bool resolveCategory(
        const Ref<Value>& value, const Document& document, const Wording& wording, Category& category) noexcept;
    template <class Visitor>
    static bool forEachName(const Category& category, const Wording& wording, Visitor visit) noexcept;
    bool indexTarget(const Dictionary& target) noexcept;
    const Category* targetOf(const Category& toAdd, Dictionary& target) noexcept;
    bool addCategory(const Category& toAdd, Dictionary& target) noexcept;
    bool addName(const Ref<::String>& name, const Category& toAdd, Dictionary& target) noexcept;
    bool mergeArrays(const Category& toAdd, const Array& target) noexcept;

    static const Wording targetWording;
    static const Wording toAddWording;

    const Document& _document;
    Cloning& _cloning;
    std::map<Ref<::String>, Category, KeyOrder> _targetCategories;
    std::set<Ref<::String>, KeyOrder> _targetNames; // of all dictionary categories together
};

// One call of `addBackground`, in its stages. The reading half changes nothing in the document.
class DocumentObj::Background {
public:
    Background(DocumentObj& document, Ref<Document> foreign, BackgroundMode mode) noexcept;

    // What `addBackground` answers.
    bool add() noexcept;

private:
    struct ForeignPage {
        Ref<Dictionary> dictionary;
        std::vector<std::uint32_t> contentIds; // in the order of its Contents, repeats kept
    };
    // A page that gets a background.
    struct Placement {
        Ref<PDF::Object> page;
        std::size_t foreignIndex;
        Ref<Dictionary> dictionary; // of the page; null until its resources are merged
    };

    // Reading
    bool readForeignPages() noexcept;
    bool readPageCatalog() noexcept;
    bool readContents() noexcept;
    bool readContent(ForeignPage& page) noexcept;
    bool readContentArray(ForeignPage& page, const Ref<Value>& contents) noexcept;
    bool readContentStream(
        ForeignPage& page, const Ref<ObjectRef>& reference, std::optional<std::uint64_t> element) noexcept;
    void placePages() noexcept;
    bool readCatalogResources() noexcept;
    // Writing
    bool mergeResources() noexcept;
    bool mergeResources(Placement& placement) noexcept;
    bool mergeCatalogResources() noexcept;
    bool addStreams() noexcept;
    bool updateContents() noexcept;
    bool updateContents(const Placement& placement) noexcept;
    void removeAddedObjects() noexcept;
    void restoreContents(const PDF::Object& failingPage) noexcept;

    DocumentObj& _document;
    const Ref<Document> _foreign;
    const BackgroundMode _mode;
    Cloning _foreignCloning;
    Cloning _ownCloning; // for what the pages take over from the root of their own tree
    std::vector<ForeignPage> _foreignPages;
    StackVector<Ref<PDF::Object>> _pages;
    Ref<Dictionary> _pageCatalog;
    Ref<Dictionary> _catalogResources; // null when there are none
    std::vector<Placement> _placements; // in page order, from page 0 on and without gaps
    bool _needsCatalogMerge = false;    // some foreign page has no resources of its own
    std::map<std::uint32_t, Ref<Stream>> _foreignStreams;   // by their ids
    std::map<std::uint32_t, Ref<ObjectRef>> _addedStreams; // their copies, by the same ids
    std::vector<Ref<Value>> _savedContents; // of the pages updated; null for a page that had none
};

} // namespace Libraries::Files::PDF
