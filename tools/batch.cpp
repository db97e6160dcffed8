// Runs jobs on many PDF files, one line of JSON each.

#include <host/base/ErrorWords.h>
#include <host/base/Utf8.h>
#include <tools/BatchLines.h>
#include <tools/BatchRun.h>
#include <tools/Filling.h>
#include <tools/LogKeeping.h>
#include <tools/Main.h>

#include <sys/stat.h>
#include <unistd.h>

#include <thread>

namespace {

using Tools::BatchOptions;
using Tools::BatchResult;
using Tools::CommandLine;
using Json = nlohmann::ordered_json;

constexpr Tools::Option ownOptions[] = {
    {"--jobs", "N", "threads; 1 by default"},
    {"--force", "", "go on where the preflight finds a reason not to"},
};
constexpr Tools::Option logOption[] = {{"-v", "", "put the library's log lines into the results"}};
const Tools::Program program = {
    .name = "batch",
    .usage = "[options] < JOBS > RESULTS",
    .about = "Runs a job for each line of standard input, a JSON object in UTF-8, and prints a result for each, in the "
             "same order. A job that fails does not stop the others.\n"
             "\n"
             "  {\"id\": 7, \"in\": \"form.pdf\", \"fill\": {\"name\": \"Ellen\", \"paid\": true},\n"
             "   \"background\": {\"file\": \"letterhead.pdf\", \"mode\": \"all\"},\n"
             "   \"flatten\": true, \"recompress\": \"flate\", \"out\": \"7.pdf\"}\n"
             "\n"
             "Only \"in\" is needed. No job may need the output of another job of the same run.",
    .options = {{"", ownOptions}, Tools::fillOptions(), Tools::openOptions(), Tools::saveOptions(), {"", logOption}},
    .exitStatus = "0; 1 when a job failed; 2 for wrong use, and when the input can't be read or the output can't be "
                  "written.",
};

// The log lines of the thread's current job. The sink is called on the thread that logs.
thread_local std::vector<std::string> jobLog;

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
    std::uint64_t line;
    std::string text;
    while (lines.next(index, line, text)) {
        Tools::BatchJob job;
        BatchResult result;
        if (auto refusal = Tools::readJob(nlohmann::json::parse(text, nullptr, false), job))
            result = {"job", std::move(*refusal), 0, 0, {}, {}};
        else
            result = Tools::runJob(job, options);
        const Json object = resultOf(line, job, result);
        lines.finish(index, object.dump(-1, ' ', false, Json::error_handler_t::replace), result.step.empty());
    }
}

// In bytes; 0 when nobody knows, as for a pipe.
std::uint64_t sizeOfInput()
{
    struct stat status;
    return fstat(STDIN_FILENO, &status) == 0 && S_ISREG(status.st_mode) ? std::uint64_t(status.st_size) : 0;
}

BatchOptions optionsOf(const CommandLine& line, const Tools::OpenOptions& open, Host::FillOptions fill)
{
    BatchOptions options;
    options.open = open;
    options.fill = std::move(fill);
    options.isFlattened = line.has("--flatten");
    options.flatten = Tools::flattenOptionsOf(line);
    options.save = Tools::saveOptionsOf(line);
    options.storage = Tools::storeOptionsOf(line);
    options.isForced = line.has("--force");
    return options;
}

// Does the jobs of all lines on so many threads, and says how many failed.
std::uint64_t workOn(unsigned threads, const BatchOptions& options)
{
    Tools::BatchLines lines(threads, sizeOfInput());
    std::vector<std::thread> workers;
    for (unsigned i = 1; i < threads; ++i)
        workers.emplace_back(work, std::ref(lines), std::cref(options));
    work(lines, options);
    for (std::thread& worker : workers)
        worker.join();
    return lines.failed();
}

int batch(const CommandLine& line, const Tools::Console& console)
{
    const auto threads = Tools::numberOf(line.argument("--jobs", "1"));
    if (!threads || *threads < 1 || *threads > 256)
        return console.misuse("--jobs takes a number from 1 to 256");
    const auto open = Tools::openOptionsOf(line);
    if (!open)
        return console.refuse("standard input", open.refusal());
    const auto fill = Tools::fillOptionsOf(line);
    if (!fill)
        return console.misuse(fill.refusal().message);
    if (line.has("-v")) // instead of at the end
        Tools::listenToLog([](std::size_t, const Ref<::String>& text) { jobLog.push_back(Host::toUtf8(text)); });
    const std::uint64_t failed = workOn(*threads, optionsOf(line, *open, *fill));
    if (std::ferror(stdin))
        return console.refuse("standard input", {Host::Reason::Unreadable, "can't be read"});
    const int status = console.finish();
    return status == Tools::Done && failed ? int(Tools::Refused) : status;
}

} // namespace

int main(int argc, char** argv)
{
    return Tools::run(program, argc, argv, batch);
}
