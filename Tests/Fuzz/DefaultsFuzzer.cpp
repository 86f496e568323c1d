// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Consequences.h"
#include "Content/SettingsContent.h"
#include "Fuzzer.h"
#include "Preferences/DefaultsStore.h"
#include "Preferences/Prefs.h"
#include "Support/Builders.h"
#include "Support/MemoryFiles.h"

#include <string>

namespace lumora::test {
namespace {

constexpr const char* kFile = "/settings/Lumora/defaults.json";

/// What every setting leads to.
void expectUsable(DefaultsStore& store) {
  const Prefs prefs = Prefs::current(store);
  expect(prefs.sounds.size() == kAllAlertKinds.size(), "every kind has a sound");
  prefs.inQuietHours(kNow);
  const StepRange range{50, 100};
  for (const auto step :
       {range.nearest(prefs.limit), range.stepUp(prefs.limit), range.stepDown(prefs.limit)}) {
    expect(step == prefs.limit || (range.least <= step && step <= range.most),
           "a step leads into the range");
  }
  for (const auto minutes : {prefs.quietStart, prefs.quietEnd}) {
    const auto shown = shownMinutes(minutes, kNow);
    expect(0 <= shown && shown < 1440, "a time of day is shown");
  }
}

/// A file that we write means the same when it is read, except what was set; and what was not ours
/// is still there.
void expectRoundTrip(DefaultsStore& store, MemoryFiles& files, std::string_view input) {
  Prefs expected = Prefs::current(store);
  expected.low = 37;
  store.set("low", std::int64_t{37});
  const auto kept = files.text(std::string(kFile) + ".unreadable");
  expect(!kept || kept == input, "what could not be read is kept");

  DefaultsStore again(files, kFile);
  expect(Prefs::current(again) == expected, "what was written is read back");
  for (const char* key : {"snoozeUntil", "theirs", ""}) {
    expect(again.doubleForKey(key) == store.doubleForKey(key) &&
               again.integerForKey(key) == store.integerForKey(key) &&
               again.boolForKey(key) == store.boolForKey(key) &&
               again.stringForKey(key) == store.stringForKey(key),
           "a key of others survives");
  }
  const auto written = files.text(kFile);
  again.set("low", std::int64_t{37});
  expect(files.text(kFile) == written, "writing the same again changes nothing");
}

}  // namespace

void fuzz(std::string_view input) {
  MemoryFiles files;
  files.edit(kFile, input);
  DefaultsStore store(files, kFile);
  expectUsable(store);
  expectRoundTrip(store, files, input);

  files.edit(kFile, input);
  Consequences consequences(store);
  const Date since = kNow - Seconds(12.0 * 3600);
  consequences.follow(withCapacity(charging(85), 700, 1000), kNow, since);
  consequences.follow(onBattery(10), kNow + Seconds(60), std::nullopt);
}

}  // namespace lumora::test
