// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Preferences/DefaultsStore.h"
#include "Support/MemoryFiles.h"

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

const std::filesystem::path kPath = "/config/lumora/defaults.json";
const std::filesystem::path kKept = "/config/lumora/defaults.json.unreadable";

class DefaultsStoreFile : public testing::Test {
 protected:
  DefaultsStore storeWith(std::string_view text) {
    files.edit(kPath, text);
    return {files, kPath};
  }

  std::string text() const { return files.text(kPath).value_or("no file"); }

  Recorder recorder;
  MemoryFiles files{&recorder};
};

TEST_F(DefaultsStoreFile, IsReadFromAFolderThatIsMadeFirst) {
  const DefaultsStore store(files, kPath);
  EXPECT_EQ(recorder.take(), "folder /config/lumora, read defaults.json");
}

TEST_F(DefaultsStoreFile, IsOneObjectThatEndsWithANewline) {
  DefaultsStore store(files, kPath);
  store.set("limit", std::int64_t{70});
  EXPECT_EQ(text(), "{\n  \"limit\": 70\n}\n");
  store.set("on", true);
  store.set("sound", "Bell");
  EXPECT_EQ(text(), "{\n  \"limit\": 70,\n  \"on\": true,\n  \"sound\": \"Bell\"\n}\n");
}

TEST_F(DefaultsStoreFile, KeepsUnknownKeysLiterally) {
  const std::vector<std::string> values = {"1e-3",
                                           "80.50",

                                           "-0",
                                           "null",
                                           "true",
                                           "false",
                                           "\"a\\u00e4b\"",
                                           "[1, 2.50,[ ],\"x\"]",
                                           "[]",
                                           "{}",
                                           "{\"a\": {\"b\" : [1e2, null]}}",
                                           "\"\\/\"",
                                           "\"\"",
                                           "12345678901234567890"};
  for (const auto& value : values) {
    DefaultsStore store = storeWith("{\"theirs\": " + value + " , \"limit\": 80}");
    store.set("limit", std::int64_t{70});
    EXPECT_EQ(text(), "{\n  \"limit\": 70,\n  \"theirs\": " + value + "\n}\n");
  }
}

TEST_F(DefaultsStoreFile, KeepsUnknownIntegersOfAnyLength) {
  DefaultsStore store = storeWith(R"({"theirs": 18446744073709551616000, "limit": 80})");
  EXPECT_EQ(store.integerForKey("limit"), 80);
  store.set("limit", std::int64_t{70});
  EXPECT_EQ(text(), "{\n  \"limit\": 70,\n  \"theirs\": 18446744073709551616000\n}\n");
}

TEST_F(DefaultsStoreFile, KeepsUnknownKeysThroughManyWrites) {
  DefaultsStore store = storeWith(R"({"theirs": {"a": [80.50, 1e-3]}, "more": null})");
  for (std::int64_t limit = 60; limit < 70; ++limit) store.set("limit", limit);
  DefaultsStore(files, kPath).set("on", true);
  EXPECT_EQ(text(),
            "{\n  \"limit\": 69,\n  \"more\": null,\n  \"on\": true,\n"
            "  \"theirs\": {\"a\": [80.50, 1e-3]}\n}\n");
}

TEST_F(DefaultsStoreFile, KeepsAKeyOfOursThatHoldsAnotherType) {
  DefaultsStore store = storeWith(R"({"limit": "eighty"})");
  store.registerDefaults({{"limit", std::int64_t{80}}});
  store.set("on", true);
  EXPECT_EQ(text(), "{\n  \"limit\": \"eighty\",\n  \"on\": true\n}\n");
  store.set("limit", std::int64_t{75});
  EXPECT_EQ(store.integerForKey("limit"), 75);
}

TEST_F(DefaultsStoreFile, CountsAsEmptyWhenItIsBroken) {
  for (const auto* broken : {"",
                             " ",
                             "{",
                             R"({"limit": 70)",
                             R"({"limit": 70,})",
                             R"({"limit"})",
                             R"({"limit": })",
                             R"({"limit": 70} x)",
                             R"({"limit": 70}{})",
                             R"([70])",
                             "70",
                             "null",
                             "\"limit\"",
                             R"({limit: 70})",
                             R"({"limit": 070})",
                             R"({"limit": NaN})",
                             "{\"limit\": 70, \"a\": \"\xFF\"}",
                             "{\"limit\": 70, \"a\": \"\n\"}",
                             R"({"limit": 70, "a": "\x"})",
                             R"({"limit": 70, "a": [1, }})"}) {
    DefaultsStore store = storeWith(broken);
    store.registerDefaults({{"limit", std::int64_t{80}}});
    EXPECT_EQ(store.integerForKey("limit"), 80) << broken;
  }
}

