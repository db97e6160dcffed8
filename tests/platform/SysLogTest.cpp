#include <platform/Reporter.h>

#include <tests/support/LogCapture.h>

#include <gtest/gtest.h>

#include <set>
#include <thread>

using namespace Tests;

namespace {

const Reporter reporter("PDF");

} // namespace

TEST(SysLog, aLineShowsNumbersInBothBasesAndIsWrittenBeforeTheCode)
{
    const LogCapture log;
    std::uint32_t codeSeen = 1;
    Error::set(0);
    SysLogStream::setSink([&codeSeen](std::size_t, Ref<::String>) {
        codeSeen = Error::get();
        Error::set(99); // a sink may use the library
    });
    const bool result = reporter.fail(ErrNoValue, "x");
    EXPECT_EQ(codeOf(result), ErrNoValue);
    EXPECT_EQ(codeSeen, 0u);

    LogCapture again;
    reporter.line("a ", 26, ", ", std::uint64_t(-1), " ", -1, text(" text "), ErrBadHeader, Ref<::String>());
    EXPECT_EQ(again.take(), Lines{"a 1Ah (26), FFFFFFFFFFFFFFFFh (18446744073709551615) FFFFFFFFFFFFFFFFh (-1) "
                                  "text 501h (1281)"});
}

TEST(SysLog, filtersAndLevelsDecide)
{
    EXPECT_FALSE(SysLogFilter::state(0));
    SysLogFilter::enable("not yet registered", true);
    EXPECT_TRUE(SysLogFilter::state(0)) << "filter 0 is on as soon as any is";
    EXPECT_TRUE(SysLogFilter::state(SysLogFilter::reg("not yet registered")));
    EXPECT_FALSE(SysLogFilter::state(SysLogFilter::reg("another")));
    SysLogFilter::enable("not yet registered", false);
    EXPECT_FALSE(SysLogFilter::state(0));

    LogCapture log("PDF", 3);
    reporter.information("too low");
    reporter.oddity("odd");
    reporter.line("failure");
    EXPECT_EQ(log.take(), (Lines{"odd", "failure"}));
}

TEST(SysLog, linesOfSeveralThreadsStayWhole)
{
    LogCapture log;
    std::vector<std::thread> threads;
    for (int id = 0; id < 4; ++id)
        threads.emplace_back([id] {
            for (int i = 0; i < 100; ++i)
                reporter.line("thread ", ::String::create(unsigned('a' + id)), " line");
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(log.lines.size(), 400u);
    EXPECT_EQ(std::set<std::string>(log.lines.begin(), log.lines.end()).size(), 4u);
}

TEST(SysLog, withoutASinkALineGoesToStandardErrorInUtf8)
{
    SysLogStream::setSink({});
    testing::internal::CaptureStderr();
    SysLogPrinter& printer = SysLogStream::stdOutPrinter();
    printer.begin(LogLevel::failure, SysLogFilter::id(0), 255).print("a ");
    printer.begin(LogLevel::failure, SysLogFilter::id(0), 255);
    const char32_t characters[] = {0x7F, 0xE4, 0x20AC, 0x1F600, 0xD800, 0xDFFF, 0x110000};
    printer.print(::String::create(std::u32string_view(characters, std::size(characters)))).endl();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "a \x7F\u00E4\u20AC\U0001F600\uFFFD\uFFFD\uFFFD\n");
}
