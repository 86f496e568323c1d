// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/LocalFiles.h"

#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace lumora {
namespace {

constexpr off_t kLargest = off_t{256} << 20;
constexpr mode_t kOwnerOnly = 0600;
constexpr mode_t kFolderOwnerOnly = 0700;
// Room behind the bytes, so that a parser that reads ahead need not move them.
constexpr std::size_t kPadding = 64;

class OpenFile {
 public:
  OpenFile(const std::filesystem::path& path, int flags)
      : descriptor_(::open(path.c_str(), flags | O_CLOEXEC, kOwnerOnly)) {}
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;
  ~OpenFile() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }

  explicit operator bool() const { return descriptor_ >= 0; }
  int descriptor() const { return descriptor_; }

 private:
  int descriptor_;
};

FileStamp stampOf(const struct stat& status) {
  return {.modifiedNanoseconds =
              std::int64_t{status.st_mtim.tv_sec} * 1'000'000'000 + status.st_mtim.tv_nsec,
          .inode = status.st_ino,
          .size = status.st_size};
}

bool readWhole(int descriptor, std::string& bytes) {
  std::size_t filled = 0;
  while (filled < bytes.size()) {
    const ssize_t got = ::read(descriptor, bytes.data() + filled, bytes.size() - filled);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return false;
    if (got == 0) break;
    filled += static_cast<std::size_t>(got);
  }
  bytes.resize(filled);
  return true;
}

bool writeWhole(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t put = ::write(descriptor, bytes.data(), bytes.size());
    if (put < 0 && errno == EINTR) continue;
    if (put < 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(put));
  }
  return true;
}

/// Where a symbolic link leads, if that is a place for a file of ours.
std::filesystem::path behindLinks(const std::filesystem::path& path) {
  std::error_code error;
  if (!std::filesystem::is_symlink(path, error)) return path;
  const auto target = std::filesystem::weakly_canonical(path, error);
  if (error) return path;
  const auto type = std::filesystem::status(target, error).type();
  const bool fit =
      type == std::filesystem::file_type::regular || type == std::filesystem::file_type::not_found;
  return fit ? target : path;
}

std::filesystem::path withSuffix(std::filesystem::path path, const char* suffix) {
  path += suffix;
  return path;
}

/// Where a new content is written before it takes the file's place; a name that nobody else uses.
std::filesystem::path temporaryFor(const std::filesystem::path& target) {
  return withSuffix(target, ".lumora-new");
}

/// Keeps other Lumoras of the same user from writing in a folder meanwhile. One that holds it does
/// so for milliseconds, or has stopped: nobody waits.
class FolderLock {
 public:
  explicit FolderLock(const std::filesystem::path& folder)
      : folder_(folder, O_RDONLY | O_DIRECTORY) {
    free_ = ::flock(folder_.descriptor(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
  }

  explicit operator bool() const { return free_; }

 private:
  OpenFile folder_;
  bool free_;
};

std::optional<FileStamp> writeNew(const std::filesystem::path& path, std::string_view bytes) {
  // What lies there is left from a write that was cut short.
  ::unlink(path.c_str());
  const OpenFile file(path, O_WRONLY | O_CREAT | O_EXCL);
  struct stat status {};
  if (!file || ::fchmod(file.descriptor(), kOwnerOnly) != 0 ||
      !writeWhole(file.descriptor(), bytes) || ::fsync(file.descriptor()) != 0 ||
      ::fstat(file.descriptor(), &status) != 0) {
    return std::nullopt;
  }
  return stampOf(status);
}

}  // namespace

void LocalFiles::createFolders(const std::filesystem::path& folder) {
  if (folder.empty() || ::access(folder.c_str(), F_OK) == 0) return;
  createFolders(folder.parent_path());
  ::mkdir(folder.c_str(), kFolderOwnerOnly);
}

FileContent LocalFiles::read(const std::filesystem::path& path) {
  FileContent content;
  const auto target = behindLinks(path);
  // What a write left that was cut short.
  if (const FolderLock lock(target.parent_path()); lock) ::unlink(temporaryFor(target).c_str());
  // Without O_NONBLOCK, opening a pipe would wait for its writer.
  const OpenFile file(path, O_RDONLY | O_NONBLOCK);
  content.exists = file || errno != ENOENT;
  struct stat status {};
  if (!file || ::fstat(file.descriptor(), &status) != 0) {
    content.stamp = stamp(path);
    return content;
  }
  content.stamp = stampOf(status);
  if (!S_ISREG(status.st_mode) || status.st_size > kLargest) return content;

  std::string bytes;
  bytes.reserve(static_cast<std::size_t>(status.st_size) + kPadding);
  bytes.resize(static_cast<std::size_t>(status.st_size));
  if (readWhole(file.descriptor(), bytes)) content.bytes = std::move(bytes);
  return content;
}

FileStamp LocalFiles::stamp(const std::filesystem::path& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 ? stampOf(status) : FileStamp{};
}

std::optional<FileStamp> LocalFiles::replace(const std::filesystem::path& path,
                                             std::string_view bytes) {
  const auto target = behindLinks(path);
  createFolders(target.parent_path());
  const auto temporary = temporaryFor(target);
  const FolderLock lock(target.parent_path());
  if (!lock) return std::nullopt;
  const auto stamp = writeNew(temporary, bytes);
  if (stamp && ::rename(temporary.c_str(), target.c_str()) == 0) return stamp;
  ::unlink(temporary.c_str());
  return std::nullopt;
}

bool LocalFiles::keepAs(const std::filesystem::path& path, const std::filesystem::path& name) {
  const auto target = behindLinks(path);
  // A second name first, so that the file is never without one; not every file system has them.
  const auto temporary = temporaryFor(target);
  ::unlink(temporary.c_str());
  if (::link(target.c_str(), temporary.c_str()) == 0) {
    if (::rename(temporary.c_str(), name.c_str()) == 0) return true;
    ::unlink(temporary.c_str());
    return false;
  }
  // If somebody has taken it away, nothing is left to keep.
  return stamp(target) == FileStamp{} || ::rename(target.c_str(), name.c_str()) == 0;
}

}  // namespace lumora
