// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QButtonGroup>
#include <QStringList>
#include <QWidget>
#include <functional>

namespace lumora {

/// A row of choices of which one holds. The arrow keys move between them, as in any group of radio
/// buttons.
class SegmentedPicker : public QWidget {
 public:
  /// The first choice holds at first. `picked` gets the number of every other one from then on.
  SegmentedPicker(const QStringList& titles, std::function<void(int)> picked,
                  QWidget* parent = nullptr);

  /// The number of the choice that holds, counted from 0.
  int current() const { return group_.checkedId(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QButtonGroup group_;
};

}  // namespace lumora
