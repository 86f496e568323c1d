// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "History/HistoryFile.h"

#include <chrono>
#include <ctime>

#include <gtest/gtest.h>
#include <simdjson.h>

namespace lumora::test {
namespace {

using Samples = std::vector<Sample>;

const std::string kGood =
    R"([{"t":1700000000.25,"p":80,"c":true,"a":false}, {"t":17e8,"p":-1,"c":false,"\u0061":true,)"
    R"("x":[null,{"y":"z\n"}]}])";

std::optional<Samples> decoded(std::string text) { return decodeSamples(text); }

/// An array with one good sample and then `element`.
std::string withElement(const std::string& element) {
  return R"([{"t":1,"p":2,"c":true,"a":false},)" + element + "]";
}

/// Whether another reader finds the same samples in the text.
bool holds(const std::string& text, const Samples& samples) {
  simdjson::dom::parser parser;
  simdjson::dom::array elements;
  if (parser.parse(text).get(elements) != simdjson::SUCCESS) return false;
  if (elements.size() != samples.size()) return false;
  auto sample = samples.begin();
  for (const auto element : elements) {
    double time = 0;
    double percent = 0;
    if (element["t"].get(time) != simdjson::SUCCESS || time != sample->t) return false;
    if (element["p"].get(percent) != simdjson::SUCCESS) return false;
    if (percent != static_cast<double>(sample->p)) return false;
    ++sample;
  }
  return true;
}

#ifdef __SANITIZE_ADDRESS__
constexpr std::chrono::seconds kLongest{60};
#else
constexpr std::chrono::seconds kLongest{10};
#endif

/// The time that this process has computed: what else the machine does is not in it.
std::chrono::duration<double> computed() {
  return std::chrono::duration<double>(static_cast<double>(std::clock()) / CLOCKS_PER_SEC);
}

/// What decoding gave, if it took no longer than any user would bear.
std::optional<Samples> decodedInTime(std::string text) {
  const auto start = computed();
  auto samples = decodeSamples(text);
  EXPECT_LT(computed() - start, kLongest);
  return samples;
}

constexpr std::size_t kHuge = 100'000'000;

TEST(DamagedHistoryFile, IsReadWhileItIsWhole) {
  const Samples expected = {{1700000000.25, 80, true, false}, {17e8, -1, false, true}};
  ASSERT_EQ(decoded(kGood), expected);
  EXPECT_TRUE(holds(R"([{"t":1,"p":2,"c":true,"a":false}])", {{1, 2, true, false}}));
}

TEST(DamagedHistoryFile, IsWholeWithHalvesOfSurrogatePairsThatAreNoneOfOurs) {
  EXPECT_EQ(decoded(R"([{"t":1,"p":2,"c":true,"a":false,"\udc00":{"\ud800":"\ud800x"}}])"),
            Samples({{1, 2, true, false}}));
  EXPECT_EQ(decoded(R"([{"t":1,"p":2,"c":true,"a":false,"\udc0":0}])"), std::nullopt);
}

TEST(DamagedHistoryFile, FailsWhenCutAnywhere) {
  for (std::size_t length = 0; length < kGood.size(); ++length) {
    EXPECT_EQ(decoded(kGood.substr(0, length)), std::nullopt) << kGood.substr(0, length);
  }
}

TEST(DamagedHistoryFile, GivesOnlyWhatItHoldsWithAnyByteReplaced) {
  for (std::size_t position = 0; position < kGood.size(); ++position) {
    for (const char bad : {'\0', '\x01', '\n', '"', '\\', '{', '}', '[',    ']',    ',',
                           ':',  '0',    '-',  '.', 'e',  'x', 't', '\x80', '\xC3', '\xFF'}) {
      std::string text = kGood;
      text[position] = bad;
      const auto samples = decoded(text);
      EXPECT_TRUE(!samples || holds(text, *samples)) << text;
    }
  }
}

TEST(DamagedHistoryFile, GivesOnlyWhatItHoldsWithAnyByteRemovedOrDoubled) {
  for (std::size_t position = 0; position < kGood.size(); ++position) {
    std::string removed = kGood;
    removed.erase(position, 1);
    std::string doubled = kGood;
    doubled.insert(position, 1, kGood[position]);
    for (const auto& text : {removed, doubled}) {
      const auto samples = decoded(text);
      EXPECT_TRUE(!samples || holds(text, *samples)) << text;
    }
  }
}

TEST(DamagedHistoryFile, FailsForBadUtf8) {
  for (const auto* bytes :
       {"\xFF", "\x80", "\xC3", "\xC0\xAF", "\xED\xA0\x80", "\xF5\x80\x80\x80"}) {
    const std::string bad = bytes;
    EXPECT_EQ(decoded(R"([{"t":1,"p":2,"c":true,"a":false,"x":")" + bad + "\"}]"), std::nullopt);
    EXPECT_EQ(decoded(R"([{"t":1,"p":2,"c":true,"a":false,")" + bad + "\":1}]"), std::nullopt);
    EXPECT_EQ(decoded(std::string("[]").append(bad)), std::nullopt);
  }
}

