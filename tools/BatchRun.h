#pragma once

#include <tools/BatchJob.h>
#include <tools/DoneJobs.h>
#include <tools/Filling.h>
#include <tools/Saving.h>

namespace Tools {

// What applies to all jobs of a run.
struct BatchOptions {
    OpenOptions open;
    Host::SaveOptions save;
    StoreOptions storage;
    Host::FillOptions fill;
    FieldValues values; // of all jobs, unless a job has another one of the same name
    UnknownFields unknownFields = UnknownFields::Refused;
    bool isFlattened = false; // every job
    Host::FlattenOptions flatten;
    bool isForced = false;
    DoneJobs done; // by an earlier run, and left out
};

// What became of a job. The step that failed is empty when all is done.
struct BatchResult {
    std::string step;
    Host::Refusal refusal;
    std::size_t pages = 0;
    std::uint64_t size = 0; // of the saved file, in bytes
    std::vector<std::string> warnings;
    std::string import; // JSON, of a file that was imported; else empty
};

// Does the steps of a job up to the first that fails. Nothing of it is left but the saved file.
BatchResult runJob(const BatchJob& job, const BatchOptions& options);

} // namespace Tools
