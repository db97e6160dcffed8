#include <tools/BatchLines.h>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>

namespace Tools {

namespace {

class JsonLines {
public:
    ~JsonLines() { std::free(_text); }

    bool read(BatchLine& line)
    {
        std::string text;
        do {
            const ssize_t length = getline(&_text, &_size, stdin);
            if (length < 0)
                return false;
            text.assign(_text, std::size_t(length));
            _bytesRead += text.size();
            ++_line;
        } while (text.find_first_not_of(" \t\r\n") == text.npos);
        line = {_line, _bytesRead, [text = std::move(text)](BatchJob& job) { return readJob(text, job); }};
        return true;
    }

private:
    char* _text = nullptr;
    std::size_t _size = 0;
    std::uint64_t _line = 0;
    std::uint64_t _bytesRead = 0;
};

} // namespace

BatchInput jsonLines()
{
    return [lines = std::make_shared<JsonLines>()](BatchLine& line) { return lines->read(line); };
}

BatchLines::BatchLines(BatchInput input, unsigned threads, std::uint64_t inputSize)
    : _window(64 * threads), _inputSize(inputSize), _input(std::move(input)), _progress(!isatty(STDOUT_FILENO))
{
}

// False when the results reach nobody any more.
bool BatchLines::waitForRoom()
{
    std::unique_lock guard(_lock);
    _hasRoom.wait(guard, [this] { return _taken < _printed + _window || _isBroken; });
    return !_isBroken;
}

bool BatchLines::next(std::uint64_t& index, BatchLine& line)
{
    const std::lock_guard oneReader(_inputLock);
    if (!waitForRoom() || !_input(line))
        return false;
    _bytesRead = line.bytesRead;
    const std::lock_guard guard(_lock);
    index = _taken++;
    return true;
}

bool BatchLines::claim(const std::string& out)
{
    const std::lock_guard guard(_lock);
    return out.empty() || _claimed.insert(std::filesystem::absolute(out).lexically_normal().string()).second;
}

void BatchLines::finish(std::uint64_t index, std::string result, bool isDone)
{
    const std::lock_guard guard(_lock);
    _waiting.emplace(index, std::move(result));
    _failed += !isDone;
    for (auto first = _waiting.begin(); first != _waiting.end() && first->first == _printed && !_isBroken;
         first = _waiting.erase(first), ++_printed) {
        if (first->second.empty())
            continue;
        std::fputs((first->second + "\n").c_str(), stdout);
        _isBroken = std::fflush(stdout) != 0; // each at once, for who waits for it at a pipe
    }
    _hasRoom.notify_all();
    _progress.show(_bytesRead, _inputSize,
        std::to_string(_printed) + " jobs, " + std::to_string(_failed) + " failed");
}

} // namespace Tools
