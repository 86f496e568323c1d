// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/PowerSources.h"
#include "Support/Recorder.h"

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace lumora::test {

/// Reports what the test puts in. Without that it has no sources.
class FakePowerSources final : public PowerSources {
 public:
  explicit FakePowerSources(Recorder* recorder = nullptr) : recorder_(recorder) {}

  std::optional<std::vector<Dictionary>> descriptions() override {
    record(recorder_, "sources");
    return sources;
  }

  std::optional<Dictionary> registryEntry() const override {
    record(recorder_, "registry");
    return registry;
  }

  Standing standing() const override { return stands; }

  bool observe(std::function<void()> changed) override {
    record(recorder_, "observe power sources");
    if (observable) observers_.push_back(std::move(changed));
    return observable;
  }

  /// Tells all observers that something changed.
  void change() {
    for (const auto& changed : observers_) changed();
  }

  std::optional<std::vector<Dictionary>> sources;
  std::optional<Dictionary> registry;
  Standing stands = Standing::settled;
  bool observable = true;

 private:
  Recorder* recorder_;
  std::vector<std::function<void()>> observers_;
};

}  // namespace lumora::test
