// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Linux/DbusMenu.h"
#include "Platform/Linux/ExportedObject.h"
#include "Platform/Linux/TrayHost.h"
#include "Platform/ScreenPoint.h"
#include "Platform/StatusItemFace.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace lumora {

/// The item in the desktop's tray: a StatusNotifierItem on the session bus, with its menu. Trays
/// may come, go and change at any time. Nothing is at rest here but what was said last.
class StatusNotifierItem {
 public:
  struct Identity {
    std::string id;             ///< The same in each session.
    std::string title;          ///< For people.
    std::string iconThemePath;  ///< The folder of the images.
  };
  struct Callbacks {
    std::function<void(ScreenPoint click)> activated;
    /// The desktop's leave to take the focus, right before it activates.
    std::function<void(const std::string& token)> activationToken;
    /// Asked for whenever the tray is about to show it.
    std::function<Menu()> menu;
    /// Draws an icon in the sizes of trays; nothing where that cannot be done.
    std::function<std::vector<Icon>(const DrawnIcon&)> draw;
  };

  /// `session` is the session bus; without one nothing happens.
  StatusNotifierItem(const BusConnection& session, Identity identity, Callbacks callbacks);

  /// The item appears with the first content. The same content again says nothing to anybody.
  void show(const StatusItemContent& content);

 private:
  ExportedObject::Members members();
  Glib::VariantBase toolTip() const;
  void onTray(TextPlace place);
  void update();
  void announce(const StatusItemFace& before);

  BusConnection session_;
  Identity identity_;
  Callbacks callbacks_;
  std::optional<StatusItemContent> content_;
  std::optional<TextPlace> place_;
  StatusItemFace face_;
  std::vector<Icon> icons_;
  std::optional<ExportedObject> object_;
  std::optional<DbusMenu> menu_;
  std::optional<TrayHost> tray_;
};

}  // namespace lumora
