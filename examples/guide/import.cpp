// Opens any PDF file, says what was done to it for that, and saves it as it came.

#include <import/Loader.h>

#include <cstdio>

int main(int argc, char** argv)
{
    const char* const in = argc > 1 ? argv[1] : "in.pdf";
    const char* const out = argc > 2 ? argv[2] : "out.pdf";
    const std::string password = argc > 3 ? argv[3] : "";

    const auto opened = Import::openAny(Import::openIfInstalled, in, {.password = password});
    if (!opened)
        return std::fprintf(stderr, "%s\n", opened.refusal().message.c_str()), 1;
    if (opened->report)
        std::printf("imported: %s\n", opened->why.c_str()); // "cross-reference streams, object streams"

    Import::Storage storage;
    storage.isCompact = opened->report && opened->report->objectStreams > 0;
    if (opened->report && opened->report->isDecrypted) {
        storage.encryptedLike = opened->opened.file;
        storage.password = password;
    }
    const auto saved = storage.isCompact || storage.encryptedLike
        ? Import::saveIfInstalled(opened->opened, out, storage)
        : Host::save(opened->opened, out);
    if (!saved)
        return std::fprintf(stderr, "%s is as it was: %s\n", out, saved.refusal().message.c_str()), 1;
}
