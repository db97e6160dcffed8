#include <stripes/ShHelper.h>

namespace {

constexpr std::size_t idWord = 3;

} // namespace

SharedHandle ShHelper::shareOut(Ref<SharedMemory> memory) noexcept
{
    if (!memory)
        return {};
    if (!_sharedOut)
        _sharedOut = make<ShIdTable<Ref<SharedMemory>>>();
    const std::uint64_t id = _sharedOut->take(memory);
    return {std::move(memory), 0, ++_handlesGivenOut, 0, id};
}

SharedHandle ShHelper::shareIn(SharedHandle handle) noexcept
{
    if (_sharedOut)
        _sharedOut->giveBack(handle.id);
    return {};
}

bool ShHelper::isUsable(BufferDesc& area, std::uint64_t count) noexcept
{
    if (area.kind != BufferDesc::Shared)
        return area.kind == BufferDesc::Plain;
    if (!area.memory && _sharedOut)
        area.memory = _sharedOut->find(area.shared[idWord]);
    return area.memory && area.offset <= area.memory->size() && area.memory->size() - area.offset >= count;
}

unsigned char* ShHelper::memoryOf(const BufferDesc& area) noexcept
{
    void* memory = area.kind == BufferDesc::Shared ? area.memory->data() : area.pointer;
    return static_cast<unsigned char*>(memory) + area.offset;
}
