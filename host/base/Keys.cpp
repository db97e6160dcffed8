#include <host/base/Keys.h>

namespace Host {

std::vector<Ref<::String>> keysOf(const Libraries::Files::PDF::Dictionary& dictionary) noexcept
{
    std::vector<Ref<::String>> result;
    const Ref<TVector<Ref<::String>>> keys = dictionary.keys();
    for (std::size_t i = 0; keys && i < keys->size(); ++i)
        if (Ref<::String> key = keys->get(i))
            result.push_back(std::move(key));
    return result;
}

} // namespace Host
