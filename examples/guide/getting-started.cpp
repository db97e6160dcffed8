// Opens a file and prints its pages.

#include <host/base/Utf8.h>
#include <host/files/Open.h>
#include <values/Object.h>

#include <cstdio>

int main(int argc, char** argv)
{
    auto opened = Host::open(argc > 1 ? argv[1] : "in.pdf");
    if (!opened)
        return std::fprintf(stderr, "%s\n", opened.refusal().message.c_str()), 1;
    for (const auto& page : opened->document->getPages())
        std::printf("object %u: %s\n", page->id(), Host::toUtf8(page->value()->asText()).c_str());
}
