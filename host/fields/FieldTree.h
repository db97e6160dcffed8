#pragma once

#include <host/base/Budget.h>
#include <host/base/Result.h>
#include <host/fields/FieldEntries.h>

#include <map>
#include <string>
#include <unordered_set>
#include <vector>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// A terminal field as the dictionaries have it.
struct FieldNode {
    std::string path;
    Ref<PDF::Dictionary> dictionary;
    FieldEntries entries;
    // The dictionaries that show it, in order: its own when it has no kids, else its kids without a name.
    std::vector<Ref<PDF::Dictionary>> widgets;
    // Other dictionaries that carry the value, too: kids without a name that have a V of their own, and fields
    // of the same path and kind.
    std::vector<Ref<PDF::Dictionary>> copies;
    bool isBelowValue = false; // a field above has a V, which is that of the field when it has none
};

// The terminal fields of a form, found by walking the dictionaries from the catalog's AcroForm. This is independent
// of the library's own fields, which don't show their dictionaries, inherit nothing and follow no references. What is
// wrong with a part of the form, which ends the library's tree, is skipped here.
//
// A field is a dictionary of Fields, or one of Kids with a text under T; one of Kids without is a widget of
// the field above. Fields of the same path and kind are one field, in the place of the first of them, as the standard
// says. Whatever the form looks like, each dictionary is visited once, down to `Limits::maxFieldLevels` levels
// and with paths of up to `Limits::maxFieldPath` bytes.
class FieldTree {
public:
    // A document without a form has an empty one. Refused: null, a document with Encrypt, one without a usable
    // catalog, an AcroForm that doesn't lead to a dictionary, and one with more names or elements than the budget has.
    static Result<FieldTree> build(const Ref<PDF::Document>& document, Budget& budget) noexcept;

    const std::vector<FieldNode>& fields() const noexcept { return _fields; }
    // The places in `fields` of those with this path, which differ in kind.
    const std::vector<std::size_t>& find(const std::string& path) const noexcept;
    // The AcroForm; null when there is none.
    const Ref<PDF::Dictionary>& form() const noexcept { return _form; }
    // What was skipped, each with its place, in words: the first `Limits::maxSkipped`.
    const std::vector<std::string>& skipped() const noexcept { return _skipped; }

private:
    struct Place;
    explicit FieldTree(Ref<PDF::Document> document) noexcept : _document(std::move(document)) {}
    bool walkList(const Ref<PDF::Value>& list, const Place& place) noexcept;
    bool walkElement(const Ref<PDF::Dictionary>& dictionary, std::uint64_t index, const Place& place) noexcept;
    void walkField(const Ref<PDF::Dictionary>& dictionary, const std::string& path, const Place& place) noexcept;
    bool walkWidget(const Ref<PDF::Dictionary>& dictionary, const Place& place) noexcept;
    void add(FieldNode field) noexcept;
    void skip(std::uint64_t index, const Place& place, std::string_view why) noexcept;

    Ref<PDF::Document> _document;
    Ref<PDF::Dictionary> _form;
    std::vector<FieldNode> _fields;
    std::vector<std::string> _skipped;
    std::map<std::string, std::vector<std::size_t>> _byPath;
    std::unordered_set<const PDF::Dictionary*> _visited;
};

} // namespace Host
