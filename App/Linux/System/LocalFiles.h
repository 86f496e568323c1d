// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Storage/Files.h"

#include <filesystem>
#include <optional>
#include <string_view>

namespace lumora {

/// Files of the machine. A new file is written whole under the name with ".lumora-new" added (up to
/// ".lumora-new.4" where other writers hold that), flushed to the disk and then renamed. A symbolic
/// link stays one: what it points to is replaced, made, or kept beside; one that leads to no place
/// for a file is replaced itself.
class LocalFiles final : public Files {
 public:
  void createFolders(const std::filesystem::path& folder) override;
  FileContent read(const std::filesystem::path& path) override;
  FileStamp stamp(const std::filesystem::path& path) override;
  std::optional<FileStamp> replace(const std::filesystem::path& path,
                                   std::string_view bytes) override;
  Kept keepBeside(const std::filesystem::path& path, std::string_view suffix,
                  IfTaken ifTaken) override;
};

}  // namespace lumora
