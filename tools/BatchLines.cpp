#include <tools/BatchLines.h>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>

namespace Tools {

BatchLines::Buffer::~Buffer()
{
    std::free(text);
}

BatchLines::BatchLines(unsigned threads, std::uint64_t inputSize)
    : _window(64 * threads), _inputSize(inputSize), _progress(!isatty(STDOUT_FILENO))
{
}

// False when the results reach nobody any more.
bool BatchLines::waitForRoom()
{
    std::unique_lock guard(_lock);
    _hasRoom.wait(guard, [this] { return _taken < _printed + _window || _isBroken; });
    return !_isBroken;
}

bool BatchLines::readLine(std::string& text)
{
    const ssize_t length = getline(&_buffer.text, &_buffer.size, stdin);
    if (length < 0)
        return false;
    text.assign(_buffer.text, std::size_t(length));
    _bytesRead += text.size();
    ++_line;
    return true;
}

bool BatchLines::next(std::uint64_t& index, std::uint64_t& line, std::string& text)
{
    const std::lock_guard oneReader(_inputLock);
    if (!waitForRoom())
        return false;
    do {
        if (!readLine(text))
            return false;
    } while (text.find_first_not_of(" \t\r\n") == text.npos);
    const std::lock_guard guard(_lock);
    index = _taken++;
    line = _line;
    return true;
}

void BatchLines::finish(std::uint64_t index, std::string result, bool isDone)
{
    const std::lock_guard guard(_lock);
    _waiting.emplace(index, std::move(result));
    _failed += !isDone;
    for (auto first = _waiting.begin(); first != _waiting.end() && first->first == _printed && !_isBroken;
         first = _waiting.erase(first), ++_printed) {
        std::fputs((first->second + "\n").c_str(), stdout);
        _isBroken = std::fflush(stdout) != 0; // each at once, for who waits for it at a pipe
    }
    _hasRoom.notify_all();
    _progress.show(_bytesRead, _inputSize,
        std::to_string(_printed) + " jobs, " + std::to_string(_failed) + " failed");
}

} // namespace Tools
