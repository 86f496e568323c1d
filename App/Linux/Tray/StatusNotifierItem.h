// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Lifetime.h"
#include "Base/ScreenPoint.h"
#include "Linux/Bus/ExportedObject.h"
#include "Linux/Tray/DbusMenu.h"
#include "Linux/Tray/TrayHost.h"
#include "Platform/RunLoop.h"
#include "Platform/StatusItem.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace lumora {

/// The program's item in the desktop's tray (org.kde.StatusNotifierItem), with its menu. It takes
/// its place when it is first shown, and again in every tray that comes later. At rest it does
/// nothing: trays ask, and hear of what changes.
class StatusNotifierItem {
 public:
  struct Identity {
    std::string id;
    std::string title;
    /// The folder that has the icons by name, both in itself and as a theme has them, below
    /// "hicolor". KDE needs it to be called "icons". Empty: they are installed.
    std::string iconThemePath;
  };

  struct Callbacks {
    /// A click, and where it was if the tray tells.
    std::function<void(std::optional<ScreenPoint>)> activated;
    /// Comes before a click: with it a new window may come to the front (xdg-activation).
    std::function<void(std::string)> activationToken;
    /// Asked for whenever the menu is about to show.
    std::function<Menu()> menu;
    /// What the item shows in a tray that has room for text there.
    std::function<StatusItemFace(TextPlace)> face;
    /// The icon in every size that trays may want. Asked for when a tray asks.
    std::function<std::vector<Icon>(const DrawnIcon&)> draw;
  };

  /// `session` is the session bus; absent where there is none: then nothing happens. Every callback
  /// must be there. `runLoop` must outlive it.
  StatusNotifierItem(BusConnection session, RunLoop& runLoop, Identity identity,
                     Callbacks callbacks);
  StatusNotifierItem(const StatusNotifierItem&) = delete;
  StatusNotifierItem& operator=(const StatusNotifierItem&) = delete;

  /// Shows the face as it is now. Trays hear only of what they show differently.
  void show();

 private:
  void appear();
  void onTray(TextPlace place);
  void announceAgain();
  void update();
  void tellChanges(const StatusItemFace& before);
  ExportedObject::Members members();
  const Glib::VariantBase& pixmaps();

  BusConnection session_;
  RunLoop& runLoop_;
  Identity identity_;
  Callbacks callbacks_;
  TextPlace place_ = TextPlace::inside;
  StatusItemFace face_;
  std::optional<Glib::VariantBase> pixmaps_;  // Once a tray has asked for these.
  bool hiddenMark_ = false;                   // In the pixmaps, so that they are others.

  // From the first content on.
  std::optional<ExportedObject> object_;
  std::optional<DbusMenu> menu_;
  std::optional<TrayHost> tray_;
  std::optional<Lifetime> again_;  // Of what the tray registered with last is told again.
};

}  // namespace lumora
