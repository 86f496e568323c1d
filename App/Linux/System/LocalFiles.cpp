// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/System/LocalFiles.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <new>
#include <optional>
#include <string>
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

/// False also when the file is shorter than `bytes`: somebody is changing it.
bool readWhole(int descriptor, std::string& bytes) {
  std::size_t filled = 0;
  while (filled < bytes.size()) {
    const ssize_t got = ::read(descriptor, bytes.data() + filled, bytes.size() - filled);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return false;
    filled += static_cast<std::size_t>(got);
  }
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

/// Where a symbolic link leads, there already or not, if that is a place for a file of ours.
std::filesystem::path behindLinks(const std::filesystem::path& path) {
  constexpr int kMostLinks = 40;
  auto target = path;
  for (int links = 0; links <= kMostLinks; ++links) {
    std::error_code error;
    const auto next = std::filesystem::read_symlink(target, error);
    if (!error) {
      target = target.parent_path() / next;
      continue;
    }
    const auto type = std::filesystem::status(target, error).type();
    const bool fit = type == std::filesystem::file_type::regular ||
                     type == std::filesystem::file_type::not_found;
    return fit ? target : path;
  }
  return path;
}

std::filesystem::path withSuffix(std::filesystem::path path, std::string_view suffix) {
  path += suffix;
  return path;
}

/// What a new content is written under before it takes the file's place: the first that no other
/// Lumora of the same user is writing. One that was stopped amid a write may hold its own for ever.
constexpr std::array<std::string_view, 4> kTemporary = {".lumora-new", ".lumora-new.2",
                                                        ".lumora-new.3", ".lumora-new.4"};

/// Where a file system knows no locks, nobody else is taken to write.
bool lock(const OpenFile& file) {
  return ::flock(file.descriptor(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

/// Takes away what a write left that was cut short; who writes holds a lock on it.
void clear(const std::filesystem::path& temporary) {
  struct stat status {};
  if (::lstat(temporary.c_str(), &status) != 0) return;
  const OpenFile left(temporary, O_RDONLY | O_NONBLOCK | O_NOFOLLOW);
  if (!S_ISREG(status.st_mode) || (left && lock(left))) ::unlink(temporary.c_str());
}

/// A new file of the user alone that nobody clears as long as this lives.
class NewFile {
 public:
  explicit NewFile(const std::filesystem::path& target) {
    for (const auto suffix : kTemporary) {
      path_ = withSuffix(target, suffix);
      clear(path_);
      file_.emplace(path_, O_WRONLY | O_CREAT | O_EXCL);
      if (*file_ && lock(*file_) && isInPlace()) return;
      file_.reset();
    }
  }

  explicit operator bool() const { return file_.has_value(); }
  const std::filesystem::path& path() const { return path_; }

  std::optional<FileStamp> fill(std::string_view bytes) const {
    struct stat status {};
    const int descriptor = file_->descriptor();
    if (::fchmod(descriptor, kOwnerOnly) != 0 || !writeWhole(descriptor, bytes) ||
        ::fsync(descriptor) != 0 || ::fstat(descriptor, &status) != 0) {
      return std::nullopt;
    }
    return stampOf(status);
  }

 private:
  /// Between its making and its lock it may have been cleared.
  bool isInPlace() const {
    struct stat mine {};
    struct stat there {};
    return ::fstat(file_->descriptor(), &mine) == 0 && ::stat(path_.c_str(), &there) == 0 &&
           mine.st_ino == there.st_ino;
  }

  std::filesystem::path path_;
  std::optional<OpenFile> file_;
};

/// What lies there where `open` failed with `error`.
FileContent::Found foundUnopened(const std::filesystem::path& path, int error) {
  using Found = FileContent::Found;
  if (error == ENOENT || error == ENOTDIR) return Found::nothing;
  const bool forOthers = error == EACCES && ::access(path.c_str(), R_OK) != 0 && errno == EACCES;
  // A link that leads round in a circle; a socket.
  return forOthers || error == ELOOP || error == ENXIO ? Found::unfit : Found::unknown;
}

FileContent readContent(const std::filesystem::path& path) {
  using Found = FileContent::Found;
  FileContent content;
  // Without O_NONBLOCK, opening a pipe would wait for its writer.
  const OpenFile file(path, O_RDONLY | O_NONBLOCK);
  struct stat status {};
  if (!file) {
    content.found = foundUnopened(path, errno);
    return content;
  }
  content.found = Found::unknown;
  if (::fstat(file.descriptor(), &status) != 0) return content;
  content.stamp = stampOf(status);
  if (!S_ISREG(status.st_mode) || status.st_size > kLargest) {
    content.found = Found::unfit;
    return content;
  }
  content.bytes.reserve(static_cast<std::size_t>(status.st_size) + kPadding);
  content.bytes.resize(static_cast<std::size_t>(status.st_size));
  if (readWhole(file.descriptor(), content.bytes)) content.found = Found::file;
  return content;
}

/// Also a link that leads nowhere.
bool isThere(const std::filesystem::path& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 || errno != ENOENT;
}

/// A second name for the file, or, on a file system without them, another name. 0 or an `errno`.
int nameAlso(const std::filesystem::path& file, const std::filesystem::path& name) {
  if (::link(file.c_str(), name.c_str()) == 0) return 0;
  if (errno == EEXIST || errno == ENOENT) return errno;
  if (isThere(name)) return EEXIST;
  return ::rename(file.c_str(), name.c_str()) == 0 ? 0 : errno;
}

bool isSameFile(const std::filesystem::path& one, const std::filesystem::path& other) {
  struct stat first {};
  struct stat second {};
  return ::lstat(one.c_str(), &first) == 0 && ::lstat(other.c_str(), &second) == 0 &&
         first.st_ino == second.st_ino && first.st_dev == second.st_dev;
}

}  // namespace

void LocalFiles::createFolders(const std::filesystem::path& folder) {
  if (folder.empty() || ::access(folder.c_str(), F_OK) == 0) return;
  createFolders(folder.parent_path());
  ::mkdir(folder.c_str(), kFolderOwnerOnly);
}

FileContent LocalFiles::read(const std::filesystem::path& path) {
  for (const auto suffix : kTemporary) clear(withSuffix(behindLinks(path), suffix));
  FileContent content;
  try {
    content = readContent(path);
  } catch (const std::bad_alloc&) {
    content.found = FileContent::Found::unknown;
  }
  if (content.found == FileContent::Found::unfit) content.stamp = stamp(path);
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
  const NewFile file(target);
  if (!file) return std::nullopt;
  const auto stamp = file.fill(bytes);
  if (stamp && ::rename(file.path().c_str(), target.c_str()) == 0) return stamp;
  ::unlink(file.path().c_str());
  return std::nullopt;
}

Files::Kept LocalFiles::keepBeside(const std::filesystem::path& path, std::string_view suffix,
                                   IfTaken ifTaken) {
  const auto target = behindLinks(path);
  const auto name = withSuffix(target, suffix);
  int error = nameAlso(target, name);
  if (error == EEXIST && !isSameFile(target, name)) {
    if (ifTaken == IfTaken::leaveIt) return Kept::taken;
    ::unlink(name.c_str());
    error = nameAlso(target, name);
  }
  // If somebody has taken it away, nothing is left to keep.
  const bool isGone = error == ENOENT && !isThere(target);
  return error == 0 || error == EEXIST || isGone ? Kept::yes : Kept::no;
}

}  // namespace lumora
