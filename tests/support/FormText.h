#pragma once

#include <forms/Field.h>
#include <forms/Form.h>

#include "Documents.h"

#include <functional>
#include <tuple>

namespace Tests {

constexpr const char* formFilter = "Lib.File.PDF.Form";

// A file whose form has the given entries. The objects get the ids from 3 on.
inline std::string formFile(const std::string& entries, const std::vector<std::string>& objects)
{
    PdfText file;
    file.object(1, "<< /Type /Catalog /AcroForm << " + entries + " >> >>").object(2, "<< >>");
    for (std::size_t i = 0; i < objects.size(); ++i)
        file.object(static_cast<unsigned>(3 + i), objects[i]);
    return file;
}

// A document with a form of one field, which is object 3.
struct OneField {
    explicit OneField(const std::string& dictionary)
        : document(open(formFile("/Fields [ 3 0 R ]", {dictionary}))), field(document->form()->field(0)),
          entries(document->object(make<PDF::ObjectRefObj>(3, 0))->valueAsDictionary())
    {
    }

    const Ref<PDF::Document> document;
    const Ref<PDF::Field> field;
    const Ref<PDF::Dictionary> entries;
};

// The text of a value or "(null)".
template <class Kind>
std::string shown(const Ref<Kind>& value)
{
    return value ? plain(value->asText()) : "(null)";
}

} // namespace Tests
