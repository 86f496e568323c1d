// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Base/NumberText.h"
#include "Base/Texts.h"
#include "Base/TimeText.h"
#include "Battery/BatteryState.h"
#include "Support/ScopedLocale.h"

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

std::string onBattery(std::int64_t minutes) {
  BatteryState state;
  state.hasBattery = true;
  state.percent = 50;
  state.minutesToEmpty = minutes;
  return state.stateText();
}

TEST(Texts, AreTheSourcesInTheCLocale) {
  EXPECT_STREQ(translated("Fully charged"), "Fully charged");
  EXPECT_STREQ(translatedIn("battery health", "Good"), "Good");
  EXPECT_STREQ(translatedFor(1, "one", "many"), "one");
  EXPECT_STREQ(translatedFor(0, "one", "many"), "many");
  EXPECT_FALSE(isRightToLeft());
}

TEST(Texts, AreTheSourcesInALanguageWithoutACatalogue) {
  const ScopedLocale finnish("fi_FI", "none");
  EXPECT_EQ(onBattery(65), "On battery, 1 h 5 min left");
  EXPECT_STREQ(translatedIn("battery health", "Good"), "Good");
}

TEST(Texts, AreThoseOfTheUsersLanguage) {
  const ScopedLocale german("de_DE", "");
  EXPECT_STREQ(translated("Quit"), "Beenden");
}

TEST(Texts, AreThoseOfTheLanguageThatTheUserPrefers) {
  const ScopedLocale german("de_DE", "q1:de");
  EXPECT_STREQ(translatedIn("battery health", "Good"), "«Good»");
  EXPECT_EQ(onBattery(65), "«On battery, ««1 h» «5 min»» left»");
}

TEST(Texts, SayInEnglishWhatIsTrueOnLinux) {
  const ScopedLocale american("en_US", "");
  EXPECT_STREQ(translated("Menu bar"), "Panel");
  EXPECT_STREQ(translated("Charge limit"), "Charge limit");
}

TEST(Texts, AreAllInEnglishForThoseWhoPreferItToAnotherLanguage) {
  const ScopedLocale german("de_DE", "en:de");
  EXPECT_STREQ(translated("Menu bar"), "Panel");
  EXPECT_STREQ(translated("Quit"), "Quit");
}

TEST(Texts, TakeTheFormTheLanguageHasForANumber) {
  const ScopedLocale american("en_US", "q3");
  EXPECT_EQ(formatMinutes(1), "one");
  EXPECT_EQ(formatMinutes(2), "two");
  EXPECT_EQ(formatMinutes(5), "5 many");
}

TEST(Texts, KeepUtf8WhateverTheLocalesEncodingIs) {
  const ScopedLocale german("de_DE.ISO-8859-1", "");
  EXPECT_STREQ(translated("Settings…"), "Einstellungen\u00A0…");
  // What the locale itself says would be in its encoding.
  EXPECT_EQ(weekdayText(dateSince1970(0)), "Thu");
  EXPECT_EQ(decimalText(1.5, 1), "1.5");
}

TEST(Texts, KeepUtf8WhereOnlyTheTimeHasAnotherEncoding) {
  const ScopedLocale american("en_US", "");
  ASSERT_NE(std::setlocale(LC_TIME, "el_GR.ISO-8859-7"), nullptr);
  EXPECT_EQ(weekdayText(dateSince1970(0)), "\xd0\xe5\xec") << "Greek in Greek's own encoding";
  useCatalogues(LUMORA_TEST_CATALOGUES);
  EXPECT_EQ(weekdayText(dateSince1970(0)), "Thu");
}

TEST(Texts, HaveTheTimeInUtf8WhereOnlyLettersHaveAnotherEncoding) {
  const ScopedLocale german("de_DE", "");
  ASSERT_NE(std::setlocale(LC_CTYPE, "de_DE.ISO-8859-1"), nullptr);
  useCatalogues(LUMORA_TEST_CATALOGUES);
  EXPECT_EQ(weekdayText(dateSince1970(0)), "Do");
  EXPECT_EQ(decimalText(1.5, 1), "1,5");
}

TEST(FilledText, PutsEachValueInItsPlace) {
  EXPECT_EQ(filled("%1$s of %2$s", {"3", "8"}), "3 of 8");
  EXPECT_EQ(filled("%2$s: %1$s, %1$s", {"3", "8"}), "8: 3, 3");
  EXPECT_EQ(filled("%1$s%%", {"80"}), "80%");
  EXPECT_EQ(filled("no place", {"80"}), "no place");
  EXPECT_EQ(filled("", {"80"}), "");
}

TEST(FilledText, TakesNothingOfAValueForAPlace) {
  EXPECT_EQ(filled("%1$s %2$s", {"%2$s", "%%"}), "%2$s %%");
}

TEST(FilledText, LeavesWhatIsNoPlaceAsItStands) {
  for (const char* text : {"%", "50 %", "%s", "%n", "%1", "%1$", "%1$d", "%0$s", "%3$s", "%10$s",
                           "%-1$s", "% 1$s", "%*$s"}) {
    EXPECT_EQ(filled(text, {"a", "b"}), text) << text;
  }
  EXPECT_EQ(filled("%1$s%", {"a"}), "a%");
  EXPECT_EQ(filled("%%1$s", {"a"}), "%1$s");
  EXPECT_EQ(filled("%1$s %2$s", {}), "%1$s %2$s");
}

TEST(FilledText, SurvivesABrokenCatalogue) {
  const ScopedLocale american("en_US", "q3");
  EXPECT_EQ(percentText(80), "%n %s %999999$s %0$s %2$s %1$d 80 %");
  EXPECT_EQ(onBattery(65), "%1$");
}

TEST(FilledText, KeepsTheDirectionOfLatinWordsInALanguageWrittenFromRightToLeft) {
  const ScopedLocale american("en_US", "q2");
  EXPECT_TRUE(isRightToLeft());
  EXPECT_EQ(filled("%1$s, %2$s", {"3:05 PM", "85%"}), "\u20683:05 PM\u2069, 85%");
  EXPECT_EQ(filled("%1$s", {"شحن"}), "شحن");
}

}  // namespace
}  // namespace lumora::test
