// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "History/HistoryFile.h"
#include "History/HistoryStore.h"
#include "Support/Builders.h"
#include "Support/MemoryFiles.h"

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

using Force = HistoryStore::Force;
using Samples = std::vector<Sample>;

const std::filesystem::path kPath = "/data/Lumora/history.json";
constexpr double kStart = 1'700'000'000;

Date at(double seconds) { return dateSince1970(kStart + seconds); }

Samples copy(std::span<const Sample> samples) { return {samples.begin(), samples.end()}; }

class HistoryStoreTest : public testing::Test {
 protected:
  HistoryStore storeWith(const Samples& samples, Date now = at(0)) {
    files.edit(kPath, *encodeSamples(samples));
    return {files, "/data", now};
  }

  /// How often the file was written since the last call.
  std::size_t saves() {
    const std::string words = recorder.take();
    std::size_t count = 0;
    for (auto found = words.find("replace"); found != std::string::npos;
         found = words.find("replace", found + 1)) {
      ++count;
    }
    return count;
  }

  Samples saved() const {
    std::string text = files.text(kPath).value_or("");
    return decodeSamples(text).value_or(Samples{});
  }

  Recorder recorder;
  MemoryFiles files{&recorder};
};

TEST_F(HistoryStoreTest, MakesItsFolderReadsItsFileAndWritesNothing) {
  const HistoryStore store(files, "/data", at(0));
  EXPECT_TRUE(store.samples().empty());
  EXPECT_EQ(recorder.take(), "folder /data/Lumora, read history.json");
}

TEST_F(HistoryStoreTest, LoadsItsFile) {
  const Samples samples = {{kStart - 100, 50, true, false}, {kStart - 50, 51, false, true}};
  EXPECT_EQ(copy(storeWith(samples).samples()), samples);
}

TEST_F(HistoryStoreTest, SortsItsFileByTimeAndKeepsTheOrderOfEqualTimes) {
  Samples samples;
  Samples expected;
  for (int i = 0; i < 300; ++i) {
    for (const int age : {3, 1, 2}) samples.push_back({kStart - age, i, false, false});
  }
  for (const int age : {3, 2, 1}) {
    for (int i = 0; i < 300; ++i) expected.push_back({kStart - age, i, false, false});
  }
  EXPECT_EQ(copy(storeWith(samples).samples()), expected);
}

TEST_F(HistoryStoreTest, LoadsNothingWhenTheLastElementLacksAKey) {
  files.edit(kPath,
             R"([{"t":1700000000,"p":50,"c":true,"a":true},{"t":1700000001,"p":50,"c":true}])");
  EXPECT_TRUE(HistoryStore(files, "/data", at(0)).samples().empty());
}

TEST_F(HistoryStoreTest, LeavesABrokenFileInPlaceUntilItSaves) {
  files.edit(kPath, "broken");
  HistoryStore store(files, "/data", at(0));
  EXPECT_EQ(files.text(kPath), "broken");
  store.save(at(0));
  EXPECT_EQ(files.text(kPath), "[]");
  EXPECT_EQ(files.text("/data/Lumora/history.json.unreadable"), "broken");
}

TEST_F(HistoryStoreTest, ReplacesNothingWhenABrokenFileCannotBeKept) {
  files.edit(kPath, "broken");
  files.failsKeeping = true;
  HistoryStore store(files, "/data", at(0));
  store.record(onBattery(50), at(0), Force::yes);
  EXPECT_EQ(files.text(kPath), "broken");
  EXPECT_EQ(store.samples().size(), 1U);
}

TEST_F(HistoryStoreTest, RecordsNoStateWithoutABattery) {
  HistoryStore store(files, "/data", at(0));
  BatteryState state = charging(50);
  state.hasBattery = false;
  store.record(state, at(0), Force::yes);
  store.record(state, at(1000), Force::no);
  EXPECT_TRUE(store.samples().empty());
  EXPECT_EQ(saves(), 0U);
}

TEST_F(HistoryStoreTest, RecordsTimePercentAndFlags) {
  HistoryStore store(files, "/data", at(0));
  store.record(charging(50), at(0.25), Force::no);
  store.record(pluggedIn(51), at(1), Force::no);
  store.record(onBattery(52), at(2), Force::no);
  EXPECT_EQ(copy(store.samples()), (Samples{{kStart + 0.25, 50, true, true},
                                            {kStart + 1, 51, false, true},
                                            {kStart + 2, 52, false, false}}));
}

TEST_F(HistoryStoreTest, RecordsAnUnforcedReadingOnlyWhenItMoved) {
  HistoryStore store(files, "/data", at(0));
  store.record(onBattery(50), at(0), Force::no);
  EXPECT_EQ(saves(), 1U);
  store.record(onBattery(50), at(1000), Force::no);
  EXPECT_EQ(store.samples().size(), 1U);
  EXPECT_EQ(saves(), 0U);
  store.record(onBattery(51), at(1001), Force::no);
  EXPECT_EQ(store.samples().size(), 2U);
}

