// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/RunLoop.h"
#include "Storage/Files.h"

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <vector>

namespace lumora {

/// Files that nobody waits for: what `replaceSoon` is asked for is written by a thread, in the
/// order asked for. The thread lives for as long as there is something to write; where none can be
/// had, the caller writes.
class FileWriter final : public Files {
 public:
  /// `disk` does the work, `runLoop` brings the answers back. Both must outlive this.
  FileWriter(Files& disk, RunLoop& runLoop) : disk_(disk), runLoop_(runLoop) {}
  FileWriter(const FileWriter&) = delete;
  FileWriter& operator=(const FileWriter&) = delete;
  ~FileWriter() override;

  void createFolders(const std::filesystem::path& folder) override;
  FileContent read(const std::filesystem::path& path) override;
  FileStamp stamp(const std::filesystem::path& path) override;
  std::optional<FileStamp> replace(const std::filesystem::path& path,
                                   std::string_view bytes) override;
  void replaceSoon(const std::filesystem::path& path, std::string bytes,
                   Replaced replaced) override;
  void whenWritten(std::function<void()> done) override;
  Kept keepBeside(const std::filesystem::path& path, std::string_view suffix,
                  IfTaken ifTaken) override;

  /// Blocks until nothing is left to write, but no longer than `patience`; whether that was enough.
  /// For the end of the program: no `replaced` is called meanwhile.
  bool finish(std::chrono::seconds patience);

 private:
  struct Write {
    std::filesystem::path path;
    std::string bytes;
    Replaced replaced;
  };

  void writeAll();

  Files& disk_;
  RunLoop& runLoop_;
  std::mutex mutex_;  // of all below but the thread
  std::condition_variable written_;
  std::deque<Write> waiting_;
  std::vector<std::function<void()>> whenWritten_;
  bool writing_ = false;
  std::thread thread_;
};

}  // namespace lumora
