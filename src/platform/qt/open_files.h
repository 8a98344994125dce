// SPDX-License-Identifier: GPL-3.0-or-later
// Files of the real disk that stay open. Paths are resolved: absolute and spelled as on the disk.
#pragma once

#include <sys/types.h>

#include <memory>
#include <optional>
#include <string>

#include "platform/files.h"

namespace corvid {

// mode is forced upon the file where given; else a new file follows the umask.
std::unique_ptr<AppendFile> OpenGrowingFile(const std::string& real, std::optional<mode_t> mode);
std::unique_ptr<ReadFile> OpenFileForReading(const std::string& real);
std::unique_ptr<RandomFile> OpenFileOfPlaces(const std::string& real);

}  // namespace corvid