TEST_F(DefaultsStoreFile, IsKeptBesideWhenItIsBroken) {
  DefaultsStore store = storeWith(R"({"limit": 70,)");
  store.set("limit", std::int64_t{75});
  EXPECT_EQ(text(), "{\n  \"limit\": 75\n}\n");
  EXPECT_EQ(files.text(kKept), R"({"limit": 70,)");
}

TEST_F(DefaultsStoreFile, IsKeptBesideWhenItCanBeNone) {
  files.unfit = true;
  DefaultsStore store = storeWith(R"({"limit": 70})");
  store.set("low", std::int64_t{25});
  EXPECT_EQ(text(), "{\n  \"low\": 25\n}\n");
  EXPECT_EQ(files.text(kKept), R"({"limit": 70})");
}

TEST_F(DefaultsStoreFile, IsNoneOfOursAboveOneMebibyte) {
  const std::string whole = R"({"limit": 70})";
  const auto padded = [&](std::size_t size) {
    return whole + std::string(size - whole.size(), ' ');
  };
  constexpr std::size_t kMebibyte = 1 << 20;
  EXPECT_EQ(storeWith(padded(kMebibyte)).integerForKey("limit"), 70);
  DefaultsStore store = storeWith(padded(kMebibyte + 1));
  EXPECT_EQ(store.integerForKey("limit"), 0);
  store.set("low", std::int64_t{25});
  EXPECT_EQ(text(), "{\n  \"low\": 25\n}\n");
  EXPECT_EQ(files.text(kKept), padded(kMebibyte + 1));
}

TEST_F(DefaultsStoreFile, StaysWhenItIsBrokenAndCannotBeKept) {
  files.failsKeeping = true;
  DefaultsStore store = storeWith("broken");
  store.set("limit", std::int64_t{75});
  EXPECT_EQ(text(), "broken");
  EXPECT_EQ(store.integerForKey("limit"), 75);
}

TEST_F(DefaultsStoreFile, StaysUntilItCouldBeReadAndGetsThenWhatWasSetMeanwhile) {
  files.failsReading = true;
  DefaultsStore store = storeWith(R"({"limit": 70, "low": 10})");
  const auto subscription = store.subscribe([&] { recorder.add("changed"); });
  store.set("low", std::int64_t{25});
  store.synchronize();
  EXPECT_EQ(text(), R"({"limit": 70, "low": 10})");
  files.failsReading = false;
  recorder.take();
  for (int refresh = 0; refresh < 2; ++refresh) store.synchronize();
  EXPECT_EQ(text(), "{\n  \"limit\": 70,\n  \"low\": 25\n}\n");
  EXPECT_EQ(store.integerForKey("limit"), 70);
  EXPECT_EQ(files.text(kKept), std::nullopt);
  EXPECT_EQ(recorder.take(),
            "read defaults.json, replace defaults.json, changed, stamp defaults.json");
}

TEST_F(DefaultsStoreFile, GetsAtTheNextRefreshWhatADiskTookNot) {
  DefaultsStore store = storeWith(R"({"limit": 70})");
  files.failsReplacing = true;
  store.set("limit", std::int64_t{75});
  store.synchronize();
  files.failsReplacing = false;
  store.synchronize();
  EXPECT_EQ(text(), "{\n  \"limit\": 75\n}\n");
  recorder.take();
  store.synchronize();
  EXPECT_EQ(recorder.take(), "stamp defaults.json");
}

TEST_F(DefaultsStoreFile, GetsAtTheEndWhatADiskTookNot) {
  DefaultsStore store = storeWith(R"({"limit": 70})");
  files.failsReplacing = true;
  store.set("limit", std::int64_t{75});
  files.failsReplacing = false;
  files.edit(kPath, R"({"theirs": 1})");
  store.save();
  EXPECT_EQ(text(), "{\n  \"limit\": 75,\n  \"theirs\": 1\n}\n");
  recorder.take();
  store.save();
  EXPECT_EQ(recorder.take(), "");
}

TEST_F(DefaultsStoreFile, GetsFromASlowDiskWhatWasSetMeanwhile) {
  DefaultsStore store = storeWith(R"({"theirs": 1})");
  files.isSlow = true;
  store.set("limit", std::int64_t{75});
  store.set("limit", std::int64_t{76});
  store.set("low", std::int64_t{25});
  store.synchronize();
  store.save();
  EXPECT_EQ(files.writesLeft(), 2U);
  files.endWrite();
  EXPECT_EQ(text(), "{\n  \"limit\": 75,\n  \"theirs\": 1\n}\n");
  store.synchronize();
  EXPECT_EQ(store.integerForKey("limit"), 76);
  files.endWrite();
  EXPECT_EQ(text(), "{\n  \"limit\": 76,\n  \"low\": 25,\n  \"theirs\": 1\n}\n");
  store.synchronize();
  EXPECT_EQ(files.writesLeft(), 0U);
}

