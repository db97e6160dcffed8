// Opens a file by the core or the door, and tells why it took which.
#ifdef BY_LOADING
#include <import/Loader.h>
#else
#include <import/OpenAny.h>
#endif

#include <values/Object.h>

#include <cstdio>

int main(int argc, char** argv)
{
    if (argc < 2)
        return 2;
#ifdef BY_LOADING
    const auto opened = Import::openAny(Import::openIfInstalled, argv[1]);
#else
    const auto opened = Import::openAny(Import::open, argv[1]);
#endif
    std::puts(opened ? opened->why.c_str() : opened.refusal().message.c_str());
    return opened ? 0 : 1;
}
