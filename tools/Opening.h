#pragma once

#include <host/files/Open.h>

namespace Tools {

// `Host::open` with a bar; a refusal says what people may do about it.
Host::Result<Host::OpenedFile> open(const std::string& path);

} // namespace Tools
