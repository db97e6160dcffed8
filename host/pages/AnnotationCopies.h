#pragma once

#include <host/pages/Edit.h>
#include <host/pages/Geometry.h>
#include <host/pages/PageTree.h>
#include <values/ObjectRef.h>

#include <map>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace Host {

// Takes annotations of foreign pages along: links, form fields and all others, as a part of an edit. Each page that a
// foreign page is drawn on gets annotations of its own, turned, scaled and moved as that is. Form fields keep their
// names where these are free at the top of the form, and get a number after it where not. Signatures stay behind, and
// so does what a link leads to in the foreign document.
class AnnotationCopies {
public:
    // All must live as long.
    AnnotationCopies(Edit& edit, const Ref<PDF::Document>& foreign, PDF::ValueCopying& copying) noexcept;

    // The matrix leads from the coordinates of the foreign page to those of the page. Refused with the codes of
    // `Document::streamData`; then the edit must not be applied.
    std::optional<Refusal> copy(const Page& page, const Page& foreign, const Matrix& matrix) noexcept;
    // Enters the fields that came along into the form. Refused likewise.
    std::optional<Refusal> finish() noexcept;
    // How many signatures stayed behind.
    std::size_t signatureCount() const noexcept { return _signatureCount; }

private:
    // A foreign field and its copy for one page.
    struct Field {
        Ref<PDF::ObjectRef> reference;
        Ref<PDF::Dictionary> dictionary;
        std::vector<Ref<PDF::Value>> kids;
    };
    using Fields = std::map<const PDF::Dictionary*, Field>;
    // An annotation of a foreign page.
    struct Annotation {
        Ref<PDF::Object> object; // null where the page has the dictionary itself
        Ref<PDF::Dictionary> dictionary;
        Ref<PDF::ObjectRef> copy;
    };

    std::vector<Annotation> annotationsOf(const Page& foreign) noexcept;
    bool isSignature(Ref<PDF::Dictionary> field) const noexcept;
    Ref<PDF::Dictionary> copyEntries(const PDF::Dictionary& dictionary) noexcept;
    Ref<PDF::Dictionary> copyAnnotation(const Annotation& annotation, const Matrix& matrix) noexcept;
    void turnAppearances(const Ref<PDF::Dictionary>& annotation, const Matrix& matrix) noexcept;
    Ref<PDF::Value> turned(const Ref<PDF::Value>& appearance, const Matrix& matrix) noexcept;
    bool addToForm(const Annotation& annotation, const Ref<PDF::Dictionary>& copy, Fields& fields) noexcept;
    void addRoot(const Ref<PDF::ObjectRef>& reference, const Ref<PDF::Dictionary>& field) noexcept;
    Ref<PDF::Value> freeName(const Ref<PDF::Value>& name) noexcept;
    void readForms() noexcept;
    bool completeForm() noexcept;

    Edit& _edit;
    PDF::Document& _foreign;
    PDF::ValueCopying& _copying;
    bool _areFormsRead = false;
    Ref<PDF::Dictionary> _catalog;     // of the document
    Ref<PDF::Dictionary> _form;        // null where it has none
    Ref<PDF::Dictionary> _foreignForm; // likewise
    std::set<std::string> _names;      // of the fields at the top of the form
    std::map<std::string, std::size_t> _numbers; // given out for names that were in use
    std::vector<Ref<PDF::Value>> _roots; // fields to be entered there
    std::map<std::pair<const PDF::Value*, int>, Ref<PDF::Value>> _turned; // appearances, by their turns
    std::unordered_map<const PDF::Dictionary*, std::vector<Ref<PDF::Value>>> _annots; // what pages have so far
    std::size_t _signatureCount = 0;
    std::size_t _copiesLeft;
};

} // namespace Host
