// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Consequences.h"

#include "Content/PopoverContent.h"
#include "Content/StatusItem.h"

#include <cmath>

namespace lumora::test {
namespace {

template <typename T>
bool atLeast(const std::optional<T>& value, T least) {
  return !value || *value >= least;
}

bool finite(const std::optional<double>& value) { return !value || std::isfinite(*value); }

bool hasImage(const std::string& name) { return name != "battery.100percent"; }

void expectReminders(AlertEngine& engine, AlertEngine::Input input, DefaultsStore& defaults) {
  AlertEngine primed = engine;
  input.prime = true;
  expect(primed.run(input, defaults).empty(), "nothing is due while priming");
  input.prime = input.canDeliver = false;
  expect(engine.run(input, defaults).empty(), "nothing is due while nothing may go out");
  input.canDeliver = true;
  std::set<AlertKind> kinds;
  for (const PendingAlert& alert : engine.run(input, defaults)) {
    expect(kinds.insert(alert.kind).second, "a kind is due once");
    expect(!alert.title.empty() && !alert.body.empty(), "a reminder says something");
  }
  expect(kinds.empty() || input.state.hasBattery, "only a battery reminds");
}

void expectItem(const BatteryState& state, const Prefs& prefs, std::optional<Date> snoozeUntil) {
  for (const TextPlace place : {TextPlace::label, TextPlace::wide, TextPlace::inside}) {
    const auto face = statusItemFace(state, false, prefs, place, hasImage);
    expect(!face.tooltipTitle.empty(), "the item has a tip");
    expect(face.drawn.has_value() == face.iconName.empty(), "the icon has a name or is drawn");
    expect(!face.drawn || state.hasBattery, "only a battery is drawn");
    expect(face.label.size() == face.labelGuide.size(), "the guide is as long as the label");
  }
  expect(statusMenu(state, false, snoozeUntil, {}).size() == 5, "the menu has five lines");
}

void expectPopover(const BatteryState& state, std::optional<Date> since,
                   std::optional<Date> snoozeUntil, Date now) {
  const auto content = batteryContent(state, since, snoozeUntil, now);
  expect(content.has_value() == state.hasBattery, "the popover shows a battery where one is");
  if (!content) return;
  expect(content->percent == state.percent && !content->stateText.empty(), "it tells the charge");
  expect(!content->cycles ||
             (content->cycles->value >= 0 && content->cycles->value <= CycleBar::kTotal),
         "the cycle bar is not longer than whole");
  for (const DetailRow& row : content->details) {
    expect(!row.label.empty() && !row.value.empty(), "a detail has a name and a value");
  }
}

}  // namespace

void expectSound(const BatteryState& state) {
  BatteryState none;
  none.lowPowerMode = state.lowPowerMode;
  expect(state.hasBattery || state == none, "without a battery nothing is known");
  expect(state.percent >= 0 && state.percent <= 100, "the charge is 0 to 100 %");
  expect(atLeast<std::int64_t>(state.minutesToFull, 0), "the time to full is not negative");
  expect(atLeast<std::int64_t>(state.minutesToEmpty, 0), "the time to empty is not negative");
  expect(atLeast<std::int64_t>(state.cycleCount, 0), "cycles are not negative");
  expect(atLeast<std::int64_t>(state.designCapacity, 1), "the design capacity is something");
  expect(!state.fullCapacity || state.designCapacity, "no full capacity without the design's");
  expect(atLeast<std::int64_t>(state.adapterWatts, 1), "an adapter gives something");
  expect(finite(state.temperatureC) && finite(state.voltage) && finite(state.amperage),
         "what was measured is a number");
}

void Consequences::follow(const BatteryState& state, Date now, std::optional<Date> since) {
  expectSound(state);
  const auto snoozeUntil = Prefs::snoozeUntil(defaults_, now);
  expectReminders(engine_, {.state = state, .since = since, .now = now, .prefs = prefs_},
                  defaults_);
  expectItem(state, prefs_, snoozeUntil);
  expectPopover(state, since, snoozeUntil, now);
}

}  // namespace lumora::test
