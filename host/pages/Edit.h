#pragma once

#include <document/Editing.h>
#include <values/Dictionary.h>
#include <values/Object.h>
#include <values/ObjectRef.h>
#include <values/Stream.h>

#include <deque>
#include <string>
#include <string_view>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// Changes of a document that are prepared while things can fail, and made together when nothing can any more.
class Edit {
public:
    explicit Edit(const Ref<PDF::Document>& document) noexcept : objects(document) {}

    const Ref<PDF::Document>& document() const noexcept { return objects.document(); }
    // Notes that the dictionary, of the document or a new one, is to have the value under the key.
    void set(const Ref<PDF::Dictionary>& dictionary, const Ref<::String>& key, Ref<PDF::Value> value)
    {
        _entries.push_back({dictionary, key, std::move(value)});
    }
    // Makes them all. False with `ErrInvalidArgument`, and nothing changed, as `NewObjects::commit`.
    bool apply() noexcept
    {
        if (!objects.commit())
            return false;
        for (Entry& entry : _entries)
            entry.dictionary->set(entry.key, std::move(entry.value));
        _entries.clear();
        return true;
    }

    PDF::NewObjects objects;

private:
    struct Entry {
        Ref<PDF::Dictionary> dictionary;
        Ref<::String> key;
        Ref<PDF::Value> value;
    };
    std::deque<Entry> _entries; // which takes no room beyond them
};

// Values as an edit needs them.
Ref<PDF::Value> nameValue(const char* name) noexcept;
Ref<PDF::Value> numberValue(double number) noexcept;
Ref<PDF::Value> arrayOf(const std::vector<double>& numbers) noexcept;
Ref<PDF::ObjectRef> referenceTo(const PDF::Object& object) noexcept;
// A copy of a stream of the document, or a new one, with another entry in its dictionary; null with a code when its data
// can't be had.
Ref<PDF::Stream> withEntry(const Ref<PDF::Document>& document, const Ref<PDF::Stream>& stream,
    const Ref<::String>& key, const Ref<PDF::Value>& value) noexcept;
// A content stream of so little text that compressing it isn't worth it.
Ref<PDF::Value> contentStream(std::string_view text) noexcept;

} // namespace Host
