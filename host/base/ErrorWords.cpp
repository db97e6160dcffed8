#include <host/base/ErrorWords.h>

#include <platform/Error.h>
#include <values/Object.h>

#include <cstdio>
#include <system_error>

namespace Host {

// The one table of words. There is no default, so that the compiler complains about a code without words.
std::string_view errorWords(std::uint32_t code) noexcept
{
    constexpr std::uint32_t foreign = 0x100; // is added where the page list of a foreign document fails
    if (code >= ErrNoTrailerDict + foreign && code <= ErrBadPages + foreign && code != ErrForeignPage)
        return "the pages of the other document can't be listed";
    switch (static_cast<ErrorCode>(code)) {
    case ErrNoHeaderLine: return "the first line is missing or empty";
    case ErrBadHeader: return "the first line is no PDF header of a known version";
    case ErrNoEofMarker: return "there is no %%EOF at the very end";
    case ErrNoStartXref: return "there is no startxref on a line of its own before the end";
    case ErrNoTrailerKeyword: return "there is no trailer on a line of its own before startxref";
    case ErrBadTrailer: return "the trailer, or the offset behind startxref, can't be read";
    case ErrBadXref: return "the cross-reference table can't be read";
    case ErrBadObject: return "an object can't be read, or is no dictionary where one is needed";
    case ErrWrongType: return "a value is of another kind than is needed";
    case ErrNoValue: return "an object has no value";
    case ErrBadCast: return "a value is not of the class that its kind says";
    case ErrUnresolved: return "a reference leads to no object";
    case ErrBadStreamLength: return "the Length of a stream is missing, invalid or leads out of the file";
    case ErrForeignStreamAdd: return "a content stream of the other document can't be taken over";
    case ErrWriteVersion: return "the header line can't be written";
    case ErrWriteObject: return "an object can't be written";
    case ErrWriteTrailer: return "the cross-reference table or the trailer can't be written";
    case ErrBadLineEnding: return "what follows the first line is no line ending";
    case ErrStreamNoDict: return "a stream has no dictionary";
    case ErrFilterUpdate: return "the Filter of a stream can't be changed";
    case ErrStreamConvert: return "the data of a stream is damaged or can't be converted";
    case ErrConverterCreate: return "the decoder of a stream can't be made";
    case ErrBadFilter: return "the Filter of a stream is of a kind that can't be decoded";
    case ErrFormCreate: return "the form can't be read";
    case ErrPushButton: return "a push button has no value to be set";
    case ErrNoTrailerDict: return "there is no trailer dictionary";
    case ErrNoRootRef: return "the trailer has no usable Root";
    case ErrNoRoot: return "the object of Root is missing or no dictionary";
    case ErrBadCatalog: return "the catalog has a wrong Type or no usable Pages";
    case ErrBadPages: return "the page tree has no usable root or Kids";
    case ErrBadContents: return "the Contents or Resources of a page can't be used";
    case ErrStreamLength: return "the Length of a stream can't be brought up to date";
    case ErrForeignPage: return "a page of the other document can't be used";
    case ErrForeignContent: return "the content of a page of the other document can't be used";
    case ErrForeignStreamData: return "the data of a content stream of the other document can't be read";
    case ErrNoResource: return "something that is needed could not be had";
    case ErrNullArgument: return "something that is needed was not given";
    case ErrInvalidArgument: return "something was given that can't be used";
    case ErrNotFound: return "there is no object of that number";
    case ErrOutOfRange: return "a place lies outside of the data";
    case ErrNoEntry: return "there is no such field";
    case ErrNotAvailable: return "there is no such entry";
    case ErrNotSupported: return "that is not offered";
    }
    return "a failure of an unknown kind";
}

std::string codeText(std::uint32_t code) noexcept
{
    char text[16];
    std::snprintf(text, sizeof text, "0x%X", code);
    return text;
}

Refusal codeRefusal(std::uint32_t code, std::string_view prefix) noexcept
{
    return {std::string(prefix).append(errorWords(code)), code};
}

Refusal systemRefusal(std::string_view what, int systemError) noexcept
{
    return {std::string(what) + ": " + std::generic_category().message(systemError)};
}

std::string nameOf(const Libraries::Files::PDF::Object& object) noexcept
{
    const std::string name = "object " + std::to_string(object.id());
    return object.generation() ? name + " of generation " + std::to_string(object.generation()) : name;
}

} // namespace Host
