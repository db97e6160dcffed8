#include <host/pages/CopyCount.h>

#include <host/base/Keys.h>
#include <values/Array.h>
#include <values/Dictionary.h>
#include <values/Object.h>
#include <values/ObjectRef.h>
#include <values/Stream.h>

#include <limits>

namespace Host {

using namespace Libraries::Files::PDF;

namespace {

// Up to the largest number.
std::uint64_t sum(std::uint64_t a, std::uint64_t b)
{
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    return a > most - b ? most : a + b;
}

} // namespace

std::uint64_t CopyCount::of(const Ref<Value>& value) noexcept
{
    std::vector<Open> open;
    open.push_back(opened(nullptr, value));
    for (;;) {
        Open& last = open.back();
        if (last.next < last.references.size()) {
            const Ref<PDF::Object> object = last.references[last.next++];
            const auto [known, isNew] = _counts.emplace(object.get(), 1);
            if (isNew)
                open.push_back(opened(object.get(), object->value()));
            else
                last.count = sum(last.count, known->second);
            continue;
        }
        const std::uint64_t count = last.count;
        if (last.object)
            _counts[last.object] = count;
        open.pop_back();
        if (open.empty())
            return count;
        open.back().count = sum(open.back().count, count);
    }
}

CopyCount::Open CopyCount::opened(const PDF::Object* object, const Ref<Value>& value) const noexcept
{
    Open result{object, 0, {}};
    result.count = scan(value, result.references);
    return result;
}

// The values that are there themselves; the objects that they refer to are added to the list.
std::uint64_t CopyCount::scan(const Ref<Value>& value, std::vector<Ref<PDF::Object>>& references) const noexcept
{
    std::uint64_t count = 1;
    if (const auto reference = valueAs<ObjectRef>(value)) {
        if (Ref<PDF::Object> object = _source->object(reference))
            references.push_back(std::move(object));
    } else if (const auto array = valueAs<Array>(value)) {
        for (std::uint64_t i = 0; i < array->size(); ++i)
            count += scan(array->get(i), references);
    } else if (const auto dictionary = valueAs<Dictionary>(value)) {
        for (const Ref<::String>& key : keysOf(*dictionary))
            count += scan(dictionary->find(key), references);
    } else if (const auto stream = valueAs<Stream>(value)) {
        count += scan(stream->dict(), references);
    }
    return count;
}

} // namespace Host
