// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/ScopedLocale.h"
#include "Views/Settings/FormSection.h"
#include "Views/Settings/SettingsTest.h"
#include "Views/Settings/SettingsView.h"
#include "Views/Theme/Fonts.h"

#include <QLayout>

namespace lumora::test {
namespace {

using SettingsViewTest = SettingsTest;

TEST_F(SettingsViewTest, ShowsItsNineSectionsInOrder) {
  open();
  EXPECT_EQ(
      texts().join('\n').toStdString(),
      "Alerts\nCharge limit\nAlert when charging reaches 80%\n"
      "Repeat every 5 minutes, up to 3 times\nSound\n"
      "Low battery\nAlert on battery at 20% or less\nSound\n"
      "Suggest Low Power Mode\nWhen on battery below 30%\nSound\n"
      "Plugged in too long\nAlert after 8 h plugged in above the charge limit\nSound\n"
      "Battery health below 80% (once)\nSound\n"
      "Quiet hours\nHold alerts during quiet hours\nFrom\nUntil\n"
      "Menu bar\nShow percentage in the menu bar\nShow time remaining\n"
      "General\nLaunch at Login\n"
      "macOS may also hold charging at 80% itself (Optimized Battery Charging, System Settings, "
      "Battery). Lumora can only remind you; it cannot control charging.");
  EXPECT_EQ(window->size(), QSize(480, 720));
  EXPECT_EQ(window->windowTitle(), "Lumora Settings");
}

TEST_F(SettingsViewTest, HasItsMeasuresFontsAndColors) {
  open();
  const auto* form = label("Charge limit")->parentWidget();
  while (form != nullptr && dynamic_cast<const SettingsView*>(form) == nullptr) {
    form = form->parentWidget();
  }
  ASSERT_NE(form, nullptr);
  QRect before;
  for (int i = 0; i < form->layout()->count(); ++i) {
    const auto* section = dynamic_cast<FormSection*>(form->layout()->itemAt(i)->widget());
    if (section == nullptr) continue;
    const QRect at = section->geometry();
    EXPECT_EQ(at.left(), 20);
    EXPECT_EQ(form->width() - at.right() - 1, 20);
    EXPECT_EQ(at.top(), before.isNull() ? 20 : before.bottom() + 1 + 16);
    before = at;
  }
  EXPECT_FALSE(before.isNull());
  for (const char* heading : {"Alerts", "Quiet hours", "Menu bar", "General"}) {
    EXPECT_EQ(label(heading)->font(), fontFor(TextRole::headline)) << heading;
  }
  const QPalette palette = window->palette();
  for (const char* text : {"Charge limit", "Hold alerts during quiet hours", "Launch at Login"}) {
    EXPECT_EQ(label(text)->font(), fontFor(TextRole::body)) << text;
    EXPECT_EQ(label(text)->mapTo(form, QPoint()).x(), 20 + 16) << text;
    EXPECT_EQ(label(text)->palette().color(QPalette::WindowText),
              textColor(TextColor::primary, palette))
        << text;
  }
  const auto* notice = label(
      "macOS may also hold charging at 80% itself (Optimized Battery Charging, System Settings, "
      "Battery). Lumora can only remind you; it cannot control charging.");
  ASSERT_NE(notice, nullptr);
  EXPECT_EQ(notice->font(), fontFor(TextRole::caption));
  EXPECT_EQ(notice->palette().color(QPalette::WindowText),
            textColor(TextColor::secondary, palette));
}

TEST_F(SettingsViewTest, ShowsTheDefaultsAndWritesNothing) {
  open();
  for (const char* on : {"Charge limit", "Repeat every 5 minutes, up to 3 times", "Low battery",
                         "Suggest Low Power Mode", "Plugged in too long",
                         "Battery health below 80% (once)", "Show percentage in the menu bar"}) {
    EXPECT_TRUE(toggle(on)->isChecked()) << on;
  }
  for (const char* off :
       {"Hold alerts during quiet hours", "Show time remaining", "Launch at Login"}) {
    EXPECT_FALSE(toggle(off)->isChecked()) << off;
  }
  EXPECT_EQ(soundTexts(), QStringList(5, "Default"));
  EXPECT_EQ(time("From")->time(), QTime(22, 0));
  EXPECT_EQ(time("Until")->time(), QTime(7, 0));
  EXPECT_EQ(file(), std::nullopt);
}

TEST_F(SettingsViewTest, WritesEachSwitchUnderItsKey) {
  struct Row {
    const char* label;
    const char* key;
    bool before;
  };
  open();
  for (const Row& row : {
           Row{"Charge limit", "limitEnabled", true},
           Row{"Low battery", "lowEnabled", true},
           Row{"Suggest Low Power Mode", "lowPowerEnabled", true},
           Row{"Plugged in too long", "longEnabled", true},
           Row{"Battery health below 80% (once)", "healthEnabled", true},
           Row{"Hold alerts during quiet hours", "quietEnabled", false},
           Row{"Show percentage in the menu bar", "showPercent", true},
           Row{"Show time remaining", "showTime", false},
       }) {
    click(toggle(row.label));
    EXPECT_EQ(stored(row.key), row.before ? "false" : "true") << row.label;
    QTest::keyClick(toggle(row.label), Qt::Key_Space);
    EXPECT_EQ(stored(row.key), row.before ? "true" : "false") << row.label;
  }
  click(toggle("Repeat every 5 minutes, up to 3 times"));
  EXPECT_EQ(stored("repeatReminder"), "false");
}

TEST_F(SettingsViewTest, WritesOnlyTheKeyThatWasChanged) {
  open();
  click(toggle("Show time remaining"));
  EXPECT_EQ(file(), "{\n  \"showTime\": true\n}\n");
}

TEST_F(SettingsViewTest, TakesAClickOnALabelForOneOnItsSwitch) {
  open();
  click(label("Show time remaining"));
  EXPECT_EQ(stored("showTime"), "true");
  click(label("Repeat every 5 minutes, up to 3 times"));
  EXPECT_EQ(stored("repeatReminder"), "false");
  click(toggle("Charge limit"));
  click(label("Repeat every 5 minutes, up to 3 times"));
  EXPECT_EQ(stored("repeatReminder"), "false");
}

TEST_F(SettingsViewTest, StepsEachNumberWithinItsRange) {
  struct Row {
    const char* key;
    const char* before;
    std::int64_t least;
    std::int64_t most;
    const char* after;
  };
  for (const Row& row : {
           Row{"limit", "Alert when charging reaches ", 50, 100, "%"},
           Row{"low", "Alert on battery at ", 5, 50, "% or less"},
           Row{"lowPowerAt", "When on battery below ", 10, 60, "%"},
           Row{"longHours", "Alert after ", 1, 48, " h plugged in above the charge limit"},
       }) {
    const auto text = [&row](std::int64_t value) {
      return row.before + QString::number(value) + row.after;
    };
    write(row.key, std::to_string(row.most - 1));
    open();
    click(stepButton(text(row.most - 1), "Increase"));
    EXPECT_EQ(stored(row.key), std::to_string(row.most));
    EXPECT_FALSE(stepButton(text(row.most), "Increase")->isEnabled());
    QTest::keyClick(stepper(text(row.most)), Qt::Key_Up);
    EXPECT_EQ(stored(row.key), std::to_string(row.most));
    QTest::keyClick(stepper(text(row.most)), Qt::Key_Down);
    EXPECT_EQ(stored(row.key), std::to_string(row.most - 1));

    write(row.key, std::to_string(row.least + 1));
    open();
    click(stepButton(text(row.least + 1), "Decrease"));
    EXPECT_EQ(stored(row.key), std::to_string(row.least));
    EXPECT_FALSE(stepButton(text(row.least), "Decrease")->isEnabled());
    EXPECT_TRUE(stepButton(text(row.least), "Increase")->isEnabled());
  }
}

TEST_F(SettingsViewTest, StepsByTenAndToTheEndsFromTheKeyboard) {
  write("limit", "72");
  open();
  const auto press = [this](int before, Qt::Key key) {
    QTest::keyClick(stepper("Alert when charging reaches " + QString::number(before) + "%"), key);
    return stored("limit");
  };
  EXPECT_EQ(press(72, Qt::Key_PageUp), "82");
  EXPECT_EQ(press(82, Qt::Key_PageDown), "72");
  EXPECT_EQ(press(72, Qt::Key_End), "100");
  EXPECT_EQ(press(100, Qt::Key_PageUp), "100");
  EXPECT_EQ(press(100, Qt::Key_Home), "50");
  EXPECT_EQ(press(50, Qt::Key_PageDown), "50");
}

TEST_F(SettingsViewTest, ShowsANumberOutsideItsRangeAndTheFirstStepMovesItIn) {
  write("limit", "120");
  open();
  const QString outside = "Alert when charging reaches 120%";
  EXPECT_FALSE(stepButton(outside, "Increase")->isEnabled());
  EXPECT_EQ(stored("limit"), "120");
  click(stepButton(outside, "Decrease"));
  EXPECT_EQ(stored("limit"), "100");

  write("limit", "-9000000000000000000");
  open();
  const QString below = "Alert when charging reaches -9000000000000000000%";
  EXPECT_FALSE(stepButton(below, "Decrease")->isEnabled());
  QTest::keyClick(stepper(below), Qt::Key_Plus);
  EXPECT_EQ(stored("limit"), "50");
}

TEST_F(SettingsViewTest, DisablesWhatBelongsToASwitchThatIsOffAndKeepsItsValues) {
  write("limit", "90");
  open();
  const QString text = "Alert when charging reaches 90%";
  click(toggle("Charge limit"));
  EXPECT_FALSE(stepper(text)->isEnabled());
  EXPECT_FALSE(toggle("Repeat every 5 minutes, up to 3 times")->isEnabled());
  EXPECT_FALSE(sounds()[0]->isEnabled());
  EXPECT_TRUE(sounds()[1]->isEnabled());
  EXPECT_EQ(stored("limit"), "90");
  EXPECT_TRUE(toggle("Charge limit")->isEnabled());
  click(toggle("Charge limit"));
  EXPECT_TRUE(stepper(text)->isEnabled());

  for (const auto& [title, sound] : {std::pair("Low battery", 1),
                                     {"Suggest Low Power Mode", 2},
                                     {"Plugged in too long", 3},
                                     {"Battery health below 80% (once)", 4}}) {
    click(toggle(title));
    EXPECT_FALSE(sounds()[sound]->isEnabled()) << title;
  }
  EXPECT_FALSE(stepper("Alert on battery at 20% or less")->isEnabled());
  EXPECT_FALSE(time("From")->isEnabled());
  EXPECT_FALSE(time("Until")->isEnabled());
  click(toggle("Hold alerts during quiet hours"));
  EXPECT_TRUE(time("From")->isEnabled());
  EXPECT_TRUE(time("Until")->isEnabled());
}

TEST_F(SettingsViewTest, StoresTimesAsMinutesAfterMidnight) {
  write("quietEnabled", "true");
  open();
  time("From")->setFocus();
  time("From")->setSelectedSection(QDateTimeEdit::HourSection);
  QTest::keyClicks(time("From"), "2330");
  EXPECT_EQ(stored("quietStart"), "1410");
  EXPECT_EQ(stored("quietEnd"), "");
  time("Until")->setSelectedSection(QDateTimeEdit::MinuteSection);
  QTest::keyClick(time("Until"), Qt::Key_Up);
  EXPECT_EQ(stored("quietEnd"), "421");
}

TEST_F(SettingsViewTest, TakesATimeThatIsTypedAfterAClick) {
  write("quietEnabled", "true");
  open();
  auto* line = time("From")->findChild<QLineEdit*>();
  ASSERT_NE(line, nullptr);
  const auto clickOn = [&](int character) {
    const int x = QFontMetrics(line->font()).horizontalAdvance(line->text().left(character)) + 4;
    QTest::mouseClick(line, Qt::LeftButton, {}, {x, line->height() / 2});
    QCoreApplication::processEvents();
  };
  clickOn(1);
  QTest::keyClicks(time("From"), "2130");
  EXPECT_EQ(stored("quietStart"), "1290");
  clickOn(4);
  QTest::keyClicks(time("From"), "45");
  EXPECT_EQ(stored("quietStart"), "1305");
  clickOn(1);
  QTest::keyClicks(time("From"), "20");
  EXPECT_EQ(stored("quietStart"), "1245");
}

TEST_F(SettingsViewTest, TakesTimesOfATwelveHourClock) {
  const ScopedLocale american("en_US");
  write("quietEnabled", "true");
  open();
  const auto text = [this](const char* name) {
    return time(name)->text().replace(QChar(0x202F), ' ').replace(QChar::Nbsp, ' ');
  };
  EXPECT_EQ(text("From"), "10:00 PM");
  EXPECT_EQ(text("Until"), "7:00 AM");
  time("From")->setFocus();
  time("From")->setSelectedSection(QDateTimeEdit::HourSection);
  QTest::keyClicks(time("From"), "0930");
  EXPECT_EQ(stored("quietStart"), "1290");
  time("From")->setSelectedSection(QDateTimeEdit::AmPmSection);
  QTest::keyClicks(time("From"), "am");
  EXPECT_EQ(stored("quietStart"), "570");
  EXPECT_EQ(time("From")->time(), QTime(9, 30));
}

TEST_F(SettingsViewTest, ShowsStoredTimesAndTheTimeNowForWhatIsNone) {
  write("quietStart", "1439");
  write("quietEnd", "1440");
  open();
  EXPECT_EQ(time("From")->time(), QTime(23, 59));
  // 14:13 in Berlin.
  EXPECT_EQ(time("Until")->time(), QTime(14, 13));
  EXPECT_EQ(stored("quietEnd"), "1440");
}

TEST_F(SettingsViewTest, ShowsWhatOthersChangeAndWritesNothingForIt) {
  open();
  host.files.edit("/config/defaults.json",
                  R"({"limit": 70, "quietStart": 60, "lowSound": "Ping", "showTime": true})");
  EXPECT_TRUE(waitFor([&] { return toggle("Show time remaining")->isChecked(); }));
  EXPECT_NE(stepper("Alert when charging reaches 70%"), nullptr);
  EXPECT_EQ(time("From")->time(), QTime(1, 0));
  EXPECT_EQ(soundTexts()[1], "Ping");
  EXPECT_TRUE(host.sounds.played.empty());
  EXPECT_EQ(file(), R"({"limit": 70, "quietStart": 60, "lowSound": "Ping", "showTime": true})");
}

TEST_F(SettingsViewTest, ShowsWhatAnotherViewChanges) {
  open();
  host.store.set("showTime", true);
  EXPECT_TRUE(toggle("Show time remaining")->isChecked());
}

TEST_F(SettingsViewTest, LeavesTheWheelToTheForm) {
  open();
  for (QWidget* control : {static_cast<QWidget*>(sounds()[0]), static_cast<QWidget*>(time("From")),
                           static_cast<QWidget*>(stepper("Alert when charging reaches 80%"))}) {
    QWheelEvent event({5, 5}, control->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(control, &event);
  }
  EXPECT_EQ(file(), std::nullopt);
}

TEST_F(SettingsViewTest, TakesWhatAScreenReaderSets) {
  open();
  auto* control = QAccessible::queryAccessibleInterface(stepper("Alert when charging reaches 80%"));
  ASSERT_NE(control, nullptr);
  EXPECT_EQ(control->text(QAccessible::Name), "Alert when charging reaches 80%");
  ASSERT_NE(control->valueInterface(), nullptr);
  EXPECT_EQ(control->valueInterface()->currentValue(), 80);
  control->valueInterface()->setCurrentValue(75);
  EXPECT_EQ(stored("limit"), "75");
  EXPECT_NE(stepper("Alert when charging reaches 75%"), nullptr);
}

TEST_F(SettingsTest, FollowsTheDesktopsFontWhileItIsOpen) {
  open();
  const QFont usual = QApplication::font();
  QLabel* heading = label("Alerts");
  QLabel* row = label("Charge limit");
  ASSERT_TRUE(heading && row);
  const int switchHeight = toggle("Charge limit")->height();
  QApplication::setFont(QFont(usual.family(), 20));
  QCoreApplication::processEvents();
  EXPECT_EQ(heading->font().pointSize(), 20);
  EXPECT_EQ(heading->font().weight(), QFont::DemiBold);
  EXPECT_EQ(row->font().pointSize(), 20);
  EXPECT_TRUE(waitFor([&] { return toggle("Charge limit")->height() > switchHeight; }))
      << switchHeight;
  QApplication::setFont(usual);
}

}  // namespace
}  // namespace lumora::test
