#pragma once

#include <host/base/Result.h>

#include <dlfcn.h>

#include <cstring>
#include <string>

namespace Host {

// What a library shows to programs that load it while they run, under a name that the linker has. `Entry` begins with
// the version of the project, and only where that is the same can the rest be used. The library stays. Refused as
// `Unsupported` when it isn't installed, lacks a library that it needs, or is of another version, in words that go on
// from `need`: "needs libfiles-pdf-import, which ".
//
// Here and not in a source file, since the host library itself loads nothing.
template <class Entry>
Result<const Entry*> loadEntry(
    const std::string& library, const char* entryName, const char* version, const std::string& need)
{
    const auto unsupported = [&need](const std::string& why) { return Refusal{Reason::Unsupported, need + why}; };
    void* const handle = ::dlopen(library.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) {
        const std::string reason = ::dlerror();
        // What is missing comes first: the library itself, or one that it needs.
        return unsupported(reason.starts_with(library) ? "isn't installed" : "can't be loaded: " + reason);
    }
    const auto* const entry = static_cast<const Entry*>(::dlsym(handle, entryName));
    if (!entry || std::strcmp(entry->version, version) != 0)
        return unsupported(std::string("is of another version than ") + version);
    return entry;
}

} // namespace Host
