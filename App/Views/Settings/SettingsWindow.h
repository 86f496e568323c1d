// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/Display.h"
#include "Views/ViewsModule.h"

#include <QWidget>

namespace lumora {

/// The window of the settings, made once: closing it hides it.
class SettingsWindow : public QWidget {
 public:
  /// `framed`: whether windows get a frame; else this one brings its own.
  explicit SettingsWindow(ViewsHost& host, bool framed = framesWindows());

  /// Shows it, no higher than the screen, or brings it to the front.
  void present();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
};

}  // namespace lumora
