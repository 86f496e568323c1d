// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Files.h"
#include "Support/Recorder.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace lumora::test {

/// Files in memory, with failures to switch on. Each change of a file gives it a new stamp.
class MemoryFiles final : public Files {
 public:
  explicit MemoryFiles(Recorder* recorder = nullptr) : recorder_(recorder) {}

  void createFolders(const std::filesystem::path& folder) override {
    record(recorder_, "folder " + folder.string());
  }

  FileContent read(const std::filesystem::path& path) override {
    record(recorder_, "read " + path.filename().string());
    const auto file = files_.find(path);
    if (file == files_.end()) return {};
    if (failsReading) return {std::nullopt, file->second.stamp, true};
    return {file->second.bytes, file->second.stamp, true};
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

  bool keepAs(const std::filesystem::path& path, const std::filesystem::path& name) override {
    record(recorder_, "keep as " + name.filename().string());
    if (failsKeeping || !files_.contains(path)) return false;
    files_[name] = files_[path];
    return true;
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
  bool failsReplacing = false;
  bool failsKeeping = false;

 private:
  struct File {
    std::string bytes;
    FileStamp stamp;
  };

  Recorder* recorder_;
  std::map<std::filesystem::path, File> files_;
  std::int64_t changes_ = 0;
};

}  // namespace lumora::test
