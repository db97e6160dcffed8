// A library that has nothing to do with this one but the names of its classes.

#include <cstdio>
#include <cstdlib>

#define SHOWN __attribute__((visibility("default")))

namespace {

[[noreturn]] void fail(const char* name)
{
    std::fprintf(stderr, "%s of the other library was called\n", name);
    std::abort();
}

} // namespace

struct Pool {
    SHOWN static void* alloc(unsigned long);
    SHOWN static void free(void*, unsigned long);
};

struct Error {
    SHOWN static void set(unsigned);
};

struct SysLogFilter {
    SHOWN static unsigned long reg(const char*);
};

void* Pool::alloc(unsigned long)
{
    fail("Pool::alloc");
}

void Pool::free(void*, unsigned long)
{
    fail("Pool::free");
}

void Error::set(unsigned)
{
    fail("Error::set");
}

unsigned long SysLogFilter::reg(const char*)
{
    fail("SysLogFilter::reg");
}
