#include <host/base/ErrorWords.h>

#include <document/BackgroundPages.h>
#include <platform/Error.h>
#include <values/Object.h>

#include <cerrno>
#include <cstdio>
#include <system_error>

namespace Host {

namespace {

// What a code says to programs and to people.
struct CodeMeaning {
    Reason reason;
    std::string_view words;
};

// The one table of codes. There is no default, so that the compiler complains about a code without a row.
CodeMeaning meaningOf(std::uint32_t code)
{
    using enum Reason;
    using Libraries::Files::PDF::foreignCode;
    if (code >= foreignCode(ErrNoTrailerDict) && code <= foreignCode(ErrBadPages) && code != ErrForeignPage)
        return {BrokenRule, "the pages of the other document can't be listed"};
    switch (static_cast<ErrorCode>(code)) {
    case ErrNoHeaderLine: return {BrokenRule, "the first line is missing or empty"};
    case ErrBadHeader: return {BrokenRule, "the first line is not a PDF header of a known version"};
    case ErrNoEofMarker: return {BrokenRule, "there is no %%EOF at the very end"};
    case ErrNoStartXref: return {BrokenRule, "there is no startxref on a line of its own before the end"};
    case ErrNoTrailerKeyword: return {BrokenRule, "there is no trailer on a line of its own before startxref"};
    case ErrBadTrailer: return {BrokenRule, "the trailer, or the offset after startxref, can't be read"};
    case ErrBadXref: return {BrokenRule, "the cross-reference table can't be read"};
    case ErrBadObject: return {BrokenRule, "an object can't be read, or is not a dictionary where one is needed"};
    case ErrWrongType: return {BrokenRule, "a value is of the wrong kind"};
    case ErrNoValue: return {BrokenRule, "an object has no value"};
    case ErrBadCast: return {BrokenRule, "the class of a value doesn't match its kind"};
    case ErrUnresolved: return {BrokenRule, "a reference leads to no object"};
    case ErrBadStreamLength: return {BrokenRule, "the Length of a stream is missing, invalid or leads out of the file"};
    case ErrForeignStreamAdd: return {BrokenRule, "a content stream of the other document can't be copied"};
    case ErrWriteVersion: return {Unwritable, "the header line can't be written"};
    case ErrWriteObject: return {Unwritable, "an object can't be written"};
    case ErrWriteTrailer: return {Unwritable, "the cross-reference table or the trailer can't be written"};
    case ErrBadLineEnding: return {BrokenRule, "what follows the first line is not a line ending"};
    case ErrStreamNoDict: return {BrokenRule, "a stream has no dictionary"};
    case ErrFilterUpdate: return {BrokenRule, "the Filter of a stream can't be changed"};
    case ErrStreamConvert: return {Damaged, "the data of a stream is damaged or can't be converted"};
    case ErrConverterCreate: return {SystemFailure, "the decoder of a stream can't be created"};
    case ErrBadFilter: return {Unsupported, "the Filter of a stream is of a kind that can't be decoded"};
    case ErrFormCreate: return {BrokenRule, "the form can't be read"};
    case ErrPushButton: return {WrongArgument, "a push button has no value to set"};
    case ErrNoTrailerDict: return {BrokenRule, "there is no trailer dictionary"};
    case ErrNoRootRef: return {BrokenRule, "the trailer has no usable Root"};
    case ErrNoRoot: return {BrokenRule, "the object of Root is missing or not a dictionary"};
    case ErrBadCatalog: return {BrokenRule, "the catalog has a wrong Type or no usable Pages"};
    case ErrBadPages: return {BrokenRule, "the page tree has no usable root or Kids"};
    case ErrBadContents: return {BrokenRule, "the Contents or Resources of a page can't be used"};
    case ErrStreamLength: return {BrokenRule, "the Length of a stream can't be updated"};
    case ErrForeignPage: return {BrokenRule, "a page of the other document can't be used"};
    case ErrForeignContent: return {BrokenRule, "the content of a page of the other document can't be used"};
    case ErrForeignStreamData: return {Damaged, "the data of a content stream of the other document can't be read"};
    case ErrNoResource: return {SystemFailure, "something that is needed is not available"};
    case ErrNullArgument: return {WrongArgument, "something that is needed was not given"};
    case ErrInvalidArgument: return {WrongArgument, "something was given that can't be used"};
    case ErrNotFound: return {Missing, "there is no object of that number"};
    case ErrOutOfRange: return {WrongArgument, "a position is outside the data"};
    case ErrNoEntry: return {Missing, "there is no such field"};
    case ErrNotAvailable: return {Missing, "there is no such entry"};
    case ErrNotSupported: return {Unsupported, "this operation is not supported"};
    }
    return {SystemFailure, "unknown error"};
}

} // namespace

std::string_view errorWords(std::uint32_t code) noexcept
{
    return meaningOf(code).words;
}

std::string codeText(std::uint32_t code) noexcept
{
    char text[16];
    std::snprintf(text, sizeof text, "0x%X", code);
    return text;
}

Refusal codeRefusal(std::uint32_t code, std::string_view prefix) noexcept
{
    const auto [reason, words] = meaningOf(code);
    return {reason, std::string(prefix).append(words), code};
}

Refusal systemRefusal(Reason reason, std::string_view what, int systemError) noexcept
{
    const bool isFull = systemError == ENOSPC || systemError == EDQUOT || systemError == EFBIG;
    return {isFull && reason != Reason::Unreadable ? Reason::OutOfSpace : reason,
        std::string(what) + ": " + std::generic_category().message(systemError)};
}

std::string nameOf(const Libraries::Files::PDF::Object& object) noexcept
{
    const std::string name = "object " + std::to_string(object.id());
    return object.generation() ? name + " of generation " + std::to_string(object.generation()) : name;
}

} // namespace Host
