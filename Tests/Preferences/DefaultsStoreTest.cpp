// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Preferences/DefaultsStore.h"
#include "Support/MemoryFiles.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

const std::filesystem::path kPath = "/config/lumora/defaults.json";

class DefaultsStoreTest : public testing::Test {
 protected:
  DefaultsStore storeWith(std::string_view text) {
    files.edit(kPath, text);
    return {files, kPath};
  }

  /// What a program that starts later reads.
  DefaultsStore reopened() { return {files, kPath}; }

  MemoryFiles files;
};

TEST_F(DefaultsStoreTest, AnswersNothingWithoutAFile) {
  const DefaultsStore store(files, kPath);
  EXPECT_FALSE(store.boolForKey("key"));
  EXPECT_EQ(store.integerForKey("key"), 0);
  EXPECT_EQ(store.doubleForKey("key"), 0.0);
  EXPECT_EQ(store.stringForKey("key"), std::nullopt);
}

TEST_F(DefaultsStoreTest, AnswersRegisteredValuesForKeysNeverSet) {
  DefaultsStore store(files, kPath);
  store.registerDefaults({{"on", true}, {"limit", std::int64_t{80}}, {"sound", "default"}});
  EXPECT_TRUE(store.boolForKey("on"));
  EXPECT_EQ(store.integerForKey("limit"), 80);
  EXPECT_EQ(store.stringForKey("sound"), "default");
}

TEST_F(DefaultsStoreTest, WritesNoRegisteredValue) {
  DefaultsStore store(files, kPath);
  store.registerDefaults({{"limit", std::int64_t{80}}});
  EXPECT_EQ(files.text(kPath), std::nullopt);
  store.set("other", true);
  EXPECT_EQ(files.text(kPath)->find("limit"), std::string::npos);
}

TEST_F(DefaultsStoreTest, AddsToWhatIsRegistered) {
  DefaultsStore store(files, kPath);
  store.registerDefaults({{"limit", std::int64_t{80}}, {"low", std::int64_t{20}}});
  store.registerDefaults({{"low", std::int64_t{25}}});
  EXPECT_EQ(store.integerForKey("limit"), 80);
  EXPECT_EQ(store.integerForKey("low"), 25);
}

TEST_F(DefaultsStoreTest, AnswersASetValueBeforeARegisteredOne) {
  DefaultsStore store(files, kPath);
  store.set("on", false);
  store.registerDefaults({{"on", true}});
  EXPECT_FALSE(store.boolForKey("on"));
}

TEST_F(DefaultsStoreTest, KeepsBools) {
  for (const bool value : {true, false}) {
    DefaultsStore(files, kPath).set("key", value);
    DefaultsStore store = reopened();
    store.registerDefaults({{"key", !value}});
    EXPECT_EQ(store.boolForKey("key"), value);
  }
}

TEST_F(DefaultsStoreTest, KeepsIntegers) {
  using Limits = std::numeric_limits<std::int64_t>;
  for (const std::int64_t value :
       {std::int64_t{0}, std::int64_t{80}, std::int64_t{-1}, Limits::max(), Limits::min()}) {
    DefaultsStore(files, kPath).set("key", value);
    EXPECT_EQ(reopened().integerForKey("key"), value);
  }
}

TEST_F(DefaultsStoreTest, KeepsDoublesToTheLastBit) {
  using Limits = std::numeric_limits<double>;
  for (const double value : {0.0, -1.5, 1e15, 1e-7, 1.7e9 + 1.0 / 3, 1e300, Limits::max(),
                             Limits::min(), Limits::denorm_min(), 1e19, 9007199254740993.0}) {
    DefaultsStore(files, kPath).set("key", value);
    EXPECT_EQ(reopened().doubleForKey("key"), value);
  }
}

TEST_F(DefaultsStoreTest, KeepsTexts) {
  const std::vector<std::string> texts = {"",
                                          "default",
                                          R"(a "quoted" \ back\\slash)",
                                          "\n\t\r\b\f\x01\x1F\x7F",
                                          std::string("nul\0inside", 10),
                                          "Glöckchen… 🔔",
                                          "</script>"};
  for (const auto& text : texts) {
    DefaultsStore(files, kPath).set("key", text);
    EXPECT_EQ(reopened().stringForKey("key"), text);
  }
}

TEST_F(DefaultsStoreTest, KeepsKeysThatNeedEscaping) {
  DefaultsStore(files, kPath).set("a \"b\"\\\n", true);
  EXPECT_TRUE(reopened().boolForKey("a \"b\"\\\n"));
}

TEST_F(DefaultsStoreTest, AnswersFromMemoryAtOnce) {
  DefaultsStore store(files, kPath);
  store.set("limit", std::int64_t{70});
  EXPECT_EQ(store.integerForKey("limit"), 70);
  store.set("limit", std::int64_t{75});
  EXPECT_EQ(store.integerForKey("limit"), 75);
}

