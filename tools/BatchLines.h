#pragma once

#include <tools/BatchJob.h>
#include <tools/Progress.h>

#include <atomic>
#include <condition_variable>
#include <functional>
#include <map>
#include <mutex>
#include <unordered_set>

namespace Tools {

// A job as it comes in.
struct BatchLine {
    std::uint64_t line = 0;      // its number in the input
    std::uint64_t bytesRead = 0; // of the input, up to here
    // Reads the job; the reason when it is none. This is done on the thread that works on it.
    std::function<std::optional<Host::Refusal>(BatchJob& job)> read;
};
// Gives the next job; false at the end.
using BatchInput = std::function<bool(BatchLine& line)>;

// The lines of standard input that aren't empty, each a job in JSON.
BatchInput jsonLines();

// Hands out the jobs of an input and prints the results in the same order. All operations may be called from any
// thread.
class BatchLines {
public:
    // The size of the input in bytes; 0 when nobody knows.
    BatchLines(BatchInput input, unsigned threads, std::uint64_t inputSize);

    // The next job, and its number, counted from 0; false at the end. Waits while too many results wait for one that
    // isn't there yet.
    bool next(std::uint64_t& index, BatchLine& line);
    // Whether no other job saves its file under this name; an empty one is nobody's.
    bool claim(const std::string& out);
    // Prints the result of a line as soon as all before it are printed; nothing for an empty one.
    void finish(std::uint64_t index, std::string result, bool isDone);
    // How many jobs failed; only when no thread is at work any more.
    std::uint64_t failed() const { return _failed; }

private:
    bool waitForRoom();

    const std::uint64_t _window; // how many lines may be handed out and not printed
    const std::uint64_t _inputSize;
    std::mutex _inputLock; // taken before the other
    BatchInput _input;

    std::mutex _lock;
    std::condition_variable _hasRoom;
    std::map<std::uint64_t, std::string> _waiting;
    std::unordered_set<std::string> _claimed;
    std::uint64_t _taken = 0;
    std::uint64_t _printed = 0;
    std::uint64_t _failed = 0;
    std::atomic<std::uint64_t> _bytesRead{0};
    bool _isBroken = false;
    Progress _progress;
};

} // namespace Tools
