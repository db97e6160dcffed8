#pragma once

#include <cstdint>

namespace Libraries::Files::PDF {

// How a stream's data is stored, as its dictionary's `Filter` tells.
enum class Compression : std::uint32_t {
    None = 0,    // no filter; deliberately also one of another name than FlateDecode
    Unknown = 1, // a filter entry that is no name, as an array of filters is
    Flate = 2,   // FlateDecode
};

} // namespace Libraries::Files::PDF
