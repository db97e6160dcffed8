#pragma once

#include <document/Document.h>
#include <document/FileReader.h>
#include <document/KeptSources.h>
#include <platform/Mon.h>
#include <platform/Reporter.h>
#include <values/Object.h>

#include <algorithm>
#include <vector>

namespace Libraries::Files::PDF {

class Number;
class NumberObj;
class StreamObj;
class SubStripe;
struct StoredSizes;

class DocumentObj final : public ::Object, public virtual Document {
public:
    // The document of a file that was read.
    DocumentObj(Ref<Interfaces::Stripe> stripe, FileContent content) noexcept;
    ~DocumentObj() noexcept override;

    // Document
    std::uint32_t version() const noexcept override { return _version; }
    Ref<Dictionary> trailer() const noexcept override;
    Ref<Form> form() noexcept override;
    Ref<PDF::Object> object(Ref<ObjectRef> ref) const noexcept override;
    bool write(Ref<Interfaces::Stream> out) noexcept override;
    Ref<Interfaces::Stripe> streamData(Ref<Stream> stream, bool decoded) noexcept override;
    bool setStreamData(Ref<Stream> stream, Ref<Interfaces::Stripe> data, bool compress) noexcept override;
    bool cacheStreams() noexcept override;
    bool changed() const noexcept override;
    bool addBackground(Ref<Document> foreign, BackgroundMode mode) noexcept override;
    bool recompress(Compression target) noexcept override;

    // All objects, in table order.
    const std::vector<Ref<PDF::Object>>& objects() const noexcept { return _objects; }
    // Of the table that was read, as `FileContent` has them.
    const std::vector<FreeRow>& freeRows() const noexcept { return _freeRows; }
    const Ref<::String>& lineEnding() const noexcept { return _lineEnding; }
    // As `PDF::storedSizes`.
    StoredSizes storedSizes() const noexcept;
    // As `PDF::readingNotes` and `PDF::unwrittenNotes`.
    ReadingNotes readingNotes() const noexcept;
    ReadingNotes unwrittenNotes() const noexcept;
    const KeptSources& sources() const noexcept { return _sources; }
    // As `PDF::writeExactly`, to a stream of 4-byte elements.
    Ref<Dictionary> writeExactly(Interfaces::Stream& out, bool isIdKept) noexcept;
    std::uint64_t fileSize() const noexcept { return _stripe->size(); }
    // As `PDF::isOfOtherFile`.
    bool isOfOtherFile(const Stream& stream) const noexcept;
    // Enters a value into the table as a new object. Null with `ErrNullArgument`.
    Ref<ObjectRef> addObject(Ref<Value> value) noexcept;
    // The id that the next new object gets.
    std::uint32_t nextObjectId() const noexcept { return _nextObjectId; }
    // Never lowers it.
    void raiseVersion(std::uint32_t version) noexcept { _version = std::max(_version, version); }

private:
    void noteDataEnds(ReadingNotes& notes) const noexcept;

    // Stream data
    bool isFromHere(const StreamObj& stream) const noexcept;
    Ref<Number> storedLength(const Dictionary& dictionary) noexcept;
    Ref<Interfaces::Stripe> decode(const Ref<SubStripe>& stored, std::uint64_t length) noexcept;

    Ref<NumberObj> lengthToPatch(const Dictionary& dictionary, const LogPiece& stream) noexcept;
    // A stream that was brought to another compression, and what takes it back.
    struct Recompression {
        Ref<StreamObj> stream;
        Ref<Interfaces::Stripe> oldData;
        Ref<NumberObj> length;
        std::int64_t oldLength;
        Ref<Value> oldFilter; // null when there was none
    };
    bool recompressObject(
        const PDF::Object& object, Compression target, std::vector<Recompression>& done) noexcept;
    Ref<Interfaces::Stripe> recompressData(const Ref<Interfaces::Stripe>& stored, std::int64_t length,
        Dictionary& dictionary, Compression target, std::uint32_t id) noexcept;
    void rollBack(const std::vector<Recompression>& done) noexcept;

    // Form
    bool loadForm() noexcept;
    std::uint32_t makeForm(Ref<Value> acroForm) noexcept;

    // Page composition. The classes are in document/PageComposition.h.
    class Cloning;
    class Merging;
    class Background;

    // Released from the last to the first.
    Ref<Interfaces::Stripe> _stripe; // the file
    Ref<Mon> _monitor;               // guards the stripe's position while views read it
    Ref<::String> _lineEnding;
    std::uint32_t _version;
    bool _changed = false; // objects were added
    std::uint32_t _nextObjectId;
    Ref<Dictionary> _trailer;
    ReadingNotes _notes;            // of the opening
    ReadingNotes _unkeptNotes;      // of these those in no value whose source was kept
    KeptSources _sources;
    std::vector<FreeRow> _freeRows; // of the file's table
    std::uint32_t _firstObjectId;   // of the table's subsection; the writer repeats it
    std::uint32_t _opening;         // the number of the streams that were read from the file
    // The object table. Ids ascend from `_firstObjectId`, counted in 32 bits that may wrap; free entries
    // leave no hole, and new objects are appended.
    std::vector<Ref<PDF::Object>> _objects;
    Ref<Form> _form; // null until it was asked for, and when there is none
    // A log sink may ask for the form while the search is under way.
    enum class FormSearch { Ahead, UnderWay, Over };
    FormSearch _formSearch = FormSearch::Ahead;
    std::uint32_t _formError = 0; // what `form` leaves each time; 0 for none
};

} // namespace Libraries::Files::PDF
