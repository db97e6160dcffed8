#pragma once

#include <host/base/Budget.h>
#include <host/base/Result.h>
#include <host/pages/PageTree.h>
#include <values/Stream.h>

#include <cstdint>
#include <vector>

namespace Host {

// The content of a page as its `Contents` have it: a stream, or an array of references to streams.
struct PageContent {
    // References to the streams in their order. What is no reference to a stream was left out.
    std::vector<Ref<PDF::Value>> references;
    std::vector<Ref<PDF::Stream>> streams; // to which they lead
    bool hasBrokenParts = false;
};
PageContent contentOf(const PDF::Document& document, const PDF::Dictionary& page) noexcept;

// All of it in one piece, decoded, with a line feed after each stream, so that no token runs over a joint.
struct JoinedContent {
    std::vector<std::uint8_t> bytes;
    bool isDamaged = false; // some of the data is, and is here up to that place
};
// Refused as `decodeStream` does.
Result<JoinedContent> joinedContent(
    const Ref<PDF::Document>& document, const PageContent& content, Budget& budget) noexcept;

} // namespace Host
