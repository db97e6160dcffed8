// Does jobs on many PDF files, one line of JSON each.

#include <tools/BatchLines.h>
#include <tools/BatchRun.h>
#include <tools/Command.h>

#include <sys/stat.h>
#include <unistd.h>

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
void work(Tools::BatchLines& lines, const BatchOptions& options)
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
    std::vector<std::string> known = Tools::saveOptionNames;
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
        Tools::BatchLines lines(*threads, sizeOfInput());
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
