// Opens many files on several threads, and counts their pages.

#include <host/files/Open.h>
#include <values/Object.h>

#include <atomic>
#include <cstdio>
#include <thread>
#include <vector>

namespace {

struct Work {
    const std::vector<std::string> paths;
    std::atomic<std::size_t> next{0};
    std::atomic<std::size_t> pages{0};
    std::atomic<std::size_t> refused{0};
};

// What each thread does. The documents are its own from the opening to the end.
void countPages(Work& work)
{
    for (std::size_t i; (i = work.next++) < work.paths.size();)
        if (const auto opened = Host::open(work.paths[i]))
            work.pages += opened->document->getPages().size();
        else
            ++work.refused;
}

} // namespace

int main(int argc, char** argv)
{
    Work work{{argv + 1, argv + argc}};
    std::vector<std::thread> threads;
    for (unsigned i = 0; i < 2; ++i)
        threads.emplace_back(countPages, std::ref(work));
    for (std::thread& thread : threads)
        thread.join();
    std::printf("%zu pages, %zu refused\n", work.pages.load(), work.refused.load());
}
