// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Alerts/PendingAlert.h"
#include "Base/Lifetime.h"
#include "Platform/Bundle.h"
#include "Platform/NotificationCentre.h"
#include "Platform/RunLoop.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace lumora {

/// A question to the user in a window of its own.
struct Dialog {
  std::string message;
  std::string informativeText;
  std::vector<std::string> buttons;

  bool operator==(const Dialog&) const = default;
};

/// Delivers reminders as desktop notifications with a snooze button. Outside an application bundle
/// nothing can be delivered and every operation does nothing.
class Notifier {
 public:
  /// Brings the program to the front, shows the dialog and answers with the index of the button
  /// that was pressed.
  using AskUser = std::function<void(const Dialog&, std::function<void(std::size_t)> answer)>;

  /// Called on the main thread when the user picks the snooze action.
  std::function<void()> onSnooze;

  /// All must outlive the notifier.
  Notifier(NotificationCentre& centre, const Bundle& bundle, RunLoop& runLoop)
      : centre_(centre), bundle_(bundle), runLoop_(runLoop) {}

  bool available() const;

  /// Declares the one category with its snooze action and listens for it.
  void setup();

  /// Explains and asks for leave to notify, only while the user has not decided yet. "Not Now"
  /// leaves it undecided.
  void requestIfNeeded(AskUser askUser);

  /// Shows the reminder in place of an earlier one of its kind. `sound` is "none", "default" or
  /// the name of a sound. A failure is not noticed: what nobody was there to show is shown later
  /// if `stillSo` says so then.
  void post(const PendingAlert& alert, const std::string& sound,
            NotificationCentre::StillSo stillSo);

 private:
  std::function<void()> onMainThread(std::function<void()> task);

  NotificationCentre& centre_;
  const Bundle& bundle_;
  RunLoop& runLoop_;
  Lifetime lifetime_;
};

}  // namespace lumora
