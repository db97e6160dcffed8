#include <platform/Reporter.h>

void LogPiece::printTo(StringPrinter& printer) const noexcept
{
    switch (_kind) {
    case Kind::Plain:
        printer.print(_plain);
        break;
    case Kind::Text:
        printer.print(_text);
        break;
    case Kind::Pointer:
        printer.hex().print(_pointer);
        break;
    case Kind::Signed:
        printer.hex().print(static_cast<std::int64_t>(_number)).print("h (");
        printer.print(static_cast<std::int64_t>(_number)).print(")");
        break;
    case Kind::Unsigned:
        printer.hex().print(_number).print("h (").print(_number).print(")");
        break;
    }
}

void Reporter::write(std::size_t handle, std::size_t level, std::initializer_list<LogPiece> pieces) noexcept
{
    if (!(SysLogFilter::level() <= level && SysLogFilter::state(handle)))
        return;
    // A printer of its own: what fails while a thread ends must not find one that is gone.
    const Ref<SysLogPrinter> printer = make<SysLogPrinter>();
    printer->begin(level, SysLogFilter::id(handle), 255);
    for (const LogPiece& piece : pieces)
        piece.printTo(*printer);
    printer->endl();
}
