#pragma once

#include <document/Document.h>

#include <map>
#include <vector>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// How many values `Document::addBackground` makes when it copies one of another document: references are followed, each
// anew, so objects that refer twice to the next one double the count. All counts together take time that grows with the
// document.
class CopyCount {
public:
    explicit CopyCount(Ref<PDF::Document> source) noexcept : _source(std::move(source)) {}

    // Of the value and all that it leads to, itself included. A reference in a circle, which can't be copied, counts
    // once.
    std::uint64_t of(const Ref<PDF::Value>& value) noexcept;

private:
    // An object whose references are being counted.
    struct Open {
        const PDF::Object* object;
        std::uint64_t count; // so far
        std::vector<Ref<PDF::Object>> references;
        std::size_t next = 0;
    };
    Open opened(const PDF::Object* object, const Ref<PDF::Value>& value) const noexcept;
    std::uint64_t scan(const Ref<PDF::Value>& value, std::vector<Ref<PDF::Object>>& references) const noexcept;

    const Ref<PDF::Document> _source;
    std::map<const PDF::Object*, std::uint64_t> _counts; // 1 while the object is open
};

} // namespace Host
