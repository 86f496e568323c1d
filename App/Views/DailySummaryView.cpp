// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/DailySummaryView.h"

#include "Views/Labels.h"

#include <QGridLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

namespace lumora {
namespace {

constexpr int kSpacing = 4;
constexpr int kColumnWidths[] = {0, 38, 68, 62};  // 0: what is left

}  // namespace

DailySummaryView::DailySummaryView(QWidget* parent)
    : QWidget(parent), title_(new QToolButton), table_(new QWidget) {
  title_->setText("Daily summary");
  setFontRole(title_, TextRole::callout);
  title_->setCheckable(true);
  title_->setStyleSheet(
      "QToolButton { border: 1px solid transparent; border-radius: 3px; padding: 1px 0; "
      "margin-left: -6px; background: none; }"
      "QToolButton:focus { border-color: palette(highlight); }");
  title_->setArrowType(Qt::RightArrow);
  title_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  title_->setFocusPolicy(Qt::StrongFocus);
  connect(title_, &QToolButton::toggled, this, [this](bool unfolded) {
    title_->setArrowType(unfolded ? Qt::DownArrow : Qt::RightArrow);
    table_->setVisible(unfolded);
  });

  grid_ = new QGridLayout(table_);
  grid_->setContentsMargins(0, kSpacing, 0, 0);
  grid_->setVerticalSpacing(kSpacing);
  grid_->setHorizontalSpacing(0);
  grid_->setColumnStretch(0, 1);
  table_->hide();

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(title_, 0, Qt::AlignLeft);
  layout->addWidget(table_);
  rows_.push_back({});  // unlike any table, so that the first one is built
  show({});
}

bool DailySummaryView::isUnfolded() const { return title_->isChecked(); }

void DailySummaryView::show(const std::vector<DayRow>& rows) {
  if (rows == rows_) return;
  rows_ = rows;
  while (QLayoutItem* item = grid_->takeAt(0)) {
    delete item->widget();
    delete item;
  }
  int line = 0;
  for (const char* heading : {"Day", "Avg", "Range", "Charging"}) addCell(0, line++, heading, true);
  for (int row = 1; const DayRow& day : rows_) {
    int column = 0;
    for (const std::string* text : {&day.day, &day.average, &day.range, &day.charging}) {
      addCell(row, column++, QString::fromStdString(*text), false);
    }
    ++row;
  }
}

void DailySummaryView::addCell(int row, int column, const QString& text, bool secondary) {
  auto* cell = new QLabel(text);
  setFontRole(cell, TextRole::caption);
  if (secondary) setTextColor(cell, secondaryColor(palette()));
  // At least the usual width: a large font may need more.
  if (kColumnWidths[column] > 0) cell->setMinimumWidth(kColumnWidths[column]);
  // The columns stay where they are, also for texts that run from right to left.
  cell->setAlignment((column == 0 ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter |
                     Qt::AlignAbsolute);
  grid_->addWidget(cell, row, column);
}

}  // namespace lumora