TEST_F(DefaultsStoreFile, GetsAtTheNextRefreshWhatASlowDiskTookNot) {
  DefaultsStore store = storeWith("{}");
  files.isSlow = files.failsReplacing = true;
  store.set("limit", std::int64_t{75});
  files.endWrite();
  EXPECT_EQ(text(), "{}");
  files.failsReplacing = false;
  store.synchronize();
  files.endWrite();
  EXPECT_EQ(text(), "{\n  \"limit\": 75\n}\n");
}

TEST_F(DefaultsStoreFile, MayHoldNumbersOfAnySizeAndAByteOrderMark) {
  const std::string digits(400, '7');
  for (const std::string& theirs : {std::string("1e400"), "-" + digits, digits + ".5E-2"}) {
    DefaultsStore store = storeWith("\xEF\xBB\xBF{\"theirs\": " + theirs + ", \"limit\": 70}");
    EXPECT_EQ(store.integerForKey("limit"), 70) << theirs;
    store.registerDefaults({{"theirs", 5.0}});
    EXPECT_EQ(store.doubleForKey("theirs"), 5.0);
    store.set("limit", std::int64_t{75});
    EXPECT_EQ(text(), "{\n  \"limit\": 75,\n  \"theirs\": " + theirs + "\n}\n");
  }
  for (const char* bad : {"1e400x", "1e", "1.e400", "01e400", "-", "+1e400"}) {
    const DefaultsStore store = storeWith(std::string(R"({"limit": 70, "theirs": )") + bad + "}");
    EXPECT_EQ(store.integerForKey("limit"), 0) << bad;
  }
}

TEST_F(DefaultsStoreFile, MayHoldHalvesOfSurrogatePairs) {
  for (const std::string half :
       {R"(\ud800)", R"(\uDC00)", R"(\ud83d\ud83d)", R"(a\udcffb\n\"\\)"}) {
    const std::string quoted = '"' + half + '"';
    const std::string theirs = quoted + R"(: ["x", "\ud800"])";
    const std::string also = R"("theirs": )" + quoted;
    std::string whole = "{";
    DefaultsStore store =
        storeWith(whole.append(theirs).append(R"(, "limit": 70, )").append(also).append("}"));
    EXPECT_EQ(store.integerForKey("limit"), 70) << half;
    store.set("limit", std::int64_t{75});
    EXPECT_NE(text().find(theirs), std::string::npos) << text();
    EXPECT_NE(text().find(also), std::string::npos) << text();
    EXPECT_EQ(DefaultsStore(files, kPath).integerForKey("limit"), 75);
  }
  for (const std::string bad :
       {R"(\ud80)", R"(\ud80g)", R"(\ud800\x)", R"(\ud800\u)", R"(\U0041)"}) {
    const std::string text = '"' + bad + '"';
    EXPECT_EQ(storeWith(R"({"limit": 70, "a": )" + text + "}").integerForKey("limit"), 0) << bad;
    EXPECT_EQ(storeWith(R"({"limit": 70, )" + text + ": 1}").integerForKey("limit"), 0) << bad;
    const std::string inner = R"({"limit": 70, "a": {)" + text + ": 1}}";
    EXPECT_EQ(storeWith(inner).integerForKey("limit"), 0) << bad;
  }
}

TEST_F(DefaultsStoreFile, StaysWholeWhenAWriteFails) {
  DefaultsStore store = storeWith(R"({"limit": 70})");
  files.failsReplacing = true;
  store.set("limit", std::int64_t{75});
  EXPECT_EQ(text(), R"({"limit": 70})");
}

TEST_F(DefaultsStoreFile, GetsWithTheNextWriteWhatAFailedOneHeld) {
  DefaultsStore store = storeWith(R"({"limit": 70})");
  files.failsReplacing = true;
  store.set("limit", std::int64_t{75});
  EXPECT_EQ(store.integerForKey("limit"), 75);
  files.failsReplacing = false;
  store.set("on", true);
  EXPECT_EQ(text(), "{\n  \"limit\": 75,\n  \"on\": true\n}\n");
}

