// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/System/LocalFiles.h"
#include "Support/TemporaryFolder.h"

#include <csignal>
#include <fstream>
#include <sstream>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace lumora::test {
namespace {

namespace fs = std::filesystem;
using Found = FileContent::Found;

class LocalFilesTest : public testing::Test {
 protected:
  static std::string text(const fs::path& path) {
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
  }

  static unsigned mode(const fs::path& path) {
    return static_cast<unsigned>(fs::status(path).permissions());
  }

  std::vector<fs::path> names() const {
    std::vector<fs::path> names;
    for (const auto& entry : fs::directory_iterator(folder.path())) {
      names.push_back(entry.path().filename());
    }
    return names;
  }

  TemporaryFolder folder;
  LocalFiles files;
  fs::path file = folder.path() / "file";
};

TEST_F(LocalFilesTest, WritesAndReadsBack) {
  const std::string bytes("a\0b\n", 4);
  const auto stamp = files.replace(file, bytes);
  ASSERT_TRUE(stamp);
  const FileContent content = files.read(file);
  EXPECT_EQ(content.found, Found::file);
  EXPECT_EQ(content.bytes, bytes);
  EXPECT_EQ(content.stamp, stamp);
  EXPECT_EQ(files.stamp(file), stamp);
  EXPECT_EQ(names(), std::vector<fs::path>{"file"});
}

TEST_F(LocalFilesTest, KeepsFilesAndFoldersToTheUser) {
  const mode_t before = umask(0);
  files.createFolders(folder.path() / "a" / "b");
  files.replace(folder.path() / "a" / "b" / "file", "text");
  umask(before);
  EXPECT_EQ(mode(folder.path() / "a"), 0700U);
  EXPECT_EQ(mode(folder.path() / "a" / "b"), 0700U);
  EXPECT_EQ(mode(folder.path() / "a" / "b" / "file"), 0600U);
}

TEST_F(LocalFilesTest, TakesRightsAwayFromAFileThatHadMore) {
  std::ofstream(file) << "old";
  fs::permissions(file, fs::perms::all);
  EXPECT_TRUE(files.replace(file, "new"));
  EXPECT_EQ(mode(file), 0600U);
}

TEST_F(LocalFilesTest, MissingIsNotUnreadable) {
  const FileContent content = files.read(file);
  EXPECT_EQ(content.found, Found::nothing);
  EXPECT_EQ(content.stamp, FileStamp{});
  EXPECT_EQ(files.stamp(file), FileStamp{});
}

TEST_F(LocalFilesTest, ReadsNothingButRegularFiles) {
  const fs::path pipe = folder.path() / "pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  for (const fs::path& path : {folder.path(), pipe, fs::path("/dev/zero")}) {
    const FileContent content = files.read(path);
    EXPECT_EQ(content.found, Found::unfit) << path;
  }
}

TEST_F(LocalFilesTest, AFailureOfTheSystemIsNeitherMissingNorUnfit) {
  std::ofstream(file) << "good";
  rlimit before{};
  ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &before), 0);
  const rlimit none{0, before.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
  const FileContent content = files.read(file);
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &before), 0);
  EXPECT_EQ(content.found, Found::unknown);
  EXPECT_EQ(files.read(file).bytes, "good");
}

TEST_F(LocalFilesTest, ALinkThatLeadsRoundInACircleIsUnfit) {
  fs::create_symlink("file", file);
  EXPECT_EQ(files.read(file).found, Found::unfit);
  EXPECT_EQ(files.keepBeside(file, ".unreadable", Files::IfTaken::leaveIt), Files::Kept::yes);
  EXPECT_TRUE(files.replace(file, "new"));
  EXPECT_EQ(text(file), "new");
  EXPECT_TRUE(fs::is_symlink(folder.path() / "file.unreadable"));
}

TEST_F(LocalFilesTest, ReadsNothingBeyond256MiB) {
  std::ofstream(file) << "x";
  fs::resize_file(file, (std::uintmax_t{256} << 20) + 1);
  EXPECT_EQ(files.read(file).found, Found::unfit);
}

