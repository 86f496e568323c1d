// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHeaderView>
#include <QList>
#include <QRect>
#include <QString>
#include <QTableView>

namespace lumora::test {

/// A cell of a table that can be seen, or a heading.
struct Cell {
  QString text;
  QRect rect;    // in the window that was asked
  int row = -1;  // of the headings
  int column = 0;
};

/// The table within a window that can be seen; null where there is none.
inline QTableView* tableOf(const QWidget& window) {
  auto* table = window.findChild<QTableView*>();
  return table != nullptr && table->isVisible() ? table : nullptr;
}

/// Its headings, and its cells row by row.
inline QList<Cell> cellsOf(const QWidget& window) {
  QList<Cell> cells;
  const QTableView* table = tableOf(window);
  if (table == nullptr) return cells;
  const QAbstractItemModel& model = *table->model();
  const QHeaderView& header = *table->horizontalHeader();
  for (int column = 0; column < model.columnCount(); ++column) {
    const QPoint corner(header.sectionViewportPosition(column), 0);
    cells << Cell{model.headerData(column, Qt::Horizontal).toString(),
                  QRect(header.viewport()->mapTo(&window, corner),
                        QSize(header.sectionSize(column), header.height())),
                  -1, column};
  }
  for (int row = 0; row < model.rowCount(); ++row) {
    for (int column = 0; column < model.columnCount(); ++column) {
      const QModelIndex index = model.index(row, column);
      const QRect rect = table->visualRect(index);
      cells << Cell{index.data().toString(),
                    QRect(table->viewport()->mapTo(&window, rect.topLeft()), rect.size()), row,
                    column};
    }
  }
  return cells;
}

}  // namespace lumora::test
