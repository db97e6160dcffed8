#pragma once

#include <host/base/Lexer.h>

#include <vector>

namespace Import {

using Host::Lexer;
using Host::Reference;

// The decoded data of an object stream, looked at before libqpdf makes values of it: libqpdf reads each object from its
// offset on, wherever it ends, and never tells what is between them.
class PackedObjects {
public:
    // An object of the stream, with the offset of its value in the data.
    struct Member {
        int id;
        std::size_t offset;
    };

    // `count` members, whose list begins the data; their offsets are counted from `first`. The data must live as long
    // as this.
    PackedObjects(std::string_view data, std::size_t count, std::size_t first);

    // The members by ascending ids; of an id that is listed twice the last one. Fewer than there should be when the
    // list is no good.
    const std::vector<Member>& members() const noexcept { return _members; }

    // What one member says.
    struct Text {
        std::size_t length;                 // of what libqpdf may read for its value, and what was looked at after it
        bool isWhole;                       // the value is all there is before the next one
        std::optional<Reference> reference; // it is nothing but a reference, of which a value takes the first number
    };
    Text textOf(const Member& member) const;

private:
    std::string_view _data;
    std::vector<Member> _members;
    std::vector<std::size_t> _starts; // of all that are listed, ascending
};

} // namespace Import
