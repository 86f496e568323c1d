// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Content/StatusItem.h"
#include "Linux/Laptop.h"
#include "Linux/Tray/StatusNotifierItem.h"
#include "Linux/Tray/TrayDouble.h"
#include "Linux/WaitFor.h"
#include "Support/FakeRunLoop.h"
#include "Support/TemporaryFolder.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace lumora::test {

/// An item of ours on the session bus and what its callbacks were told.
class StatusItemFixture : public testing::Test {
 protected:
  using Names = std::vector<std::string>;

  static constexpr const char* kPath = "/org/lumora/Lumora/StatusItem";

  StatusItemFixture() {
    laptop.reset();
    item.emplace(laptop.session(), runLoop,
                 StatusNotifierItem::Identity{"lumora", "Lumora", icons.path().string()},
                 callbacks());
  }

  /// Waits for the tray to hear of the item that often in all.
  static bool registers(const TrayDouble& tray, std::size_t times) {
    return waitFor([&] { return tray.registrations().size() >= times; });
  }

  /// What the tray heard of the item since the last time.
  Names heardBy(TrayDouble& tray) const {
    return tray.client().heard(laptop.session()->get_unique_name());
  }

  template <typename T>
  T property(const TrayDouble& tray, const char* name) const {
    const Properties all = tray.properties(address);
    const auto found = all.find(name);
    return found == all.end() ? T{} : valueOr<T>(found->second);
  }

  std::string text(const TrayDouble& tray, const char* name) const {
    return property<Glib::ustring>(tray, name);
  }

  static StatusItemFace faceOf(const BatteryState& state, const Prefs& prefs, TextPlace place) {
    return statusItemFace(state, false, prefs, place, [](const std::string&) { return true; });
  }

  BatteryState state{.hasBattery = true, .percent = 82, .minutesToEmpty = 185};
  Prefs prefs{.showPercent = true, .showTime = true};
  std::function<StatusItemFace(TextPlace)> face = [this](TextPlace place) {
    return faceOf(state, prefs, place);
  };
  Laptop laptop;
  std::string address = laptop.session()->get_unique_name() + kPath;
  FakeClock clock;
  FakeRunLoop runLoop{clock};
  TemporaryFolder icons;
  Names events;
  Names drawn;
  // The second one's bytes are not those of its size.
  std::vector<Icon> picture{{1, 1, {255, 1, 2, 3}}, {2, 1, {255, 1, 2, 3}}};
  std::optional<StatusNotifierItem> item;

 private:
  StatusNotifierItem::Callbacks callbacks() {
    return {
        .activated =
            [this](std::optional<ScreenPoint> click) {
              events.push_back(click ? "click " + std::to_string(click->x) + "," +
                                           std::to_string(click->y)
                                     : "click");
            },
        .activationToken = [this](const std::string& token) { events.push_back("token " + token); },
        .menu =
            [] {
              return Menu{{"Open", [] {}}};
            },
        .face = [this](TextPlace place) { return face(place); },
        .draw =
            [this](const DrawnIcon& icon) {
              drawn.push_back(icon.text.empty() ? std::to_string(icon.percent) : icon.text);
              return picture;
            }};
  }
};

}  // namespace lumora::test
