// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace lumora {

/// Tells one state of a file from another without reading it. All zero: there is no file.
struct FileStamp {
  std::int64_t modifiedNanoseconds = 0;
  std::uint64_t inode = 0;
  std::int64_t size = 0;

  bool operator==(const FileStamp&) const = default;
};

/// What reading a whole file gave.
struct FileContent {
  /// Absent when the file is missing or cannot be read.
  std::optional<std::string> bytes;
  /// Of the file as it was when read.
  FileStamp stamp;
  /// Something lies there, read or not.
  bool exists = false;
};

/// The user's files. Nothing throws; a failure leaves what was there before.
class Files {
 public:
  virtual ~Files() = default;

  /// Makes the folder and those above it, readable by the user alone; errors are ignored.
  virtual void createFolders(const std::filesystem::path& folder) = 0;

  /// Reads a regular file of at most 256 MiB whole; anything else counts as unreadable.
  virtual FileContent read(const std::filesystem::path& path) = 0;

  virtual FileStamp stamp(const std::filesystem::path& path) = 0;

  /// Replaces the file by `bytes` as one step: readers see the old or the new content, also after a
  /// power loss. Readable by the user alone. The new file's stamp, or absent when nothing changed.
  virtual std::optional<FileStamp> replace(const std::filesystem::path& path,
                                           std::string_view bytes) = 0;

  /// Gives the file a second name, taking that name from whatever had it. False on failure; a file
  /// that is no longer there needs no name.
  virtual bool keepAs(const std::filesystem::path& path, const std::filesystem::path& name) = 0;
};

}  // namespace lumora
