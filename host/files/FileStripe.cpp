#include <host/files/FileStripe.h>

namespace Host {

template <class Element>
Result<Ref<FileStripeOf<Element>>> FileStripeOf<Element>::open(const std::string& path) noexcept
{
    Result<FileBytes> bytes = FileBytes::open(path);
    if (!bytes)
        return bytes.refusal();
    return make<FileStripeOf>(std::move(*bytes));
}

template class FileStripeOf<std::uint32_t>;
template class FileStripeOf<std::uint8_t>;

} // namespace Host
