#pragma once

#include <host/base/Result.h>
#include <tools/BatchJob.h>

#include <unordered_set>

namespace Tools {

// The jobs that an earlier run has done, by its results.
class DoneJobs {
public:
    DoneJobs() = default;
    // Lines that are no results are passed over: the last one may have been cut.
    static Host::Result<DoneJobs> read(const std::string& path);

    // Whether a job of the same id, `in` and `out` was done, and its file is still there in the size that it had.
    bool has(const BatchJob& job) const;

    // Whether the last line has no end.
    bool isCut() const { return _isCut; }

private:
    std::unordered_set<std::string> _keys;
    bool _isCut = false;
};

} // namespace Tools