TEST_F(LocalFilesTest, StampsTellChangesApart) {
  std::ofstream(file) << "one";
  const FileStamp one = files.stamp(file);
  std::ofstream(file) << "three";
  EXPECT_NE(files.stamp(file), one);
  const auto replaced = files.replace(file, "three");
  EXPECT_EQ(files.stamp(file), replaced);
  fs::remove(file);
  EXPECT_EQ(files.stamp(file), FileStamp{});
}

TEST_F(LocalFilesTest, AFullDiskLeavesTheOldFileWhole) {
  ASSERT_TRUE(files.replace(file, "old"));
  // The nearest thing to a full disk that every user can have: no file may grow beyond this.
  rlimit before{};
  ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
  std::signal(SIGXFSZ, SIG_IGN);
  const rlimit small{1000, before.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
  const auto stamp = files.replace(file, std::string(100'000, 'x'));
  ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
  std::signal(SIGXFSZ, SIG_DFL);

  EXPECT_FALSE(stamp);
  EXPECT_EQ(text(file), "old");
  EXPECT_EQ(names(), std::vector<fs::path>{"file"});
}

TEST_F(LocalFilesTest, AFolderThatTakesNoFilesChangesNothing) {
  // Nobody may make files there, root included.
  EXPECT_FALSE(files.replace("/proc/self/file", "new"));
  EXPECT_EQ(files.keepBeside("/proc/self/status", ".kept", Files::IfTaken::leaveIt),
            Files::Kept::no);
}

TEST_F(LocalFilesTest, WhatCannotBeReplacedStays) {
  fs::create_directories(file / "inside");
  EXPECT_FALSE(files.replace(file, "new"));
  EXPECT_TRUE(fs::exists(file / "inside"));
  EXPECT_EQ(names(), std::vector<fs::path>{"file"});
}

TEST_F(LocalFilesTest, ALeftOverTemporaryFileIsNoHindrance) {
  std::ofstream(folder.path() / "file.lumora-new") << "half a sav";
  EXPECT_TRUE(files.replace(file, "new"));
  EXPECT_EQ(text(file), "new");
  EXPECT_EQ(names(), std::vector<fs::path>{"file"});
}

TEST_F(LocalFilesTest, ReadingClearsWhatAWriteLeft) {
  std::ofstream(file) << "old";
  std::ofstream(folder.path() / "file.lumora-new") << "half a sav";
  EXPECT_EQ(files.read(file).bytes, "old");
  EXPECT_EQ(names(), std::vector<fs::path>{"file"});
}

TEST_F(LocalFilesTest, LeavesAnotherWhoWritesAlone) {
  std::ofstream(file) << "old";
  const fs::path theirs = folder.path() / "file.lumora-new";
  std::ofstream(theirs) << "another's, half writ";
  const int other = open(theirs.c_str(), O_WRONLY);
  ASSERT_EQ(flock(other, LOCK_EX), 0);
  EXPECT_EQ(files.read(file).bytes, "old");
  EXPECT_TRUE(files.replace(file, "new"));
  EXPECT_EQ(text(file), "new");
  EXPECT_EQ(text(theirs), "another's, half writ");
  close(other);
  EXPECT_EQ(files.read(file).bytes, "new");
  EXPECT_EQ(names(), std::vector<fs::path>{"file"});
}

TEST_F(LocalFilesTest, WritesInAFolderThatSomebodyLocked) {
  const int other = open(folder.path().c_str(), O_RDONLY | O_DIRECTORY);
  ASSERT_EQ(flock(other, LOCK_EX), 0);
  EXPECT_TRUE(files.replace(file, "new"));
  close(other);
  EXPECT_EQ(text(file), "new");
}

TEST_F(LocalFilesTest, ASymbolicLinkStaysOne) {
  fs::create_directory(folder.path() / "elsewhere");
  const fs::path target = folder.path() / "elsewhere" / "target";
  std::ofstream(target) << "old";
  fs::create_symlink("elsewhere/target", file);
  EXPECT_TRUE(files.replace(file, "new"));
  EXPECT_TRUE(fs::is_symlink(file));
  EXPECT_EQ(text(target), "new");
}

TEST_F(LocalFilesTest, ALinkToNothingYetStaysOne) {
  const fs::path target = folder.path() / "elsewhere" / "target";
  fs::create_symlink("elsewhere/target", file);
  EXPECT_EQ(files.read(file).found, Found::nothing);
  EXPECT_TRUE(files.replace(file, "new"));
  EXPECT_TRUE(fs::is_symlink(file));
  EXPECT_EQ(text(target), "new");
}

TEST_F(LocalFilesTest, ALinkThroughALinkStaysOne) {
  fs::create_symlink("between", file);
  fs::create_symlink(folder.path() / "target", folder.path() / "between");
  EXPECT_TRUE(files.replace(file, "new"));
  EXPECT_TRUE(fs::is_symlink(file));
  EXPECT_TRUE(fs::is_symlink(folder.path() / "between"));
  EXPECT_EQ(text(folder.path() / "target"), "new");
}

TEST_F(LocalFilesTest, KeepsAFileUnderAnotherName) {
  std::ofstream(file) << "broken";
  const fs::path kept = folder.path() / "file.unreadable";
  EXPECT_EQ(files.keepBeside(file, ".unreadable", Files::IfTaken::leaveIt), Files::Kept::yes);
  EXPECT_EQ(text(kept), "broken");
  EXPECT_EQ(files.keepBeside(file, ".unreadable", Files::IfTaken::leaveIt), Files::Kept::yes);
  EXPECT_TRUE(files.replace(file, "new"));
  EXPECT_EQ(text(kept), "broken");
  EXPECT_EQ(text(file), "new");
}

TEST_F(LocalFilesTest, KeepsAFileInTheNameOfAnotherOnlyIfToldSo) {
  std::ofstream(file) << "broken";
  const fs::path kept = folder.path() / "file.unreadable";
  std::ofstream(kept) << "older";
  EXPECT_EQ(files.keepBeside(file, ".unreadable", Files::IfTaken::leaveIt), Files::Kept::taken);
  EXPECT_EQ(text(kept), "older");
  EXPECT_EQ(files.keepBeside(file, ".unreadable", Files::IfTaken::replaceIt), Files::Kept::yes);
  EXPECT_EQ(text(kept), "broken");
}

TEST_F(LocalFilesTest, KeepsWhatLiesBehindALinkWhereItLies) {
  // Often another file system, where a second name from here cannot lead.
  const TemporaryFolder elsewhere;
  const fs::path target = elsewhere.path() / "target";
  std::ofstream(target) << "broken";
  fs::create_symlink(target, file);
  EXPECT_EQ(files.keepBeside(file, ".unreadable", Files::IfTaken::leaveIt), Files::Kept::yes);
  EXPECT_TRUE(files.replace(file, "new"));
  EXPECT_EQ(text(elsewhere.path() / "target.unreadable"), "broken");
  EXPECT_EQ(text(target), "new");
  EXPECT_TRUE(fs::is_symlink(file));
}

TEST_F(LocalFilesTest, NeedsNoNameForWhatIsNoLongerThere) {
  EXPECT_EQ(files.keepBeside(file, ".unreadable", Files::IfTaken::leaveIt), Files::Kept::yes);
  EXPECT_TRUE(names().empty());
}

TEST_F(LocalFilesTest, ReplacesALinkThatLeadsToNoFile) {
  const fs::path pipe = folder.path() / "pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  fs::create_symlink("pipe", file);
  EXPECT_TRUE(files.replace(file, "new"));
  EXPECT_EQ(text(file), "new");
  EXPECT_TRUE(fs::is_fifo(pipe));
}

TEST_F(LocalFilesTest, IsNotHeldUpByAPipeInThePlaceOfTheTemporaryFile) {
  ASSERT_EQ(mkfifo((folder.path() / "file.lumora-new").c_str(), 0600), 0);
  EXPECT_TRUE(files.replace(file, "new"));
  EXPECT_EQ(text(file), "new");
}

}  // namespace
}  // namespace lumora::test
