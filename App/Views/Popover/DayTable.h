// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Content/PopoverContent.h"
#include "Views/Popover/EvenDigits.h"

#include <QTableView>
#include <array>
#include <vector>

namespace lumora {

class DayModel;

/// A line for each day, below headings, as high as it needs to be. To a screen reader it is a table
/// whose rows are named by their days.
class DayTable : public QTableView {
 public:
  static constexpr int kColumns = 4;

  /// At most `width` pixels wide.
  explicit DayTable(int width);

  void show(const std::vector<DayRow>& rows);

  /// Draws a text where its column has it.
  void drawText(QPainter& painter, const QRect& rect, int column, const QString& text) const;
  /// The same of a number: one below another, unit below unit.
  void drawNumber(QPainter& painter, const QRect& rect, int column, const QString& text) const;

 private:
  int gapIn(const QFont& font);
  void fit();

  int width_;
  DayModel* model_;
  EvenDigits digits_;
  std::array<int, kColumns> widths_{};  // of the columns, without the gaps before them
  std::array<int, kColumns> widest_{};  // of what is in them below the headings
};

}  // namespace lumora
