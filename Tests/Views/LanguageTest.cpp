// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Preferences/SoundNames.h"
#include "Support/ScopedLocale.h"
#include "Views/Cells.h"
#include "Views/Children.h"
#include "Views/Controls/Stepper.h"
#include "Views/Controls/Switch.h"
#include "Views/FakeHost.h"
#include "Views/Languages.h"
#include "Views/Popover/HistoryChart.h"
#include "Views/Popover/PopoverView.h"
#include "Views/Popover/RingView.h"
#include "Views/Settings/SettingsWindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QSet>
#include <QTest>
#include <QTimeEdit>
#include <memory>

#include <gtest/gtest.h>
#include <qcustomplot.h>

namespace lumora::test {
namespace {

/// All that a widget and those within it tell, to the eye or to a screen reader.
QSet<QString> textsOf(const QWidget& window) {
  QSet<QString> texts;
  QList<const QWidget*> widgets = {&window};
  for (const auto* widget : window.findChildren<QWidget*>()) widgets << widget;
  for (const QWidget* widget : widgets) {
    texts << widget->windowTitle() << widget->accessibleName() << widget->accessibleDescription()
          << widget->toolTip();
    if (const auto* label = qobject_cast<const QLabel*>(widget)) texts << label->text();
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget)) texts << button->text();
    if (const auto* box = qobject_cast<const QComboBox*>(widget)) {
      for (int i = 0; i < box->count(); ++i) texts << box->itemText(i);
    }
  }
  for (const Cell& cell : cellsOf(window)) texts << cell.text;
  return texts;
}

/// Of these, what has letters and was not taken from the catalogue that marks every text.
QStringList untranslated(const QSet<QString>& texts) {
  QSet<QString> names = {"Lumora"};
  for (const char* name : kSoundNames) names << name;
  QStringList found;
  for (const QString& text : texts) {
    const bool hasLetters =
        std::any_of(text.begin(), text.end(), [](QChar letter) { return letter.isLetter(); });
    if (hasLetters && !names.contains(text) && !text.startsWith(QChar(0xAB))) found << text;
  }
  return found;
}

/// The windows in the languages of the tests: q1 marks every text, q2 runs from right to left, too.
class LanguageTest : public testing::Test {
 public:
  ~LanguageTest() override { QApplication::setLayoutDirection(Qt::LeftToRight); }

  PopoverView& openPopover() {
    host.model().refresh(AppModel::Reason::change);
    host.model().snooze();
    popover = std::make_unique<PopoverView>(host);
    popover->show();
    click(*popover, "Daily summary");
    popover->adjustSize();
    QCoreApplication::processEvents();
    return *popover;
  }

