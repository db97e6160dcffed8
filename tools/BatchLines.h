#pragma once

#include <tools/Progress.h>

#include <atomic>
#include <condition_variable>
#include <map>
#include <mutex>

namespace Tools {

// Hands out the lines of standard input and prints the results in the same order. All operations may be called
// from any thread.
class BatchLines {
public:
    // The size of the input in bytes; 0 when nobody knows.
    BatchLines(unsigned threads, std::uint64_t inputSize);

    // The next line that isn't empty, and its number, counted from 0 among those; false at the end. Waits while too
    // many results wait for one that isn't there yet.
    bool next(std::uint64_t& index, std::uint64_t& line, std::string& text);
    // Prints the result of a line as soon as all before it are printed.
    void finish(std::uint64_t index, std::string result, bool isDone);
    // How many jobs failed; only when no thread is at work any more.
    std::uint64_t failed() const { return _failed; }

private:
    struct Buffer {
        char* text = nullptr;
        std::size_t size = 0;
        ~Buffer();
    };

    bool waitForRoom();
    bool readLine(std::string& text);

    const std::uint64_t _window; // how many lines may be handed out and not printed
    const std::uint64_t _inputSize;
    std::mutex _inputLock; // taken before the other
    Buffer _buffer;
    std::uint64_t _line = 0;

    std::mutex _lock;
    std::condition_variable _hasRoom;
    std::map<std::uint64_t, std::string> _waiting;
    std::uint64_t _taken = 0;
    std::uint64_t _printed = 0;
    std::uint64_t _failed = 0;
    std::atomic<std::uint64_t> _bytesRead{0};
    bool _isBroken = false;
    Progress _progress;
};

} // namespace Tools
