#pragma once

#include <text/Engine.h>

// For programs that fill most forms with the fonts that these have: they link this, which is static and small, and load
// the libraries for text when a value needs them.
namespace Text {

// `createEngine` of the installed library, which is loaded at the first call and stays. Refused as `Unsupported`, with
// the reason, when it isn't installed, lacks a library that it needs, or is of another version than this program.
Host::Result<std::shared_ptr<Host::TextEngine>> loadEngine(const Options& options = {}) noexcept;
// The same of a library by its path, or by a name that the system looks for.
Host::Result<std::shared_ptr<Host::TextEngine>> loadEngine(const Options& options, const std::string& library) noexcept;

} // namespace Text
