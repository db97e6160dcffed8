#pragma once

#include <host/losses/FileExamination.h>
#include <platform/TConstArray.h>

namespace Host {

// The bytes that elements represent.
std::string bytesOf(const TConstArray<std::uint32_t>& elements) noexcept;

// Lists what saving loses of an object: of its value, of its data if it is a stream, and the comments in it
// and after it.
void examineObject(FileExamination& file, const PDF::Object& object) noexcept;

} // namespace Host
