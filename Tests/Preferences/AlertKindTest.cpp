// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Preferences/AlertKind.h"

#include <string>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

TEST(AlertKind, ListsAllKindsInTheirOrder) {
  std::string names;
  for (const AlertKind kind : kAllAlertKinds) names += std::string(rawValue(kind)) + " ";
  EXPECT_EQ(names, "chargeLimit low tooLong health lowPower ");
}

TEST(AlertKind, IsFoundByItsName) {
  for (const AlertKind kind : kAllAlertKinds) EXPECT_EQ(alertKind(rawValue(kind)), kind);
  EXPECT_EQ(alertKind("tooLong"), AlertKind::tooLong);
}

TEST(AlertKind, IsAbsentForAnyOtherText) {
  for (const auto* text : {"", "Low", "low ", "lowpower", "LM_ALERT"}) {
    EXPECT_EQ(alertKind(text), std::nullopt) << text;
  }
}

}  // namespace
}  // namespace lumora::test
