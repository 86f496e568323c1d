// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Files.h"

namespace lumora {

/// Files of the machine. A new file is written whole under the name with ".new" added, flushed to
/// the disk and then renamed. A symbolic link stays one: what it points to is replaced.
class LocalFiles final : public Files {
 public:
  void createFolders(const std::filesystem::path& folder) override;
  FileContent read(const std::filesystem::path& path) override;
  FileStamp stamp(const std::filesystem::path& path) override;
  std::optional<FileStamp> replace(const std::filesystem::path& path,
                                   std::string_view bytes) override;
  bool keepAs(const std::filesystem::path& path, const std::filesystem::path& name) override;
};

}  // namespace lumora
