#pragma once

#include <platform/Export.h>

#include <cstdint>

// The codes that failing operations leave. 0x510, 0x512, 0x514, 0x604 and 0x605 stay free.
enum ErrorCode : std::uint32_t {
    ErrNoHeaderLine = 0x500,      // the first line of the file is missing or empty
    ErrBadHeader = 0x501,         // the first line is no PDF header of a known version
    ErrNoEofMarker = 0x502,       // no "%%EOF" at the end of the file
    ErrNoStartXref = 0x503,       // no "startxref" before the end marker
    ErrNoTrailerKeyword = 0x504,  // no "trailer" before "startxref"
    ErrBadTrailer = 0x505,        // the offset after "startxref" or the trailer dictionary is unreadable
    ErrBadXref = 0x506,           // the cross-reference table is unreadable, or an entry in use has offset 0
    ErrBadObject = 0x507,         // an indirect object can't be read, or a value is no dictionary
    ErrWrongType = 0x508,         // typed accessor: a value of another kind
    ErrNoValue = 0x509,           // an indirect object has no value
    ErrBadCast = 0x50A,           // kind and class of a value disagree, or AcroForm is no dictionary
    ErrUnresolved = 0x50B,        // an object reference can't be resolved
    ErrBadStreamLength = 0x50C,   // Length of a stream is missing, invalid or outside the file
    ErrForeignStreamAdd = 0x50D,  // a foreign content stream can't be cloned into the document
    ErrWriteVersion = 0x50E,      // the header line can't be written
    ErrWriteObject = 0x50F,       // an object can't be written
    ErrWriteTrailer = 0x511,      // the cross-reference table or the trailer can't be written
    ErrBadLineEnding = 0x513,     // what follows the first line is no line ending, or can't be read
    ErrStreamNoDict = 0x515,      // a stream has no dictionary
    ErrFilterUpdate = 0x516,      // Filter can't be updated in a stream's dictionary
    ErrStreamConvert = 0x517,     // stream data can't be converted or written
    ErrConverterCreate = 0x518,   // a filter or converter for a stream can't be created
    ErrBadFilter = 0x519,         // Filter of an unsupported kind
    ErrFormCreate = 0x51A,        // the form failed to build
    ErrPushButton = 0x51B,        // a value was set on a push button
    ErrNoTrailerDict = 0x600,     // the document has no trailer dictionary
    ErrNoRootRef = 0x601,         // the trailer has no usable Root
    ErrNoRoot = 0x602,            // Root can't be resolved, or isn't a dictionary
    ErrBadCatalog = 0x603,        // the catalog has a wrong Type, or no usable Pages
    ErrBadPages = 0x606,          // the root of the page tree or its Kids are unusable
    ErrBadContents = 0x607,       // Contents or Resources of a page are unusable
    ErrStreamLength = 0x608,      // Length of a stream is unusable while its data is replaced
    ErrForeignPage = 0x705,       // a foreign page can't be used
    ErrForeignContent = 0x707,    // the content of a foreign page is unusable
    ErrForeignStreamData = 0x708, // the stored data of a foreign content stream can't be had
    ErrNoResource = 0x8443,       // a helper object can't be created, or an operation below gave nothing
    ErrNullArgument = 0x8445,     // a required argument is null
    ErrInvalidArgument = 0x8446,  // an argument is empty or of an unusable kind
    ErrNotFound = 0x8481,         // no object with that id and generation
    ErrOutOfRange = 0x8484,       // an index or size is out of range
    ErrNoEntry = 0x8803,          // no such field, or the document has no form
    ErrNotAvailable = 0x10001,    // key not found, optional entry absent
    ErrNotSupported = 0x10002,    // the object doesn't offer this operation
};

// The error slot of the calling thread. Every failing operation leaves a code in it, unless its comment
// says otherwise; a success doesn't clear it, and an optional lookup may leave `ErrNotAvailable` behind.
// Code that tries things saves the slot with `get` and puts it back with `set`; `set(0)` clears it.
class EXPORTED Error {
public:
    // Puts a code into the slot; 0 for none.
    static void set(std::uint32_t code) noexcept;
    // The code in the slot; 0 when there is none.
    static std::uint32_t get() noexcept;
};
