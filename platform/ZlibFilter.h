#pragma once

#include <platform/BlockFilter.h>

// Filters for zlib-wrapped deflate.
class EXPORTED ZlibFilter {
public:
    // After the end of the zlib data its `process` consumes nothing, produces nothing and answers
    // true. Its `flush` answers 0 when the data came to its end or not a byte was ever given, and 2
    // when the data stopped in the middle.
    static Ref<BlockFilter> createDecompressorStream() noexcept;
    // `level` is zlib's, from 1 to 9; 0 is the default. Null, and no code, for any other. Built with
    // FILES_PDF_LIBDEFLATE it collects all bytes of a stream and puts nothing out before its `flush`.
    static Ref<BlockFilter> createCompressorStream(std::size_t level) noexcept;
};
