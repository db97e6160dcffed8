// Does jobs on many PDF files, one line of JSON each.

#include <tools/BatchRun.h>
#include <tools/Command.h>
#include <tools/Progress.h>

#include <sys/stat.h>

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace {

using Tools::BatchOptions;
using Tools::BatchResult;
using Tools::Command;
using Json = nlohmann::ordered_json;

const char help[] =
    "Usage: batch [options] < JOBS > RESULTS\n"
    "\n"
    "Does a job for each line of standard input, an object of JSON in UTF-8, and\n"
    "prints a result for each, in the same order. A job that fails stops no other.\n"
    "\n"
    "  {\"id\": 7, \"in\": \"form.pdf\", \"fill\": {\"name\": \"Ellen\", \"paid\": true},\n"
    "   \"background\": {\"file\": \"letterhead.pdf\", \"mode\": \"all\"},\n"
    "   \"recompress\": \"flate\", \"out\": \"7.pdf\"}\n"
    "\n"
    "Only \"in\" is needed. No job may need what another one of the same run writes.\n"
    "\n"
    "  --jobs N       threads, 1 unless given\n"
    "  --keep-looks   fill: don't ask viewers to draw the new values\n"
    "  --force        go on where the look beforehand finds a reason not to\n"
    "  --unexamined   save: don't look what is lost\n"
    SAVE_OPTIONS_HELP
    "  -v             put the library's log lines into the results\n"
    "\n"
    "Exit status: 0; 1 when a job failed; 2 for wrong use, and when the input can't\n"
    "be read or the output can't be written.\n";

// The log lines of the job that the thread is at. The sink is called on the thread that logs.
thread_local std::vector<std::string> jobLog;

// Hands out the lines of standard input and prints the results in the same order. All operations may be called
// from any thread.
class Lines {
public:
    Lines(unsigned threads, std::uint64_t inputSize)
        : _window(64 * threads), _inputSize(inputSize), _progress(!isatty(STDOUT_FILENO))
    {
    }

    // The next line that isn't empty, and its number, counted from 0 among those; false at the end. Waits
    // while too many results stand behind one that isn't there yet.
    bool next(std::uint64_t& index, std::uint64_t& line, std::string& text)
    {
        const std::lock_guard oneReader(_inputLock);
        {
            std::unique_lock guard(_lock);
            _hasRoom.wait(guard, [this] { return _taken < _printed + _window || _isBroken; });
            if (_isBroken)
                return false;
        }
        do {
            const ssize_t length = getline(&_buffer.text, &_buffer.size, stdin);
            if (length < 0)
                return false;
            text.assign(_buffer.text, std::size_t(length));
            _bytesRead += text.size();
            ++_line;
        } while (text.find_first_not_of(" \t\r\n") == text.npos);
        const std::lock_guard guard(_lock);
        index = _taken++;
        line = _line;
        return true;
    }

    // Prints the result of a line as soon as all before it are printed.
    void finish(std::uint64_t index, std::string result, bool isDone)
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

    // Once no thread is at work any more.
    std::uint64_t failed() const { return _failed; }

private:
    struct Buffer {
        char* text = nullptr;
        std::size_t size = 0;
        ~Buffer() { std::free(text); }
    };

    const std::uint64_t _window;
    const std::uint64_t _inputSize; // in bytes; 0 when nobody knows
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
    Tools::Progress _progress;
};

Json resultOf(std::uint64_t line, const Tools::BatchJob& job, const BatchResult& result)
{
    Json object = {{"line", line}};
    if (!job.id.is_null())
        object["id"] = job.id;
    if (!job.in.empty())
        object["in"] = job.in;
    object["ok"] = result.step.empty();
    if (!result.step.empty()) {
        object["step"] = result.step;
        object["error"] = result.refusal.words;
        if (result.refusal.code)
            object["code"] = Host::codeText(result.refusal.code);
    } else {
        object["pages"] = result.pages;
        if (!job.out.empty()) {
            object["out"] = job.out;
            object["size"] = result.size;
        }
    }
    if (!result.warnings.empty())
        object["warnings"] = result.warnings;
    if (!jobLog.empty())
        object["log"] = std::exchange(jobLog, {});
    return object;
}

// What a thread does until there are no more lines.
void work(Lines& lines, const BatchOptions& options)
{
    std::uint64_t index;
    std::uint64_t line;
    std::string text;
    while (lines.next(index, line, text)) {
        Tools::BatchJob job;
        BatchResult result;
        if (auto refusal = Tools::readJob(nlohmann::json::parse(text, nullptr, false), job))
            result = {"job", std::move(*refusal), 0, 0, {}};
        else
            result = Tools::runJob(job, options);
        const Json object = resultOf(line, job, result);
        lines.finish(index, object.dump(-1, ' ', false, Json::error_handler_t::replace), result.step.empty());
    }
}

void keepLogWithJobs()
{
    SysLogStream::setSink([](std::size_t, const Ref<::String>& line) { jobLog.push_back(Host::toUtf8(line)); });
}

// In bytes; 0 when nobody knows, as for a pipe.
std::uint64_t sizeOfInput()
{
    struct stat status;
    return fstat(STDIN_FILENO, &status) == 0 && S_ISREG(status.st_mode) ? std::uint64_t(status.st_size) : 0;
}

BatchOptions optionsOf(const Command& command)
{
    BatchOptions options;
    options.save.isStrict = command.has("--strict");
    options.save.isPartialAllowed = command.has("--partial");
    options.save.isUnverified = command.has("--unverified");
    options.isForced = command.has("--force");
    options.isExamined = options.save.isStrict || !command.has("--unexamined");
    if (command.has("--keep-looks"))
        options.appearances = Host::Appearances::LeftAsTheyAre;
    return options;
}

} // namespace

int main(int argc, char** argv)
{
    std::vector<std::string> known = Tools::saveOptions;
    known.insert(known.end(), {"--jobs=", "--keep-looks", "--force", "--unexamined"});
    Command command("batch", help, 0, known);
    if (const auto status = command.parse(argc, argv))
        return *status;
    const auto threads = command.has("--jobs") ? command.number("--jobs") : 1;
    if (!threads || *threads < 1 || *threads > 256)
        return command.misuse("--jobs takes a number from 1 to 256");
    if (command.has("-v"))
        keepLogWithJobs();
    std::uint64_t failed;
    {
        Lines lines(*threads, sizeOfInput());
        const BatchOptions options = optionsOf(command);
        std::vector<std::thread> workers;
        for (unsigned i = 1; i < *threads; ++i)
            workers.emplace_back(work, std::ref(lines), std::cref(options));
        work(lines, options);
        for (std::thread& worker : workers)
            worker.join();
        failed = lines.failed();
    }
    if (std::ferror(stdin))
        return command.refuse("standard input", {"can't be read", 0, true});
    const int status = command.finish();
    return status == Tools::Done && failed ? int(Tools::Refused) : status;
}
