// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Laptop.h"
#include "Platform/Linux/PowerProfiles.h"
#include "WaitFor.h"

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

class PowerProfilesTest : public testing::Test {
 protected:
  void SetUp() override { laptop.reset(); }

  bool becomes(bool enabled) {
    return waitFor([&] { return profiles.isEnabled() == enabled; });
  }

  Laptop laptop;
  PowerProfiles profiles;
};

TEST_F(PowerProfilesTest, FollowsTheProfile) {
  int changes = 0;
  profiles.observe([&] { ++changes; });
  EXPECT_FALSE(profiles.isEnabled());
  laptop.setProfile("power-saver");
  EXPECT_TRUE(becomes(true));
  laptop.setProfile("balanced");
  EXPECT_TRUE(becomes(false));
  EXPECT_EQ(changes, 2);
}

TEST_F(PowerProfilesTest, KnowsTheProfileThatWasChosenBefore) {
  laptop.setProfile("power-saver");
  PowerProfiles later;
  EXPECT_TRUE(waitFor([&] { return later.isEnabled(); }));
}

TEST_F(PowerProfilesTest, StaysOnWhileTheServiceRestarts) {
  laptop.setProfile("power-saver");
  EXPECT_TRUE(becomes(true));
  int changes = 0;
  profiles.observe([&] { ++changes; });
  laptop.kill("profiles");
  laptop.start("profiles");
  laptop.setProfile("power-saver");
  EXPECT_FALSE(waitFor([&] { return changes > 0; }, std::chrono::seconds(1)));
  EXPECT_TRUE(profiles.isEnabled());
}

TEST_F(PowerProfilesTest, IsOffOnceTheServiceStaysAway) {
  laptop.setProfile("power-saver");
  EXPECT_TRUE(becomes(true));
  laptop.kill("profiles");
  EXPECT_TRUE(waitFor([&] { return !profiles.isEnabled(); }, std::chrono::seconds(15)));
}

TEST_F(PowerProfilesTest, BelievesTheNewerNameWhereBothAnswer) {
  laptop.setProfile("power-saver");
  EXPECT_TRUE(becomes(true));
  laptop.ownNewProfilesName(true, "balanced");
  EXPECT_TRUE(becomes(false));
  laptop.ownNewProfilesName(true, "power-saver");
  EXPECT_TRUE(becomes(true));
  laptop.setProfile("balanced");
  laptop.ownNewProfilesName(false, "");
  EXPECT_TRUE(waitFor([&] { return !profiles.isEnabled(); }, std::chrono::seconds(15)));
}

}  // namespace
}  // namespace lumora::test
