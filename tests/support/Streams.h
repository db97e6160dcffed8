#pragma once

#include "Documents.h"
#include "FlateData.h"

namespace Tests {

constexpr const char* flate = "/Filter /FlateDecode";

// A stripe of bytes, as callers give their data.
inline Ref<TestStripe> narrow(const std::string& bytes, Fault fault = {})
{
    return make<TestStripe>(bytes, fault, 1);
}

// The stream in a row of the object table; after the two objects of `PdfText::pages` without any.
inline Ref<PDF::Stream> streamOf(const Ref<PDF::Document>& document, std::size_t index = 2)
{
    return PDF::objectsOf(document)[index]->valueAsStream();
}

// Its data in the form in which the document holds it, and decoded, which only the first call is.
inline std::string stored(const Ref<PDF::Document>& document, std::size_t index = 2)
{
    return bytesOf(document->streamData(streamOf(document, index), false));
}
inline std::string decodedBytes(const Ref<PDF::Document>& document, std::size_t index = 2)
{
    return bytesOf(document->streamData(streamOf(document, index), true));
}

// The file that the document makes.
inline std::string written(const Ref<PDF::Document>& document)
{
    const Ref<TestStripe> out = make<TestStripe>("");
    return document && document->write(out) ? out->bytes() : "(failed)";
}

} // namespace Tests
