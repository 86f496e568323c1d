// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "History/HistoryFile.h"
#include "History/HistoryStore.h"
#include "Support/Builders.h"
#include "Support/MemoryFiles.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

using Force = HistoryStore::Force;
using Samples = std::vector<Sample>;

const std::filesystem::path kPath = "/data/Lumora/history.json";
const std::filesystem::path kKept = "/data/Lumora/history.json.unreadable";
constexpr double kStart = 1'700'000'000;

Date at(double seconds) { return dateSince1970(kStart + seconds); }

/// What becomes of the file while the store runs.
class HistoryStoreFile : public testing::Test {
 protected:
  static Samples minutes(int from, int to) {
    Samples samples;
    for (int minute = from; minute <= to; ++minute) {
      samples.push_back({kStart + minute * 60, 50, false, false});
    }
    return samples;
  }

  void lay(const Samples& samples) { files.edit(kPath, *encodeSamples(samples)); }

  Samples saved() const {
    std::string text = files.text(kPath).value_or("");
    return decodeSamples(text).value_or(Samples{});
  }

  Samples known() const {
    const auto samples = store.samples();
    return {samples.begin(), samples.end()};
  }

  MemoryFiles files;
  HistoryStore store{files, "/data", at(0)};
};

TEST_F(HistoryStoreFile, PutInPlaceByAnotherIsMergedBeforeASave) {
  store.record(onBattery(50), at(0), Force::yes);
  lay(minutes(-3000, -1));
  store.save(at(1));
  EXPECT_EQ(saved(), minutes(-3000, 0));
  EXPECT_EQ(known(), minutes(-3000, 0));
}

TEST_F(HistoryStoreFile, MergesInTheOrderOfTimeWithoutDuplicates) {
  for (int minute = 0; minute < 60; ++minute) {
    store.record(onBattery(50), at(minute * 60), Force::yes);
  }
  Samples backup = minutes(-10, 30);
  std::reverse(backup.begin(), backup.end());
  backup.push_back({kStart + 90, 49, true, true});
  lay(backup);
  store.save(at(3600));
  Samples expected = minutes(-10, 59);
  expected.insert(expected.begin() + 12, {kStart + 90, 49, true, true});
  EXPECT_EQ(saved(), expected);
  EXPECT_EQ(known(), expected);
}

TEST_F(HistoryStoreFile, TakesFromABackupNothingThatIsTooOld) {
  store.record(onBattery(50), at(0), Force::yes);
  lay({{kStart - 2'592'001, 40, false, false}, {kStart - 60, 50, false, false}});
  store.save(at(0));
  EXPECT_EQ(saved(), minutes(-1, 0));
}

TEST_F(HistoryStoreFile, IsMadeAnewWhenItWasTakenAway) {
  store.record(onBattery(50), at(0), Force::yes);
  files.remove(kPath);
  store.save(at(1));
  EXPECT_EQ(saved(), minutes(0, 0));
}

TEST_F(HistoryStoreFile, BringsNothingBackAfterAReset) {
  store.record(onBattery(50), at(0), Force::yes);
  lay(minutes(-3000, -1));
  store.setSamples({});
  store.save(at(1));
  EXPECT_EQ(files.text(kPath), "[]");
  lay(minutes(-10, -1));
  store.save(at(2));
  EXPECT_EQ(saved(), minutes(-10, -1));
}

TEST_F(HistoryStoreFile, ThatABrokenOneReplacesIsKeptBesideOnceItStaysSo) {
  store.record(onBattery(50), at(0), Force::yes);
  files.edit(kPath, "half a back");
  store.save(at(1));
  EXPECT_EQ(files.text(kPath), "half a back");
  store.record(onBattery(50), at(60), Force::yes);
  EXPECT_EQ(saved(), minutes(0, 1));
  EXPECT_EQ(files.text(kKept), "half a back");
}

TEST_F(HistoryStoreFile, ThatFailsToBeReadIsLeftAloneAndMergedWhenItCan) {
  lay(minutes(-3000, -1));
  files.failsReading = true;
  HistoryStore later{files, "/data", at(0)};
  EXPECT_TRUE(later.samples().empty());
  later.record(onBattery(50), at(0), Force::yes);
  later.record(onBattery(50), at(60), Force::yes);
  EXPECT_EQ(saved(), minutes(-3000, -1));
  files.failsReading = false;
  for (int minute = 2; minute < 6; ++minute) {
    later.record(onBattery(50), at(minute * 60), Force::yes);
  }
  EXPECT_EQ(saved(), minutes(-3000, 4));
  EXPECT_EQ(later.samples().size(), 3006U);
  EXPECT_EQ(files.text(kKept), std::nullopt);
}

