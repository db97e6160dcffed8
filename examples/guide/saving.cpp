// Saves a file over itself, and says why when that is refused.

#include <host/files/Open.h>
#include <host/saving/Save.h>

#include <cstdio>

int main(int argc, char** argv)
{
    if (argc != 2)
        return 2;
    auto opened = Host::open(argv[1]);
    if (!opened)
        return 1;
    Host::SaveOptions options;
    options.isStrict = true; // refuse what would lose some of its meaning
    const auto saved = Host::save(*opened, argv[1], options);
    if (!saved)
        return std::fprintf(stderr, "%s is as it was: %s\n", argv[1], saved.refusal().message.c_str()), 1;
    std::printf("%llu bytes\n", static_cast<unsigned long long>(saved->size));
}
