// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/ScreenPoint.h"
#include "Linux/Bus/SignalSubscription.h"
#include "Linux/BusClient.h"

#include <optional>
#include <string>
#include <vector>

namespace lumora::test {

/// How the tray of a desktop treats items.
struct TrayRules {
  std::string process;              ///< At most fifteen characters.
  bool needsIdAndMenu = false;      ///< Shows no item without.
  bool ignoresKnownItems = false;   ///< Does nothing when one registers again.
  bool showsLater = false;          ///< Takes items before there is something to show them in.
  bool readsLabelTooEarly = false;  ///< Knows no label until the property is said to have changed.
};

inline TrayRules gnome() {
  return {.process = "gnome-shell", .needsIdAndMenu = true, .readsLabelTooEarly = true};
}
inline TrayRules kde() { return {.process = "kded5", .ignoresKnownItems = true}; }
inline TrayRules mate() { return {.process = "notification-ar"}; }
inline TrayRules cinnamon() { return {.process = "xapp-sn-watcher"}; }
inline TrayRules lxqt() { return {.process = "lxqt-panel"}; }
inline TrayRules waybar() { return {.process = "waybar", .showsLater = true}; }
inline TrayRules xfce() { return {.process = "xfce4-panel"}; }

/// A desktop's tray on a connection of its own. The test's process has its name meanwhile. An item
/// is known by the bus name and the path that it is called by, written together.
class TrayDouble {
 public:
  /// Takes the name of the trays, also from one that has it.
  explicit TrayDouble(TrayRules rules);
  TrayDouble(const TrayDouble&) = delete;
  TrayDouble& operator=(const TrayDouble&) = delete;
  ~TrayDouble();

  /// The items in the order in which they registered: what gives a path is of the name that says
  /// so.
  const std::vector<std::string>& registrations() const { return registrations_; }

  /// The items that the user sees.
  std::vector<std::string> shown() const;

  /// From now on there is something that shows items.
  void showItems();

  /// As LXQt looks for icons: below this folder, and the pixmap only where no name is given.
  std::string iconFor(const std::string& item) const;

  /// The label that the user sees.
  std::string labelOf(const std::string& item) const;

  /// As GNOME looks for items besides those that register: names by the convention, and unique
  /// names that have one where items are by convention. An item in both ways is loaded twice.
  std::vector<std::string> scan() const;

  Properties properties(const std::string& item) const;
  BusClient::Reply callItem(const std::string& item, const Glib::ustring& method,
                            const Glib::VariantContainerBase& arguments = {}) const;

  void click(const std::string& item, ScreenPoint point) const;
  /// As GNOME does it, which lets the program come to the front first.
  void doubleClick(const std::string& item, ScreenPoint point, const char* token) const;

  BusClient& client() { return client_; }

 private:
  void onCall(const Glib::ustring& sender, const Glib::VariantContainerBase& arguments);
  Glib::VariantBase property(const Glib::ustring& name) const;
  void onPropertiesChanged(const Glib::VariantContainerBase& arguments);

  TrayRules rules_;
  std::string processBefore_;
  BusClient client_;
  std::vector<std::string> registrations_;
  std::vector<std::string> items_;
  bool labelKnown_ = false;
  std::optional<SignalSubscription> propertiesChanged_;
  Gio::DBus::InterfaceVTable table_;
  guint watcher_ = 0;
};

}  // namespace lumora::test
