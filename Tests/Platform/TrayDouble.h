// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "BusClient.h"
#include "Platform/Linux/ExportedObject.h"
#include "Platform/ScreenPoint.h"

#include <optional>
#include <string>
#include <vector>

namespace lumora::test {

/// How the tray of a desktop treats items.
struct TrayRules {
  std::string process;             ///< At most fifteen characters.
  bool needsIdAndMenu = false;     ///< Shows no item without.
  bool ignoresKnownItems = false;  ///< Does nothing when one registers again.
  bool showsLater = false;         ///< Takes items before there is something to show them in.
};

inline TrayRules gnome() { return {.process = "gnome-shell", .needsIdAndMenu = true}; }
inline TrayRules kde() { return {.process = "kded5", .ignoresKnownItems = true}; }
inline TrayRules lxqt() { return {.process = "lxqt-panel"}; }
inline TrayRules waybar() { return {.process = "waybar", .showsLater = true}; }
inline TrayRules xfce() { return {.process = "xfce4-panel"}; }

/// A desktop's tray on a connection of its own. The test's process has its name meanwhile.
class TrayDouble {
 public:
  /// Takes the name of the trays, also from one that has it.
  explicit TrayDouble(TrayRules rules);
  TrayDouble(const TrayDouble&) = delete;
  TrayDouble& operator=(const TrayDouble&) = delete;
  ~TrayDouble();

  /// The bus names that items gave, in the order they came.
  const std::vector<std::string>& registrations() const { return registrations_; }

  /// The bus names of the items that the user sees.
  std::vector<std::string> shown() const;

  /// From now on there is something that shows items.
  void showItems();

  /// As LXQt looks for icons: below this folder, and the pixmap only where no name is given.
  std::string iconFor(const std::string& busName) const;

  /// As GNOME looks for items that did not register: the unique names that have one.
  std::vector<std::string> scan() const;

  Properties properties(const std::string& busName) const;
  BusClient::Reply callItem(const std::string& busName, const Glib::ustring& method,
                            const Glib::VariantContainerBase& arguments = {}) const;

  void click(const std::string& busName, ScreenPoint point) const;
  /// As GNOME does it, which lets the program come to the front first.
  void doubleClick(const std::string& busName, ScreenPoint point, const char* token) const;

  BusClient& client() { return client_; }

 private:
  ExportedObject::Answer onRegister(const Glib::VariantContainerBase& arguments);
  ExportedObject::Members members();

  TrayRules rules_;
  std::string processBefore_;
  BusClient client_;
  std::vector<std::string> registrations_;
  std::vector<std::string> items_;
  ExportedObject watcher_;
};

}  // namespace lumora::test
