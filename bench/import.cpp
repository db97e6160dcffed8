// What opening through libqpdf costs: by libqpdf alone, and as a document of ours.

#include <import/Import.h>

#include <bench/Program.h>
#include <import/Qpdf.h>

#include <cstdio>
#include <cstring>

namespace {

// Reads every object, and drops it in the end.
int touch(const char* path)
{
    QPDF document;
    document.setSuppressWarnings(true);
    document.setAttemptRecovery(false);
    document.processFile(path);
    Bench::print("objects", document.getAllObjects().size());
    return 0;
}

int import(const char* path)
{
    const auto imported = Import::open(path);
    if (!imported)
        std::fprintf(stderr, "%s: %s\n", path, imported.refusal().message.c_str());
    return imported ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    const char* const operation = argc == 3 ? argv[1] : "";
    if (std::strcmp(operation, "touch") == 0)
        return touch(argv[2]);
    if (std::strcmp(operation, "open") == 0)
        return import(argv[2]);
    std::fputs("usage: import touch|open FILE\n", stderr);
    return 2;
}
