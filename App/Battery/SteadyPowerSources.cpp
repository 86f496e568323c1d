// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Battery/SteadyPowerSources.h"

#include <cmath>
#include <string_view>
#include <utility>

namespace lumora {
namespace {

constexpr const char* kCapacity = "Current Capacity";
constexpr const char* kPowerSource = "Power Source State";
constexpr Seconds kRestless{60};
constexpr Seconds kPlugProof{15};
constexpr Seconds kEmptyProof{60};
constexpr std::chrono::seconds kLookAgain{16};
// A battery that was below may well be empty.
constexpr double kNearlyEmpty = 5;

/// Also for a clock that was set back.
Seconds apart(Date one, Date other) { return Seconds{std::abs((one - other).count())}; }

/// Null where it is missing.
const Value* find(const Dictionary& dictionary, std::string_view key) {
  const auto entry = dictionary.find(key);
  return entry == dictionary.end() ? nullptr : &entry->second;
}

std::optional<double> capacity(const Dictionary& source) {
  const Value* value = find(source, kCapacity);
  if (value == nullptr) return std::nullopt;
  if (const auto* floating = std::get_if<double>(&value->held)) return *floating;
  const auto* integer = std::get_if<std::int64_t>(&value->held);
  return integer == nullptr ? std::nullopt : std::optional(static_cast<double>(*integer));
}

/// Empty where it is missing.
std::string powerSource(const Dictionary& source) {
  const Value* value = find(source, kPowerSource);
  const auto* text = value == nullptr ? nullptr : std::get_if<std::string>(&value->held);
  return text == nullptr ? std::string() : *text;
}

}  // namespace

std::optional<std::vector<Dictionary>> SteadyPowerSources::descriptions() {
  auto sources = sources_.descriptions();
  if (!sources || sources->size() != 1) {
    known_ = {};
    return sources;
  }
  known_.told = steady(sources->front());
  sources->front() = *known_.told;
  return sources;
}

bool SteadyPowerSources::observe(std::function<void()> changed) {
  changed_ = changed;
  return sources_.observe(std::move(changed));
}

Dictionary SteadyPowerSources::steady(const Dictionary& source) {
  const Date now = clock_.now();
  const bool loose = isLoose(source, now);
  const bool slip = isSlip(source, now);
  if (loose || slip) lookAgain();
  Dictionary told = loose ? *known_.told : source;
  if (const Value* percent = find(slip ? *known_.told : source, kCapacity)) {
    told.insert_or_assign(kCapacity, *percent);
  }
  return told;
}

bool SteadyPowerSources::isLoose(const Dictionary& source, Date now) {
  const std::string current = powerSource(source);
  if (current != known_.powerSource) {
    known_.restless = apart(now, known_.switchedBefore) < kRestless;
    known_.switchedBefore = known_.switchedAt;
    // What is there at first has not changed.
    known_.switchedAt = known_.powerSource ? now : kDistantPast;
    known_.powerSource = current;
  }
  const bool differs = known_.told && powerSource(*known_.told) != current;
  return differs && known_.restless && apart(now, known_.switchedAt) < kPlugProof;
}

bool SteadyPowerSources::isSlip(const Dictionary& source, Date now) {
  const auto percent = capacity(source);
  if (!percent || *percent > 0) {
    known_.emptySince.reset();
    return false;
  }
  if (!known_.emptySince) known_.emptySince = now;
  const bool sudden = known_.told && capacity(*known_.told).value_or(0) > kNearlyEmpty;
  return sudden && apart(now, *known_.emptySince) < kEmptyProof;
}

void SteadyPowerSources::lookAgain() {
  if (lookingAgain_ || !changed_) return;
  lookingAgain_ = true;
  runLoop_.runAfter(kLookAgain, lifetime_.guard([this] {
    lookingAgain_ = false;
    changed_();
  }));
}

}  // namespace lumora