TEST_F(HistoryStoreTest, RecordsAForcedReadingAlsoWhenNothingMoved) {
  HistoryStore store(files, "/data", at(0));
  store.record(onBattery(50), at(0), Force::yes);
  store.record(onBattery(50), at(60), Force::yes);
  EXPECT_EQ(copy(store.samples()),
            (Samples{{kStart, 50, false, false}, {kStart + 60, 50, false, false}}));
}

TEST_F(HistoryStoreTest, SavesTheFirstRecordAtOnce) {
  HistoryStore store(files, "/data", at(0));
  store.record(onBattery(50), at(0), Force::no);
  EXPECT_EQ(saves(), 1U);
  EXPECT_EQ(saved().size(), 1U);
}

TEST_F(HistoryStoreTest, SavesAForcedReadingOnlyPastFiveMinutes) {
  HistoryStore store(files, "/data", at(0));
  store.record(onBattery(50), at(0), Force::yes);
  saves();
  store.record(onBattery(50), at(299), Force::yes);
  store.record(onBattery(50), at(300), Force::yes);
  EXPECT_EQ(saves(), 0U);
  store.record(onBattery(50), at(300.5), Force::yes);
  EXPECT_EQ(saves(), 1U);
  EXPECT_EQ(saved().size(), 4U);
  store.record(onBattery(50), at(600.5), Force::yes);
  EXPECT_EQ(saves(), 0U);
}

TEST_F(HistoryStoreTest, SavesAChangedPercentOnlyPastFiveMinutes) {
  HistoryStore store(files, "/data", at(0));
  store.record(onBattery(50), at(0), Force::no);
  saves();
  store.record(onBattery(49), at(300), Force::no);
  EXPECT_EQ(saves(), 0U);
  store.record(onBattery(48), at(301), Force::no);
  EXPECT_EQ(saves(), 1U);
}

TEST_F(HistoryStoreTest, SavesAtOnceWhenPluggedInOrOut) {
  HistoryStore store(files, "/data", at(0));
  store.record(onBattery(50), at(0), Force::no);
  saves();
  store.record(pluggedIn(50), at(1), Force::no);
  EXPECT_EQ(saves(), 1U);
  store.record(onBattery(50), at(2), Force::no);
  EXPECT_EQ(saves(), 1U);
}

TEST_F(HistoryStoreTest, SavesAtOnceWhenChargingBeginsOrEnds) {
  HistoryStore store(files, "/data", at(0));
  store.record(pluggedIn(50), at(0), Force::no);
  saves();
  store.record(charging(50), at(1), Force::no);
  EXPECT_EQ(saves(), 1U);
  store.record(pluggedIn(50), at(2), Force::yes);
  EXPECT_EQ(saves(), 1U);
  EXPECT_EQ(saved().size(), 3U);
}

TEST_F(HistoryStoreTest, CountsFiveMinutesAlsoFromAnExplicitSave) {
  HistoryStore store(files, "/data", at(0));
  store.record(onBattery(50), at(0), Force::yes);
  store.save(at(290));
  saves();
  store.record(onBattery(50), at(400), Force::yes);
  EXPECT_EQ(saves(), 0U);
}

TEST_F(HistoryStoreTest, CountsAFailedSaveAsDone) {
  HistoryStore store(files, "/data", at(0));
  files.failsReplacing = true;
  store.record(onBattery(50), at(0), Force::yes);
  EXPECT_EQ(saves(), 1U);
  files.failsReplacing = false;
  store.record(onBattery(50), at(300), Force::yes);
  EXPECT_EQ(saves(), 0U);
  store.record(onBattery(50), at(301), Force::yes);
  EXPECT_EQ(saved().size(), 3U);
}

TEST_F(HistoryStoreTest, LeavesFileAndMemoryWholeWhenASaveFails) {
  const Samples samples = {{kStart - 100, 50, false, false}};
  HistoryStore store = storeWith(samples);
  files.failsReplacing = true;
  store.record(pluggedIn(50), at(0), Force::no);
  EXPECT_EQ(saved(), samples);
  EXPECT_EQ(store.samples().size(), 2U);
}

TEST_F(HistoryStoreTest, GivesItsSamplesToTheNextProcess) {
  HistoryStore store(files, "/data", at(0));
  for (int minute = 0; minute < 60; ++minute) {
    store.record(onBattery(90 - minute), at(minute * 60), Force::yes);
  }
  store.save(at(3600));
  EXPECT_EQ(copy(HistoryStore(files, "/data", at(3600)).samples()), copy(store.samples()));
}

TEST_F(HistoryStoreTest, TakesTheSamplesItIsGiven) {
  HistoryStore store = storeWith({{kStart - 100, 50, false, false}});
  store.setSamples({});
  EXPECT_TRUE(store.samples().empty());
  store.save(at(0));
  EXPECT_EQ(files.text(kPath), "[]");
  store.record(onBattery(50), at(1), Force::no);
  EXPECT_EQ(store.samples().size(), 1U);
}

}  // namespace
}  // namespace lumora::test
