// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Renders the popover and the settings in their states to pictures, to be looked at:
// gallery FOLDER [WIDTH HEIGHT SCALE], those of the screen

#include "Base/LocalTime.h"
#include "Base/Texts.h"
#include "Views/Children.h"
#include "Views/Controls/Disclosure.h"
#include "Views/Controls/SegmentedPicker.h"
#include "Views/FakeHost.h"
#include "Views/Languages.h"
#include "Views/Pixels.h"
#include "Views/Popover/PopoverView.h"
#include "Views/Popover/PopoverWindow.h"
#include "Views/Settings/SettingsWindow.h"
#include "Views/Style/Style.h"
#include "Views/Theme/DesktopLooks.h"
#include "Views/UnseenScreen.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QLayout>
#include <QLocale>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <algorithm>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <optional>
#include <set>

#include <qcustomplot.h>

namespace lumora::test {
namespace {

// A Tuesday, 14:13 in Berlin.
const Date kNow = dateSince1970(1'795'525'980);
constexpr int kWeekMinutes = 7 * 24 * 60;

const Dictionary kEverything = {{"CycleCount", 412},
                                {"DesignCapacity", 50'000},
                                {"MaxCapacity", 43'500},
                                {"Temperature", 3140},
                                {"Voltage", 12'000},
                                {"Amperage", 2100},
                                {"AdapterDetails", Dictionary{{"Watts", 96}}}};
const Dictionary kPluggedIn = {{"Power Source State", "AC Power"}};
const Dictionary kCharging = {
    {"Power Source State", "AC Power"}, {"Is Charging", true}, {"Time to Full Charge", 72}};
const Dictionary kDischarging = {{"Time to Empty", 185}};
constexpr int kBottom = 100'000;

/// A week as people have it: asleep at night and for a while by day, charged for up to three
/// hours in the evening.
std::vector<Sample> lifelikeWeek() {
  constexpr double kMinute = 60;
  constexpr int kDayMinutes = 24 * 60;
  std::vector<Sample> samples;
  double percent = 78;
  for (int age = kWeekMinutes; age >= 0; --age) {
    const Date moment = kNow - Seconds(age * kMinute);
    const auto minute = static_cast<int>(minutesAfterMidnight(moment));
    const int day = age / kDayMinutes;
    const bool charging = minute >= 19 * 60 && minute < 19 * 60 + 180 - 10 * day;
    const bool asleep = minute < 7 * 60 + 11 * day || minute > 22 * 60 + 13 * day ||
                        (minute > 12 * 60 && minute < 12 * 60 + 25 + 5 * day);
    if (asleep) continue;
    percent = std::clamp(percent + (charging ? 0.45 : -0.09), 4.0, 100.0);
    samples.push_back(
        {secondsSince1970(moment), static_cast<std::int64_t>(percent), charging, charging});
  }
  return samples;
}

Dictionary onBattery() {
  Dictionary registry = kEverything;
  registry.insert_or_assign("Amperage", -1135);
  return registry;
}

struct Scene {
  const char* name;
  std::int64_t percent = 73;
  Dictionary description = kDischarging;
  Dictionary registry = onBattery();
  std::vector<Sample> samples = lifelikeWeek();
  bool snoozed = false;
  bool week = false;
  bool unfolded = false;
  bool dark = false;
  bool strong = false;
  const char* locale = nullptr;    // Absent: as the source says it.
  const char* language = nullptr;  // Absent: the locale's.
  bool hasBattery = true;
  double points = 10;             // of the desktop's font
  double pointedAt = -1;          // a share of the chart's width
  const char* focused = nullptr;  // by its text or accessible name
  bool darkLater = false;         // the desktop turns dark while it is open
  bool round = false;             // windows may be translucent
};

Dictionary withCycles(std::int64_t count) {
  Dictionary registry = onBattery();
  registry.insert_or_assign("CycleCount", count);
  return registry;
}

std::vector<Sample> withGaps() {
  auto samples = minuteSamples(kNow, kWeekMinutes);
  std::erase_if(samples, [](const Sample& sample) {
    const double age = secondsSince1970(kNow) - sample.t;
    return (age > 6 * 3600 && age < 9 * 3600) || (age > 60 * 3600 && age < 90 * 3600);
  });
  return samples;
}

std::vector<Scene> scenes() {
  Dictionary full = kPluggedIn;
  full.emplace("Is Charged", true);
  return {
      {.name = "no-battery", .hasBattery = false},
      {.name = "charging", .description = kCharging},
      {.name = "full", .percent = 100, .description = full},
      {.name = "held-at-80", .percent = 80, .description = kPluggedIn},
      {.name = "on-battery-20", .percent = 20},
      {.name = "on-battery-21", .percent = 21},
      {.name = "no-rows", .registry = {}},
      {.name = "snoozed", .description = kCharging, .snoozed = true},
      {.name = "cycles-700", .registry = withCycles(700)},
      {.name = "cycles-701", .registry = withCycles(701)},
      {.name = "cycles-901", .registry = withCycles(901)},
      {.name = "cycles-1200", .registry = withCycles(1200)},
      {.name = "chart-empty", .samples = {}},
      {.name = "chart-one-point", .samples = {{secondsSince1970(kNow) - 60, 73, false, false}}},
      {.name = "chart-zigzag", .samples = minuteSamples(kNow, kWeekMinutes), .week = true},
      {.name = "chart-day-with-gaps", .samples = withGaps()},
      {.name = "chart-week-with-gaps", .samples = withGaps(), .week = true},
      {.name = "chart-week", .week = true},
      {.name = "unfolded", .week = true, .unfolded = true},
      {.name = "hover-low", .pointedAt = 0.55},
      {.name = "hover-high", .pointedAt = 0.3},
      {.name = "hover-right", .week = true, .pointedAt = 1},
      {.name = "hover-left-dark", .week = true, .dark = true, .pointedAt = 0},
      {.name = "focus-chart", .focused = "Charge history"},
      {.name = "focus-segment", .focused = "24 hours"},
      {.name = "focus-summary", .focused = "Daily summary"},
      {.name = "focus-cancel", .snoozed = true, .focused = "Cancel"},
      {.name = "focus-settings-dark", .dark = true, .focused = "Settings…"},
      {.name = "font-11",
       .description = kCharging,
       .snoozed = true,
       .unfolded = true,
       .points = 11},
      {.name = "font-16",
       .description = kCharging,
       .snoozed = true,
       .week = true,
       .unfolded = true,
       .points = 16},
      {.name = "font-16-folded", .points = 16},
      {.name = "turned-dark",
       .description = kCharging,
       .snoozed = true,
       .unfolded = true,
       .darkLater = true},
      {.name = "german",
       .description = kCharging,
       .snoozed = true,
       .unfolded = true,
       .locale = "de_DE"},
      {.name = "arabic",
       .description = kCharging,
       .snoozed = true,
       .unfolded = true,
       .locale = "ar_EG"},
      {.name = "persian", .snoozed = true, .week = true, .unfolded = true, .locale = "fa_IR"},
      {.name = "hebrew", .week = true, .unfolded = true, .locale = "he_IL", .pointedAt = 0.3},
      {.name = "mirrored",
       .description = kCharging,
       .snoozed = true,
       .week = true,
       .unfolded = true,
       .locale = "fa_IR",
       .language = "q2",
       .pointedAt = 0.3,
       .focused = "«Daily summary»"},
      {.name = "finnish", .snoozed = true, .week = true, .locale = "fi_FI", .pointedAt = 0.6},
      {.name = "american", .description = kCharging, .snoozed = true, .locale = "en_US"},
      {.name = "dark", .description = kCharging, .snoozed = true, .unfolded = true, .dark = true},
      {.name = "dark-no-battery", .dark = true, .hasBattery = false},
      {.name = "dark-low", .percent = 9, .dark = true},
      {.name = "strong", .percent = 20, .snoozed = true, .unfolded = true, .strong = true},
      {.name = "strong-dark",
       .percent = 20,
       .snoozed = true,
       .unfolded = true,
       .dark = true,
       .strong = true},
      {.name = "round", .description = kCharging, .snoozed = true, .week = true, .round = true},
      {.name = "round-dark",
       .week = true,
       .unfolded = true,
       .dark = true,
       .pointedAt = 0.4,
       .round = true},
      {.name = "round-german-11",
       .week = true,
       .unfolded = true,
       .locale = "de_DE",
       .points = 11,
       .pointedAt = 0.5,
       .round = true},
      {.name = "round-arabic-16",
       .week = true,
       .unfolded = true,
       .dark = true,
       .locale = "ar_EG",
       .points = 16,
       .pointedAt = 0.6,
       .round = true},
  };
}

Appearance appearanceOf(const auto& scene) {
  Appearance appearance;
  appearance.colorScheme =
      scene.dark ? Appearance::ColorScheme::dark : Appearance::ColorScheme::light;
  appearance.highContrast = scene.strong;
  return appearance;
}

/// The first control of that text or name.
QWidget* withName(const QWidget& window, const QString& name) {
  for (auto* widget : window.findChildren<QWidget*>()) {
    const auto* button = qobject_cast<const QAbstractButton*>(widget);
    const bool isIt =
        widget->accessibleName() == name || (button != nullptr && button->text() == name);
    if (isIt && widget->isVisible()) return widget;
  }
  return nullptr;
}

/// Puts the keyboard's focus on the control of that text or name, as the tab key does.
void focus(QWidget& window, const QString& name) {
  window.setAttribute(Qt::WA_KeyboardFocusChange);
  window.activateWindow();
  if (QWidget* widget = withName(window, name)) widget->setFocus(Qt::TabFocusReason);
}

void pointAt(QWidget& window, double share) {
  auto* plot = window.findChild<QCustomPlot*>();
  const QRect area = plot->axisRect()->rect();
  const QPointF at(area.left() + share * area.width(), area.center().y());
  QMouseEvent move(QEvent::MouseMove, at, plot->mapToGlobal(at), Qt::NoButton, {}, {});
  QCoreApplication::sendEvent(plot, &move);
}

bool render(const Scene& scene, DesktopLooks& looks, const std::filesystem::path& folder) {
  std::optional<ScopedLanguage> language;
  if (scene.locale != nullptr) {
    language.emplace(scene.locale, scene.language != nullptr ? scene.language : "");
  }
  const ScopedFontSize font(scene.points);
  FakeHost host;
  host.clock.time = kNow;
  if (scene.hasBattery) host.setBattery(scene.percent, scene.description, scene.registry);
  host.setHistory(scene.samples);
  if (scene.snoozed) host.model().snooze();
  looks.apply(appearanceOf(scene));
  host.model().refresh(AppModel::Reason::launch);
  host.clock.time += Seconds(23 * 60);

  const auto round = [](const QScreen& /*screen*/) { return true; };
  PopoverWindow window(host, scene.round ? round : blendsWindows);
  window.showAt(std::nullopt);
  for (auto* widget : window.findChildren<QWidget*>()) {
    if (auto* picker = dynamic_cast<SegmentedPicker*>(widget); scene.week && picker != nullptr) {
      picker->findChildren<QAbstractButton*>().at(1)->click();
    }
    if (auto* days = dynamic_cast<Disclosure*>(widget); scene.unfolded && days != nullptr) {
      days->click();
    }
  }
  QApplication::processEvents();
  if (scene.darkLater) looks.apply({Appearance::ColorScheme::dark, {}});
  if (scene.focused != nullptr) focus(window, scene.focused);
  QApplication::processEvents();
  picture(window);
  if (scene.pointedAt >= 0) pointAt(window, scene.pointedAt);
  QApplication::processEvents();
  const auto file = folder / (std::string(scene.name) + ".png");
  return picture(window).save(QString::fromStdString(file.string()));
}

struct SettingsScene {
  const char* name;
  const char* settings = "{}";
  bool dark = false;
  bool strong = false;
  double points = 10;  // of the desktop's font
  bool failing = false;
  int scrolled = 0;
  const char* focused = nullptr;  // by its text or accessible name
  bool darkLater = false;         // the desktop turns dark while it is open
  const char* dialog = nullptr;   // the control that opens it
  const char* hovered = nullptr;  // by its text or accessible name
  const char* pressed = nullptr;
  bool listOpen = false;  // of the first sound
  const char* locale = nullptr;
  const char* language = nullptr;
};

std::vector<SettingsScene> settingsScenes() {
  constexpr const char* kOff = R"({"limitEnabled": false, "lowEnabled": false,
      "quietEnabled": true, "limit": 120, "low": 5, "lowSound": "Submarine"})";
  constexpr const char* kPing = R"({"limitSound": "Ping"})";
  constexpr const char* kQuack = R"({"limitSound": "Quack"})";
  return {
      {.name = "settings"},
      {.name = "settings-end", .failing = true, .scrolled = kBottom},
      {.name = "settings-changed", .settings = kOff},
      {.name = "settings-quiet", .settings = kOff, .scrolled = kBottom},
      {.name = "settings-dark", .settings = kOff, .dark = true},
      {.name = "settings-dark-end", .dark = true, .failing = true, .scrolled = kBottom},
      {.name = "settings-strong", .strong = true},
      {.name = "settings-strong-dark",
       .settings = kOff,
       .dark = true,
       .strong = true,
       .scrolled = kBottom},
      {.name = "settings-large", .points = 15},
      {.name = "settings-turned-dark", .failing = true, .scrolled = kBottom, .darkLater = true},
      {.name = "settings-focus-switch", .focused = "Charge limit"},
      {.name = "settings-focus-stepper", .focused = "Alert when charging reaches 80%"},
      {.name = "settings-focus-sound-dark", .dark = true, .focused = "Sound"},
      {.name = "settings-focus-time", .settings = kOff, .scrolled = kBottom, .focused = "From"},
      {.name = "settings-permission", .dialog = "Charge limit"},
      {.name = "settings-reset", .dark = true, .dialog = "Reset History…"},
      {.name = "settings-reset-pressed",
       .dialog = "Reset History…",
       .hovered = "Cancel",
       .pressed = "Reset"},
      {.name = "settings-reset-strong", .strong = true, .dialog = "Reset History…"},
      {.name = "settings-reset-focus", .focused = "Cancel", .dialog = "Reset History…"},
      {.name = "settings-list", .settings = kQuack, .listOpen = true},
      {.name = "settings-list-dark", .settings = kPing, .dark = true, .listOpen = true},
      {.name = "settings-list-strong", .settings = kPing, .strong = true, .listOpen = true},
      {.name = "settings-list-mirrored",
       .settings = kPing,
       .listOpen = true,
       .locale = "fa_IR",
       .language = "q2"},
      {.name = "settings-touched",
       .scrolled = kBottom,
       .hovered = "Launch at Login",
       .pressed = "Reset History…"},
      {.name = "settings-touched-dark",
       .dark = true,
       .hovered = "Increase",
       .pressed = "Charge limit"},
      {.name = "settings-german", .locale = "de_DE"},
      {.name = "settings-german-end", .scrolled = kBottom, .locale = "de_DE"},
      {.name = "settings-arabic", .locale = "ar_EG"},
      {.name = "settings-arabic-end", .scrolled = kBottom, .locale = "ar_EG"},
      {.name = "settings-mirrored",
       .settings = kOff,
       .dialog = "«Reset History…»",
       .locale = "fa_IR",
       .language = "q2"},
      {.name = "settings-mirrored-end",
       .settings = kOff,
       .scrolled = kBottom,
       .locale = "fa_IR",
       .language = "q2"},
  };
}

bool render(const SettingsScene& scene, DesktopLooks& looks, const std::filesystem::path& folder) {
  std::optional<ScopedLanguage> language;
  if (scene.locale != nullptr) {
    language.emplace(scene.locale, scene.language != nullptr ? scene.language : "");
  }
  const ScopedFontSize font(scene.points);
  FakeHost host;
  host.clock.time = kNow;
  host.files.edit("/config/defaults.json", scene.settings);
  host.store.synchronize();
  if (scene.failing) {
    host.bundle.identifier.reset();
    host.login.error = "Permission denied";
  }
  looks.apply(appearanceOf(scene));
  SettingsWindow window(host);
  window.present();
  const QString pressed = scene.failing ? "Launch at Login" : scene.dialog;
  for (auto* button : window.findChildren<QAbstractButton*>()) {
    if (pressed.isEmpty()) break;
    if (button->accessibleName() == pressed || button->text() == pressed) button->click();
  }
  host.centre.answerStatus(AuthorizationStatus::notDetermined);
  host.runLoop.drain();
  QApplication::processEvents();
  if (scene.darkLater) looks.apply({Appearance::ColorScheme::dark, {}});
  if (scene.focused != nullptr) focus(window, scene.focused);
  QApplication::processEvents();
  window.findChild<QScrollArea*>()->verticalScrollBar()->setValue(scene.scrolled);
  QApplication::processEvents();
  if (scene.hovered != nullptr) {
    withName(window, scene.hovered)->setAttribute(Qt::WA_UnderMouse);
  }
  if (scene.pressed != nullptr) {
    qobject_cast<QAbstractButton*>(withName(window, scene.pressed))->setDown(true);
  }
  const auto file = folder / (std::string(scene.name) + ".png");
  QWidget* shown = &window;
  if (auto* dialog = window.findChild<QDialog*>()) shown = dialog;
  if (scene.listOpen) {
    auto* sound = window.findChild<QComboBox*>();
    sound->showPopup();
    QApplication::processEvents();
    shown = sound->view()->window();
  }
  return picture(*shown).save(QString::fromStdString(file.string()));
}

/// All languages side by side, each under its name, as `show` renders them.
template <typename Show>
bool contactSheet(const std::filesystem::path& file, QSize tile, const Show& show) {
  constexpr int kColumns = 9;
  constexpr int kCaption = 24;
  const std::set<std::string> all = languages();
  const int rows = (static_cast<int>(all.size()) + kColumns - 1) / kColumns;
  const QSize step = tile + QSize(8, 8 + kCaption);
  QImage sheet(kColumns * step.width(), rows * step.height(), QImage::Format_RGB32);
  sheet.fill(Qt::gray);
  QPainter painter(&sheet);
  int index = 0;
  for (const std::string& language : all) {
    const QPoint at(index % kColumns * step.width(), index / kColumns * step.height());
    painter.drawText(at + QPoint(4, kCaption - 8), QString::fromStdString(language));
    const ScopedLanguage scoped(language, language);
    painter.drawImage(at + QPoint(4, kCaption), show());
    ++index;
  }
  painter.end();
  return sheet.save(QString::fromStdString(file.string()));
}

bool contactSheets(DesktopLooks& looks, const std::filesystem::path& folder) {
  looks.apply({});
  FakeHost host;
  host.clock.time = kNow;
  host.setBattery(73, kCharging, onBattery());
  host.setHistory(lifelikeWeek());
  host.model().snooze();
  host.model().refresh(AppModel::Reason::launch);
  host.bundle.identifier.reset();
  host.login.error = "Permission denied";
  const bool popovers = contactSheet(folder / "languages.png", {340, 740}, [&] {
    PopoverView view(host);
    view.show();
    childrenOf<Disclosure>(view).front()->click();
    view.resize(view.width(), view.layout()->totalHeightForWidth(view.width()));
    QApplication::processEvents();
    return picture(view);
  });
  return popovers && contactSheet(folder / "languages-settings.png", {480, 1400}, [&] {
           SettingsWindow window(host);
           window.present();
           for (auto* button : window.findChildren<QAbstractButton*>()) {
             if (button->accessibleName() == translated("Launch at Login")) button->click();
           }
           QApplication::processEvents();
           return picture(*window.findChild<QScrollArea*>()->widget());
         });
}

}  // namespace
}  // namespace lumora::test

int main(int argc, char** argv) try {
  // FOLDER WIDTH HEIGHT SCALE, as small laptops have it.
  const std::filesystem::path folder = argc > 1 ? argv[1] : "gallery";
  const bool isTold = argc > 4;
  std::filesystem::create_directories(folder);
  lumora::test::useUnseenScreen(folder / "screens.json", isTold ? std::atoi(argv[2]) : 1366,
                                isTold ? std::atoi(argv[3]) : 768, isTold ? std::atof(argv[4]) : 1);
  qputenv("LC_ALL", "C.UTF-8");
  const QApplication application(argc, argv);
  lumora::installStyle();
  QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
  lumora::DesktopLooks looks;
  const auto renderAll = [&](const auto& scenes) {
    return std::all_of(scenes.begin(), scenes.end(), [&](const auto& scene) {
      const bool rendered = lumora::test::render(scene, looks, folder);
      if (!rendered) std::cerr << "could not render " << scene.name << '\n';
      return rendered;
    });
  };
  const bool popovers = renderAll(lumora::test::scenes());
  const bool settings = renderAll(lumora::test::settingsScenes());
  return popovers && settings && lumora::test::contactSheets(looks, folder) ? 0 : 1;
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return 1;
}
