// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Lifetime.h"
#include "Storage/Files.h"
#include "Storage/GrowingPause.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <new>
#include <optional>
#include <string>
#include <utility>

namespace lumora {

/// A file of ours that is read whole and replaced whole. What is damaged is never lost: before the
/// first replacement it is kept beside the file, under its name and ".unreadable", with a number
/// behind where others have that name. A file that the system fails to read is not replaced.
class PersistedFile {
 public:
  /// What the file was when it was last loaded or replaced.
  enum class State {
    missing,
    good,
    damaged,  ///< Something is there that is none of our files or cannot be decoded.
    unknown,  ///< It could not be read, or was perhaps still being written.
  };

  /// `files` must outlive this.
  PersistedFile(Files& files, std::filesystem::path path) : files_(files), path_(std::move(path)) {}

  /// What `decode` makes of the content (it gets the bytes to keep or change and answers an
  /// optional; out of memory it throws `std::bad_alloc`); absent unless the file is then good.
  template <typename Decode>
  auto load(Decode decode) -> decltype(decode(std::declval<std::string&>())) {
    FileContent content = files_.read(path_);
    decltype(decode(std::declval<std::string&>())) decoded;
    if (content.found == FileContent::Found::file) {
      try {
        decoded = decode(content.bytes);
      } catch (const std::bad_alloc&) {
        content.found = FileContent::Found::unknown;
      }
    }
    know(decoded ? State::good : stateWithoutContent(content));
    stamp_ = content.stamp;
    return decoded;
  }

  State state() const { return state_; }

  /// Whether a replacement has begun and not ended.
  bool isWriting() const { return ended_ != begun_; }

  /// Whether what is there now is not, or may not be, what was last loaded or replaced. Amid a
  /// replacement nobody can tell, and the answer is no.
  bool changedElsewhere() const {
    return !isWriting() && (state_ == State::unknown || files_.stamp(path_) != stamp_);
  }

  /// The same for an occasion that comes anyway: what cannot be read is not tried at each of them,
  /// but after a growing pause. Call it once on each.
  bool isWorthLoading() { return state_ == State::unknown ? pause_.isOver() : changedElsewhere(); }

  /// Begins to replace the file. `saved` is called when these bytes are on the disk, unless newer
  /// ones have been given meanwhile; not when the file stays as it was, as it does while its state
  /// is unknown.
  void replace(std::string bytes, std::function<void()> saved) {
    if (state_ == State::unknown) return;
    if (state_ == State::damaged && !keepBeside()) return;
    // From here on nothing there is to be kept.
    state_ = State::good;
    files_.replaceSoon(path_, std::move(bytes),
                       lifetime_.guard([this, number = ++begun_, saved = std::move(saved)](
                                           const std::optional<FileStamp>& stamp) {
                         ended_ = number;
                         if (!stamp) return;
                         stamp_ = *stamp;
                         know(State::good);
                         if (!isWriting()) saved();
                       }));
  }

 private:
  static constexpr int kMostKept = 10;

  State stateWithoutContent(const FileContent& content) const {
    if (content.found == FileContent::Found::nothing) return State::missing;
    if (content.found == FileContent::Found::unknown) return State::unknown;
    // A file that came while we run may still be being written: it is damaged if it stays like
    // that.
    return !loaded_ || content.stamp == stamp_ ? State::damaged : State::unknown;
  }

  void know(State state) {
    state_ = state;
    loaded_ = true;
    if (state == State::unknown) {
      pause_.begin();
    } else {
      pause_.reset();
    }
  }

  /// The oldest stay; where all names are taken the newest gives way.
  bool keepBeside() {
    std::string suffix = ".unreadable";
    for (int number = 2; number <= kMostKept; ++number) {
      const auto kept = files_.keepBeside(path_, suffix, Files::IfTaken::leaveIt);
      if (kept != Files::Kept::taken) return kept == Files::Kept::yes;
      suffix = ".unreadable." + std::to_string(number);
    }
    return files_.keepBeside(path_, suffix, Files::IfTaken::replaceIt) == Files::Kept::yes;
  }

  Files& files_;
  std::filesystem::path path_;
  FileStamp stamp_;
  State state_ = State::missing;
  bool loaded_ = false;
  GrowingPause pause_;
  // Replacements, in the order of their beginning.
  std::uint64_t begun_ = 0;
  std::uint64_t ended_ = 0;
  Lifetime lifetime_;
};

}  // namespace lumora
