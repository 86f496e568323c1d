// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

#include <time.h>

namespace lumora::test {

/// Puts the process into a time zone ("Europe/Berlin") and back into its own at the end.
class ScopedTimeZone {
 public:
  explicit ScopedTimeZone(const std::string& name) {
    if (const char* before = std::getenv("TZ")) before_ = before;
    setenv("TZ", name.c_str(), 1);
    tzset();
  }

  ~ScopedTimeZone() {
    if (before_) {
      setenv("TZ", before_->c_str(), 1);
    } else {
      unsetenv("TZ");
    }
    tzset();
  }

  ScopedTimeZone(const ScopedTimeZone&) = delete;
  ScopedTimeZone& operator=(const ScopedTimeZone&) = delete;

 private:
  std::optional<std::string> before_;
};

}  // namespace lumora::test
