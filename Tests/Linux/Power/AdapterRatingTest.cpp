// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Power/AdapterRating.h"
#include "Support/TemporaryFolder.h"

#include <fstream>
#include <map>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

class AdapterRatingTest : public testing::Test {
 protected:
  void supply(const std::string& name, const std::map<std::string, std::string>& attributes) {
    std::filesystem::create_directory(folder.path() / name);
    for (const auto& [attribute, value] : attributes) {
      std::ofstream(folder.path() / name / attribute) << value << '\n';
    }
  }

  void charger(const std::string& name, const char* microvolts, const char* microamperes) {
    supply(name, {{"type", "USB"},
                  {"online", "1"},
                  {"voltage_max", microvolts},
                  {"current_max", microamperes}});
  }

  std::optional<int> rating() const { return adapterRating(folder.path()); }

  TemporaryFolder folder;
};

TEST_F(AdapterRatingTest, IsWhatTheChargerAdvertises) {
  supply("AC", {{"type", "Mains"}, {"online", "1"}});
  supply("BAT0", {{"type", "Battery"}});
  charger("ucsi-source-psy-USBC000:001", "20000000", "3250000");
  EXPECT_EQ(rating(), 65);
}

TEST_F(AdapterRatingTest, IsKnownOnMachinesWithoutAnotherAdapter) {
  charger("ucsi-source-psy-USBC000:001", "28000000", "5000000");
  EXPECT_EQ(rating(), 140);
}

TEST_F(AdapterRatingTest, IsUnknownForABarrelPlug) {
  supply("AC", {{"type", "Mains"}, {"online", "1"}});
  supply("ucsi", {{"type", "USB"}, {"online", "0"}, {"voltage_max", "20000000"}});
  EXPECT_EQ(rating(), std::nullopt);
}

TEST_F(AdapterRatingTest, IsUnknownUnplugged) {
  supply("AC", {{"type", "Mains"}, {"online", "0"}});
  charger("ucsi", "20000000", "3250000");
  EXPECT_EQ(rating(), std::nullopt);
}

TEST_F(AdapterRatingTest, IsUnknownBetweenTwoChargers) {
  charger("one", "20000000", "3250000");
  charger("two", "20000000", "5000000");
  EXPECT_EQ(rating(), std::nullopt);
}

TEST_F(AdapterRatingTest, IsUnknownWhereTheKernelSaysNothingPlausible) {
  EXPECT_EQ(rating(), std::nullopt);
  EXPECT_EQ(adapterRating(folder.path() / "nowhere"), std::nullopt);
  charger("ucsi", "5000000", "100000");
  EXPECT_EQ(rating(), std::nullopt);
  charger("ucsi", "48000000", "6000000");
  EXPECT_EQ(rating(), std::nullopt);
  charger("ucsi", "", "many");
  EXPECT_EQ(rating(), std::nullopt);
}

}  // namespace
}  // namespace lumora::test
