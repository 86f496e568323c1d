// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Preferences/AlertKind.h"

#include <string>

namespace lumora {

/// One reminder to deliver.
struct PendingAlert {
  AlertKind kind = AlertKind::chargeLimit;
  std::string title;
  std::string body;

  bool operator==(const PendingAlert&) const = default;
};

}  // namespace lumora
