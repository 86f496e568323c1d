// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Battery/BatteryReader.h"
#include "Consequences.h"
#include "FakeBus.h"
#include "Fuzzer.h"
#include "Linux/Power/PowerProfiles.h"
#include "Linux/Power/UPower.h"
#include "Linux/Session/DesktopAppearance.h"
#include "Linux/Session/Logind.h"
#include "Script.h"
#include "Support/MemoryFiles.h"

#include <optional>
#include <string>

namespace lumora::test {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t kMostLines = 64;

/// All that listens to services of the machine.
class Listeners {
 public:
  Listeners() {
    upower_.whenReady(1h, [this] { ++ready_; });
    upower_.observe([this] { read(); });
    profiles_.observe([this] { read(); });
    logind_.observe([this] { ++sleeps_; }, [this] { ++wakes_; });
  }

  void end() {
    read();
    expect(ready_ <= 1, "UPower is ready once");
    const auto& appearance = *appearance_.appearance();
    expect(!appearance.accent || *appearance.accent <= 0xFFFFFF, "an accent is a colour");
  }

 private:
  void read() {
    // A reading has so many consequences that a few will do.
    constexpr int kMost = 16;
    if (++readings_ <= kMost) consequences_.follow(reader_.read(), kNow, kNow - Seconds(60));
  }

  MemoryFiles files_;
  DefaultsStore defaults_{files_, "/settings/Lumora/defaults.json"};
  Consequences consequences_{defaults_};
  UPower upower_{"/none"};
  PowerProfiles profiles_;
  Logind logind_;
  DesktopAppearance appearance_{FakeBus::connection(), "GNOME", ""};
  BatteryReader reader_{upower_, profiles_};
  int readings_ = 0;
  int ready_ = 0;
  int sleeps_ = 0;
  int wakes_ = 0;
};

void follow(FakeBus& bus, std::optional<Listeners>& listeners, std::string_view line) {
  Words words(line);
  const auto command = words.next();
  const auto name = words.text();
  if (command == "answer") return bus.answer(name, argumentsFrom(words));
  if (command == "refuse") return bus.answer(name, std::nullopt);
  if (command == "signal") {
    const auto path = words.text();
    return bus.signal(name, argumentsFrom(words), path);
  }
  if (command == "appear") return bus.appear(name.raw());
  if (command == "vanish") return bus.vanish(name.raw());
  if (command == "settle") return bus.settle();
  if (command == "start" && !listeners) listeners.emplace();
  // With whatever is still on its way.
  if (command == "leave") listeners.reset();
}

}  // namespace

/// A script of services that come, answer, signal and go. The program listens from "start" on.
void fuzz(std::string_view input) {
  FakeBus& bus = FakeBus::get();
  {
    std::optional<Listeners> listeners;
    Pieces lines(input, '\n');
    for (std::size_t line = 0; line < kMostLines && !lines.empty(); ++line) {
      follow(bus, listeners, lines.next());
    }
    bus.settle();
    if (listeners) listeners->end();
  }
  bus.reset();
}

}  // namespace lumora::test
