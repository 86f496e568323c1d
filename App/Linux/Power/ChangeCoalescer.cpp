// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Power/ChangeCoalescer.h"

#include <utility>

namespace lumora {
namespace {

using namespace std::chrono_literals;

constexpr auto kQuiet = 100ms;
constexpr auto kLongest = 1500ms;

}  // namespace

ChangeCoalescer::ChangeCoalescer(std::function<void()> settled) : settled_(std::move(settled)) {}

ChangeCoalescer::~ChangeCoalescer() { timer_.disconnect(); }

void ChangeCoalescer::changed() {
  last_ = Clock::now();
  if (timer_.connected()) return;
  first_ = last_;
  timer_ = Glib::signal_timeout().connect(sigc::mem_fun(*this, &ChangeCoalescer::onTimeout),
                                          kQuiet.count());
}

/// Whether to look again.
bool ChangeCoalescer::onTimeout() {
  const auto now = Clock::now();
  if (now - last_ < kQuiet && now - first_ < kLongest) return true;
  timer_ = {};
  settled_();
  return false;
}

}  // namespace lumora
