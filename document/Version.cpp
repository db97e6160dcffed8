#include <document/Version.h>

#include <document/Report.h>
#include <platform/StrConv.h>

namespace Libraries::Files::PDF {

namespace {

constexpr std::uint32_t version10 = 1;
constexpr std::uint32_t version17 = 8;
constexpr std::uint32_t version20 = 13;

std::uint32_t unsupported(const char* message, const Ref<::String>& text)
{
    report.line(message, text);
    return 0;
}

} // namespace

std::uint32_t versionFromStrings(const Ref<::String>& major, const Ref<::String>& minor) noexcept
{
    unsigned long long majorNumber = 0;
    unsigned long long minorNumber = 0;
    if (!StrConv::num(major, &majorNumber, nullptr))
        return unsupported("Unsupported major version: ", major);
    if (!StrConv::num(minor, &minorNumber, nullptr))
        return unsupported("Unsupported minor version: ", minor);
    if (majorNumber != 1 && majorNumber != 2)
        return unsupported("Unsupported major version: ", major);
    if (majorNumber == 2 && minorNumber == 0)
        return version20;
    if (majorNumber == 1 && minorNumber <= version17 - version10)
        return version10 + static_cast<std::uint32_t>(minorNumber);
    report.line("Unsupported minor version for major version ", major, ": ", minor);
    return 0;
}

Ref<::String> versionToString(std::uint32_t version) noexcept
{
    if (version == version20)
        return ::String::create("PDF-2.0");
    if (version < version10 || version > version17)
        return report.oddity("PDF version can not be converted to string ", version);
    return ::String::create("PDF-1.")->append(char('0' + (version - version10)));
}

} // namespace Libraries::Files::PDF
