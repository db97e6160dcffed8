#pragma once

#include <import/ObjectTable.h>
#include <import/PackedObjects.h>
#include <import/Source.h>

namespace Import {

// The object streams of a file, looked at before libqpdf unpacks them, which it does without any limit and without a
// word on what is wrong in them.
class ObjectStreams {
public:
    // For all streams together no more than `limit` bytes of decoded data. The others must outlive this.
    ObjectStreams(QPDF& document, Source& source, const ObjectTable& table, std::uint64_t limit);

    // Looks at all of them. Throws `Stop` when they have more data than may be, when their objects overlap too often,
    // and when they can't be looked at without unpacking others.
    void examine();

    // How many there are.
    std::size_t count() const noexcept { return _streams.size(); }
    // Objects in them that are nothing but a reference, with where it leads.
    const std::map<QPDFObjGen, QPDFObjGen>& references() const noexcept { return _references; }
    // What is wrong, and libqpdf passes over.
    const std::vector<std::string>& faults() const noexcept { return _faults; }

private:
    using Ids = std::vector<int>;

    void examineStream(int id, const Ids& wanted);
    void refuseReferences(int id);
    bool isNumber(const Reference& reference);
    std::string textOf(const ObjectTable::Entry& entry, std::size_t length);
    void examineMembers(int id, const std::string& data, const PackedObjects& objects, const Ids& wanted);

    QPDF& _document;
    Source& _source;
    const ObjectTable& _table;
    std::map<int, Ids> _streams; // the objects in each, ascending
    std::uint64_t _left;         // bytes that may still be decoded
    std::map<QPDFObjGen, QPDFObjGen> _references;
    std::vector<std::string> _faults;
};

} // namespace Import
