// Opens a large PDF file and tells meanwhile how far it is, through a stripe that counts what is read.

#include <document/Document.h>
#include <host/base/ErrorWords.h>
#include <host/files/FileStripe.h>
#include <stripes/BaseStripe.h>
#include <values/Object.h>

#include <cstdio>

namespace {

// Forwards everything, and shows how much was read. The library reads backwards from the end first and then
// goes through the objects, so the amount is near the size when it is done, and may exceed it.
class CountingStripe final : public Libraries::Adapters::Base::Stripe {
public:
    explicit CountingStripe(Ref<Interfaces::Stripe> wrapped) noexcept : Stripe(std::move(wrapped)) {}

    std::uint64_t read(BufferDesc& area, std::uint64_t count, std::uint32_t timeout) noexcept override
    {
        const std::uint64_t done = Stripe::read(area, count, timeout);
        const std::uint64_t before = _read;
        _read += done;
        if (before >> 20 != _read >> 20)
            std::fprintf(stderr, "\r%llu MiB ", static_cast<unsigned long long>(_read >> 20));
        return done;
    }
    // In elements, which are bytes of the file.
    std::uint64_t countOfRead() const noexcept { return _read; }

private:
    std::uint64_t _read = 0;
};

} // namespace

int main(int argc, char** argv)
{
    auto file = Host::FileStripe::open(argc > 1 ? argv[1] : "in.pdf");
    if (!file)
        return std::fprintf(stderr, "%s\n", file.refusal().message.c_str()), 1;
    const auto counting = make<CountingStripe>(*file);
    const auto document = Libraries::Files::PDF::Document::create(counting);
    if (!document)
        return std::fprintf(stderr, "%s\n", std::string(Host::errorWords(Error::get())).c_str()), 1;
    std::printf("%zu pages, %llu elements read of a file of %llu\n", document->getPages().size(),
        static_cast<unsigned long long>(counting->countOfRead()), static_cast<unsigned long long>(counting->size()));
}
