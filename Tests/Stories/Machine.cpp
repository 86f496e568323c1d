// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Machine.h"

#include "Support/Builders.h"

#include <cmath>
#include <cstdio>
#include <ctime>
#include <utility>

namespace lumora::test {

std::string wallTime(Date date, const char* format) {
  const auto time = static_cast<std::time_t>(std::floor(secondsSince1970(date)));
  std::tm parts{};
  localtime_r(&time, &parts);
  char text[64];
  return {text, std::strftime(text, sizeof text, format, &parts)};
}

Machine::Machine(double percent) {
  clock_.time = utc(2026, 3, 2, 8, 0);
  power_.supplies.packs = {{.state = State::discharging,
                            .percent = percent,
                            .energy = percent * 0.45,
                            .energyFull = 45,
                            .energyFullDesign = 50}};
}

void Machine::start() {
  end();
  defaults_.emplace(files_, "/config/defaults.json");
  defaults_->registerDefaults(Prefs::defaults());
  model_ = std::make_unique<AppModel>(AppModel::Services{.clock = clock_,
                                                         .runLoop = runLoop_,
                                                         .powerSources = power_,
                                                         .lowPowerMode = lowPowerMode_,
                                                         .sleepEvents = sleepEvents_,
                                                         .notificationCentre = server_,
                                                         .bundle = bundle_,
                                                         .files = files_,
                                                         .defaults = *defaults_,
                                                         .applicationSupport = "/data"});
  model_->start();
}

void Machine::end() {
  if (model_) model_->saveHistory();
  model_.reset();
  power_.observers.clear();
}

void Machine::battery(double percent) {
  if (machineBattery().percent == percent) return;
  machineBattery().percent = percent;
  machineBattery().energy = percent * machineBattery().energyFull / 100;
  changed();
}

void Machine::adapter(bool online, State state) {
  power_.supplies.adapterOnline = online;
  machineBattery().state = state;
  changed();
}

void Machine::lose(PowerSources::Standing standing) {
  if (!packs().empty()) lost_ = std::exchange(packs(), {});
  power_.stands = standing;
  changed();
}

void Machine::comeBack() {
  packs() = lost_;
  power_.stands = PowerSources::Standing::settled;
  changed();
}

void Machine::goTo(int percent, seconds each) {
  int now = static_cast<int>(*machineBattery().percent);
  while (now != percent) {
    stay(each);
    now += now < percent ? 1 : -1;
    battery(now);
  }
}

void Machine::sleep(seconds duration, double percentAtWake) {
  sleepEvents_.sleep();
  clock_.time += duration;
  sleepEvents_.wake();
  battery(percentAtWake);
}

void Machine::stayUntil(int hour, int minute) {
  char wanted[6];
  std::snprintf(wanted, sizeof wanted, "%02d:%02d", hour, minute);
  do {
    stay(minutes(1));
  } while (wallTime(clock_.time, "%H:%M") != wanted);
}

std::vector<std::string> Machine::kinds() const {
  std::vector<std::string> kinds;
  for (const std::string& line : told_) kinds.push_back(line.substr(0, line.find(':', 9)));
  return kinds;
}

std::vector<std::string> Machine::history() const {
  std::vector<std::string> spans;
  const auto samples = model_->history().samples();
  for (auto first = samples.begin(); first != samples.end();) {
    auto end = std::next(first);
    while (end != samples.end() && end->c == first->c && end->a == first->a &&
           end->t - std::prev(end)->t <= 61) {
      ++end;
    }
    const Sample& last = *std::prev(end);
    spans.push_back(wallTime(dateSince1970(first->t), "%a %H:%M:%S") + " to " +
                    wallTime(dateSince1970(last.t), "%H:%M:%S") +
                    (first->c   ? " charging "
                     : first->a ? " plugged in "
                                : " battery ") +
                    std::to_string(first->p) + " to " + std::to_string(last.p) +
                    " %: " + std::to_string(end - first));
    first = end;
  }
  return spans;
}

std::optional<std::vector<Dictionary>> Machine::Power::descriptions() {
  return powerSourceDescriptions(supplies);
}

std::optional<Dictionary> Machine::Power::registryEntry() const {
  return batteryRegistryEntry(supplies);
}

bool Machine::Power::observe(std::function<void()> changed) {
  observers.push_back(std::move(changed));
  return true;
}

void Machine::Power::change() const {
  for (const auto& changed : observers) changed();
}

void Machine::Server::add(NotificationRequest request, StillSo /*stillSo*/) {
  machine.told_.push_back(wallTime(machine.clock_.time, "%a %H:%M") + " " + request.identifier +
                          ": " + request.body);
}

}  // namespace lumora::test