TEST(DamagedHistoryFile, FailsWithoutAnArrayOnTop) {
  for (const auto* text : {"", " ", "\n", "{}", "null", "true", "1", "1.5", "\"[]\"", "{\"t\":1}",
                           R"({"t":1,"p":2,"c":true,"a":false})", "x", "[", "]", "[}", "nul"}) {
    EXPECT_EQ(decoded(text), std::nullopt) << text;
  }
}

TEST(DamagedHistoryFile, FailsWhenOneElementLacksAKey) {
  for (const auto* element :
       {R"({"p":2,"c":true,"a":false})", R"({"t":1,"c":true,"a":false})",
        R"({"t":1,"p":2,"a":false})", R"({"t":1,"p":2,"c":true})", "{}",
        R"({"T":1,"p":2,"c":true,"a":false})", R"({"t":1,"t":1,"p":2,"c":true})"}) {
    EXPECT_EQ(decoded(withElement(element)), std::nullopt) << element;
  }
}

TEST(DamagedHistoryFile, FailsWhenOneElementIsNoObject) {
  for (const auto* element : {"1", "null", "true", "\"t\"", "[]", "[1,2,true,false]",
                              R"([{"t":1,"p":2,"c":true,"a":false}])", ""}) {
    EXPECT_EQ(decoded(withElement(element)), std::nullopt) << element;
  }
}

TEST(DamagedHistoryFile, FailsWhenOneValueIsOfAnotherType) {
  for (const auto* value : {"\"1\"", "true", "null", "[1]", "{}", "NaN", "Infinity", "-", "+1",
                            "01", "1.", ".5", "1e", "0x1", "1e400", "-1e400", "1 2", ""}) {
    const std::string text = value;
    EXPECT_EQ(decoded(withElement(R"({"t":)" + text + R"(,"p":2,"c":true,"a":false})")),
              std::nullopt)
        << text;
    EXPECT_EQ(decoded(withElement(R"({"t":1,"p":)" + text + R"(,"c":true,"a":false})")),
              std::nullopt)
        << text;
  }
  for (const auto* value :
       {"1", "0", "\"true\"", "null", "[true]", "{}", "TRUE", "tru", "truee", "true false", ""}) {
    const std::string text = value;
    EXPECT_EQ(decoded(withElement(R"({"t":1,"p":2,"c":)" + text + R"(,"a":false})")), std::nullopt)
        << text;
    EXPECT_EQ(decoded(withElement(R"({"t":1,"p":2,"c":true,"a":)" + text + "}")), std::nullopt)
        << text;
  }
}

TEST(DamagedHistoryFile, FailsWhenAFurtherValueIsNoJson) {
  for (const auto* value :
       {"",      "nul", "nulll",   "tru",      "truee",      "01",         "1.",
        "-",     "NaN", "\"\\x\"", "\"\n\"",   "\"\t\"",     "[1,]",       "[,1]",
        "[1 2]", "[1",  "{\"a\"}", "{\"a\":}", "{\"a\":1,}", "{a:1}",      "{\"a\":1 \"b\":2}",
        "{1:2}", "[}",  "{]",      "'a'",      "1 2",        "{\"\\x\":1}"}) {
    const std::string text = value;
    EXPECT_EQ(decoded(withElement(R"({"t":1,"p":2,"c":true,"a":false,"x":)" + text + "}")),
              std::nullopt)
        << text;
  }
}

