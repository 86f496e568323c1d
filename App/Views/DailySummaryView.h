// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/PopoverContent.h"

#include <QWidget>
#include <vector>

class QGridLayout;
class QToolButton;

namespace lumora {

/// The days of the last week as a table that unfolds under its title.
class DailySummaryView : public QWidget {
 public:
  explicit DailySummaryView(QWidget* parent = nullptr);

  void show(const std::vector<DayRow>& rows);

  bool isUnfolded() const;

 private:
  void addCell(int row, int column, const QString& text, bool secondary);

  QToolButton* title_;
  QWidget* table_;
  QGridLayout* grid_;
  std::vector<DayRow> rows_;
};

}  // namespace lumora
