// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "Views/Controls/Disclosure.h"
#include "Views/Controls/SegmentedPicker.h"
#include "Views/FakeHost.h"
#include "Views/Gallery/LifelikeBattery.h"
#include "Views/Gallery/Scenes.h"
#include "Views/Pixels.h"
#include "Views/Popover/PopoverWindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMouseEvent>
#include <optional>

#include <qcustomplot.h>

namespace lumora::test {
namespace {

const Dictionary kPluggedIn = {{"Power Source State", "AC Power"}};
const Dictionary kDischarging = {{"Time to Empty", 185}};

struct PopoverScene {
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

std::vector<PopoverScene> popoverScenes() {
  Dictionary full = kPluggedIn;
  full.emplace("Is Charged", true);
  return {
      {.name = "no-battery", .hasBattery = false},
      {.name = "charging", .description = charging()},
      {.name = "full", .percent = 100, .description = full},
      {.name = "held-at-80", .percent = 80, .description = kPluggedIn},
      {.name = "on-battery-20", .percent = 20},
      {.name = "on-battery-21", .percent = 21},
      {.name = "no-rows", .registry = {}},
      {.name = "snoozed", .description = charging(), .snoozed = true},
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
       .description = charging(),
       .snoozed = true,
       .unfolded = true,
       .points = 11},
      {.name = "font-16",
       .description = charging(),
       .snoozed = true,
       .week = true,
       .unfolded = true,
       .points = 16},
      {.name = "font-16-folded", .points = 16},
      {.name = "turned-dark",
       .description = charging(),
       .snoozed = true,
       .unfolded = true,
       .darkLater = true},
      {.name = "german",
       .description = charging(),
       .snoozed = true,
       .unfolded = true,
       .locale = "de_DE"},
      {.name = "arabic",
       .description = charging(),
       .snoozed = true,
       .unfolded = true,
       .locale = "ar_EG"},
      {.name = "persian", .snoozed = true, .week = true, .unfolded = true, .locale = "fa_IR"},
      {.name = "hebrew", .week = true, .unfolded = true, .locale = "he_IL", .pointedAt = 0.3},
      {.name = "mirrored",
       .description = charging(),
       .snoozed = true,
       .week = true,
       .unfolded = true,
       .locale = "fa_IR",
       .language = "q2",
       .pointedAt = 0.3,
       .focused = "«Daily summary»"},
      {.name = "finnish", .snoozed = true, .week = true, .locale = "fi_FI", .pointedAt = 0.6},
      {.name = "american", .description = charging(), .snoozed = true, .locale = "en_US"},
      {.name = "dark", .description = charging(), .snoozed = true, .unfolded = true, .dark = true},
      {.name = "dark-no-battery", .dark = true, .hasBattery = false},
      {.name = "dark-low", .percent = 9, .dark = true},
      {.name = "strong", .percent = 20, .snoozed = true, .unfolded = true, .strong = true},
      {.name = "strong-dark",
       .percent = 20,
       .snoozed = true,
       .unfolded = true,
       .dark = true,
       .strong = true},
      {.name = "round", .description = charging(), .snoozed = true, .week = true, .round = true},
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

void pointAt(QWidget& window, double share) {
  auto* plot = window.findChild<QCustomPlot*>();
  const QRect area = plot->axisRect()->rect();
  const QPointF at(area.left() + share * area.width(), area.center().y());
  QMouseEvent move(QEvent::MouseMove, at, plot->mapToGlobal(at), Qt::NoButton, {}, {});
  QCoreApplication::sendEvent(plot, &move);
}

QImage render(const PopoverScene& scene, DesktopLooks& looks) {
  const ScopedWords words(scene);
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
  return picture(window);
}

}  // namespace

bool renderPopoverScenes(DesktopLooks& looks, const std::filesystem::path& folder) {
  return renderAll(popoverScenes(), folder,
                   [&](const PopoverScene& scene) { return render(scene, looks); });
}

}  // namespace lumora::test
