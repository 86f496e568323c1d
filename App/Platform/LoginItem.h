// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>

namespace lumora {

/// Whether the desktop starts this program at login.
class LoginItem {
 public:
  virtual ~LoginItem() = default;

  /// Whether the session starts the program at its login, read anew each time.
  virtual bool isEnabled() const = 0;

  /// Has the session start the program at login. The system's description of what went wrong;
  /// absent on success.
  virtual std::optional<std::string> registerItem() = 0;

  /// Has it no longer started at login. The description of what went wrong; absent on success.
  virtual std::optional<std::string> unregisterItem() = 0;
};

}  // namespace lumora
