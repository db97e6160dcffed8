// Opens a file and prints its pages.

#include <document/ExactWriting.h>
#include <host/base/Utf8.h>
#include <host/files/Open.h>
#include <host/pages/PageTree.h>

#include <cstdio>

int main(int argc, char** argv)
{
    auto opened = Host::open(argc > 1 ? argv[1] : "in.pdf");
    if (!opened)
        return std::fprintf(stderr, "%s\n", opened.refusal().message.c_str()), 1;
    const auto tree = Host::pages(opened->document);
    if (!tree)
        return std::fprintf(stderr, "%s\n", tree.refusal().message.c_str()), 1;
    for (const Host::Page& page : tree->pages)
        if (const auto text = exactText(opened->document, page.dictionary))
            std::printf("page: %s\n", Host::toUtf8(std::u32string(text->data(), text->data() + text->size())).c_str());
    for (const std::string& problem : tree->problems)
        std::printf("problem: %s\n", problem.c_str());
}
