// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Content/PopoverContent.h"

#include <QWidget>
#include <vector>

namespace lumora {

class DayTable;
class Disclosure;

/// The days of the last week as a table that unfolds under its title.
class DailySummaryView : public QWidget {
 public:
  /// At most `width` pixels wide.
  explicit DailySummaryView(int width, QWidget* parent = nullptr);

  /// Shows these days, a line for each.
  void show(const std::vector<DayRow>& rows);

  /// Whether the user has unfolded the table.
  bool isUnfolded() const;

 private:
  void unfold(bool unfolded);

  int width_;
  Disclosure* title_;
  DayTable* table_ = nullptr;  // Made when it is first wanted.
  std::vector<DayRow> rows_;
};

}  // namespace lumora
