#include <host/pages/PageContent.h>

#include <host/base/Following.h>
#include <host/pages/PageKeys.h>
#include <host/streams/FilterChain.h>
#include <values/Array.h>

namespace Host {

using namespace Libraries::Files::PDF;

PageContent contentOf(const Document& document, const Dictionary& page) noexcept
{
    PageContent content;
    const auto add = [&](const Ref<Value>& part) {
        Ref<Stream> stream = followAs<Stream>(document, part);
        if (!stream || part->type() != Value::Type::ObjectRef) {
            content.hasBrokenParts = true;
            return;
        }
        content.references.push_back(part);
        content.streams.push_back(std::move(stream));
    };
    const Ref<Value> contents = followEntry(document, page, PageKeys::contents);
    const Ref<Array> array = valueAs<Array>(contents);
    if (contents && !array)
        add(page.find(PageKeys::contents));
    for (std::uint64_t i = 0; array && i < array->size(); ++i)
        add(array->get(i));
    return content;
}

Result<JoinedContent> joinedContent(
    const Ref<Document>& document, const PageContent& content, Budget& budget) noexcept
{
    JoinedContent joined;
    if (!budget.spend(Cost::Steps, content.streams.size()))
        return budget.refusal();
    for (const Ref<Stream>& stream : content.streams) {
        const auto decoded = decodeStream(document, stream, budget);
        if (!decoded)
            return decoded.refusal();
        joined.bytes.insert(joined.bytes.end(), decoded->bytes.begin(), decoded->bytes.end());
        joined.bytes.push_back('\n');
        joined.isDamaged = joined.isDamaged || decoded->isDamaged;
    }
    return joined;
}

} // namespace Host
