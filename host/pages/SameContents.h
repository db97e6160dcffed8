#pragma once

#include <document/Document.h>
#include <host/base/Budget.h>
#include <values/Array.h>

#include <unordered_map>
#include <utility>
#include <vector>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// Compares what values of two documents lead to: references are followed on both sides, streams have the
// same dictionary and the same stored data, and two values that lead back to themselves are the same when
// everything on the way is. A reference and a direct value are the same when their contents are.
//
// All comparisons together take time that grows with the two documents: values that were found to be the
// same form a class, and two of one class aren't compared again. Data is compared as far as the budget goes, and differs
// after that.
class SameContents {
public:
    SameContents(Ref<PDF::Document> document, Ref<PDF::Document> foreign, Budget& budget) noexcept
        : _document(std::move(document)), _foreign(std::move(foreign)), _budget(budget)
    {
    }

    // A reference that leads nowhere, and data that can't be read, differ from everything. After the answer false
    // the object can't be used any more: what it assumed to be the same on the way may not be.
    bool areSame(const Ref<PDF::Value>& own, const Ref<PDF::Value>& foreign) noexcept;

private:
    bool compare(const Ref<PDF::Value>& own, const Ref<PDF::Value>& foreign) noexcept;
    bool compareArrays(const PDF::Array& own, const PDF::Array& foreign) noexcept;
    bool compareDictionaries(const PDF::Dictionary& own, const PDF::Dictionary& foreign) noexcept;
    bool compareStreams(const Ref<PDF::Stream>& own, const Ref<PDF::Stream>& foreign) noexcept;
    const PDF::Value* classOf(const PDF::Value* value) noexcept;
    bool join(const PDF::Value* own, const PDF::Value* foreign) noexcept;

    const Ref<PDF::Document> _document;
    const Ref<PDF::Document> _foreign;
    Budget& _budget;
    std::vector<std::pair<Ref<PDF::Value>, Ref<PDF::Value>>> _open; // still to compare
    std::unordered_map<const PDF::Value*, const PDF::Value*> _classes; // from a value to another of its class
};

} // namespace Host