TEST_F(DefaultsStoreTest, TakesANumberWithoutAFractionForAnInteger) {
  const std::vector<std::pair<std::string, std::int64_t>> table = {
      {"80", 80},   {"80.0", 80}, {"8e1", 80},   {"80.5", -7},
      {"-3.0", -3}, {"1e2", 100}, {"1e300", -7}, {"18446744073709551615", -7},
      {"-0.0", 0}};
  for (const auto& [number, integer] : table) {
    DefaultsStore store = storeWith("{\"key\": " + number + "}");
    store.registerDefaults({{"key", std::int64_t{-7}}});
    EXPECT_EQ(store.integerForKey("key"), integer) << number;
  }
}

TEST_F(DefaultsStoreTest, TakesAnyNumberForADouble) {
  EXPECT_EQ(storeWith(R"({"key": 80})").doubleForKey("key"), 80.0);
  EXPECT_EQ(storeWith(R"({"key": 80.5})").doubleForKey("key"), 80.5);
  EXPECT_EQ(storeWith(R"({"key": 18446744073709551615})").doubleForKey("key"), 0x1p64);
}

TEST_F(DefaultsStoreTest, TakesAValueOfAnotherTypeForOneNeverSet) {
  for (const auto* value : {"\"1\"", "null", "[true]", "{\"a\": 1}"}) {
    DefaultsStore store = storeWith("{\"key\": " + std::string(value) + "}");
    store.registerDefaults({{"key", std::int64_t{80}}});
    EXPECT_EQ(store.integerForKey("key"), 80) << value;
    EXPECT_EQ(store.doubleForKey("key"), 80.0) << value;
  }
  for (const auto* value : {"1", "0", "1.5", "\"true\"", "null", "[true]", "{}"}) {
    DefaultsStore store = storeWith("{\"key\": " + std::string(value) + "}");
    store.registerDefaults({{"key", true}});
    EXPECT_TRUE(store.boolForKey("key")) << value;
  }
  for (const auto* value : {"1", "1.5", "true", "null", "[\"a\"]", "{\"a\": \"b\"}"}) {
    DefaultsStore store = storeWith("{\"key\": " + std::string(value) + "}");
    store.registerDefaults({{"key", "default"}});
    EXPECT_EQ(store.stringForKey("key"), "default") << value;
  }
}

TEST_F(DefaultsStoreTest, TakesABoolForNoNumber) {
  const DefaultsStore store = storeWith(R"({"key": true})");
  EXPECT_EQ(store.integerForKey("key"), 0);
  EXPECT_EQ(store.doubleForKey("key"), 0.0);
}

TEST_F(DefaultsStoreTest, TakesTheLastOfDuplicateKeys) {
  const DefaultsStore store =
      storeWith(R"({"limit": 70, "on": false, "limit": 75, "on": true, "lim\u0069t": 90})");
  EXPECT_EQ(store.integerForKey("limit"), 90);
  EXPECT_TRUE(store.boolForKey("on"));
}

TEST_F(DefaultsStoreTest, RunsDidChangeOncePerChangeWithTheNewValue) {
  Recorder recorder;
  DefaultsStore store(files, kPath);
  const auto subscription =
      store.subscribe([&] { recorder.add(std::to_string(store.integerForKey("limit"))); });
  store.set("limit", std::int64_t{70});
  EXPECT_EQ(recorder.take(), "70");
  store.set("limit", std::int64_t{75});
  EXPECT_EQ(recorder.take(), "75");
}

TEST_F(DefaultsStoreTest, RunsDidChangeOnceForTheEditOfAnotherProgram) {
  Recorder recorder;
  DefaultsStore store(files, kPath);
  const auto subscription =
      store.subscribe([&] { recorder.add(std::to_string(store.integerForKey("limit"))); });
  files.edit(kPath, R"({"limit": 70})");
  store.synchronize();
  store.synchronize();
  EXPECT_EQ(recorder.take(), "70");
}

TEST_F(DefaultsStoreTest, RunsDidChangeForNoOneWhoLeft) {
  Recorder recorder;
  DefaultsStore store(files, kPath);
  auto subscription = store.subscribe([&] { recorder.add("changed"); });
  store.set("limit", std::int64_t{70});
  subscription.reset();
  store.set("limit", std::int64_t{75});
  EXPECT_EQ(recorder.take(), "changed");
}

TEST_F(DefaultsStoreTest, FindsNothingToSynchronizeAfterItsOwnWrite) {
  Recorder recorder;
  DefaultsStore store(files, kPath);
  store.set("limit", std::int64_t{70});
  const auto subscription = store.subscribe([&] { recorder.add("changed"); });
  store.synchronize();
  EXPECT_EQ(recorder.take(), "");
}

}  // namespace
}  // namespace lumora::test
