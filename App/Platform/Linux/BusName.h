// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/ServiceWatch.h"

namespace lumora {

/// Asks for a name on a bus and gives it up in the end. Nothing waits: whoever hears of the name
/// from this connection hears of it after it was asked for.
class BusName {
 public:
  BusName(BusConnection connection, Glib::ustring name);
  BusName(const BusName&) = delete;
  BusName& operator=(const BusName&) = delete;
  ~BusName();

  const Glib::ustring& get() const { return name_; }

 private:
  BusConnection connection_;
  Glib::ustring name_;
};

}  // namespace lumora
