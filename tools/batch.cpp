// Runs jobs on many PDF files, one line of JSON each.

#include <host/base/ErrorWords.h>
#include <host/base/Utf8.h>
#include <platform/Error.h>
#include <tools/BatchLines.h>
#include <tools/BatchRun.h>
#include <tools/CsvJobs.h>
#include <tools/Filling.h>
#include <tools/LogKeeping.h>
#include <tools/Main.h>

#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <thread>

namespace {

using Tools::BatchOptions;
using Tools::BatchResult;
using Tools::CommandLine;
using Tools::FieldValues;
using Json = nlohmann::ordered_json;

constexpr Tools::Option ownOptions[] = {
    {"--jobs", "N", "threads; 1 by default"},
    {"--force", "", "go on where the preflight finds a reason not to"},
};
constexpr Tools::Option inputOptions[] = {
    {"--resume", "RESULTS", "leave out the jobs that an earlier run did, by its results; append to them with >>"},
    {"--values", "FILE", "values of all jobs or rows, which count after their own, from JSON, FDF, XFDF or CSV"},
    {"--csv", "FILE", "instead of jobs, rows of values, after a row with the names of their fields; an empty cell "
                      "leaves a field as it is"},
    {"--in", "FORM", "the form that is filled for each row"},
    {"--out", "NAME", "the file of each row, such as '{number}.pdf': in it {number} is the number of the row, and any "
                      "name of a field in such brackets its cell"},
};
constexpr Tools::Option logOption[] = {{"-v", "", "put the library's log lines into the results"}};
const Tools::Program program = {
    .name = "batch",
    .usage = "[options] < JOBS > RESULTS",
    .about = "Runs a job for each line of standard input, a JSON object in UTF-8, and prints a result for each, in the "
             "same order. A job that fails does not stop the others, and none may need the output of another one. With "
             "--csv it fills a form for each row of a file.\n"
             "\n"
             "  {\"id\": 7, \"in\": \"form.pdf\", \"fill\": {\"name\": \"Ellen\"}, \"flatten\": true,\n"
             "   \"background\": {\"file\": \"letterhead.pdf\", \"mode\": \"all\"}, \"out\": \"7.pdf\"}",
    .options = {{"", ownOptions}, {"input", inputOptions}, Tools::valueOptions(), Tools::fillOptions(),
        Tools::openOptions(), Tools::saveOptions(), {"", logOption}},
    .refusedWhen = "a job failed",
};

// The log lines of the thread's current job. The sink is called on the thread that logs.
thread_local std::vector<std::string> jobLog;
thread_local std::string lastFailure;

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
        object["error"] = result.refusal.message;
        if (result.refusal.code == ErrBadObject && !lastFailure.empty())
            object["error"] = result.refusal.message + ": " + lastFailure; // which object
        if (result.refusal.code)
            object["code"] = Host::codeText(result.refusal.code);
    } else {
        object["pages"] = result.pages;
        if (!job.out.empty()) {
            object["out"] = job.out;
            object["size"] = result.size;
        }
    }
    if (!result.import.empty())
        object["import"] = Json::parse(result.import);
    if (!result.warnings.empty())
        object["warnings"] = result.warnings;
    if (!jobLog.empty())
        object["log"] = std::exchange(jobLog, {});
    return object;
}

// What a thread does until there are no more lines.
void work(Tools::BatchLines& lines, const BatchOptions& options)
{
    std::uint64_t index;
    Tools::BatchLine line;
    while (lines.next(index, line)) {
        Tools::BatchJob job;
        BatchResult result;
        lastFailure.clear();
        auto refusal = line.read(job);
        if (!refusal && options.done.has(job)) {
            lines.finish(index, "", true);
            continue;
        }
        if (!refusal && !lines.claim(job.out))
            refusal = {Host::Reason::Conflict, "another job of this run has the same out"};
        if (refusal)
            result = {"job", std::move(*refusal), 0, 0, {}, {}};
        else
            result = Tools::runJob(job, options);
        const Json object = resultOf(line.line, job, result);
        lines.finish(index, object.dump(-1, ' ', false, Json::error_handler_t::replace), result.step.empty());
    }
}

// In bytes; 0 when nobody knows, as for a pipe.
std::uint64_t sizeOfInput()
{
    struct stat status;
    return fstat(STDIN_FILENO, &status) == 0 && S_ISREG(status.st_mode) ? std::uint64_t(status.st_size) : 0;
}

