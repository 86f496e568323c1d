// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Storage/Files.h"
#include "Support/Recorder.h"

#include <algorithm>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lumora::test {

/// Files in memory, with failures to switch on. Each change of a file gives it a new stamp.
class MemoryFiles final : public Files {
 public:
  explicit MemoryFiles(Recorder* recorder = nullptr) : recorder_(recorder) {}

  void createFolders(const std::filesystem::path& folder) override {
    record(recorder_, "folder " + folder.string());
  }

  FileContent read(const std::filesystem::path& path) override {
    using Found = FileContent::Found;
    record(recorder_, "read " + path.filename().string());
    if (failsReading) return {.found = Found::unknown, .bytes = {}, .stamp = {}};
    const auto file = files_.find(path);
    if (file == files_.end()) return {};
    if (unfit) return {.found = Found::unfit, .bytes = {}, .stamp = file->second.stamp};
    return {.found = Found::file, .bytes = file->second.bytes, .stamp = file->second.stamp};
  }

  FileStamp stamp(const std::filesystem::path& path) override {
    record(recorder_, "stamp " + path.filename().string());
    const auto file = files_.find(path);
    return file == files_.end() ? FileStamp{} : file->second.stamp;
  }

  std::optional<FileStamp> replace(const std::filesystem::path& path,
                                   std::string_view bytes) override {
    record(recorder_, "replace " + path.filename().string());
    if (failsReplacing) return std::nullopt;
    edit(path, bytes);
    return files_[path].stamp;
  }

  void replaceSoon(const std::filesystem::path& path, std::string bytes,
                   Replaced replaced) override {
    if (!isSlow) return Files::replaceSoon(path, std::move(bytes), std::move(replaced));
    // The first has begun.
    const auto waiting = writes_.begin() + (writes_.empty() ? 0 : 1);
    writes_.erase(std::remove_if(waiting, writes_.end(),
                                 [&](const Write& write) { return write.path == path; }),
                  writes_.end());
    writes_.push_back({path, std::move(bytes), std::move(replaced)});
  }

  void whenWritten(std::function<void()> done) override {
    if (writes_.empty()) return done();
    whenWritten_.push_back(std::move(done));
  }

  /// While the disk is slow: ends the replacement that has begun, and begins the next.
  void endWrite() {
    const Write write = std::move(writes_.front());
    writes_.pop_front();
    write.replaced(replace(write.path, write.bytes));
    if (!writes_.empty()) return;
    for (const auto& done : std::exchange(whenWritten_, {})) done();
  }

  std::size_t writesLeft() const { return writes_.size(); }

  Kept keepBeside(const std::filesystem::path& path, std::string_view suffix,
                  IfTaken ifTaken) override {
    auto name = path;
    name += suffix;
    if (failsKeeping) return Kept::no;
    if (!files_.contains(path)) return Kept::yes;
    const bool isTaken = files_.contains(name) && files_[name].stamp != files_[path].stamp;
    if (isTaken && ifTaken == IfTaken::leaveIt) return Kept::taken;
    record(recorder_, "keep as " + name.filename().string());
    files_[name] = files_[path];
    return Kept::yes;
  }

  /// As another program does.
  void edit(const std::filesystem::path& path, std::string_view bytes) {
    ++changes_;
    files_[path] = {
        std::string(bytes),
        {changes_, static_cast<std::uint64_t>(changes_), static_cast<std::int64_t>(bytes.size())}};
  }

  /// As another program does.
  void remove(const std::filesystem::path& path) { files_.erase(path); }

  std::optional<std::string> text(const std::filesystem::path& path) const {
    const auto file = files_.find(path);
    return file == files_.end() ? std::nullopt : std::optional(file->second.bytes);
  }

  bool failsReading = false;
  /// Whatever lies there can be no file of ours.
  bool unfit = false;
  bool failsReplacing = false;
  /// What is to be replaced soon waits until the test calls `endWrite`.
  bool isSlow = false;
  bool failsKeeping = false;

 private:
  struct Write {
    std::filesystem::path path;
    std::string bytes;
    Replaced replaced;
  };

  struct File {
    std::string bytes;
    FileStamp stamp;
  };

  Recorder* recorder_;
  std::map<std::filesystem::path, File> files_;
  std::int64_t changes_ = 0;
  std::deque<Write> writes_;
  std::vector<std::function<void()>> whenWritten_;
};

}  // namespace lumora::test
