// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Linux/Bus/Backoff.h"

#include <algorithm>

namespace lumora {
namespace {

constexpr unsigned kLongestPause = 64;

}  // namespace

void Backoff::failed() {
  if (timer_.connected()) return;
  timer_ =
      Glib::signal_timeout().connect_seconds(sigc::mem_fun(*this, &Backoff::onPauseOver), pause_);
  pause_ = std::min(pause_ * 2, kLongestPause);
}

void Backoff::reset() {
  timer_.disconnect();
  pause_ = 1;
}

bool Backoff::onPauseOver() {
  timer_ = {};
  retry_();
  return false;
}

}  // namespace lumora
