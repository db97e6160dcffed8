#pragma once

#include <document/Document.h>

#include <unordered_map>
#include <utility>
#include <vector>

// What programs that change a document need besides the operations of `Document`. Dictionaries and arrays are made by
// `Dictionary::create` and `Array::create`. A document here is one that `Document::create` made.
namespace Libraries::Files::PDF {

// Enters a value into the table as a new object, of generation 0 and an id that no object had. The result refers to it,
// and so do references of this id that led nowhere before. A change of the document. Null with `ErrNullArgument`, or
// with `ErrInvalidArgument` for a document of another class.
EXPORTED Ref<ObjectRef> addObject(const Ref<Document>& document, Ref<Value> value) noexcept;

// Makes the version of the document this one, of `Document::version`, if its own is lower. False as above.
EXPORTED bool raiseVersion(const Ref<Document>& document, std::uint32_t version) noexcept;

// A stream of these bytes, stored as the dictionary says, whose `Length` is set. Null with `ErrNullArgument` when there
// is no dictionary.
EXPORTED Ref<Stream> createStream(Ref<Dictionary> dictionary, const std::vector<std::uint8_t>& stored) noexcept;

// New objects that a document gets all together or not at all: they can refer to each other, and the document is as it
// was until `commit`. Nothing else may add objects to it meanwhile.
class EXPORTED NewObjects {
public:
    explicit NewObjects(Ref<Document> document) noexcept;
    ~NewObjects() noexcept;

    const Ref<Document>& document() const noexcept { return _document; }
    // A reference to an object that is `set` later; one that never is holds the null value.
    Ref<ObjectRef> reserve() noexcept;
    // Gives a reserved object its value, or another one.
    void set(const Ref<ObjectRef>& reference, Ref<Value> value) noexcept;
    // Both in one.
    Ref<ObjectRef> add(Ref<Value> value) noexcept;
    // What the reference names among the objects that were added here, or else in the document; null for nothing.
    Ref<Value> resolve(const Ref<Value>& value) const noexcept;

    // Adds them all, in the order in which they were reserved; nothing is left to be added then. False with
    // `ErrInvalidArgument`, and nothing added, when something else was added meanwhile, or the class of the document
    // is another.
    bool commit() noexcept;

private:
    bool isOwn(const ObjectRef& reference) const noexcept;

    const Ref<Document> _document;
    std::uint32_t _firstId;
    std::vector<Ref<Value>> _values;
};

// Copies values of a document for another one. What is referred to comes along, each object once however often it is
// referred to, also in a circle; what leads nowhere becomes the null value, and so does a reference to a page, a node
// of the page tree or the catalog, which would bring the whole document, unless it has a replacement. Where the two
// documents are the same one, references stay as they are. Time grows with what is copied.
class EXPORTED ValueCopying {
public:
    // `target` must live as long.
    ValueCopying(NewObjects& target, Ref<Document> source) noexcept;
    ~ValueCopying() noexcept;

    // Lets copies have this value in the place of references to the object.
    void replace(const Ref<Object>& object, Ref<Value> by) noexcept;
    // The copy, which shares nothing that can change; the data of streams is in memory. Null with `ErrNullArgument`,
    // with the code of `Document::streamData` or `ErrNoResource` when the data of a stream can't be had, or with
    // `ErrOutOfRange` when streams that overlap give more than `Limits::maxReadings` times their file; then the new
    // objects are of no use.
    Ref<Value> copy(const Ref<Value>& value) noexcept;
    // The objects that were copied so far, with the references to their copies.
    const std::vector<std::pair<Ref<Object>, Ref<ObjectRef>>>& copied() const noexcept { return _copied; }

private:
    Ref<Value> copyParts(const Ref<Value>& value) noexcept;
    Ref<Value> copyReference(const Ref<ObjectRef>& reference) noexcept;
    Ref<Value> copyArray(const Ref<Value>& value) noexcept;
    Ref<Dictionary> copyDictionary(const Dictionary& dictionary, bool isOfStream) noexcept;
    Ref<Value> copyStream(const Ref<Stream>& stream) noexcept;

    NewObjects& _target;
    const Ref<Document> _source;
    std::unordered_map<const Object*, Ref<Value>> _places; // what copies have for references to an object
    std::vector<std::pair<Ref<Object>, Ref<ObjectRef>>> _copied;
    std::uint64_t _taken = 0; // of stream data, in elements
    std::size_t _next = 0;    // of these, whose value is still to be copied
};

} // namespace Libraries::Files::PDF
