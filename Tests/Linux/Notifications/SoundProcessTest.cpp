// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Laptop.h"
#include "Linux/Notifications/SoundProcess.h"
#include "Linux/WaitFor.h"
#include "Support/TemporaryFolder.h"

#include <chrono>
#include <fstream>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

using namespace std::chrono_literals;

class SoundProcessTest : public testing::Test {
 protected:
  void SetUp() override { laptop.reset(); }

  /// No sound of one test is heard in the next.
  void TearDown() override {
    EXPECT_TRUE(waitFor([&] { return children() == others; }));
  }

  /// The processes that were started here and have not been waited for.
  static std::string children() {
    std::string pids;
    std::getline(std::ifstream("/proc/thread-self/children"), pids);
    return pids;
  }

  static std::ptrdiff_t openFiles() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
  }

  Laptop laptop;
  const std::string others = children();
  TemporaryFolder sounds;
  SoundProcess player{LUMORA_SOUND, sounds.path()};
};

TEST_F(SoundProcessTest, PlaysTheDesktopsSoundForAMessage) {
  player.play(DefaultSound{});
  EXPECT_TRUE(waitFor([&] { return !laptop.sounds().empty(); }));
  EXPECT_EQ(laptop.sounds(), std::vector<Glib::ustring>{kMessageSound});
}

TEST_F(SoundProcessTest, PlaysANamedSoundAndNothingForAnUnknownOne) {
  std::filesystem::copy_file("/usr/share/sounds/freedesktop/stereo/bell.oga",
                             sounds.path() / "Ping.oga");
  player.play(Silence{});
  player.play(NamedSound{"Nobody"});
  player.play(NamedSound{"Ping"});
  EXPECT_TRUE(waitFor([&] { return !laptop.sounds().empty(); }));
  ASSERT_EQ(laptop.sounds().size(), 1U);
  EXPECT_TRUE(laptop.sounds().front().raw().ends_with("Ping.oga"));
}

TEST_F(SoundProcessTest, NeverWaits) {
  laptop.hang("sound");
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < 20; ++i) player.play(DefaultSound{});
  EXPECT_LT(std::chrono::steady_clock::now() - start, 20s);
  laptop.resume("sound");
  EXPECT_TRUE(waitFor([&] { return !laptop.sounds().empty(); }));
}

TEST_F(SoundProcessTest, IsSilentWithoutItsProgram) {
  SoundProcess none("/nowhere/lumora_sound", sounds.path());
  none.play(DefaultSound{});
  player.play(DefaultSound{});
  EXPECT_TRUE(waitFor([&] { return !laptop.sounds().empty(); }));
  EXPECT_EQ(laptop.sounds().size(), 1U);
}

TEST_F(SoundProcessTest, LeavesNothingBehindWithAndWithoutASoundServer) {
  std::filesystem::copy_file("/usr/share/sounds/freedesktop/stereo/bell.oga",
                             sounds.path() / "Ping.oga");
  // The second begins while the first plays.
  for (int i = 0; i < 2; ++i) player.play(NamedSound{"Ping"});
  EXPECT_TRUE(waitFor([&] { return laptop.sounds().size() == 2; }));
  EXPECT_TRUE(waitFor([&] { return children() == others; }));
  const auto open = openFiles();
  laptop.kill("sound");
  for (int i = 0; i < 2; ++i) player.play(NamedSound{"Ping"});
  EXPECT_TRUE(waitFor([&] { return children() == others; }));
  EXPECT_LE(openFiles(), open);
}

TEST(SoundFile, StaysInTheFolderOfSounds) {
  EXPECT_EQ(soundFile("/sounds", {"Ping"}), "/sounds/Ping.oga");
  EXPECT_EQ(soundFile("/sounds", {"../../etc/Ping"}), "/sounds/Ping.oga");
  EXPECT_EQ(soundFile("/sounds", {"/etc/Ping"}), "/sounds/Ping.oga");
}

}  // namespace
}  // namespace lumora::test