BatchOptions optionsOf(
    const CommandLine& line, const Tools::OpenOptions& open, Host::FillOptions fill, Tools::FieldValues values)
{
    BatchOptions options;
    options.open = open;
    options.fill = std::move(fill);
    options.isFlattened = line.has("--flatten");
    options.flatten = Tools::flattenOptionsOf(line);
    options.save = Tools::saveOptionsOf(line);
    options.storage = Tools::storeOptionsOf(line);
    options.isForced = line.has("--force");
    options.values = std::move(values);
    if (line.has("--skip-unknown"))
        options.unknownFields = Tools::UnknownFields::Skipped;
    return options;
}

// Does the jobs of an input on so many threads.
std::uint64_t workOn(Tools::BatchInput input, std::uint64_t inputSize, unsigned threads, const BatchOptions& options)
{
    Tools::BatchLines lines(std::move(input), threads, inputSize);
    std::vector<std::thread> workers;
    for (unsigned i = 1; i < threads; ++i)
        workers.emplace_back(work, std::ref(lines), std::cref(options));
    work(lines, options);
    for (std::thread& worker : workers)
        worker.join();
    return lines.failed();
}

const Host::Refusal unreadable = {Host::Reason::Unreadable, "can't be read"};

// Both give the number of jobs that failed.
Host::Result<std::uint64_t> doLines(unsigned threads, const BatchOptions& options)
{
    const std::uint64_t failed = workOn(Tools::jsonLines(), sizeOfInput(), threads, options);
    return std::ferror(stdin) ? unreadable : Host::Result<std::uint64_t>(failed);
}

Host::Result<std::uint64_t> fillRows(const CommandLine& line, unsigned threads, const BatchOptions& options)
{
    auto jobs = Tools::CsvJobs::create(
        line.argument("--csv"), Tools::separatorOf(line), line.argument("--in"), line.argument("--out"));
    if (!jobs)
        return jobs.refusal();
    const std::uint64_t failed =
        workOn([&jobs](Tools::BatchLine& job) { return jobs->read(job); }, jobs->inputSize(), threads, options);
    return jobs->isBroken() ? unreadable : Host::Result<std::uint64_t>(failed);
}

// Keeps the last failure of a job, and all lines where they are wanted: with its result instead of at the end.
void listen(bool isLogWanted)
{
    const auto keep = [isLogWanted](std::size_t level, const Ref<::String>& text) {
        if (level >= LogLevel::failure)
            lastFailure = Host::toUtf8(text);
        if (isLogWanted)
            jobLog.push_back(Host::toUtf8(text));
    };
    Tools::listenToLog(keep, isLogWanted ? LogLevel::information : LogLevel::failure);
}

// What an earlier run did. A line that it was killed in is ended, where the new results come after it.
Host::Result<Tools::DoneJobs> readDone(const std::string& path)
{
    auto done = Tools::DoneJobs::read(path);
    std::error_code error;
    if (done && done->isCut() && std::filesystem::equivalent(path, "/dev/stdout", error))
        std::putchar('\n');
    return done;
}

int batch(const CommandLine& line, const Tools::Console& console)
{
    std::signal(SIGPIPE, SIG_IGN); // jobs under way come to their end; then `finish` looks who reads
    if (line.has("--csv") != line.has("--in") || line.has("--csv") != line.has("--out"))
        return console.misuse("--csv, --in and --out go together");
    const auto threads = Tools::numberOf(line.argument("--jobs", "1"));
    if (!threads || *threads < 1 || *threads > 256)
        return console.misuse("--jobs takes a number from 1 to 256");
    const auto open = Tools::openOptionsOf(line);
    if (!open)
        return console.refuse("standard input", open.refusal());
    const auto fill = Tools::fillOptionsOf(line);
    if (!fill)
        return console.misuse(fill.refusal().message);
    listen(line.has("-v"));
    auto values = line.has("--values") ? Tools::readValues(line.argument("--values"), line) : FieldValues();
    if (!values)
        return console.refuse(line.argument("--values"), values.refusal());
    BatchOptions options = optionsOf(line, *open, *fill, std::move(*values));
    if (line.has("--resume")) {
        auto done = readDone(line.argument("--resume"));
        if (!done)
            return console.refuse(line.argument("--resume"), done.refusal());
        options.done = std::move(*done);
    }
    const Host::Result<std::uint64_t> failed =
        line.has("--csv") ? fillRows(line, *threads, options) : doLines(*threads, options);
    if (!failed)
        return console.refuse(line.argument("--csv", "standard input"), failed.refusal());
    const int status = console.finish();
    return status == Tools::Done && *failed ? int(Tools::Refused) : status;
}

} // namespace

int main(int argc, char** argv)
{
    return Tools::run(program, argc, argv, batch);
}
