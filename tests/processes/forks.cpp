// Forks while threads that use the library begin and end: files-pdf-forks COUNT. Each child uses the library in a
// thread of its own; exits with 1 when one doesn't get through.

#include <tests/support/Documents.h>

#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <thread>

namespace {

// A child that waits for ever ends by a signal; no work of this program's takes nearly as long.
constexpr unsigned patience = 60; // seconds

void work()
{
    std::thread([] { Tests::text("x"); }).join();
}

bool forkOnce()
{
    const pid_t child = ::fork();
    if (child < 0)
        std::abort();
    if (child == 0) {
        ::alarm(patience);
        work();
        ::_exit(0);
    }
    int status = 0;
    return ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

} // namespace

int main(int argc, char** argv)
{
    const unsigned long count = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 1000;
    std::atomic<bool> isOver{false};
    std::vector<std::thread> others;
    for (int i = 0; i < 3; ++i)
        others.emplace_back([&isOver] {
            while (!isOver)
                work();
        });
    unsigned long hung = 0;
    for (unsigned long i = 0; i < count && hung == 0; ++i)
        hung += !forkOnce();
    isOver = true;
    for (std::thread& other : others)
        other.join();
    std::printf("%lu forks, %lu children that never ended\n", count, hung);
    return hung ? 1 : 0;
}
