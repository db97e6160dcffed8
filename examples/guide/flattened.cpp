// Makes the fields of a form a part of its pages.

#include <host/fields/Flatten.h>
#include <host/files/Open.h>
#include <host/saving/Save.h>

#include <cstdio>
#include <optional>

namespace {

// The reason when that can't be done; nothing is saved then.
std::optional<Host::Refusal> flatten(const Host::OpenedFile& opened)
{
    const auto done = Host::flatten(opened.document, Host::AllFields());
    if (!done)
        return done.refusal();
    std::printf("%zu fields are on %zu pages\n", done->fieldCount, done->pageCount);
    return {};
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    auto opened = Host::open(argv[1]);
    if (!opened)
        return 1;
    if (const auto refusal = flatten(*opened)) {
        std::printf("refused: %s\n", refusal->message.c_str());
        return 1;
    }
    return Host::save(*opened, argv[2]) ? 0 : 1;
}
