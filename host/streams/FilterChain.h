#pragma once

#include <document/Document.h>
#include <host/base/Budget.h>
#include <host/base/Result.h>
#include <host/streams/Predictor.h>
#include <values/Dictionary.h>
#include <values/Stream.h>

#include <string>
#include <vector>

namespace Host {

namespace PDF = Libraries::Files::PDF;

// One filter of a stream, and what its parameters say.
struct FilterStep {
    // As it is written, with the short forms of inline images written out: FlateDecode.
    std::string name;
    Decoders::Predictor predictor; // of FlateDecode and LZWDecode
    bool isEarly = true;           // of LZWDecode

    // Whether `decodeStream` knows it.
    EXPORTED bool isSupported() const noexcept;
};

// The filters of a stream in the order in which they are undone, by `Filter` and `DecodeParms`, references followed.
// Refused with `ErrBadFilter` what is neither a name nor an array of names, one longer than
// `Limits::maxFilters`, and parameters that can't be.
EXPORTED Result<std::vector<FilterStep>> filtersOf(
    const Ref<PDF::Document>& document, const PDF::Dictionary& dictionary) noexcept;

// What a stream decodes to.
struct DecodedStream {
    std::vector<std::uint8_t> bytes;
    // The data is wrong or cut at some place, and these are the bytes before it.
    bool isDamaged = false;
};

// The data of a stream through all of its filters: FlateDecode and LZWDecode with their predictors, ASCII85Decode,
// ASCIIHexDecode and RunLengthDecode, and Crypt where it does nothing. Data that the stream holds counts as stored.
// All steps together may give as many bytes as `limit` says; 0 stands for `Limits::decodedData` of the file, or of the
// stored data where that is more.
//
// Refused with `ErrBadFilter` and the name of the filter for any other, `Reason::LimitReached` (`ErrOutOfRange`) for
// more data, with the codes of `Document::streamData`, and with `ErrStreamConvert` for data that can't be read.
EXPORTED Result<DecodedStream> decodeStream(
    const Ref<PDF::Document>& document, const Ref<PDF::Stream>& stream, std::size_t limit = 0) noexcept;
// The same within a budget, for operations that decode many streams.
Result<DecodedStream> decodeStream(
    const Ref<PDF::Document>& document, const Ref<PDF::Stream>& stream, Budget& budget) noexcept;

} // namespace Host
