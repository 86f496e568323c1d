// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Linux/Bus/ExportedObject.h"
#include "Linux/Tray/MenuItems.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace lumora {

/// A menu on the bus that the tray draws (com.canonical.dbusmenu, version 3). It is asked for
/// whenever it is about to be shown and whenever its layout is; a click goes to the menu last told.
class DbusMenu {
 public:
  DbusMenu(BusConnection session, std::string path, std::function<Menu()> menu);

 private:
  using Answer = ExportedObject::Answer;
  using Arguments = Glib::VariantContainerBase;
  using Id = MenuItems::Id;

  /// The ids of a request that there are, each once, and those that there are not.
  struct Sorted {
    std::vector<Id> known;
    std::vector<Id> unknown;
  };

  ExportedObject::Members members();

  Answer layout(const Arguments& arguments);
  Answer groupProperties(const Arguments& arguments);
  Answer property(const Arguments& arguments);
  Answer event(const Arguments& arguments);
  Answer eventGroup(const Arguments& arguments);
  Answer aboutToShow(const Arguments& arguments);
  Answer aboutToShowGroup(const Arguments& arguments);

  const MenuItems& items();
  bool refresh();
  Id checked(Id id);
  Sorted sorted(const std::vector<Id>& ids);
  Sorted checkedGroup(const std::vector<Id>& ids);

  std::function<Menu()> menu_;
  std::optional<MenuItems> told_;
  std::uint32_t revision_ = 1;
  ExportedObject object_;
};

}  // namespace lumora
