#include <host/losses/PartialMarks.h>

#include <host/base/Characters.h>
#include <host/base/Keys.h>
#include <host/base/Utf8.h>

#include <algorithm>

namespace Host {

using namespace Libraries::Files::PDF;

namespace {

// The mark that the entry under this key is; null when it isn't one.
const PartialMark* markAt(const Dictionary& trailer, const Ref<::String>& key)
{
    const std::string name = toUtf8(key);
    const auto found = std::find_if(std::begin(partialMarks), std::end(partialMarks),
        [&name](const PartialMark& mark) { return isSameName(name, mark.key); });
    const bool isThere = found != std::end(partialMarks) && trailer.find(key)->type() != Value::Type::Null;
    return isThere ? found : nullptr;
}

} // namespace

const PartialMark* findPartialMark(const Dictionary& trailer) noexcept
{
    for (const Ref<::String>& key : keysOf(trailer))
        if (const PartialMark* mark = markAt(trailer, key))
            return mark;
    return nullptr;
}

bool isEncrypted(const Dictionary& trailer) noexcept
{
    const auto keys = keysOf(trailer);
    return std::any_of(keys.begin(), keys.end(), [&trailer](const Ref<::String>& key) {
        const PartialMark* mark = markAt(trailer, key);
        return mark && mark->reason == Reason::Encrypted;
    });
}

} // namespace Host
