#include <document/DocumentObj.h>

#include <document/FileWriter.h>
#include <document/Report.h>
#include <forms/Form.h>
#include <values/Dictionary.h>
#include <values/ObjectObj.h>
#include <values/ObjectRefObj.h>

#include <algorithm>

namespace Libraries::Files::PDF {

DocumentObj::DocumentObj(Ref<Interfaces::Stripe> stripe, FileContent content) noexcept
    : _stripe(std::move(stripe)), _monitor(Mon::create()), _lineEnding(std::move(content.lineEnding)),
      _version(content.version), _nextObjectId(content.nextObjectId), _trailer(std::move(content.trailer)),
      _notes(content.notes), _unkeptNotes(content.unkeptNotes), _sources(std::move(content.sources)),
      _freeRows(std::move(content.freeRows)), _firstObjectId(content.firstObjectId),
      _opening(content.opening), _objects(std::move(content.objects))
{
}

DocumentObj::~DocumentObj() noexcept = default;

Ref<Dictionary> DocumentObj::trailer() const noexcept
{
    return _trailer;
}

Ref<Object> DocumentObj::object(Ref<ObjectRef> ref) const noexcept
{
    if (!ref)
        return refuse(ErrNullArgument);
    // Ids are counted from the first one, so that they ascend also where they wrap.
    const std::uint32_t sought = ref->id() - _firstObjectId;
    const auto found = std::lower_bound(_objects.begin(), _objects.end(), sought,
        [this](const Ref<PDF::Object>& object, std::uint32_t id) { return object->id() - _firstObjectId < id; });
    if (found == _objects.end() || (*found)->id() != ref->id() || (*found)->generation() != ref->generation())
        return refuse(ErrNotFound);
    return *found;
}

bool DocumentObj::write(Ref<Interfaces::Stream> out) noexcept
{
    if (!out)
        return refuse(ErrNullArgument);
    if (out->elementSize() != sizeof(std::uint32_t))
        return refuse(ErrInvalidArgument);
    return FileWriter(*this, *_lineEnding, *out).write({_version, _objects, _trailer, _firstObjectId});
}

Ref<Dictionary> DocumentObj::writeExactly(Interfaces::Stream& out, bool isIdKept) noexcept
{
    const ExactParts exact{_nextObjectId, _freeRows, _sources, _stripe->size(), isIdKept};
    FileWriter writer(*this, *_lineEnding, out);
    return writer.write({_version, _objects, _trailer, 0, &exact}) ? writer.trailer() : nullptr;
}

bool DocumentObj::changed() const noexcept
{
    return _changed || std::any_of(_objects.begin(), _objects.end(), [](const Ref<PDF::Object>& object) {
        const Ref<Value> value = object->value();
        return value && value->changed();
    });
}

Ref<ObjectRef> DocumentObj::addObject(Ref<Value> value) noexcept
{
    if (!value)
        return refuse(ErrNullArgument);
    const std::uint32_t id = _nextObjectId++;
    _objects.push_back(make<ObjectObj>(id, std::uint16_t(0), std::move(value)));
    _changed = true;
    return make<ObjectRefObj>(id, std::uint16_t(0));
}

} // namespace Libraries::Files::PDF
