#include <host/annotations/AnnotationLists.h>

#include <host/base/Following.h>
#include <host/pages/PageKeys.h>
#include <values/Array.h>

#include <unordered_set>

namespace Host {

using namespace Libraries::Files::PDF;

const AnnotationLists::Annotations& AnnotationLists::takeOff(const Page& page) noexcept
{
    static const Annotations none;
    const Ref<Value> entry = page.dictionary->find(PageKeys::annots);
    const Ref<Array> array = followAs<Array>(*_edit.document(), entry);
    if (!array)
        return none;
    const auto [place, isNew] = _lists.try_emplace(array.get());
    if (isNew)
        place->second = split(*array, valueAs<ObjectRef>(entry) != nullptr);
    if (!place->second.gone.empty())
        _edit.set(page.dictionary, PageKeys::annots, place->second.rest);
    return place->second.gone;
}

AnnotationLists::List AnnotationLists::split(const Array& array, bool isShareable) noexcept
{
    List list;
    std::vector<Ref<Value>> rest;
    std::unordered_set<const Dictionary*> found;
    for (std::uint64_t i = 0; i < array.size(); ++i) {
        Ref<Dictionary> annotation = followAs<Dictionary>(*_edit.document(), array.get(i));
        if (!annotation || !_goes(*annotation))
            rest.push_back(array.get(i));
        else if (found.insert(annotation.get()).second)
            list.gone.push_back(std::move(annotation));
    }
    if (rest.empty() || list.gone.empty())
        return list;
    list.rest = Array::create(rest);
    if (isShareable)
        list.rest = _edit.objects.add(list.rest);
    return list;
}

} // namespace Host
