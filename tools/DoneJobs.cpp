#include <tools/DoneJobs.h>

#include <host/base/ErrorWords.h>

#include <cerrno>
#include <filesystem>
#include <fstream>

namespace Tools {

namespace {

using Json = nlohmann::json;

std::string keyOf(const Json& id, const std::string& in, const std::string& out, std::uint64_t size)
{
    return Json({id, in, out, size}).dump(-1, ' ', false, Json::error_handler_t::replace);
}

} // namespace

Host::Result<DoneJobs> DoneJobs::read(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return Host::systemRefusal(Host::Reason::Unreadable, "can't be opened", errno);
    DoneJobs done;
    for (std::string line; std::getline(file, line);) {
        done._isCut = file.eof();
        const Json result = Json::parse(line, nullptr, false);
        if (!result.is_object() || result.value("ok", Json()) != true)
            continue;
        const Json in = result.value("in", Json());
        const Json out = result.value("out", Json(""));
        const Json size = result.value("size", Json(0));
        if (in.is_string() && out.is_string() && size.is_number_unsigned())
            done._keys.insert(keyOf(result.value("id", Json()), in, out, size));
    }
    if (file.bad())
        return Host::systemRefusal(Host::Reason::Unreadable, "can't be read", errno);
    return done;
}

bool DoneJobs::has(const BatchJob& job) const
{
    if (_keys.empty())
        return false;
    std::error_code error;
    const std::uintmax_t size = job.out.empty() ? 0 : std::filesystem::file_size(job.out, error);
    return !error && _keys.contains(keyOf(job.id, job.in, job.out, size));
}

} // namespace Tools
