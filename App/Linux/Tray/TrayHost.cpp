// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Tray/TrayHost.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <string>
#include <utility>

namespace lumora {
namespace {

constexpr const char* kWatcher = "org.kde.StatusNotifierWatcher";
constexpr const char* kWatcherPath = "/StatusNotifierWatcher";
constexpr std::chrono::seconds kTimeout{10};

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
    KnownProcess{"notification-ar", TextPlace::wide},  // MATE's notification-area-applet
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
                    SignalSubscription::Source{kMessageBus.service, kMessageBus.path,
                                               kMessageBus.name, "NameOwnerChanged", kWatcher},
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
                         void (TrayHost::*answered)(const BusReply&)) {
  callMethod(session_,
             {.remote = kMessageBus,
              .method = method,
              .arguments = busArguments(name),
              .timeout = kTimeout},
             sigc::mem_fun(*this, answered));
}

void TrayHost::onOwnerKnown(const BusReply& reply) {
  // An error means that there is no tray yet.
  onOwner(reply.value<Glib::ustring>().value_or(""));
}

void TrayHost::onOwner(const Glib::ustring& owner) {
  if (owner.empty()) return;
  askTheBus("GetConnectionUnixProcessID", owner, &TrayHost::onProcessKnown);
}

void TrayHost::onProcessKnown(const BusReply& reply) {
  const auto process = reply.value<std::uint32_t>();
  // A process that nobody can name still shows items.
  ready_(process ? textPlaceOf(processName(*process)) : TextPlace::inside);
}

void TrayHost::registerItem(const Glib::ustring& path) {
  callMethod(session_, {.remote = {kWatcher, kWatcherPath, kWatcher},
                        .method = "RegisterStatusNotifierItem",
                        .arguments = busArguments(path),
                        .timeout = kTimeout,
                        .start = ServiceWatch::Start::ifRunning});
}

}  // namespace lumora
