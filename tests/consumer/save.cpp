// Opens a file and saves it as another: save IN OUT.

#include <host/files/Open.h>
#include <host/saving/Save.h>

#include <cstdio>

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    auto opened = Host::open(argv[1]);
    auto saved = opened ? Host::save(*opened, argv[2]) : opened.refusal();
    if (!saved) {
        std::printf("%s\n", saved.refusal().message.c_str());
        return 1;
    }
    std::printf("saved %llu bytes\n", static_cast<unsigned long long>(saved->size));
}
