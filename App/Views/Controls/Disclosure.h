// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/Theme/Fonts.h"

#include <QAbstractButton>
#include <QString>

namespace lumora {

/// The title of something that unfolds below it while it is checked.
class Disclosure : public QAbstractButton {
 public:
  Disclosure(TextRole role, const QString& title);

  QSize sizeHint() const override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace lumora
