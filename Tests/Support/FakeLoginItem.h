// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/LoginItem.h"

namespace lumora::test {

/// Does as it is told, or fails with the error that the test gives.
class FakeLoginItem final : public LoginItem {
 public:
  bool isEnabled() const override { return enabled; }
  std::optional<std::string> registerItem() override { return change(true); }
  std::optional<std::string> unregisterItem() override { return change(false); }

  bool enabled = false;
  std::optional<std::string> error;

 private:
  std::optional<std::string> change(bool wanted) {
    if (!error) enabled = wanted;
    return error;
  }
};

}  // namespace lumora::test
