// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Laptop.h"
#include "Linux/Power/PowerProfiles.h"
#include "Linux/WaitFor.h"

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
  EXPECT_TRUE(waitFor([&] { return !profiles.isEnabled(); }));
}

TEST_F(PowerProfilesTest, BelievesTheNewerNameWhereBothAnswer) {
  laptop.mockProfiles("power-saver", "");
  EXPECT_TRUE(becomes(true));
  laptop.mockProfiles("power-saver", "balanced");
  EXPECT_TRUE(becomes(false));
  laptop.mockProfiles("power-saver", "power-saver");
  EXPECT_TRUE(becomes(true));
  laptop.mockProfiles("balanced", "");
  EXPECT_TRUE(waitFor([&] { return !profiles.isEnabled(); }));
}

}  // namespace
}  // namespace lumora::test
