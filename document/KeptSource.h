#pragma once

#include <document/ReadingNotes.h>
#include <platform/TConstArray.h>
#include <values/Value.h>

namespace Libraries::Files::PDF {

// What an array or a dictionary is written with in its file that the reading took apart otherwise than the format.
struct KeptSource {
    Ref<Value> value;
    Ref<TConstArray<std::uint8_t>> bytes; // brackets included
    ReadingNote note;                     // the first one in it
    std::uint64_t count;                  // of all
    std::uint32_t id;                     // of the object that it was read in
    std::uint64_t offset;                 // of the first note
};

} // namespace Libraries::Files::PDF
