// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/LoginItem.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace lumora {

/// The program's desktop entry in the user's "autostart" folder, as freedesktop.org has it in
/// "Desktop Application Autostart" 0.5. The entry is the only record: nothing about it is kept
/// elsewhere.
class AutostartEntry final : public LoginItem {
 public:
  /// Where configuration lies: the user's and, the first that has an entry counting, the system's.
  struct Folders {
    std::filesystem::path user;
    std::vector<std::filesystem::path> system;
  };

  /// The folders of this session.
  static Folders configurationFolders();

  /// `executable` is what the entry is to start. The entry is named after the application id.
  AutostartEntry(std::filesystem::path executable, const std::string& applicationId,
                 const Folders& folders);

  /// The entry that counts, the user's before the system's, starts a program that exists, and is
  /// neither hidden nor meant for other desktops only.
  bool isEnabled() const override;

  /// Writes the user's entry. What else stands in it stays.
  std::optional<std::string> registerItem() override;

  /// Removes the user's entry, and hides the system's where there is one.
  std::optional<std::string> unregisterItem() override;

 private:
  std::filesystem::path executable_;
  std::filesystem::path users_;
  std::vector<std::filesystem::path> systems_;
};

}  // namespace lumora
