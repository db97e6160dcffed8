#pragma once

#include <platform/ZlibFilter.h>

#include <string>

namespace Tests {

// The zlib form of a text.
inline std::string compressed(const std::string& text)
{
    std::string out(text.size() + text.size() / 100 + 1000, 0);
    std::size_t consumed = 0, produced = 0, flushed = 0;
    const Ref<BlockFilter> filter = ZlibFilter::createCompressorStream(0);
    filter->process(text.data(), text.size(), out.data(), out.size(), &consumed, &produced);
    filter->flush(out.data() + produced, out.size() - produced, &flushed);
    return out.substr(0, produced + flushed);
}

// Bytes of every value that hardly compress.
inline std::string incompressible(std::size_t size)
{
    std::string text;
    for (unsigned state = 1; text.size() < size; state = state * 1664525u + 1013904223u)
        text += static_cast<char>(state >> 24);
    return text;
}

// Compressed data of which only the check at its end tells that it is damaged.
inline std::string corrupted(std::string data)
{
    data.back() = static_cast<char>(~data.back());
    return data;
}

} // namespace Tests