 protected:
  LanguageTest() {
    host.clock.time = dateSince1970(1'795'525'980);
    host.setBattery(73, {{"Is Charging", true}, {"Power Source State", "AC Power"}},
                    {{"CycleCount", 412},
                     {"DesignCapacity", 5000},
                     {"AppleRawMaxCapacity", 4400},
                     {"Temperature", 3140},
                     {"Voltage", 12000},
                     {"Amperage", 2100},
                     {"AdapterDetails", Dictionary{{"Watts", 65}}}});
    host.setHistory(minuteSamples(host.clock.time - Seconds(60), 3 * 1440));
  }

  static void click(const QWidget& window, const char* text) {
    for (auto* button : window.findChildren<QAbstractButton*>()) {
      if (button->text().contains(text)) button->click();
    }
  }

  SettingsWindow& openSettings() {
    host.bundle.identifier.reset();
    host.login.error = "«Permission denied»";
    settings = std::make_unique<SettingsWindow>(host);
    settings->present();
    QCoreApplication::processEvents();
    return *settings;
  }

  /// Where a widget within a window is, from the left, by its middle.
  static int middle(const QWidget* widget, const QWidget& window) {
    return widget->mapTo(&window, widget->rect().center()).x();
  }

  FakeHost host;
  std::unique_ptr<PopoverView> popover;
  std::unique_ptr<SettingsWindow> settings;
};

TEST_F(LanguageTest, ShowsNoTextInThePopoverThatIsNotInTheTemplate) {
  const ScopedLocale american("en_US", "q1");
  PopoverView& view = openPopover();
  EXPECT_GT(textsOf(view).size(), 30);
  EXPECT_EQ(untranslated(textsOf(view)).join("\n").toStdString(), "");
  click(view, "days");
  EXPECT_EQ(untranslated(textsOf(view)).join("\n").toStdString(), "");
}

TEST_F(LanguageTest, ShowsNoTextWithoutABatteryThatIsNotInTheTemplate) {
  const ScopedLocale american("en_US", "q1");
  host.powerSources.sources.emplace();
  PopoverView view(host);
  view.show();
  EXPECT_EQ(untranslated(textsOf(view)).join("\n").toStdString(), "");
}

TEST_F(LanguageTest, ShowsNoTextInTheSettingsThatIsNotInTheTemplate) {
  const ScopedLocale american("en_US", "q1");
  SettingsWindow& window = openSettings();
  for (auto* toggle : childrenOf<Switch>(window)) toggle->click();
  EXPECT_GT(textsOf(window).size(), 40);
  EXPECT_EQ(untranslated(textsOf(window)).join("\n").toStdString(), "");
}

TEST_F(LanguageTest, AsksNothingThatIsNotInTheTemplate) {
  const ScopedLocale american("en_US", "q1");
  SettingsWindow window(host);
  window.present();
  childrenOf<Switch>(window).front()->click();
  host.centre.answerStatus(AuthorizationStatus::notDetermined);
  host.runLoop.drain();
  click(window, "Reset History");
  EXPECT_EQ(window.findChildren<QDialog*>().size(), 2);
  EXPECT_EQ(untranslated(textsOf(window)).join("\n").toStdString(), "");
}

TEST_F(LanguageTest, MirrorsThePopoverForALanguageWrittenFromRightToLeft) {
  const ScopedLanguage american("en_US", "q2");
  PopoverView& view = openPopover();
  const auto at = [&](const char* text) {
    for (auto* widget : view.findChildren<QWidget*>()) {
      const auto* label = qobject_cast<QLabel*>(widget);
      const auto* button = qobject_cast<QAbstractButton*>(widget);
      const QString shown = label != nullptr    ? label->text()
                            : button != nullptr ? button->text()
                                                : QString();
      if (shown.contains(text)) return middle(widget, view);
    }
    ADD_FAILURE() << text;
    return 0;
  };
  const int half = view.width() / 2;
  EXPECT_GT(middle(childrenOf<RingView>(view).front(), view), half);
  EXPECT_GT(at("Temperature"), half);
  EXPECT_LT(at("°C"), half);
  EXPECT_GT(at("24"), at("days"));
  const QList<Cell> cells = cellsOf(view);
  EXPECT_TRUE(cells.at(0).text.contains("Day»"));
  for (int column = 1; column < 4; ++column) {
    EXPECT_LT(cells.at(column).rect.right(), cells.at(column - 1).rect.left());
  }
  EXPECT_GT(at("snoozed"), at("Cancel"));
  EXPECT_GT(at("Daily summary"), half);
  EXPECT_GT(at("Settings"), at("Quit"));
}

TEST_F(LanguageTest, DrawsTheTimeFromLeftToRightInEveryLanguage) {
  const ScopedLanguage american("en_US", "q2");
  auto* plot = openPopover().findChild<QCustomPlot*>();
  const double now = secondsSince1970(host.clock.time);
  EXPECT_LT(plot->xAxis->coordToPixel(now - 80'000), plot->xAxis->coordToPixel(now));
}

TEST_F(LanguageTest, MirrorsTheSettingsForALanguageWrittenFromRightToLeft) {
  const ScopedLanguage american("en_US", "q2");
  SettingsWindow& window = openSettings();
  const auto* toggle = childrenOf<Switch>(window).front();
  const auto* stepper = childrenOf<Stepper>(window).front();
  EXPECT_LT(middle(toggle, window), window.width() / 2);
  EXPECT_LT(middle(stepper, window), window.width() / 2);
  const auto buttons = stepper->findChildren<QAbstractButton*>();
  EXPECT_GT(buttons.at(0)->x(), buttons.at(1)->x()) << "less is at the right";
  // What one sees of the controls lines up.
  const auto visibleLeft = [&](const QWidget* widget) {
    return widget->mapTo(&window, widget->contentsRect().topLeft()).x();
  };
  EXPECT_EQ(visibleLeft(toggle), visibleLeft(stepper));
}

TEST_F(LanguageTest, PutsHoursBeforeMinutesInEveryLanguage) {
  struct Case {
    const char* locale;
    const char* time;
  };
  for (const auto& [locale, time] : {Case{"fa_IR", "۲۲:۰۰"}, Case{"ar_EG", "10:00 م"},
                                     Case{"he_IL", "22:00"}, Case{"fi_FI", "22.00"}}) {
    const ScopedLanguage scoped(locale, "q2");
    const auto* field = openSettings().findChild<QTimeEdit*>();
    EXPECT_EQ(field->text().replace(QChar::Nbsp, ' ').toStdString(), time) << locale;
    EXPECT_EQ(field->layoutDirection(), Qt::LeftToRight);
  }
}

TEST_F(LanguageTest, StepsToTheSideWhereTheMoreIs) {
  const ScopedLanguage american("en_US", "q2");
  auto* stepper = childrenOf<Stepper>(openSettings()).front();
  QTest::keyClick(stepper, Qt::Key_Left);
  EXPECT_EQ(host.store.integerForKey("limit"), 81);
  QTest::keyClick(stepper, Qt::Key_Right);
  EXPECT_EQ(host.store.integerForKey("limit"), 80);
}

}  // namespace
}  // namespace lumora::test
