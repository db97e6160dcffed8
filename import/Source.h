#pragma once

#include <host/files/FileStripe.h>
#include <import/Qpdf.h>

namespace Import {

// The file as libqpdf reads it: from its header on, which may be up to a kilobyte after the beginning and which all
// offsets are counted from.
//
// Rows of a table may all lead to the same bytes, which libqpdf then reads again for each: so there is a limit to what
// it reads in all.
class Source final : public InputSource {
public:
    explicit Source(Ref<Host::FileStripe> file);

    // InputSource. What reads throws `Stop` when the file can't be read, and when the limit is reached.
    qpdf_offset_t findAndSkipNextEOL() override;
    std::string const& getName() const override { return _name; }
    qpdf_offset_t tell() override { return static_cast<qpdf_offset_t>(_position); }
    void seek(qpdf_offset_t offset, int whence) override;
    void rewind() override { _position = 0; }
    std::size_t read(char* buffer, std::size_t length) override;
    void unreadCh(char) override { _position -= _position > 0 ? 1 : 0; }

    // Where the header is in the file, and the size from there on, in bytes.
    std::uint64_t start() const noexcept { return _start; }
    std::uint64_t size() const noexcept { return _size; }
    // The bytes from the position on; fewer at the end. It throws as the others do.
    std::string readText(std::uint64_t position, std::size_t length);

private:
    ByteRun runHere();
    void advance(std::uint64_t count);
    void skipLine(bool areLineEnds);

    const Ref<Host::FileStripe> _file;
    const std::string _name; // empty: messages are about this file
    std::uint64_t _start = 0;
    std::uint64_t _size; // from there on
    std::uint64_t _position = 0;
    std::uint64_t _mayRead;
};

} // namespace Import
