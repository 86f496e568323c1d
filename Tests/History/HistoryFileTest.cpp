// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "History/HistoryFile.h"

#include <charconv>
#include <chrono>
#include <cmath>
#include <limits>
#include <random>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

using Samples = std::vector<Sample>;

std::optional<Samples> decoded(std::string text) { return decodeSamples(text); }

std::optional<Samples> roundTrip(const Samples& samples) {
  auto text = encodeSamples(samples);
  return text ? decodeSamples(*text) : std::nullopt;
}

TEST(HistoryFile, IsACompactArrayOfObjects) {
  EXPECT_EQ(encodeSamples(Samples{}), "[]");
  EXPECT_EQ(encodeSamples(Samples{{1700000000.5, 80, true, false}, {1700000060, -1, false, true}}),
            R"([{"t":1700000000.5,"p":80,"c":true,"a":false},)"
            R"({"t":1700000060,"p":-1,"c":false,"a":true}])");
}

TEST(HistoryFile, GivesBackWhatItWasGiven) {
  Samples samples;
  for (int i = 0; i < 50'000; ++i) {
    samples.push_back({1.7e9 + i * 61.7 + 1.0 / 3, i % 101, i % 3 == 0, i % 2 == 0});
  }
  EXPECT_EQ(roundTrip(samples), samples);
  EXPECT_EQ(roundTrip({}), Samples{});
}

TEST(HistoryFile, GivesBackEveryTimeToTheLastBit) {
  using Limits = std::numeric_limits<double>;
  for (const double time :
       {0.0, -1.5, 1e15, 999999999999999.9, 1e-7, 1.7e9 + 1.0 / 3, 0.1 + 0.2, 1e300, -1e300,
        Limits::max(), Limits::lowest(), Limits::epsilon(), 9007199254740993.0, 1e14 + 0.015625}) {
    EXPECT_EQ(roundTrip({{time, 50, false, false}}), (Samples{{time, 50, false, false}})) << time;
  }
}

std::string shortest(double time) {
  char text[64];
  return {text, std::to_chars(text, text + 64, time, std::chars_format::fixed).ptr};
}

std::string written(double time) {
  const std::string text = encodeSamples(Samples{{time, 50, false, false}}).value();
  return text.substr(6, text.find(',') - 6);
}

TEST(HistoryFile, WritesTheShortestDecimalOfATime) {
  std::mt19937_64 random(7);
  for (const double from : {0x1p28, 0x1p29, 0x1p30, 0x1p31, 0x1p32, 0x1p33}) {
    for (int i = 0; i < 100'000; ++i) {
      // All bits of the mantissa, then clocks that count micro- and nanoseconds.
      const double time = from + from * std::ldexp(static_cast<double>(random() >> 11U), -53);
      ASSERT_EQ(written(time), shortest(time));
      for (const double places : {1e3, 1e6, 1e7}) {
        const double rounded = std::floor(time) + std::floor(std::fmod(time, 1) * places) / places;
        ASSERT_EQ(written(rounded), shortest(rounded));
      }
    }
  }
}

TEST(HistoryFile, WritesTheShortestDecimalOfATimeAtTheEdges) {
  for (const double whole : {0x1p29, 0x1p30, 1.79e9, 0x1p31, 0x1p32, 0x1p33}) {
    for (int bit = 1; bit <= 23; ++bit) {
      for (const double part : {std::ldexp(1, -bit), -std::ldexp(1, -bit), std::ldexp(3, -bit)}) {
        ASSERT_EQ(written(whole + part), shortest(whole + part));
      }
    }
    for (const double part : {0.0, 0.1, 0.999999, 0.9999999, 0.99999999, 0.0000001, 0.00390625}) {
      ASSERT_EQ(written(whole + part), shortest(whole + part));
    }
  }
}

TEST(HistoryFile, GivesBackTheSmallestTimes) {
  using Limits = std::numeric_limits<double>;
  for (const double time : {1e-20, 1.2345678901234567e-20, -1.2345678901234567e-30, Limits::min(),
                            Limits::denorm_min()}) {
    EXPECT_EQ(roundTrip({{time, 50, false, false}}), (Samples{{time, 50, false, false}})) << time;
  }
}

TEST(HistoryFile, GivesBackEveryPercent) {
  using Limits = std::numeric_limits<std::int64_t>;
  for (const std::int64_t percent :
       {std::int64_t{0}, std::int64_t{100}, std::int64_t{-1}, Limits::max(), Limits::min()}) {
    EXPECT_EQ(roundTrip({{1, percent, true, true}}), (Samples{{1, percent, true, true}}));
  }
}

