// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Popover/DailySummaryView.h"

#include "Base/Texts.h"
#include "Views/Controls/Disclosure.h"
#include "Views/Popover/DayTable.h"

#include <QVBoxLayout>

namespace lumora {
namespace {

constexpr int kSpacing = 4;

}  // namespace

DailySummaryView::DailySummaryView(int width, QWidget* parent)
    : QWidget(parent),
      width_(width),
      title_(new Disclosure(TextRole::callout, translated("Daily summary"))) {
  connect(title_, &Disclosure::toggled, this, &DailySummaryView::unfold);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(kSpacing);
  layout->addWidget(title_, 0, Qt::AlignLeading);
}

bool DailySummaryView::isUnfolded() const { return title_->isChecked(); }

void DailySummaryView::show(const std::vector<DayRow>& rows) {
  rows_ = rows;
  if (table_ != nullptr) table_->show(rows_);
}

void DailySummaryView::unfold(bool unfolded) {
  if (table_ == nullptr) {
    table_ = new DayTable(width_);
    table_->show(rows_);
    layout()->addWidget(table_);
  }
  table_->setVisible(unfolded);
}

}  // namespace lumora
