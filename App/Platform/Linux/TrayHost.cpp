// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Linux/TrayHost.h"

#include "Platform/Linux/Variants.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <string>
#include <tuple>
#include <utility>

namespace lumora {
namespace {

constexpr const char* kWatcher = "org.kde.StatusNotifierWatcher";
constexpr const char* kWatcherPath = "/StatusNotifierWatcher";
constexpr const char* kBus = "org.freedesktop.DBus";
constexpr const char* kBusPath = "/org/freedesktop/DBus";
constexpr int kPatience = 10'000;  // milliseconds

// What the kernel keeps of a process's name.
constexpr std::size_t kLongestName = 15;

struct KnownProcess {
  std::string_view name;
  TextPlace place;
};

constexpr std::array kKnownProcesses = {
    KnownProcess{"gnome-shell", TextPlace::label},
    KnownProcess{"ayatana-indicat", TextPlace::label},
    KnownProcess{"waybar", TextPlace::wide},
    KnownProcess{"mate-panel", TextPlace::wide},
    KnownProcess{"xapp-sn-watcher", TextPlace::wide},  // Cinnamon's
};

/// Some distributions start programs through scripts, and call the program itself ".NAME-wrapped".
bool isWrapped(std::string_view process, std::string_view name) {
  const std::string wrapped = std::string(".").append(name).append("-wrapped");
  return process == std::string_view(wrapped).substr(0, kLongestName);
}

std::string processName(std::uint32_t id) {
  std::string name;
  std::getline(std::ifstream("/proc/" + std::to_string(id) + "/comm"), name);
  return name;
}

}  // namespace

TextPlace textPlaceOf(std::string_view process) {
  const auto* const known = std::find_if(
      kKnownProcesses.begin(), kKnownProcesses.end(),
      [&](const KnownProcess& one) { return one.name == process || isWrapped(process, one.name); });
  return known == kKnownProcesses.end() ? TextPlace::inside : known->place;
}

TrayHost::TrayHost(BusConnection session, std::function<void(TextPlace)> ready)
    : session_(std::move(session)),
      ready_(std::move(ready)),
      ownerChanged_(session_,
                    SignalSubscription::Source{kBus, kBusPath, kBus, "NameOwnerChanged", kWatcher},
                    [this](const Glib::VariantContainerBase& arguments) {
                      onOwner(argument<Glib::ustring>(arguments, 2));
                    }),
      hostRegistered_(session_,
                      SignalSubscription::Source{kWatcher, kWatcherPath, kWatcher,
                                                 "StatusNotifierHostRegistered"},
                      [this](const Glib::VariantContainerBase& /*arguments*/) {
                        askTheBus("GetNameOwner", kWatcher, &TrayHost::onOwnerKnown);
                      }) {
  askTheBus("GetNameOwner", kWatcher, &TrayHost::onOwnerKnown);
}

void TrayHost::askTheBus(const char* method, const Glib::ustring& name,
                         void (TrayHost::*answered)(const Result&)) {
  session_->call(kBusPath, kBus, method, Glib::Variant<std::tuple<Glib::ustring>>::create({name}),
                 sigc::mem_fun(*this, answered), kBus, kPatience);
}

void TrayHost::onOwnerKnown(const Result& result) {
  try {
    onOwner(argument<Glib::ustring>(session_->call_finish(result), 0));
  } catch (const Glib::Error&) {
    // There is no tray yet.
  }
}

void TrayHost::onOwner(const Glib::ustring& owner) {
  if (owner.empty()) return;
  askTheBus("GetConnectionUnixProcessID", owner, &TrayHost::onProcessKnown);
}

void TrayHost::onProcessKnown(const Result& result) {
  TextPlace place = TextPlace::inside;
  try {
    const auto reply = session_->call_finish(result);
    place = textPlaceOf(processName(argument<std::uint32_t>(reply, 0)));
  } catch (const Glib::Error&) {
    // A process that nobody can name still shows items.
  }
  ready_(place);
}

void TrayHost::registerItem(const Glib::ustring& busName) {
  session_->call(kWatcherPath, kWatcher, "RegisterStatusNotifierItem",
                 Glib::Variant<std::tuple<Glib::ustring>>::create({busName}), {}, kWatcher,
                 kPatience, Gio::DBus::CallFlags::NO_AUTO_START);
}

}  // namespace lumora
