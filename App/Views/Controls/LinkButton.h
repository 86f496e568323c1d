// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/Theme/Fonts.h"

#include <QAbstractButton>
#include <QString>

namespace lumora {

/// A button that looks like a link.
class LinkButton : public QAbstractButton {
 public:
  LinkButton(TextRole role, const QString& text);

  QSize sizeHint() const override;

 protected:
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace lumora