TEST_F(HistoryStoreFile, ThatFailsToBeReadIsTriedOnceMoreAtTheEnd) {
  lay(minutes(-3000, -1));
  files.failsReading = true;
  HistoryStore later{files, "/data", at(0)};
  for (int minute = 0; minute < 40; ++minute) {
    later.record(onBattery(50), at(minute * 60), Force::yes);
  }
  files.failsReading = false;
  later.save(at(40 * 60));
  EXPECT_EQ(saved(), minutes(-3000, 39));
}

TEST_F(HistoryStoreFile, ThatFailsToBeReadIsEmptiedByAResetOnceItCan) {
  lay(minutes(-3000, -1));
  files.failsReading = true;
  HistoryStore later{files, "/data", at(0)};
  later.setSamples({});
  later.save(at(0));
  EXPECT_EQ(saved(), minutes(-3000, -1));
  files.failsReading = false;
  later.save(at(1));
  EXPECT_EQ(files.text(kPath), "[]");
}

TEST_F(HistoryStoreFile, IsSavedAmidASlowSaveAndHoldsThenTheNewest) {
  files.isSlow = true;
  for (int minute = 0; minute < 40; ++minute) {
    store.record(onBattery(50), at(minute * 60), Force::yes);
  }
  EXPECT_EQ(files.writesLeft(), 2U);
  store.save(at(39 * 60));
  while (files.writesLeft() > 0) files.endWrite();
  EXPECT_EQ(saved(), minutes(0, 39));
}

TEST_F(HistoryStoreFile, BringsNothingBackAfterAResetAmidASlowSave) {
  files.isSlow = true;
  store.record(onBattery(50), at(0), Force::yes);
  store.setSamples({});
  store.save(at(1));
  files.endWrite();
  files.endWrite();
  EXPECT_EQ(files.text(kPath), "[]");
  lay(minutes(-10, -1));
  store.save(at(2));
  files.endWrite();
  EXPECT_EQ(saved(), minutes(-10, -1));
}

/// A plug or a charger that flips on and on.
class HistoryStoreFlips : public HistoryStoreFile {
 protected:
  /// Every `seconds`, with the minute's reading among them; how often the file was written.
  int flip(int from, int to, int every) {
    int saves = 0;
    for (int second = from; second < to; ++second) {
      const auto before = files.stamp(kPath);
      const bool minute = second % 60 == 30;
      if (second % every == 0) charges_ = !charges_;
      if (second % every == 0 || minute) {
        store.record(charges_ ? charging(50) : pluggedIn(50), at(second),
                     minute ? Force::yes : Force::no);
      }
      if (files.stamp(kPath) != before) ++saves;
    }
    return saves;
  }

  bool charges_ = false;
};

TEST_F(HistoryStoreFlips, AreSavedThreeTimesAtOnceAndThenOnceAMinute) {
  store.record(pluggedIn(50), at(-3600), Force::yes);
  EXPECT_EQ(flip(0, 10, 3), 3);
  const int anHour = flip(10, 3610, 3);
  EXPECT_GE(anHour, 59);
  EXPECT_LE(anHour, 61);
}

TEST_F(HistoryStoreFlips, AreSavedWithinAMinuteTheLastOneToo) {
  store.record(pluggedIn(50), at(-3600), Force::yes);
  for (int end = 600; end < 660; end += 3) {
    flip(end - 600, end, 3);
    const Sample last = store.samples().back();
    flip(end, end + 61, 1'000'000);
    const auto file = saved();
    EXPECT_NE(std::find(file.begin(), file.end(), last), file.end()) << end;
  }
}

TEST_F(HistoryStoreFlips, AreSavedAtOnceWhenTheyAreAMinuteApart) {
  store.record(pluggedIn(50), at(-3600), Force::yes);
  bool charges = false;
  for (int minute = 0; minute < 60; ++minute) {
    charges = !charges;
    store.record(charges ? charging(50) : pluggedIn(50), at(minute * 60), Force::no);
    ASSERT_EQ(saved().size(), static_cast<std::size_t>(minute) + 2U);
  }
}

}  // namespace
}  // namespace lumora::test
