// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Content/PopoverContent.h"

#include <QFont>
#include <QWidget>
#include <array>
#include <cstddef>
#include <vector>

class QGridLayout;

namespace lumora {

class Disclosure;
class Label;

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
  static constexpr std::size_t kColumns = 4;
  using Line = std::array<Label*, kColumns>;

  Line addLine(int row);
  int widthIn(const QFont& font) const;
  void fitFont();

  int width_;
  Disclosure* title_;
  QWidget* table_;
  QGridLayout* grid_;
  Line headings_{};
  std::vector<Line> lines_;  // Kept when there are fewer days: what is made anew flickers.
};

}  // namespace lumora
