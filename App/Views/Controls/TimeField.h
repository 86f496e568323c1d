// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTimeEdit>

namespace lumora {

/// A time of day, hours and minutes as the locale writes them. A click chooses the part under it,
/// so that what is typed next replaces it. The wheel is left to the form unless it has the focus.
class TimeField : public QTimeEdit {
 public:
  explicit TimeField(QWidget* parent = nullptr);

  QSize sizeHint() const override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
};

}  // namespace lumora
