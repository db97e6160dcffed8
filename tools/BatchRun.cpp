#include <tools/BatchRun.h>

#include <tools/Filling.h>
#include <tools/Hints.h>
#include <tools/ImportReport.h>

namespace Tools {

namespace {

// The first of several refusals, with the messages of others.
Host::Refusal joined(const std::vector<Host::Refusal>& refusals)
{
    constexpr std::size_t maxShown = 10;
    Host::Refusal result = refusals.front();
    for (std::size_t i = 1; i < std::min(refusals.size(), maxShown); ++i)
        result.message += "; " + refusals[i].message;
    if (refusals.size() > maxShown)
        result.message += "; and " + std::to_string(refusals.size() - maxShown) + " more";
    result.message += fieldHint;
    return result;
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
        auto opened = Tools::open(_job.in, _options.open);
        if (!opened)
            return opened.refusal();
        _opened = std::move(*opened);
        if (_opened.report)
            _result.import = importJson(_opened);
        warnOfImport(_opened, "");
        if (const auto tree = Host::pages(_opened.document, _opened.limitFactor))
            _result.pages = tree->pages.size();
        return {};
    }
    std::optional<Host::Refusal> fill()
    {
        FieldValues values = _job.values;
        values.insert(_options.values.begin(), _options.values.end());
        if (values.empty())
            return {};
        auto filler = Host::FormFiller::create(_opened.document, _opened.limitFactor);
        if (!filler)
            return filler.refusal();
        const auto refusals = fillAll(*filler, values, _options.fill, _options.unknownFields, _result.warnings);
        if (!refusals.empty())
            return joined(refusals);
        warn(filler->warnings());
        return filler->finish();
    }
    std::optional<Host::Refusal> flatten()
    {
        if (!_options.isFlattened && !_job.flattened)
            return {};
        const auto done = Host::flatten(
            _opened.document, _job.flattened.value_or(Host::AllFields()), _options.flatten);
        if (!done)
            return done.refusal();
        addWarnings(_result.warnings, done->warnings);
        return {};
    }
    // The foreign document is the job's own, too: it holds its streams once they were read, so that no two
    // threads may use it.
    std::optional<Host::Refusal> background()
    {
        if (_job.foreign.empty())
            return {};
        const auto foreign = Tools::open(_job.foreign, _options.open);
        if (!foreign)
            return foreign.refusal().withPrefix(_job.foreign + ": ");
        warnOfImport(*foreign, _job.foreign + ": ");
        if (auto refusal = refuseContent(*foreign, _options.save))
            return refusal->withPrefix(_job.foreign + ": ");
        PagesAsked asked = _job.pages;
        asked.isForced = asked.isForced || _options.isForced;
        asked.placement.limitFactor = _opened.limitFactor;
        const auto done = drawPages(_opened.document, foreign->document, asked);
        if (!done)
            return done.refusal();
        warn(done->warnings);
        return {};
    }
    std::optional<Host::Refusal> recompress()
    {
        if (!_job.target)
            return {};
        const auto done = Host::recompress(_opened.document, *_job.target, {_options.isForced, _opened.limitFactor});
        return done ? std::nullopt : std::optional(done.refusal());
    }
    std::optional<Host::Refusal> save()
    {
        if (_job.out.empty())
            return {};
        if (_options.save.isStrict)
            if (auto losses = lossesOf(_opened))
                return losses;
        Host::SaveOptions options = _options.save;
        options.isStrict = false; // examined above
        const auto saved = Tools::save(_opened, _job.out, options, _options.storage);
        if (!saved) {
            Host::Refusal refusal = saved.refusal();
            refusal.message += _opened.report ? "" : savingHint(refusal); // of an import all is there
            return refusal;
        }
        _result.size = saved->size;
        if (saved->durability == Host::Durability::Unknown)
            warn({"the folder of the new file can't be synced"});
        return {};
    }

private:
    void warnOfImport(const Opened& opened, const std::string& prefix)
    {
        if (const std::string losses = opened.report ? importLosses(*opened.report) : ""; !losses.empty())
            warn({prefix + "importing lost " + losses});
    }
    void warn(const std::vector<std::string>& messages)
    {
        _result.warnings.insert(_result.warnings.end(), messages.begin(), messages.end());
    }

    const BatchJob& _job;
    const BatchOptions& _options;
    BatchResult& _result;
    Opened _opened;
};

} // namespace

BatchResult runJob(const BatchJob& job, const BatchOptions& options)
{
    constexpr struct {
        const char* name;
        std::optional<Host::Refusal> (Run::*perform)();
    } steps[] = {
        {"open", &Run::open},
        {"fill", &Run::fill},
        {"flatten", &Run::flatten},
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

} // namespace Tools
