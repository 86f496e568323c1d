// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Renders the popover and the settings in their states to pictures, to be looked at: gallery FOLDER

#include "FakeHost.h"
#include "Views/PopoverWindow.h"
#include "Views/SettingsWindow.h"
#include "Views/Theme.h"

#include <QApplication>
#include <QDialog>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolButton>
#include <algorithm>
#include <filesystem>
#include <iostream>

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

struct Scene {
  const char* name;
  std::int64_t percent = 73;
  Dictionary description = kDischarging;
  Dictionary registry = kEverything;
  std::vector<Sample> samples = minuteSamples(kNow, kWeekMinutes);
  bool snoozed = false;
  bool week = false;
  bool unfolded = false;
  bool dark = false;
  bool strong = false;
  QLocale locale = QLocale(QLocale::English, QLocale::UnitedKingdom);
  bool hasBattery = true;
};

Dictionary withCycles(std::int64_t count) {
  Dictionary registry = kEverything;
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
      {.name = "chart-day-with-gaps", .samples = withGaps()},
      {.name = "chart-week-with-gaps", .samples = withGaps(), .week = true},
      {.name = "unfolded", .week = true, .unfolded = true},
      {.name = "german",
       .description = kCharging,
       .snoozed = true,
       .unfolded = true,
       .locale = QLocale(QLocale::German, QLocale::Germany)},
      {.name = "arabic",
       .description = kCharging,
       .snoozed = true,
       .unfolded = true,
       .locale = QLocale(QLocale::Arabic, QLocale::Egypt)},
      {.name = "american",
       .description = kCharging,
       .snoozed = true,
       .locale = QLocale(QLocale::English, QLocale::UnitedStates)},
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
  };
}

Appearance appearanceOf(const auto& scene) {
  Appearance appearance;
  appearance.colorScheme =
      scene.dark ? Appearance::ColorScheme::dark : Appearance::ColorScheme::light;
  appearance.highContrast = scene.strong;
  return appearance;
}

bool render(const Scene& scene, const std::filesystem::path& folder) {
  QLocale::setDefault(scene.locale);
  FakeHost host;
  host.clock.time = kNow;
  if (scene.hasBattery) host.setBattery(scene.percent, scene.description, scene.registry);
  host.setHistory(scene.samples);
  if (scene.snoozed) host.model().snooze();
  applyAppearance(appearanceOf(scene));
  host.model().refresh(AppModel::Reason::launch);
  host.clock.time += Seconds(23 * 60);

  PopoverWindow window(host);
  window.showAt(std::nullopt);
  for (auto* button : window.findChildren<QAbstractButton*>()) {
    if (scene.week && button->text() == "7 days") button->click();
    if (scene.unfolded && button->text() == "Daily summary") button->click();
  }
  QCoreApplication::sendPostedEvents();
  QApplication::processEvents();
  const auto file = folder / (std::string(scene.name) + ".png");
  return window.grab().save(QString::fromStdString(file.string()));
}

struct SettingsScene {
  const char* name;
  const char* settings = "{}";
  bool dark = false;
  bool strong = false;
  double fontFactor = 1;
  bool failing = false;
  int scrolled = 0;
  const char* dialog = nullptr;  // the control that opens it
};

std::vector<SettingsScene> settingsScenes() {
  constexpr const char* kOff = R"({"limitEnabled": false, "lowEnabled": false,
      "quietEnabled": true, "limit": 120, "low": 5, "lowSound": "Submarine"})";
  return {
      {.name = "settings"},
      {.name = "settings-end", .failing = true, .scrolled = 2000},
      {.name = "settings-changed", .settings = kOff},
      {.name = "settings-quiet", .settings = kOff, .scrolled = 2000},
      {.name = "settings-dark", .settings = kOff, .dark = true},
      {.name = "settings-dark-end", .dark = true, .failing = true, .scrolled = 2000},
      {.name = "settings-strong", .strong = true},
      {.name = "settings-strong-dark",
       .settings = kOff,
       .dark = true,
       .strong = true,
       .scrolled = 2000},
      {.name = "settings-large", .fontFactor = 1.5},
      {.name = "settings-permission", .dialog = "Charge limit"},
      {.name = "settings-reset", .dark = true, .dialog = "Reset History…"},
  };
}

bool render(const SettingsScene& scene, const std::filesystem::path& folder) {
  QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedKingdom));
  const QFont font = QApplication::font();
  QFont scaled = font;
  scaled.setPointSizeF(font.pointSizeF() * scene.fontFactor);
  QApplication::setFont(scaled);
  FakeHost host;
  host.clock.time = kNow;
  host.files.edit("/config/defaults.json", scene.settings);
  host.store.synchronize();
  if (scene.failing) {
    host.bundle.identifier.reset();
    host.login.error = "Permission denied";
  }
  applyAppearance(appearanceOf(scene));
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
  window.findChild<QScrollArea*>()->verticalScrollBar()->setValue(scene.scrolled);
  QApplication::processEvents();
  const auto file = folder / (std::string(scene.name) + ".png");
  auto* dialog = window.findChild<QDialog*>();
  auto& shown = dialog != nullptr ? static_cast<QWidget&>(*dialog) : window;
  const bool saved = shown.grab().save(QString::fromStdString(file.string()));
  QApplication::setFont(font);
  return saved;
}

}  // namespace
}  // namespace lumora::test

int main(int argc, char** argv) {
  const std::filesystem::path folder = argc > 1 ? argv[1] : "gallery";
  std::filesystem::create_directories(folder);
  // A screen that nobody sees.
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  const auto renderAll = [&](const auto& scenes) {
    return std::all_of(scenes.begin(), scenes.end(), [&](const auto& scene) {
      const bool rendered = lumora::test::render(scene, folder);
      if (!rendered) std::cerr << "could not render " << scene.name << '\n';
      return rendered;
    });
  };
  const bool popovers = renderAll(lumora::test::scenes());
  return popovers && renderAll(lumora::test::settingsScenes()) ? 0 : 1;
}
