// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/System/FileWriter.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace lumora {

FileWriter::~FileWriter() {
  if (thread_.joinable()) thread_.join();
}

void FileWriter::replaceSoon(const std::filesystem::path& path, std::string bytes,
                             Replaced replaced) {
  {
    const std::scoped_lock lock(mutex_);
    std::erase_if(waiting_, [&path](const Write& write) { return write.path == path; });
    waiting_.push_back({path, std::move(bytes), std::move(replaced)});
    if (std::exchange(writing_, true)) return;
  }
  // The one before has nothing left to do.
  if (thread_.joinable()) thread_.join();
  try {
    thread_ = std::thread([this] { writeAll(); });
  } catch (const std::system_error&) {
    writeAll();
  }
}

void FileWriter::writeAll() {
  std::unique_lock lock(mutex_);
  while (!waiting_.empty()) {
    Write write = std::move(waiting_.front());
    waiting_.pop_front();
    lock.unlock();
    const auto stamp = disk_.replace(write.path, write.bytes);
    runLoop_.runSoon([replaced = std::move(write.replaced), stamp] { replaced(stamp); });
    lock.lock();
  }
  for (auto& done : std::exchange(whenWritten_, {})) runLoop_.runSoon(std::move(done));
  writing_ = false;
  written_.notify_all();
}

void FileWriter::whenWritten(std::function<void()> done) {
  std::unique_lock lock(mutex_);
  if (writing_) return whenWritten_.push_back(std::move(done));
  lock.unlock();
  done();
}

bool FileWriter::finish(std::chrono::seconds patience) {
  std::unique_lock lock(mutex_);
  return written_.wait_for(lock, patience, [this] { return !writing_; });
}

void FileWriter::createFolders(const std::filesystem::path& folder) { disk_.createFolders(folder); }

FileContent FileWriter::read(const std::filesystem::path& path) { return disk_.read(path); }

FileStamp FileWriter::stamp(const std::filesystem::path& path) { return disk_.stamp(path); }

std::optional<FileStamp> FileWriter::replace(const std::filesystem::path& path,
                                             std::string_view bytes) {
  return disk_.replace(path, bytes);
}

Files::Kept FileWriter::keepBeside(const std::filesystem::path& path, std::string_view suffix,
                                   IfTaken ifTaken) {
  return disk_.keepBeside(path, suffix, ifTaken);
}

}  // namespace lumora
