// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/Theme/Glide.h"

#include <QCheckBox>

namespace lumora {

/// A check box drawn as a switch, without a text. Its margins are for the ring around the focus.
class Switch : public QCheckBox {
 public:
  explicit Switch(QWidget* parent = nullptr);

  QSize sizeHint() const override;

 protected:
  bool hitButton(const QPoint& position) const override;
  void paintEvent(QPaintEvent* event) override;

 private:
  Glide on_{*this};  // 0 off, 1 on.
};

}  // namespace lumora
