#pragma once

#include <platform/Error.h>
#include <platform/SysLog.h>

#include <concepts>
#include <initializer_list>
#include <vector>

// How an operation says that it failed. It reads as false, as a null `Ref` and as an empty vector,
// and as nothing else, so that a failure is one statement:
//
//     return report.fail(ErrStreamLength, "No length entry in dictionary of stream ", name);
struct Failure {
    template <std::same_as<bool> Bool>
    operator Bool() const noexcept
    {
        return false;
    }
    template <class T>
    operator Ref<T>() const noexcept
    {
        return nullptr;
    }
    template <class T>
    operator std::vector<T>() const noexcept
    {
        return {};
    }
};

// Sets a code without a line.
inline Failure refuse(std::uint32_t code) noexcept
{
    Error::set(code);
    return {};
}

// The same for an operation that moves elements and has moved none.
inline std::uint64_t moveNothing(std::uint32_t code) noexcept
{
    Error::set(code);
    return 0;
}

// One piece of a log line. A number prints as 1Ah (26), a pointer as its hexadecimal value alone.
class LogPiece {
public:
    LogPiece(const char* text) noexcept : _kind(Kind::Plain), _plain(text) {}
    LogPiece(const Ref<::String>& text) noexcept : _kind(Kind::Text), _text(text.get()) {}
    LogPiece(const void* pointer) noexcept : _kind(Kind::Pointer), _pointer(pointer) {}
    template <std::integral Integer>
    LogPiece(Integer number) noexcept
        : _kind(std::signed_integral<Integer> ? Kind::Signed : Kind::Unsigned), _number(std::uint64_t(number))
    {
    }
    template <class Enum>
        requires(std::is_enum_v<Enum>)
    LogPiece(Enum number) noexcept : LogPiece(std::underlying_type_t<Enum>(number))
    {
    }

    void printTo(StringPrinter& printer) const noexcept;

private:
    enum class Kind { Plain, Text, Pointer, Signed, Unsigned };

    Kind _kind;
    union {
        const char* _plain;
        const ::String* _text; // lives as long as the statement that logs
        const void* _pointer;
        std::uint64_t _number;
    };
};

// The log handle of one source unit.
class Reporter {
public:
    explicit Reporter(const char* filter) noexcept : _handle(SysLogFilter::reg(filter)) {}

    // Writes a line of level 4, then sets the code: in this order, so that a sink which itself
    // uses the library can't spoil the slot.
    template <class... Pieces>
    Failure fail(std::uint32_t code, const Pieces&... pieces) const noexcept
    {
        write(_handle, LogLevel::failure, {LogPiece(pieces)...});
        return refuse(code);
    }
    // Writes a line of level 4 and leaves the slot to the caller.
    template <class... Pieces>
    Failure line(const Pieces&... pieces) const noexcept
    {
        write(_handle, LogLevel::failure, {LogPiece(pieces)...});
        return {};
    }
    // The same at level 3, for something odd that the operation survives, and at level 1.
    template <class... Pieces>
    Failure oddity(const Pieces&... pieces) const noexcept
    {
        write(_handle, LogLevel::oddity, {LogPiece(pieces)...});
        return {};
    }
    template <class... Pieces>
    Failure information(const Pieces&... pieces) const noexcept
    {
        write(_handle, LogLevel::information, {LogPiece(pieces)...});
        return {};
    }

    // The line itself, if the log lets it through.
    static void write(std::size_t handle, std::size_t level, std::initializer_list<LogPiece> pieces) noexcept;

private:
    const std::size_t _handle;
};
