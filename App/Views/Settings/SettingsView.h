// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Observable.h"
#include "Views/Controls/Switch.h"
#include "Views/Settings/FormSection.h"
#include "Views/Settings/StoredControls.h"
#include "Views/ViewsModule.h"

#include <QTimer>
#include <QWidget>

class QVBoxLayout;

namespace lumora {

class Label;

/// The content of the settings window: a form whose controls write into the defaults store at once.
/// While visible it shows what others change there within a second.
class SettingsView : public QWidget {
 public:
  /// The host must outlive the view.
  explicit SettingsView(ViewsHost& host, QWidget* parent = nullptr);

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  FormSection* addSection(const char* heading = "");
  StoredControls::Group addReminder(FormSection* section, const QString& title, const char* key);
  void addReminders();
  void addQuietHours();
  void addMenuBar();
  void addGeneral();
  void addNotice();

  void setLaunchAtLogin(bool on);
  void askForPermission();
  void confirmReset();

  ViewsHost& host_;
  StoredControls controls_;
  QVBoxLayout* layout_;
  Subscription changed_;
  QTimer changesByOthers_;
  bool asking_ = false;

  Switch* launchAtLogin_ = nullptr;
  QWidget* loginErrorRow_ = nullptr;
  Label* loginError_ = nullptr;
};

}  // namespace lumora
