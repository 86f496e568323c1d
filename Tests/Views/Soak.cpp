// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
// Days of a machine in memory, with a full history, the real windows, and a battery that is never
// still: soak [DAYS]. Prints what the process takes after each day; fails where it has grown by
// more than a megabyte since the first one, or keeps a file open.
#include "Linux/System/Memory.h"
#include "Views/FakeHost.h"
#include "Views/Popover/PopoverWindow.h"
#include "Views/Style/Style.h"

#include <QApplication>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

namespace lumora::test {
namespace {

constexpr int kMinutesADay = 24 * 60;
constexpr int kChangesADay = 100'000 / 30;
constexpr int kOpeningsADay = 10'000 / 30 + 1;
constexpr long kMostGrowth = 1024;  // KiB

struct Taken {
  long kilobytes = 0;
  long files = 0;
};

Taken taken() {
  Taken now;
  std::ifstream rollup("/proc/self/smaps_rollup");
  for (std::string word; rollup >> word;) {
    long number = 0;
    // What it has written to: the rest belongs to files, and to whoever else has them mapped.
    if (word == "Private_Dirty:" && rollup >> number) now.kilobytes = number;
  }
  for (const auto& file : std::filesystem::directory_iterator("/proc/self/fd")) {
    now.files += file.exists() ? 1 : 0;
  }
  return now;
}

/// From the battery to the adapter and back all day.
class Day {
 public:
  explicit Day(FakeHost& host) : host_(host), window_(host) { elsewhere_.show(); }

  void live() {
    for (int minute = 0; minute < kMinutesADay; ++minute) {
      const auto share = [minute](int ofDay) {
        return ofDay * (minute + 1) / kMinutesADay - ofDay * minute / kMinutesADay;
      };
      for (int i = 0; i < share(kChangesADay); ++i) change();
      for (int i = 0; i < share(kOpeningsADay); ++i) openAndClose();
      host_.runLoop.advance(std::chrono::minutes(1));
    }
  }

 private:
  void change() {
    // Times and powers change with every report, percents now and then.
    const int number = changes_++;
    const int phase = number / 30 % 160;
    const bool charging = phase >= 80;
    host_.setBattery(charging ? phase - 60 : 100 - phase,
                     {{"Power Source State", charging ? "AC Power" : "Battery Power"},
                      {"Is Charging", charging},
                      {"Time to Empty", charging ? -1 : 150 + number % 30}});
    host_.powerSources.change();
  }

  void openAndClose() {
    window_.showAt(std::nullopt);
    QCoreApplication::processEvents();
    elsewhere_.activateWindow();
    QCoreApplication::processEvents();
    window_.close();
    QCoreApplication::processEvents();
  }

  FakeHost& host_;
  PopoverWindow window_;
  QWidget elsewhere_;  // Where the user goes on, which closes the popover.
  int changes_ = 0;
};

bool soak(int days) {
  FakeHost host;
  host.setBattery(73);
  host.setHistory(minuteSamples(host.now(), 43'200));
  host.model().start();
  Day day(host);
  std::optional<Taken> first;
  Taken last;
  for (int number = 1; number <= days; ++number) {
    day.live();
    host.centre.added.clear();
    last = taken();
    if (!first) first = last;
    std::cout << "day " << number << ": " << last.kilobytes << " KiB of its own, " << last.files
              << " files open, " << host.model().history().samples().size() << " samples\n";
  }
  return last.kilobytes - first->kilobytes <= kMostGrowth && last.files <= first->files;
}

}  // namespace
}  // namespace lumora::test

int main(int argc, char** argv) {
  lumora::giveLargeBlocksBack();
  // A screen that nobody sees.
  qputenv("LC_ALL", "C.UTF-8");
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  lumora::installStyle();
  return lumora::test::soak(argc > 1 ? std::atoi(argv[1]) : 30) ? 0 : 1;
}
