// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

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
  enum class Found {
    nothing,  ///< No file is there.
    file,     ///< `bytes` are what it holds.
    unfit,    ///< What lies there is none of our files: a folder, a pipe, too large, not ours to
              ///< read.
    unknown,  ///< The system failed to tell: too few descriptors, too little memory, a broken disk.
  };

  Found found = Found::nothing;
  std::string bytes;
  /// Of the file as it was when read.
  FileStamp stamp;
};

/// The user's files. Nothing throws; a failure leaves what was there before.
class Files {
 public:
  /// What `keepBeside` does with a file that has the name already.
  enum class IfTaken { leaveIt, replaceIt };
  /// What came of it.
  enum class Kept { yes, taken, no };
  /// Gets the stamp of the new file; absent when nothing changed.
  using Replaced = std::function<void(std::optional<FileStamp>)>;

  virtual ~Files() = default;

  /// Makes the folder and those above it, readable by the user alone; errors are ignored.
  virtual void createFolders(const std::filesystem::path& folder) = 0;

  /// Reads a regular file of at most 256 MiB whole.
  virtual FileContent read(const std::filesystem::path& path) = 0;

  /// All zero also when the system fails to tell.
  virtual FileStamp stamp(const std::filesystem::path& path) = 0;

  /// Replaces the file by `bytes` as one step: readers see the old or the new content, also after a
  /// power loss. Readable by the user alone. The new file's stamp, or absent when nothing changed.
  virtual std::optional<FileStamp> replace(const std::filesystem::path& path,
                                           std::string_view bytes) = 0;

  /// The same for who does not wait for the disk: `replaced` is called on the caller's thread, at
  /// once or later. Of what is asked for one file before it is begun, only the newest is written,
  /// and only its `replaced` is called.
  virtual void replaceSoon(const std::filesystem::path& path, std::string bytes,
                           Replaced replaced) {
    const std::string text = std::move(bytes);
    const Replaced tell = std::move(replaced);
    tell(replace(path, text));
  }

  /// Calls `done` once nothing is left of what `replaceSoon` was asked for.
  virtual void whenWritten(std::function<void()> done) {
    const std::function<void()> tell = std::move(done);
    tell();
  }

  /// Gives the file a second name beside its own: that with `suffix` added. A file that is no
  /// longer there needs none: yes.
  virtual Kept keepBeside(const std::filesystem::path& path, std::string_view suffix,
                          IfTaken ifTaken) = 0;
};

}  // namespace lumora
