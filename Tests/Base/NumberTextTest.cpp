// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Base/NumberText.h"
#include "Base/TimeText.h"
#include "Content/PopoverContent.h"
#include "Content/StatusItem.h"
#include "Support/Builders.h"
#include "Support/ScopedLocale.h"
#include "Support/ScopedTimeZone.h"

#include <limits>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

constexpr Date kAfternoon = dateSince1970(1'700'000'100);  // Tuesday, 22:15 in UTC

TEST(NumberText, WritesPlainDecimals) {
  EXPECT_EQ(numberText(0), "0");
  EXPECT_EQ(numberText(1234567), "1234567");
  EXPECT_EQ(numberText(-5), "-5");
  EXPECT_EQ(numberText(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
  EXPECT_EQ(twoDigitText(5), "05");
  EXPECT_EQ(twoDigitText(59), "59");
  EXPECT_EQ(decimalText(31.44, 1), "31.4");
  EXPECT_EQ(decimalText(-0.25, 1), "-0.2");
  EXPECT_EQ(decimalText(std::numeric_limits<double>::max(), 1).size(), 311U);
  EXPECT_EQ(percentText(80), "80%");
  EXPECT_EQ(percentText("41–80"), "41–80%");
  EXPECT_EQ(joined("80%", "2:05"), "80% · 2:05");
}

TEST(NumberText, GroupsNoThousandsWhateverTheLocale) {
  const ScopedLocale german("de_DE");
  EXPECT_EQ(numberText(1234567), "1234567");
  EXPECT_EQ(decimalText(1234.56, 1), "1234,6");
}

TEST(NumberText, HasTheLocalesDigitsAndDecimalMarkWhereTheLanguageWantsThem) {
  const ScopedLocale persian("fa_IR", "fa");
  EXPECT_EQ(numberText(1234567890), "۱۲۳۴۵۶۷۸۹۰");
  EXPECT_EQ(twoDigitText(5), "۰۵");
  EXPECT_EQ(decimalText(31.4, 1), "۳۱٫۴");
  EXPECT_EQ(decimalText(std::numeric_limits<double>::max(), 1).size(), 2U * 310 + 2);
}

TEST(NumberText, HasWesternDigitsWhereTheLanguageHasNoOthers) {
  {
    const ScopedLocale hindi("hi_IN", "hi");
    EXPECT_EQ(numberText(80) + " " + decimalText(31.4, 1), "80 31.4");
  }
  const ScopedLocale persianWithEnglishTexts("fa_IR");
  EXPECT_EQ(numberText(80) + " " + decimalText(31.4, 1), "80 31.4");
}

TEST(NumberText, PutsThePercentSignWhereTheLanguageHasIt) {
  const ScopedLocale german("de_DE", "de");
  EXPECT_EQ(percentText(80), "80\u00A0%");
}

TEST(NumberText, IsTheSameWhereverANumberStands) {
  const ScopedTimeZone zone("UTC");
  const ScopedLocale persian("fa_IR", "q4");
  BatteryState state = onBattery(80);
  state.minutesToEmpty = 125;
  state.cycleCount = 412;
  state.temperatureC = 31.4;
  const auto content = batteryContent(state, {}, kAfternoon, kAfternoon).value();
  EXPECT_EQ(content.stateText, "On battery, ۲ h ۵ min left");
  EXPECT_EQ(content.snoozedUntil, "Alerts snoozed until ۲۲:۱۵");
  EXPECT_EQ(content.cycles->text, "۴۱۲ of ۱۰۰۰");
  EXPECT_EQ(content.details.at(0).value, "۳۱٫۴ °C");
  EXPECT_EQ(statusMenu(state, false, kAfternoon, {}).at(2).label, "End snooze (until ۲۲:۱۵)");
  const std::vector<DaySummary> day = {{kAfternoon, 72, 41, 80, 65}};
  const DayRow row = dayRows(day, 7).at(0);
  EXPECT_EQ(row.average + " " + row.range + " " + row.charging, "۷۲% ۴۱–۸۰% ۱ h ۵ min");
  EXPECT_TRUE(row.day.ends_with(" ۱۴")) << row.day;
  EXPECT_EQ(hourText(kAfternoon), "۲۲:۱۵");
}

TEST(NumberText, IsDrawnIntoTheIconWithDigitsThatFit) {
  const ScopedLocale persian("fa_IR", "q4");
  BatteryState state = onBattery(80);
  state.minutesToEmpty = 125;
  Prefs prefs;
  prefs.showPercent = prefs.showTime = true;
  const auto face = [&](TextPlace place) {
    return statusItemFace(state, false, prefs, place, [](const std::string&) { return true; });
  };
  EXPECT_EQ(face(TextPlace::wide).drawn.value().text, "80% · 2:05");
  EXPECT_EQ(face(TextPlace::label).label, " ۸۰% · ۲:۰۵");
  EXPECT_EQ(face(TextPlace::label).labelGuide, " ۸۸% · ۸:۸۸");
  EXPECT_EQ(face(TextPlace::inside).tooltipText, "۸۰% · ۲:۰۵");
}

TEST(TimeText, IsTheLocales) {
  const ScopedTimeZone zone("UTC");
  struct Case {
    const char* locale;
    const char* time;
    const char* hour;
    const char* day;
  };
  for (const auto& [locale, time, hour, day] : {
           Case{"fi_FI", "22.15", "22.15", "ti 14"},
           Case{"de_DE", "22:15", "22:15", "Di 14"},
           Case{"en_US", "10:15\u00A0PM", "10\u00A0PM", "Tue 14"},
           Case{"ko_KR", "22:15", "22:15", "화 14"},
           Case{"ar_EG", "10:15\u00A0م", "10\u00A0م", "ث 14"},
           Case{"he_IL", "22:15", "22:15", "ג' 14"},
           Case{"lv", "22:15", "22:15", "O 14"},
           Case{"ms", "22:15", "22:15", "Sel 14"},
       }) {
    const ScopedLocale scoped(locale);
    EXPECT_EQ(timeOfDayText(kAfternoon), time) << locale;
    EXPECT_EQ(hourText(kAfternoon), hour) << locale;
    EXPECT_EQ(dayText(kAfternoon), day) << locale;
  }
}

}  // namespace
}  // namespace lumora::test
