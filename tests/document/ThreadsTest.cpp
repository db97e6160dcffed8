#include <tests/support/Streams.h>
#include <tests/support/WholeJob.h>

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <thread>

using namespace Tests;

namespace {

constexpr unsigned threadCount = 6;

// Runs it in several threads at once; each gets its number.
void inThreads(const std::function<void(unsigned)>& work)
{
    std::atomic<unsigned> waiting = threadCount;
    std::vector<std::thread> threads;
    for (unsigned id = 0; id < threadCount; ++id)
        threads.emplace_back([&, id] {
            for (--waiting; waiting != 0;)
                std::this_thread::yield();
            work(id);
        });
    for (std::thread& thread : threads)
        thread.join();
}

// A whole job, with failures that are logged; what it wrote.
std::string job(const std::string& value)
{
    const Ref<PDF::Document> document = open(jobForm());
    EXPECT_TRUE(doWholeJob(document, open(jobLetterhead()), value));
    EXPECT_EQ(codeOf(open("no file")), ErrBadHeader);
    EXPECT_EQ(codeOf(open(damaged(jobForm(), "[     ]", "[ (x) ]"))->form()->field(0)), ErrOutOfRange);
    return written(document);
}

} // namespace

TEST(Threads, documentsOfTheirOwnDontMeet)
{
    LogCapture log;
    std::string expected[threadCount];
    for (unsigned id = 0; id < threadCount; ++id)
        expected[id] = job(std::to_string(id));
    const std::size_t linesOfAll = 10 * log.take().size();
    inThreads([&](unsigned id) {
        for (int i = 0; i < 10; ++i) {
            Error::set(id);
            EXPECT_EQ(job(std::to_string(id)), expected[id]);
        }
    });
    EXPECT_GT(linesOfAll, 0u);
    EXPECT_EQ(log.lines.size(), linesOfAll);
}

// A document and its stream data go from thread to thread, and end where the last one lets them go.
TEST(Threads, referencesAreHandedOn)
{
    const Ref<TestStripe> file = make<TestStripe>(jobForm());
    Ref<PDF::Document> document = PDF::Document::create(file);
    for (unsigned id = 0; id < threadCount; ++id)
        std::thread([handedOn = std::move(document), &document, id]() mutable {
            EXPECT_TRUE(replaceLastStream(handedOn, std::to_string(id)));
            document = std::move(handedOn);
        }).join();
    EXPECT_EQ(stored(document, 5), std::to_string(threadCount - 1));
    std::thread([last = std::move(document)] {}).join();
    EXPECT_EQ(file->counterRef(), 1u);
}

// A thread that holds a document weakly gets a whole one or none, however the others let it go; and the
// control block, made on the first call, is made once.
TEST(Threads, weakReferencesGiveAWholeDocumentOrNone)
{
    for (int round = 0; round < 20; ++round) {
        std::vector<Ref<PDF::Document>> holders(threadCount, open(jobForm()));
        const Ref<PDF::Form> form = holders[0]->form();
        std::vector<WeakRef<PDF::Document>> weak(threadCount);
        inThreads([&](unsigned id) { weak[id] = WeakRef<PDF::Document>(holders[id].get()); });
        inThreads([&](unsigned id) {
            const WeakRef<PDF::Document> own = weak[id];
            if (id % 2 == 0)
                holders[id] = nullptr;
            for (int i = 0; i < 20; ++i)
                if (const Ref<PDF::Document> locked = own.lock()) {
                    EXPECT_EQ(locked->version(), 8u);
                }
            holders[id] = nullptr;
        });
        for (const WeakRef<PDF::Document>& gone : weak)
            EXPECT_FALSE(gone.lock());
        EXPECT_EQ(form->fieldCount(), 1u) << "the form lives on without it";
    }
}

TEST(Threads, theLogIsSwitchedWhileOthersWrite)
{
    constexpr unsigned switching = 3; // threads that do so until the others are done
    std::atomic<unsigned> writing = threadCount - switching;
    std::atomic<unsigned> lines = 0;
    const auto setSink = [&lines](unsigned i) {
        SysLogStream::setSink([&lines, i](std::size_t, const Ref<::String>& line) {
            ++lines;
            EXPECT_FALSE(line->isEmpty() || (i % 2 == 0 && open("no file"))) << "a sink may use the library";
        });
    };
    setSink(0);
    inThreads([&](unsigned id) {
        for (unsigned i = 0; id < switching ? writing != 0 : i < 100 || lines < 100; ++i)
            switch (id) {
            case 0: SysLogFilter::enable("PDF", i % 4 != 0); break;
            case 1: SysLogFilter::setLevel(i % 5); break;
            case 2: setSink(i); break;
            default: EXPECT_FALSE(open(damaged(jobForm(), "5 0 obj", "5 0 xxx")));
            }
        if (id >= switching)
            --writing;
    });
    SysLogStream::setSink({});
    SysLogFilter::enable("PDF", false);
    SysLogFilter::setLevel(LogLevel::failure);
}
