// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/System/BaseDirectories.h"

#include <cstdlib>
#include <sstream>
#include <string>

namespace lumora {
namespace {

std::string absoluteOnes(const std::string& list) {
  std::istringstream paths(list);
  std::string absolute;
  for (std::string path; std::getline(paths, path, ':');) {
    if (path.starts_with('/')) absolute += (absolute.empty() ? "" : ":") + path;
  }
  return absolute;
}

}  // namespace

void ignoreRelativeBaseDirectories() {
  for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME",
                           "XDG_RUNTIME_DIR"}) {
    const char* folder = std::getenv(name);
    if (folder != nullptr && *folder != '/') ::unsetenv(name);
  }
  for (const char* name : {"XDG_CONFIG_DIRS", "XDG_DATA_DIRS"}) {
    const char* list = std::getenv(name);
    if (list == nullptr) continue;
    // Empty means the same as unset.
    ::setenv(name, absoluteOnes(list).c_str(), 1);
  }
}

}  // namespace lumora
