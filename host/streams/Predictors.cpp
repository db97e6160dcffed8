#include <host/streams/Decoders.h>

#include <algorithm>
#include <cstdlib>

namespace Host::Decoders {

namespace {

std::size_t rowSize(const Predictor& predictor)
{
    return (std::size_t(predictor.colors) * unsigned(predictor.bitsPerComponent) * unsigned(predictor.columns) + 7) / 8;
}

// The neighbor that is nearest to what the three make of a plane: left, above, or above the left one.
std::uint8_t paeth(int left, int above, int corner)
{
    const int plane = left + above - corner;
    const int toLeft = std::abs(plane - left);
    const int toAbove = std::abs(plane - above);
    const int toCorner = std::abs(plane - corner);
    if (toLeft <= toAbove && toLeft <= toCorner)
        return std::uint8_t(left);
    return std::uint8_t(toAbove <= toCorner ? above : corner);
}

// A byte of a row of this type, of what is next to it.
std::uint8_t guess(int type, std::uint8_t left, std::uint8_t above, std::uint8_t corner)
{
    switch (type) {
    case 1: return left;
    case 2: return above;
    case 3: return std::uint8_t((left + above) / 2);
    case 4: return paeth(left, above, corner);
    default: return 0;
    }
}

// Rows of PNG, each after the byte of its type; the last may be cut.
End unpredictRows(const Predictor& predictor, Input in, std::size_t limit, Bytes& out)
{
    const std::size_t size = rowSize(predictor);
    const std::size_t pixel = (unsigned(predictor.colors * predictor.bitsPerComponent) + 7) / 8; // in bytes, rounded up
    const std::size_t start = out.size();
    for (std::size_t row = 0; row < in.size(); row += size + 1) {
        const int type = in[row];
        if (type > 4)
            return End::Damaged;
        const std::size_t count = std::min(size, in.size() - row - 1);
        if (limit - std::min(limit, out.size()) < count)
            return End::TooLong;
        const std::size_t begin = out.size();
        const bool isFirst = begin == start;
        for (std::size_t i = 0; i < count; ++i) {
            const std::uint8_t left = i < pixel ? std::uint8_t(0) : out[begin + i - pixel];
            const std::uint8_t above = isFirst ? std::uint8_t(0) : out[begin + i - size];
            const std::uint8_t corner = isFirst || i < pixel ? std::uint8_t(0) : out[begin + i - size - pixel];
            out.push_back(std::uint8_t(in[row + 1 + i] + guess(type, left, above, corner)));
        }
    }
    return End::Whole;
}

// Adds to each component of a row that of the pixel before it. Components are of any width, the high bits first.
void addUp(const Predictor& predictor, std::uint8_t* row, std::size_t size)
{
    const unsigned width = unsigned(predictor.bitsPerComponent);
    const std::size_t distance = unsigned(predictor.colors);
    const std::size_t count = size * 8 / width;
    const auto read = [row, width](std::size_t index) {
        const std::size_t bit = index * width;
        if (width == 16)
            return unsigned(row[bit / 8] << 8 | row[bit / 8 + 1]);
        return unsigned(row[bit / 8] >> (8 - width - bit % 8)) & ((1u << width) - 1);
    };
    for (std::size_t i = distance; i < count; ++i) {
        const unsigned sum = (read(i) + read(i - distance)) & ((1u << width) - 1);
        const std::size_t bit = i * width;
        if (width == 16) {
            row[bit / 8] = std::uint8_t(sum >> 8);
            row[bit / 8 + 1] = std::uint8_t(sum);
            continue;
        }
        const unsigned shift = unsigned(8 - width - bit % 8);
        const unsigned mask = ((1u << width) - 1) << shift;
        row[bit / 8] = std::uint8_t((row[bit / 8] & ~mask) | sum << shift);
    }
}

} // namespace

End unpredict(const Predictor& predictor, Input in, std::size_t limit, Bytes& out)
{
    if (predictor.kind >= 10)
        return unpredictRows(predictor, in, limit, out);
    const std::size_t fitting = std::min(in.size(), limit - std::min(limit, out.size()));
    const std::size_t start = out.size();
    out.insert(out.end(), in.begin(), in.begin() + std::ptrdiff_t(fitting));
    const std::size_t size = rowSize(predictor);
    for (std::size_t row = start; predictor.kind == 2 && row < out.size(); row += size)
        addUp(predictor, out.data() + row, std::min(size, out.size() - row));
    return fitting == in.size() ? End::Whole : End::TooLong;
}

} // namespace Host::Decoders
