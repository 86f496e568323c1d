// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace lumora {

/// The folder the running program lies in. It is an application bundle when its name ends in
/// ".app" and it carries an identifier.
struct Bundle {
  std::filesystem::path location;
  /// Reverse-DNS name; absent for an executable outside a bundle.
  std::optional<std::string> identifier;

  bool operator==(const Bundle&) const = default;
};

}  // namespace lumora
