#pragma once

#include <tests/support/Documents.h>
#include <tests/support/PdfText.h>
#include <tests/support/Streams.h>

#include <algorithm>
#include <regex>
#include <string>
#include <vector>

namespace Tests {

// A classic file with values of all kinds, and an object that nothing refers to.
inline const std::string classic =
    PdfText()
        .object(1, "<< /Type /Catalog /Pages 2 0 R /Names [ (text) /A#20B 1.5 null true 4 0 R (\\377\\376\\() ] >>")
        .object(2, "<< /Type /Pages /Kids [ 3 0 R ] /Count 1 >>")
        .object(3, "<< /Type /Page /Parent 2 0 R /MediaBox [ 0 0 9 9 ] /Contents 5 0 R >>")
        .object(4, "(another)")
        .stream(5, std::string(3000, 'x') + incompressible(3000))
        .stream(6, compressed(std::string(50, 'y')), flate)
        .trailer("/Size 7 /Info << /Title <FEFF0041> /File 6 0 R >>");

inline std::string writtenTextOf(const Ref<PDF::Document>& document, const Ref<PDF::Value>& value)
{
    std::string text;
    const auto written = PDF::writtenText(document, value);
    for (std::size_t i = 0; i < written->size(); ++i)
        text += char(written->data()[i]);
    return text;
}

// What a document says from its catalog on, whatever the ids of its objects.
inline std::string contentsOf(const Ref<PDF::Document>& document)
{
    static const std::regex reference("(\\d+) 0 R");
    std::vector<std::string> found;
    std::string contents;
    const auto add = [&](const Ref<PDF::Value>& value) {
        std::string text = writtenTextOf(document, value);
        for (std::smatch match; std::regex_search(text, match, reference); text = match.suffix()) {
            auto known = std::find(found.begin(), found.end(), match[1].str());
            if (known == found.end())
                known = found.insert(found.end(), match[1]);
            contents += match.prefix().str() + "#" + std::to_string(known - found.begin());
        }
        contents += text;
    };
    for (const char* key : {"Root", "Info"})
        if (const Ref<PDF::Value> value = document->trailer()->find(::String::create(key)))
            add(value);
    for (std::size_t i = 0; i < found.size(); ++i)
        for (const Ref<PDF::Object>& object : PDF::objectsOf(document))
            if (std::to_string(object->id()) == found[i])
                add(object->value());
    static const std::regex extensions("/Extensions << .*? >> >> "); // which libqpdf adds to files with some ciphers
    return std::regex_replace(contents, extensions, "");
}

} // namespace Tests
