// Walks all values of a document, and changes one.

#include <document/Inspection.h>
#include <document/Resolve.h>
#include <host/fields/TextString.h>
#include <host/files/Open.h>
#include <values/Array.h>
#include <values/Dictionary.h>
#include <values/Name.h>
#include <values/Object.h>
#include <values/Stream.h>
#include <values/String.h>

#include <cstdio>

namespace {

using namespace Libraries::Files;

// Calls `visit` for a value and for all that is in it. References are not followed: they may lead in circles,
// and what they lead to is an object, which is walked by itself.
template <class Visit>
void walk(const Ref<PDF::Value>& value, const Visit& visit)
{
    visit(value);
    auto dictionary = PDF::valueAs<PDF::Dictionary>(value);
    if (const auto stream = PDF::valueAs<PDF::Stream>(value))
        dictionary = stream->dict();
    if (dictionary) {
        const auto keys = dictionary->keys(); // holds the list while the loop runs
        for (const Ref<::String>& key : *keys)
            walk(dictionary->find(key), visit);
    }
    if (const auto array = PDF::valueAs<PDF::Array>(value))
        for (std::uint64_t i = 0; i < array->size(); ++i)
            walk(array->get(i), visit);
}

std::size_t countOfNames(const Ref<PDF::Document>& document)
{
    std::size_t count = 0;
    for (const auto& object : PDF::objectsOf(document))
        walk(object->value(), [&count](const auto& value) { count += value->type() == PDF::Value::Type::Name; });
    return count;
}

// Puts a text under a key of the first page.
bool mark(const Ref<PDF::Document>& document, const char* key, const char* text)
{
    const auto pages = document->getPages();
    if (pages.empty())
        return false;
    const auto page = PDF::resolveAs<PDF::Dictionary>(*document, pages.front()->value());
    return page && page->set(::String::create(key), Host::stringOf(text));
}

} // namespace

int main(int argc, char** argv)
{
    auto opened = Host::open(argc > 1 ? argv[1] : "in.pdf");
    if (!opened)
        return 1;
    std::printf("%zu names\n", countOfNames(opened->document));
    const bool isMarked = mark(opened->document, "Marked", "by the guide");
    std::printf("marked: %d, changed: %d\n", isMarked, opened->document->changed());
}
