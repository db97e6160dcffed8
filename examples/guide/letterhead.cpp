// Puts a letterhead beneath all pages.

#include <host/files/Open.h>
#include <host/pages/Place.h>
#include <host/saving/Save.h>

#include <cstdio>

int main(int argc, char** argv)
{
    if (argc != 4)
        return 2;
    auto opened = Host::open(argv[1]);
    auto letterhead = Host::open(argv[2]);
    if (!opened || !letterhead)
        return 1;
    auto done = Host::place(opened->document, letterhead->document);
    if (!done)
        return std::fprintf(stderr, "%s\n", done.refusal().message.c_str()), 1;
    for (const std::string& warning : done->warnings)
        std::fprintf(stderr, "%s\n", warning.c_str());
    return Host::save(*opened, argv[3]) ? 0 : 1;
}