TEST(DamagedHistoryFile, FailsForBadPunctuation) {
  for (const auto* text :
       {R"([{"t":1,"p":2,"c":true,"a":false},])", R"([,{"t":1,"p":2,"c":true,"a":false}])",
        R"([{"t":1,"p":2,"c":true,"a":false,}])", R"([{,"t":1,"p":2,"c":true,"a":false}])",
        R"([{"t":1 "p":2,"c":true,"a":false}])", R"([{"t" 1,"p":2,"c":true,"a":false}])",
        R"([{"t":1,"p":2,"c":true,"a":false}{"t":1,"p":2,"c":true,"a":false}])",
        R"([{"t":1,,"p":2,"c":true,"a":false}])", R"([{t:1,"p":2,"c":true,"a":false}])",
        R"([{"t":1,"p":2,"c":true,"a":false]])", R"([{"t":1,"p":2,"c":true,"a":false}})"}) {
    EXPECT_EQ(decoded(text), std::nullopt) << text;
  }
}

TEST(DamagedHistoryFile, FailsForTrailingText) {
  for (const auto* after : {"x", "]", "[]", ",", "null", "1", "{}", " x", "\n\n[]", "\"", "//"}) {
    EXPECT_EQ(decoded(std::string("[]").append(after)), std::nullopt) << after;
    EXPECT_EQ(decoded(R"([{"t":1,"p":2,"c":true,"a":false}])" + std::string(after)), std::nullopt)
        << after;
  }
  EXPECT_EQ(decoded(std::string("[]\0", 3)), std::nullopt);
}

/// A further key that holds `depth` arrays or objects, one in the other.
std::string nested(std::size_t depth, std::string_view opening, char closing) {
  std::string text = R"([{"t":1,"p":2,"c":true,"a":false,"x":)";
  for (std::size_t i = 0; i < depth; ++i) text += opening;
  return text.append("0").append(depth, closing).append("}]");
}

TEST(DamagedHistoryFile, MayBeNestedInAFurtherKey) {
  EXPECT_EQ(decoded(nested(500, "[", ']')), (Samples{{1, 2, true, false}}));
  EXPECT_EQ(decoded(nested(500, R"({"a":)", '}')), (Samples{{1, 2, true, false}}));
}

TEST(DamagedHistoryFile, LoadsWholeOrNotAtAllWhenNestedTwoThousandDeep) {
  const Samples whole = {{1, 2, true, false}};
  EXPECT_EQ(decoded(nested(2000, "[", ']')).value_or(whole), whole);
  EXPECT_EQ(decoded(nested(2000, R"({"a":)", '}')).value_or(whole), whole);
  EXPECT_EQ(decoded(std::string(2000, '[') + std::string(2000, ']')), std::nullopt);
}

TEST(DamagedHistoryFile, LoadsWholeOrNotAtAllWhenNestedAMillionDeep) {
  const Samples whole = {{1, 2, true, false}};
  EXPECT_EQ(decoded(nested(1'000'000, "[", ']')).value_or(whole), whole);
  EXPECT_EQ(decoded(nested(1'000'000, R"({"a":)", '}')).value_or(whole), whole);
}

TEST(DamagedHistoryFile, FailsWhenNestedDeeplyAndCut) {
  const std::string deep = nested(1'000'000, "[", ']');
  EXPECT_EQ(decoded(deep.substr(0, deep.size() / 2)), std::nullopt);
  EXPECT_EQ(decoded(deep.substr(0, deep.size() / 2) + "]"), std::nullopt);
}

TEST(HugeHistoryFile, FailsInTimeWhenAllBrackets) {
  EXPECT_EQ(decodedInTime(std::string(kHuge, '[')), std::nullopt);
}

TEST(HugeHistoryFile, FailsInTimeWhenAllBlank) {
  EXPECT_EQ(decodedInTime(std::string(kHuge, ' ')), std::nullopt);
}

TEST(HugeHistoryFile, LoadsInTimeWhenValid) {
  std::string text = "[";
  std::size_t count = 0;
  for (; text.size() < kHuge; ++count) {
    if (count > 0) text += ',';
    text += R"({"t":1700000000.25,"p":80,"c":true,"a":false})";
  }
  text += ']';
  const auto samples = decodedInTime(std::move(text));
  ASSERT_TRUE(samples);
  EXPECT_EQ(samples->size(), count);
  EXPECT_EQ(samples->back(), (Sample{1700000000.25, 80, true, false}));
}

}  // namespace
}  // namespace lumora::test
