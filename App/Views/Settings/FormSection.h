// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QWidget>

class QLabel;
class QVBoxLayout;

namespace lumora {

/// A card of rows that belong together, below a heading where it has one.
class FormSection : public QWidget {
 public:
  explicit FormSection(const QString& heading = {}, QWidget* parent = nullptr);

  /// A row with a label at the left and a control at the right; a click on the label is one on a
  /// switch. Returns the label.
  QLabel* addRow(const QString& label, QWidget* control);

  /// A row that is one widget, as wide as the row where it is not aligned. Returns the row.
  QWidget* addRow(QWidget* whole, Qt::Alignment alignment = {});

 private:
  QVBoxLayout* rows_;
};

}  // namespace lumora
