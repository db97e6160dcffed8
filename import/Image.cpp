#include <import/Image.h>

#include <host/base/ErrorWords.h>
#include <import/Limits.h>
#include <import/Stop.h>

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <optional>

namespace Import {

namespace {

constexpr std::size_t blockSize = 1 << 20; // to be written at once, when there is a file

// A new file without a name, which goes when it is closed.
Host::Descriptor makeFile()
{
    const char* const chosen = std::getenv("TMPDIR");
    const std::string folder = chosen && *chosen ? chosen : "/var/tmp"; // where /tmp is memory, this isn't
    Host::Descriptor file(::open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600));
    if (file.isOpen())
        return file;
    std::string name = folder + "/files-pdf-XXXXXX"; // the file system has no files without names
    file = Host::Descriptor(::mkostemp(name.data(), O_CLOEXEC));
    if (!file.isOpen())
        throw Stop{Host::systemRefusal(Reason::SystemFailure, "no temporary file can be made", errno)};
    ::unlink(name.c_str());
    return file;
}

void writeAt(int file, std::string_view text, std::uint64_t position)
{
    while (!text.empty()) {
        const ssize_t written = ::pwrite(file, text.data(), text.size(), static_cast<off_t>(position));
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            throw Stop{Host::systemRefusal(
                Reason::SystemFailure, "a temporary file can't be written", written < 0 ? errno : EIO)};
        text.remove_prefix(static_cast<std::size_t>(written));
        position += static_cast<std::uint64_t>(written);
    }
}

// The bytes of a finished image.
class ImageBytes {
public:
    ImageBytes(std::vector<Image::Part> parts, std::uint64_t size, std::string text,
        std::optional<Host::FileBytes> textFile, Ref<Host::FileStripe> original)
        : _parts(std::move(parts)), _size(size), _text(std::move(text)), _textFile(std::move(textFile)),
          _original(std::move(original))
    {
    }

    std::uint64_t size() const noexcept { return _size; }
    bool load(std::uint64_t position, ByteRun& window) noexcept
    {
        const Image::Part& part = partAt(position);
        const std::uint64_t place = part.offset + (position - part.start);
        ByteRun run{reinterpret_cast<const std::uint8_t*>(_text.data()), 0, _text.size()};
        bool isLoaded = true;
        if (!part.isText) {
            run = _original->bytesAround(place);
            isLoaded = run.bytes && place - run.start < run.length;
        } else if (_textFile) {
            isLoaded = _textFile->load(place, run);
        }
        window = isLoaded ? clipped(run, part) : ByteRun{nullptr, position, 0};
        return isLoaded;
    }

private:
    const Image::Part& partAt(std::uint64_t position) noexcept
    {
        const Image::Part& last = _parts[_last];
        if (position - last.start >= last.length) {
            const auto after = std::upper_bound(_parts.begin(), _parts.end(), position,
                [](std::uint64_t place, const Image::Part& part) { return place < part.start; });
            _last = static_cast<std::size_t>(after - _parts.begin()) - 1;
        }
        return _parts[_last];
    }
    // What of the run, which counts from where the part's bytes are kept, belongs to the part, as a run of the image.
    static ByteRun clipped(const ByteRun& run, const Image::Part& part) noexcept
    {
        const std::uint64_t start = std::max(run.start, part.offset);
        const std::uint64_t end = std::min(run.start + run.length, part.offset + part.length);
        return {run.bytes + (start - run.start), part.start + (start - part.offset), end - start};
    }

    std::vector<Image::Part> _parts;
    std::uint64_t _size;
    std::string _text;
    std::optional<Host::FileBytes> _textFile; // has the text when it isn't in memory
    Ref<Host::FileStripe> _original;
    std::size_t _last = 0; // the part that was asked for last
};

class ImageStripe final : public Host::StripeOver<ImageBytes, std::uint32_t> {
public:
    explicit ImageStripe(ImageBytes bytes) noexcept : StripeOver(std::move(bytes)) {}
};

} // namespace

Image::Image(Ref<Host::FileStripe> original, std::uint64_t limit) : _original(std::move(original)), _limit(limit) {}

void Image::add(std::string_view text)
{
    _text += text;
    settle();
}

void Image::settle()
{
    if (size() > _limit)
        stop(Reason::LimitReached, "what is in it takes more than " + std::to_string(_limit) + " bytes");
    if (_text.size() > (_file.isOpen() ? blockSize : Limits::maxTextInMemory))
        writeOut();
}

void Image::addOriginal(std::uint64_t offset, std::uint64_t length)
{
    if (length == 0)
        return;
    endText();
    _parts.push_back({size(), length, false, offset});
    _originalSize += length;
    settle();
}

void Image::replaceText(std::uint64_t offset, std::string_view text)
{
    if (offset < _written)
        writeAt(_file.number(), text, offset);
    else
        _text.replace(offset - _written, text.size(), text);
}

void Image::endText()
{
    const std::uint64_t length = textSize() - _partText;
    if (length > 0)
        _parts.push_back({size() - length, length, true, _partText});
    _partText = textSize();
}

void Image::writeOut()
{
    if (!_file.isOpen())
        _file = makeFile();
    writeAt(_file.number(), _text, _written);
    _written += _text.size();
    _text.clear();
    _text.shrink_to_fit();
}

Ref<Interfaces::Stripe> Image::toStripe()
{
    endText();
    std::optional<Host::FileBytes> textFile;
    if (_file.isOpen()) {
        writeOut();
        Host::Result<Host::FileBytes> opened = Host::FileBytes::adopt(std::move(_file));
        if (!opened)
            throw Stop{opened.refusal()};
        textFile.emplace(std::move(*opened));
    }
    const std::uint64_t total = size();
    return make<ImageStripe>(ImageBytes(std::move(_parts), total, std::move(_text), std::move(textFile), _original));
}

} // namespace Import
