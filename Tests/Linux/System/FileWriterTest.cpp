// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/System/FileWriter.h"
#include "Linux/System/MainLoop.h"
#include "Linux/WaitFor.h"
#include "Support/MemoryFiles.h"

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

using namespace std::chrono_literals;

/// A disk that takes nothing until it is let go.
class StuckDisk final : public Files {
 public:
  void createFolders(const std::filesystem::path& folder) override { files.createFolders(folder); }
  FileContent read(const std::filesystem::path& path) override { return files.read(path); }
  FileStamp stamp(const std::filesystem::path& path) override { return files.stamp(path); }
  Kept keepBeside(const std::filesystem::path& path, std::string_view suffix,
                  IfTaken ifTaken) override {
    return files.keepBeside(path, suffix, ifTaken);
  }

  std::optional<FileStamp> replace(const std::filesystem::path& path,
                                   std::string_view bytes) override {
    std::unique_lock lock(mutex_);
    begun += std::string(bytes) + " ";
    changed_.notify_all();
    changed_.wait(lock, [this] { return free_; });
    return files.replace(path, bytes);
  }

  void waitUntilItHas(const std::string& bytes) {
    std::unique_lock lock(mutex_);
    EXPECT_TRUE(changed_.wait_for(lock, kPatience, [&] { return begun == bytes; })) << begun;
  }

  void letGo() {
    const std::scoped_lock lock(mutex_);
    free_ = true;
    changed_.notify_all();
  }

  MemoryFiles files;
  std::string begun;

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  bool free_ = false;
};

class FileWriterTest : public testing::Test {
 public:
  ~FileWriterTest() override {
    disk.letGo();
    writer.finish(kPatience);
    drainMainLoop();
  }

 protected:
  void write(const char* name, const char* bytes) {
    writer.replaceSoon(name, bytes, [this, bytes](std::optional<FileStamp> stamp) {
      EXPECT_EQ(std::this_thread::get_id(), mainThread);
      told += bytes + std::string(stamp ? " " : " failed ");
    });
  }

  const std::thread::id mainThread = std::this_thread::get_id();
  std::string told;
  StuckDisk disk;
  MainLoop loop;
  FileWriter writer{disk, loop};
};

TEST_F(FileWriterTest, HoldsNobodyUp) {
  write("a", "1");
  disk.waitUntilItHas("1 ");
  drainMainLoop();
  EXPECT_EQ(told, "");
  disk.letGo();
  EXPECT_TRUE(waitFor([&] { return told == "1 "; }));
  EXPECT_EQ(disk.files.text("a"), "1");
}

TEST_F(FileWriterTest, WritesInTheOrderAskedForAndOfEachFileOnlyTheNewest) {
  write("a", "1");
  disk.waitUntilItHas("1 ");
  write("a", "2");
  write("b", "3");
  write("a", "4");
  write("b", "5");
  disk.letGo();
  EXPECT_TRUE(waitFor([&] { return told == "1 4 5 "; })) << told;
  EXPECT_EQ(disk.begun, "1 4 5 ");
  EXPECT_EQ(disk.files.text("a"), "4");
  EXPECT_EQ(disk.files.text("b"), "5");
}

TEST_F(FileWriterTest, TellsOfAFailure) {
  disk.files.failsReplacing = true;
  disk.letGo();
  write("a", "1");
  EXPECT_TRUE(waitFor([&] { return told == "1 failed "; }));
}

TEST_F(FileWriterTest, TellsWhenNothingIsLeftToWrite) {
  writer.whenWritten([this] { told += "nothing "; });
  EXPECT_EQ(told, "nothing ");
  write("a", "1");
  disk.waitUntilItHas("1 ");
  write("b", "2");
  writer.whenWritten([this] { told += "all"; });
  drainMainLoop();
  EXPECT_EQ(told, "nothing ");
  disk.letGo();
  EXPECT_TRUE(waitFor([&] { return told == "nothing 1 2 all"; })) << told;
}

TEST_F(FileWriterTest, FinishesAtTheEndButNotForEver) {
  write("a", "1");
  disk.waitUntilItHas("1 ");
  write("a", "2");
  EXPECT_FALSE(writer.finish(0s));
  EXPECT_EQ(disk.files.text("a"), std::nullopt);
  disk.letGo();
  EXPECT_TRUE(writer.finish(kPatience));
  EXPECT_EQ(disk.files.text("a"), "2");
}

TEST_F(FileWriterTest, WritesAgainAndAgain) {
  disk.letGo();
  std::string expected;
  for (int round = 0; round < 200; ++round) {
    write("a", "x");
    expected += "x ";
    writer.finish(kPatience);
    if (round % 2 == 0) drainMainLoop();
  }
  EXPECT_TRUE(waitFor([&] { return told == expected; }));
}

}  // namespace
}  // namespace lumora::test
