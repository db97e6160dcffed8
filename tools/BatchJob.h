#pragma once

#include <host/streams/Recompress.h>
#include <tools/BackgroundModes.h>
#include <tools/Command.h>
#include <tools/FieldValues.h>

#include <nlohmann/json.hpp>

namespace Tools {

// What is done with one file, step by step in the order of the members.
struct BatchJob {
    nlohmann::json id; // a text or a number, given back with the result; null when there is none
    std::string in;
    FieldValues values;
    std::string foreign; // the file to put beneath the pages; empty for none
    Host::PDF::BackgroundMode mode = Host::PDF::BackgroundMode::AllPages;
    std::optional<Host::PDF::Compression> target;
    std::string out; // empty: nothing is saved
};

// What goes for all jobs of a run.
struct BatchOptions {
    Host::SaveOptions save;
    Host::Appearances appearances = Host::Appearances::DrawnByViewers;
    bool isForced = false;
    bool isExamined = true; // what saving loses becomes a warning
};

// What became of a job. The step that failed is empty when all is done.
struct BatchResult {
    std::string step;
    Host::Refusal refusal;
    std::size_t pages = 0;
    std::uint64_t size = 0; // of the saved file, in bytes
    std::vector<std::string> warnings;
};

namespace Batch {

// The text under a key, which is the name of a file; empty when there is no such key. A zero would end the name
// before its end.
inline Host::Result<std::string> fileNameUnder(const nlohmann::json& object, const char* key)
{
    const auto found = object.find(key);
    if (found == object.end())
        return std::string();
    const auto* name = found->get_ptr<const std::string*>();
    if (!name || name->empty() || name->find('\0') != name->npos)
        return Host::Refusal{std::string(key) + " is no name of a file"};
    return *name;
}

// A misspelt key must not leave out a step.
inline std::optional<Host::Refusal> unknownKeyOf(const nlohmann::json& object, std::vector<std::string> known)
{
    for (const auto& item : object.items())
        if (std::find(known.begin(), known.end(), item.key()) == known.end())
            return Host::Refusal{"unknown key " + item.key()};
    return {};
}

using Host::PDF::BackgroundMode;

inline std::optional<BackgroundMode> modeOf(const nlohmann::json& name)
{
    return name.is_string() ? modeNamed(name.get<std::string>()) : std::nullopt;
}

// `background` is the name of a file, or an object of `file` and `mode`.
inline std::optional<Host::Refusal> readBackground(const nlohmann::json& object, BatchJob& job)
{
    const auto found = object.find("background");
    if (found == object.end())
        return {};
    const bool isObject = found->is_object();
    if (isObject)
        if (auto refusal = unknownKeyOf(*found, {"file", "mode"}))
            return refusal;
    const auto foreign = isObject ? fileNameUnder(*found, "file") : fileNameUnder(object, "background");
    if (!foreign || foreign->empty())
        return Host::Refusal{"background names no file"};
    const auto mode =
        isObject && found->contains("mode") ? modeOf(found->at("mode")) : std::optional(BackgroundMode::AllPages);
    if (!mode)
        return Host::Refusal{"the mode of a background is first, all, pairs or repeat-last"};
    job.foreign = *foreign;
    job.mode = *mode;
    return {};
}

inline std::optional<Host::Refusal> readTarget(const nlohmann::json& object, BatchJob& job)
{
    const auto found = object.find("recompress");
    if (found == object.end())
        return {};
    if (*found != "flate" && *found != "none")
        return Host::Refusal{"recompress is flate or none"};
    job.target = *found == "flate" ? Host::PDF::Compression::Flate : Host::PDF::Compression::None;
    return {};
}

// Takes a job out of an object of JSON; the reason when it is none.
inline std::optional<Host::Refusal> read(const nlohmann::json& object, BatchJob& job)
{
    if (!object.is_object())
        return Host::Refusal{"the line is no JSON object in UTF-8"};
    // No lists: a copy of one that nests deep would exhaust the stack.
    if (const auto id = object.find("id"); id != object.end()) {
        if (!id->is_string() && !id->is_number())
            return Host::Refusal{"id is no text or number"};
        job.id = *id;
    }
    if (auto refusal = unknownKeyOf(object, {"id", "in", "fill", "background", "recompress", "out"}))
        return refusal;
    for (const auto& [key, name] : {std::pair("in", &job.in), std::pair("out", &job.out)}) {
        auto read = fileNameUnder(object, key);
        if (!read)
            return read.refusal();
        *name = std::move(*read);
    }
    if (job.in.empty())
        return Host::Refusal{"the job has no in"};
    if (object.contains("fill")) {
        auto values = valuesOf(object["fill"]);
        if (!values)
            return Host::Refusal{"fill: " + values.refusal().words};
        job.values = std::move(*values);
    }
    if (auto refusal = readBackground(object, job))
        return refusal;
    return readTarget(object, job);
}

// One run of a job: its own documents, and what becomes of them. Every step gives the reason why it failed.
class Run {
public:
    Run(const BatchJob& job, const BatchOptions& options, BatchResult& result)
        : _job(job), _options(options), _result(result)
    {
    }

