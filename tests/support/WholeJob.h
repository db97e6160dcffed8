#pragma once

#include <document/Inspection.h>
#include <forms/Form.h>
#include <forms/Text.h>
#include <values/Object.h>
#include <values/Stream.h>
#include <values/String.h>

#include "FlateData.h"
#include "LogCapture.h"
#include "PdfText.h"

namespace Tests {

// A form of one field, and what goes beneath its page.
inline std::string jobForm()
{
    return PdfText().object(1, "<< /Type /Catalog /Pages 2 0 R /AcroForm << /Fields [ 4 0 R ] >> >>")
        .object(2, "<< /Type /Pages /Kids [ 3 0 R ] >>").object(3, "<< /Contents 5 0 R >>")
        .object(4, "<< /FT /Tx /T (name) /Kids [     ] >>").stream(5, compressed("text"), "/Filter /FlateDecode")
        .stream(6, "to be replaced");
}
inline std::string jobLetterhead()
{
    return PdfText().pages("3 0 R").object(3, "<< /Contents 4 0 R /Resources << /XObject << /X 5 0 R >> >> >>")
        .stream(4, "letterhead").stream(5, incompressible(20000));
}

inline bool replaceLastStream(const Ref<PDF::Document>& document, const std::string& data)
{
    const Ref<PDF::Stream> stream = PDF::objectsOf(document)[5]->valueAsStream();
    return document->setStreamData(stream, make<TestStripe>(data, Fault(), 1), true);
}

// Everything that is done to such a document before it is saved.
inline bool doWholeJob(
    const Ref<PDF::Document>& document, const Ref<PDF::Document>& letterhead, const std::string& value)
{
    const auto name = document->form()->fieldByPath(text("name")).cast<PDF::Fields::Text>();
    return name->setValue(PDF::String::create(text(value)))
        && document->addBackground(letterhead, PDF::BackgroundMode::AllPages)
        && document->recompress(PDF::Compression::Flate) && document->recompress(PDF::Compression::None)
        && document->cacheStreams() && replaceLastStream(document, value);
}

} // namespace Tests
