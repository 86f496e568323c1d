// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/System/MainBundle.h"

#include <system_error>

namespace lumora {

Bundle bundleOf(const std::filesystem::path& executable) {
  Bundle bundle{.location = executable.parent_path(), .identifier = std::nullopt};
  int entries = 0;
  std::error_code error;
  for (std::filesystem::directory_iterator file(bundle.location, error), end; !error && file != end;
       file.increment(error)) {
    if (file->path().extension() != ".desktop") continue;
    ++entries;
    bundle.identifier = file->path().stem();
  }
  if (entries != 1) bundle.identifier.reset();
  return bundle;
}

Bundle mainBundle() {
  std::error_code error;
  return bundleOf(std::filesystem::read_symlink("/proc/self/exe", error));
}

}  // namespace lumora