TEST_F(DefaultsStoreFile, IsReadAgainAfterTheEditOfAnotherProgram) {
  DefaultsStore store = storeWith(R"({"limit": 70, "on": true})");
  files.edit(kPath, R"({"limit": 75})");
  EXPECT_EQ(store.integerForKey("limit"), 70);
  store.synchronize();
  EXPECT_EQ(store.integerForKey("limit"), 75);
  EXPECT_FALSE(store.boolForKey("on"));
}

TEST_F(DefaultsStoreFile, IsReadOnlyWhenItChanged) {
  DefaultsStore store = storeWith(R"({"limit": 70})");
  recorder.take();
  store.synchronize();
  EXPECT_EQ(recorder.take(), "stamp defaults.json");
}

TEST_F(DefaultsStoreFile, KeepsTheEditOfAnotherProgramThroughOurWrite) {
  DefaultsStore store = storeWith(R"({"limit": 70})");
  files.edit(kPath, R"({"limit": 75, "theirs": 80.50})");
  store.set("on", true);
  EXPECT_EQ(text(), "{\n  \"limit\": 75,\n  \"on\": true,\n  \"theirs\": 80.50\n}\n");
  EXPECT_EQ(store.integerForKey("limit"), 75);
}

TEST_F(DefaultsStoreFile, IsMadeAnewAfterAnotherProgramRemovedIt) {
  DefaultsStore store = storeWith(R"({"limit": 70})");
  files.remove(kPath);
  store.synchronize();
  EXPECT_EQ(store.integerForKey("limit"), 0);
  store.set("on", true);
  EXPECT_EQ(text(), "{\n  \"on\": true\n}\n");
  EXPECT_EQ(files.text(kKept), std::nullopt);
}

TEST_F(DefaultsStoreFile, SurvivesEachCutAndEachBadByte) {
  const std::string good = R"({"limit": 70, "a\u0062": {"b": [1e2, null]}, "s": "x\n"})";
  for (std::size_t length = 0; length < good.size(); ++length) {
    const DefaultsStore store = storeWith(good.substr(0, length));
    EXPECT_EQ(store.integerForKey("limit"), 0) << length;
  }
  for (std::size_t position = 0; position < good.size(); ++position) {
    for (const char bad : {'\0', '"', '\\', '{', ']', ',', '\xFF', '\n'}) {
      std::string text = good;
      text[position] = bad;
      DefaultsStore store = storeWith(text);
      store.set("on", true);
      EXPECT_TRUE(DefaultsStore(files, kPath).boolForKey("on")) << text;
    }
  }
}

TEST_F(DefaultsStoreFile, MayBeNestedDeeplyAndSurvives) {
  const std::string deep =
      "{\"limit\": 70, \"deep\": " + std::string(100, '[') + std::string(100, ']') + "}";
  EXPECT_EQ(storeWith(deep).integerForKey("limit"), 70);
  const std::string abyss = "{\"limit\": 70, \"deep\": " + std::string(200'000, '[');
  EXPECT_EQ(storeWith(abyss).integerForKey("limit"), 0);
}

TEST_F(DefaultsStoreFile, HoldsWhatItKnewWhileAnotherProgramsEditIsBroken) {
  DefaultsStore store = storeWith(R"({"limit": 70, "theirs": 1})");
  files.edit(kPath, R"({"limit": 75,})");
  store.synchronize();
  EXPECT_EQ(store.integerForKey("limit"), 70);
  store.set("on", true);
  EXPECT_EQ(text(), "{\n  \"limit\": 70,\n  \"on\": true,\n  \"theirs\": 1\n}\n");
  EXPECT_EQ(files.text(kKept), R"({"limit": 75,})");
}

TEST_F(DefaultsStoreFile, ForgetsWhatIsSetWhenTheFileIsDeleted) {
  DefaultsStore store = storeWith(R"({"limit": 70})");
  files.remove(kPath);
  store.synchronize();
  EXPECT_EQ(store.integerForKey("limit"), 0);
}

TEST_F(DefaultsStoreFile, HoldsWhatCouldNotBeWrittenThroughAnotherProgramsEdit) {
  DefaultsStore store = storeWith(R"({"limit": 70})");
  files.failsReplacing = true;
  store.set("snoozeUntil", 5.5);
  files.edit(kPath, R"({"limit": 75})");
  store.synchronize();
  EXPECT_EQ(store.integerForKey("limit"), 75);
  EXPECT_EQ(store.doubleForKey("snoozeUntil"), 5.5);
  files.failsReplacing = false;
  store.set("on", true);
  EXPECT_EQ(text(), "{\n  \"limit\": 75,\n  \"on\": true,\n  \"snoozeUntil\": 5.5\n}\n");
}

}  // namespace
}  // namespace lumora::test
