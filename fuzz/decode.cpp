#include "Check.h"
#include "Input.h"

#include <host/pages/ContentBalance.h>
#include <host/streams/Decoders.h>

#include <algorithm>

// The target `decode`: the first bytes choose a decoder, its parameters and two limits, the others are its data. With a
// lower limit it gives the beginning of the same.

namespace Fuzz {

namespace {

using Host::Decoders::Bytes;
using Host::Decoders::End;
using Host::Decoders::Predictor;

struct Chosen {
    std::uint8_t decoder;
    bool isEarly;
    Predictor predictor;
};

End decode(const Chosen& chosen, Host::Decoders::Input in, std::size_t limit, Bytes& out)
{
    switch (chosen.decoder % 6) {
    case 0: return Host::Decoders::ascii85(in, limit, out);
    case 1: return Host::Decoders::asciiHex(in, limit, out);
    case 2: return Host::Decoders::runLength(in, limit, out);
    case 3: return Host::Decoders::lzw(in, chosen.isEarly, limit, out);
    case 4: return Host::Decoders::flate(in, limit, out);
    default: return Host::Decoders::unpredict(chosen.predictor, in, limit, out);
    }
}

} // namespace

} // namespace Fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    using namespace Fuzz;
    Input input(bytes, size);
    Chosen chosen{input.byte(), input.byte() % 2 == 0, {}};
    chosen.predictor = {input.byte() % 17, int(input.anyNumber() % 300), input.byte() % 17, int(input.anyNumber() % 70000)};
    if (!chosen.predictor.isUsable())
        chosen.predictor = {};
    const std::size_t limit = 64 * input.byte();
    const std::string_view rest = input.rest();
    const Host::Decoders::Input data(reinterpret_cast<const std::uint8_t*>(rest.data()), rest.size());
    constexpr std::size_t mostBytes = 10'000'000;
    Bytes all;
    Bytes some;
    const End end = decode(chosen, data, mostBytes, all);
    const End early = decode(chosen, data, limit, some);
    require(all.size() <= mostBytes && some.size() <= limit, "no decoder gives more than the limit");
    require(some.size() <= all.size() && std::equal(some.begin(), some.end(), all.begin()),
        "a lower limit gives the beginning of the same");
    require(early == End::TooLong || (early == end && some == all), "what ends within the limit is all there is");
    Host::balanceOf(data);
    return 0;
}
