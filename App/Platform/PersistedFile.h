// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Files.h"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace lumora {

/// A file of ours that is read whole and replaced whole. What could not be read is never lost:
/// before the first replacement it is kept beside the file, under its name and ".unreadable".
class PersistedFile {
 public:
  /// `files` must outlive this.
  PersistedFile(Files& files, std::filesystem::path path) : files_(files), path_(std::move(path)) {}

  /// What `decode` makes of the content (it gets the bytes to keep or change and answers an
  /// optional); absent when the file is missing, unreadable or not decodable.
  template <typename Decode>
  auto load(Decode decode) -> decltype(decode(std::declval<std::string&>())) {
    FileContent content = files_.read(path_);
    stamp_ = content.stamp;
    decltype(decode(std::declval<std::string&>())) decoded;
    if (content.bytes) decoded = decode(*content.bytes);
    unreadable_ = content.exists && !decoded;
    return decoded;
  }

  /// Whether somebody else changed the file since it was loaded or replaced.
  bool changedElsewhere() const { return files_.stamp(path_) != stamp_; }

  /// Whether something was there that could not be decoded when it was last loaded.
  bool isUnreadable() const { return unreadable_; }

  /// False when the file stays as it was.
  bool replace(std::string_view bytes) {
    if (unreadable_) {
      std::filesystem::path kept = path_;
      kept += ".unreadable";
      if (!files_.keepAs(path_, kept)) return false;
    }
    const auto stamp = files_.replace(path_, bytes);
    if (!stamp) return false;
    stamp_ = *stamp;
    unreadable_ = false;
    return true;
  }

 private:
  Files& files_;
  std::filesystem::path path_;
  FileStamp stamp_;
  bool unreadable_ = false;
};

}  // namespace lumora