    std::optional<Host::Refusal> open()
    {
        auto opened = Host::open(_job.in);
        if (!opened)
            return opened.refusal();
        _opened = std::move(*opened);
        _result.pages = _opened.document->getPages().size();
        return {};
    }
    std::optional<Host::Refusal> fill()
    {
        if (_job.values.empty())
            return {};
        auto filler = Host::FormFiller::create(_opened.document);
        if (!filler)
            return filler.refusal();
        for (const auto& [name, value] : _job.values)
            if (auto refusal = filler->fill(name, value, _options.appearances)) {
                refusal->words = name + ": " + refusal->words + fieldHint;
                return refusal;
            }
        warn(filler->warnings());
        return {};
    }
    // The foreign document is the job's own, too: it holds its streams once they were read, so that no two
    // threads may use it.
    std::optional<Host::Refusal> background()
    {
        if (_job.foreign.empty())
            return {};
        const auto foreign = Host::open(_job.foreign);
        if (!foreign) {
            Host::Refusal refusal = foreign.refusal();
            refusal.words = _job.foreign + ": " + refusal.words;
            return refusal;
        }
        if (auto losses = checkLosses(foreign->file, _job.foreign + ": "))
            return losses;
        const auto done = Host::background(_opened.document, foreign->document, _job.mode, {_options.isForced});
        if (!done)
            return done.refusal();
        warn(done->warnings);
        return {};
    }
    std::optional<Host::Refusal> recompress()
    {
        if (!_job.target)
            return {};
        const auto done = Host::recompress(_opened.document, *_job.target, {_options.isForced});
        return done ? std::nullopt : std::optional(done.refusal());
    }
    std::optional<Host::Refusal> save()
    {
        if (_job.out.empty())
            return {};
        if (auto losses = checkLosses(_opened.file, ""))
            return losses;
        Host::SaveOptions options = _options.save;
        options.isStrict = false; // examined above
        const auto saved = Host::save(_opened, _job.out, options);
        if (!saved) {
            Host::Refusal refusal = saved.refusal();
            refusal.words += partialHint(saved.refusal());
            return refusal;
        }
        _result.size = saved->size;
        if (saved->durability == Host::Durability::Unknown)
            warn({"the folder of the new file can't be synced"});
        return {};
    }

private:
    // What goes into the new file is examined: a warning, or the end of a strict job.
    std::optional<Host::Refusal> checkLosses(const Ref<Host::FileStripe>& file, const std::string& prefix)
    {
        auto losses = _options.isExamined ? lossesOf(file) : std::nullopt;
        if (!losses)
            return {};
        losses->words = prefix + losses->words;
        if (_options.save.isStrict)
            return losses;
        warn({losses->words});
        return {};
    }
    void warn(const std::vector<std::string>& words)
    {
        _result.warnings.insert(_result.warnings.end(), words.begin(), words.end());
    }

    const BatchJob& _job;
    const BatchOptions& _options;
    BatchResult& _result;
    Host::OpenedFile _opened;
};

// Does the steps of a job up to the first that fails. Nothing of it is left but the saved file.
inline BatchResult run(const BatchJob& job, const BatchOptions& options)
{
    constexpr struct {
        const char* name;
        std::optional<Host::Refusal> (Run::*perform)();
    } steps[] = {
        {"open", &Run::open},
        {"fill", &Run::fill},
        {"background", &Run::background},
        {"recompress", &Run::recompress},
        {"save", &Run::save},
    };
    BatchResult result;
    Run run(job, options, result);
    for (const auto& step : steps)
        if (auto refusal = (run.*step.perform)()) {
            result.step = step.name;
            result.refusal = std::move(*refusal);
            break;
        }
    return result;
}

} // namespace Batch

} // namespace Tools