TEST(HistoryFile, HasNoTextForATimeThatIsNoNumber) {
  using Limits = std::numeric_limits<double>;
  for (const double time : {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity()}) {
    EXPECT_EQ(encodeSamples(Samples{{1, 50, false, false}, {time, 50, false, false}}),
              std::nullopt);
  }
}

TEST(HistoryFile, LeavesTheTextAsItWasWhenRead) {
  const std::string good = R"([{"t":1,"p":2,"c":true,"\u0061":false}])";
  std::string text = good;
  decodeSamples(text);
  EXPECT_EQ(text, good);
}

TEST(HistoryFile, MayHaveItsKeysInAnyOrderAndWhiteSpace) {
  const Samples expected = {{1.5, 80, true, false}};
  for (const auto* text :
       {R"([{"a":false,"c":true,"p":80,"t":1.5}])", R"([{"c":true,"t":1.5,"a":false,"p":80}])",
        " [ { \"t\" : 1.5 , \"p\" : 80 , \"c\" : true , \"a\" : false } ] ",
        "\n[\r\n\t{\n\"t\"\n:\n1.5\n,\n\"p\":80,\"c\":true,\"a\":false\n}\n]\n\n"}) {
    EXPECT_EQ(decoded(text), expected) << text;
  }
}

TEST(HistoryFile, MayHaveEscapedKeys) {
  EXPECT_EQ(decoded(R"([{"\u0074":1.5,"\u0070":80,"\u0063":true,"\u0061":false}])"),
            (Samples{{1.5, 80, true, false}}));
}

TEST(HistoryFile, MayHaveFurtherKeys) {
  const Samples expected = {{1.5, 80, true, false}};
  for (const auto* further :
       {"1", "1.5e3", "1e400", "true", "false", "null", "\"text \\\" \\u00e4\"", "[]", "{}",
        "[1, [2, {\"t\": 9}], null]", "{\"t\": {\"p\": [false]}}"}) {
    const std::string value = further;
    EXPECT_EQ(decoded(R"([{"t":1.5,"p":80,"x":)" + value + R"(,"c":true,"a":false}])"), expected)
        << value;
    EXPECT_EQ(decoded(R"([{"t":1.5,"p":80,"c":true,"a":false,"":)" + value + "}]"), expected)
        << value;
  }
}

TEST(HistoryFile, TakesANumberWithoutAFractionForAPercent) {
  const std::vector<std::pair<std::string, std::optional<std::int64_t>>> table = {
      {"80", 80},
      {"80.0", 80},
      {"8e1", 80},
      {"8E+1", 80},
      {"800e-1", 80},
      {"-0", 0},
      {"-3.0", -3},
      {"9223372036854775807", std::numeric_limits<std::int64_t>::max()},
      {"80.5", std::nullopt},
      {"1e-1", std::nullopt},
      {"9223372036854775808", std::nullopt},
      {"18446744073709551615", std::nullopt},
      {"18446744073709551616", std::nullopt},
      {"1e19", std::nullopt},
      {"1e400", std::nullopt},
      {"-1e19", std::nullopt}};
  for (const auto& [number, percent] : table) {
    const auto samples = decoded(R"([{"t":1,"p":)" + number + R"(,"c":true,"a":true}])");
    const auto found = samples ? std::optional(samples->at(0).p) : std::nullopt;
    EXPECT_EQ(found, percent) << number;
  }
}

TEST(HistoryFile, TakesAnyNumberForATime) {
  const std::vector<std::pair<std::string, double>> table = {
      {"0", 0},         {"-1.5", -1.5}, {"1700000000", 1.7e9},
      {"1.7e9", 1.7e9}, {"1E-7", 1e-7}, {"18446744073709551616", 0x1p64},
      {"1e-400", 0}};
  for (const auto& [number, time] : table) {
    EXPECT_EQ(decoded(R"([{"t":)" + number + R"(,"p":1,"c":true,"a":true}])"),
              (Samples{{time, 1, true, true}}))
        << number;
  }
}

TEST(HistoryFile, KeepsTheOrderOfTheFile) {
  EXPECT_EQ(decoded(R"([{"t":3,"p":1,"c":true,"a":true},{"t":1,"p":2,"c":true,"a":true}])"),
            (Samples{{3, 1, true, true}, {1, 2, true, true}}));
}

}  // namespace
}  // namespace lumora::test
