#pragma once

#include "Documents.h"

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
