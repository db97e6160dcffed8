// Says what saving a file would lose, before anything is done.

#include <host/losses/Examine.h>

#include <cstdio>

int main(int argc, char** argv)
{
    const auto examination = Host::examine(argc > 1 ? argv[1] : "in.pdf");
    if (!examination)
        return std::fprintf(stderr, "%s\n", examination.refusal().message.c_str()), 1;
    const Host::Losses& losses = examination->losses;
    if (losses.countOfMeaning() == 0)
        return std::printf("nothing is lost\n"), 0;
    std::printf("%s\n", losses.summary().c_str());
    for (const Host::Loss& loss : losses.all())
        if (loss.kind != Host::LossKind::Comment)
            std::printf("object %u, byte %llu: \"%s\" becomes \"%s\"\n", loss.id,
                static_cast<unsigned long long>(loss.offset), loss.inFile.c_str(), loss.written.c_str());
    return 1;
}
