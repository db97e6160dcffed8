#pragma once

#include <document/Resolve.h>
#include <host/pages/PageTree.h>
#include <host/streams/StreamBytes.h>

#include "Documents.h"

#include <algorithm>

namespace Tests {

// The value as it is in a written file.
inline std::string valueText(const Ref<PDF::Document>& document, const Ref<PDF::Value>& value)
{
    if (!value)
        return "none";
    const Ref<TConstArray<std::uint32_t>> characters = PDF::writtenText(document, value);
    return std::string(characters->data(), characters->data() + characters->size());
}

inline Ref<PDF::Object> objectOf(const Ref<PDF::Document>& document, std::uint32_t id)
{
    for (const Ref<PDF::Object>& object : PDF::objectsOf(document))
        if (object->id() == id)
            return object;
    return nullptr;
}

inline std::string objectText(const Ref<PDF::Document>& document, std::uint32_t id)
{
    return valueText(document, objectOf(document, id)->value());
}

// An entry of a page's dictionary as it is there.
inline std::string pageEntry(const Ref<PDF::Document>& document, std::size_t page, const char* key)
{
    const Ref<PDF::Dictionary> dictionary = document->getPages()[page]->valueAsDictionary();
    return dictionary ? valueText(document, dictionary->find(text(key))) : "no dictionary";
}

// The ids of the object table, in its order, from `first` on.
inline std::string idsFrom(const Ref<PDF::Document>& document, std::uint32_t first)
{
    std::string result;
    for (const Ref<PDF::Object>& object : PDF::objectsOf(document))
        if (object->id() >= first)
            result += (result.empty() ? "" : " ") + std::to_string(object->id());
    return result;
}

// What the page draws: its streams one after another, decoded, each line feed as a bar.
inline std::string drawn(const Ref<PDF::Document>& document, std::size_t index = 0)
{
    const auto dictionary = Host::pages(document)->pages[index].dictionary;
    std::string all;
    const auto add = [&](const Ref<PDF::Value>& part) {
        const auto held = PDF::valueAs<PDF::Stream>(PDF::resolve(*document, part));
        const auto bytes = held ? Host::decoded(document, held)
                                : Host::Result<std::vector<std::uint8_t>>(std::vector<std::uint8_t>());
        all += std::string(bytes->begin(), bytes->end());
        all += all.ends_with('\n') ? "" : "|";
    };
    const auto contents = PDF::resolve(*document, dictionary->find(text("Contents")));
    if (const auto array = PDF::valueAs<PDF::Array>(contents))
        for (std::uint64_t i = 0; i < array->size(); ++i)
            add(array->get(i));
    else
        add(dictionary->find(text("Contents")));
    std::replace(all.begin(), all.end(), '\n', '|');
    return all;
}

// Puts the first page of the other document beneath that of the document.
inline bool addBeneath(const Ref<PDF::Document>& document, const Ref<PDF::Document>& foreign)
{
    return document->addBackground(foreign, PDF::BackgroundMode::FirstPageOnly);
}

// The id that the next new object gets. One is added to find out, beneath the first page.
inline std::uint32_t nextId(const Ref<PDF::Document>& document)
{
    const Ref<PDF::Document> foreign
        = open(PdfText().pages("3 0 R").object(3, "<< /Contents 4 0 R >>").stream(4, ""));
    // An unknown mode adds the content stream and places it nowhere.
    document->addBackground(foreign, PDF::BackgroundMode(7));
    return PDF::objectsOf(document).back()->id();
}

} // namespace Tests
