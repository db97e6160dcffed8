// Opens and closes small files, and does whole jobs, over and over in one process: files-pdf-soak [OPENS [JOBS]].
// Prints the resident memory and the number of open descriptors at each tenth of the way; exits with 1 when
// they grow after the first one, or when anything fails.

#include <host/files/Open.h>
#include <host/saving/Save.h>

#include <tests/support/TestFolder.h>
#include <tests/support/WholeJob.h>

#include <unistd.h>

#include <chrono>
#include <cstdio>

namespace {

using namespace Tests;

constexpr std::size_t tolerance = 512; // KiB: what the allocator may shift about

// What the process holds.
struct Holdings {
    std::size_t memory; // in KiB
    std::ptrdiff_t descriptors;
};

Holdings holdings()
{
    std::size_t pages = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
    return {resident * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE)) / 1024,
        std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator())};
}

// Does the work so often; false when it fails or what the process holds grows.
template <class Work>
bool repeat(const char* name, unsigned long count, Work work)
{
    Holdings first{};
    const auto start = std::chrono::steady_clock::now();
    for (unsigned long done = 0; done < count; ++done) {
        if (!work(done)) {
            std::printf("%s %lu fails with code %Xh\n", name, done + 1, unsigned(Error::get()));
            return false;
        }
        if ((done + 1) % (count / 10) != 0)
            continue;
        const Holdings now = holdings();
        if (first.memory == 0)
            first = now;
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
        std::printf("%-6s %8lu  %6zu KiB resident  %td descriptors  %6.1f s\n", name, done + 1, now.memory,
            now.descriptors, time.count());
        std::fflush(stdout);
        if (now.memory > first.memory + tolerance || now.descriptors > first.descriptors)
            return false;
    }
    return true;
}

bool doJob(const std::string& form, const std::string& letterhead, const std::string& out, unsigned long number)
{
    auto opened = Host::open(form);
    const auto beneath = Host::open(letterhead);
    if (!opened || !beneath)
        return false;
    return doWholeJob(opened->document, beneath->document, "new data " + std::to_string(number))
        && Host::save(*opened, out) && Host::open(out);
}

} // namespace

int main(int argc, char** argv)
{
    const unsigned long opens = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 1000000;
    const unsigned long jobs = argc > 2 ? std::strtoul(argv[2], nullptr, 10) : 10000;
    if (opens < 10 || jobs < 10) {
        std::fprintf(stderr, "usage: files-pdf-soak [OPENS [JOBS]], 10 at least\n");
        return 2;
    }
    const TestFolder folder;
    const std::string form = folder.put("form.pdf", jobForm());
    const std::string letterhead = folder.put("letterhead.pdf", jobLetterhead());
    const std::string damagedForm = folder.put("damaged.pdf", damaged(jobForm(), "5 0 obj", "5 0 xxx"));
    // Every tenth file is refused when half of it was read.
    const auto openOne = [&](unsigned long number) {
        return number % 10 == 9 ? !Host::open(damagedForm) : bool(Host::open(form));
    };
    const auto job = [&](unsigned long number) { return doJob(form, letterhead, folder.path("out.pdf"), number); };
    return repeat("opens", opens, openOne) && repeat("jobs", jobs, job) ? 0 : 1;
}
