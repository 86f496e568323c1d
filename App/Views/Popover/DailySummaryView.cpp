// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Popover/DailySummaryView.h"

#include "Base/Texts.h"
#include "Views/Controls/Disclosure.h"
#include "Views/Controls/Labels.h"

#include <QFontInfo>
#include <QFontMetrics>
#include <QGridLayout>
#include <QVBoxLayout>
#include <algorithm>
#include <string>

namespace lumora {
namespace {

constexpr int kSpacing = 4;
constexpr int kColumnGap = 8;
constexpr int kMost = 10'000;
// At least: a large font may need more.
constexpr std::array kColumnWidths = {0, 38, 68, 62};  // 0: what is left

/// Above the columns.
std::array<const char*, 4> headings() {
  // TRANSLATORS: The headings of the table of days are as short as can be. This one is above
  // weekday and day of the month, such as "Mon 14".
  return {translatedIn("table", "Day"),
          // TRANSLATORS: Average charge, above "72%".
          translatedIn("table", "Avg"),
          // TRANSLATORS: The lowest to the highest charge, above "41–80%".
          translatedIn("table", "Range"),
          // TRANSLATORS: The time spent charging, above "1 h 5 min".
          translatedIn("table", "Charging")};
}

}  // namespace

DailySummaryView::DailySummaryView(int width, QWidget* parent)
    : QWidget(parent),
      width_(width),
      title_(new Disclosure(TextRole::callout, translated("Daily summary"))),
      table_(new QWidget),
      grid_(new QGridLayout(table_)) {
  connect(title_, &Disclosure::toggled, table_, &QWidget::setVisible);

  grid_->setContentsMargins(0, kSpacing, 0, 0);
  grid_->setVerticalSpacing(kSpacing);
  grid_->setHorizontalSpacing(kColumnGap);
  grid_->setColumnStretch(0, 1);
  headings_ = addLine(0);
  for (std::size_t column = 0; column < kColumns; ++column) {
    grid_->setColumnMinimumWidth(static_cast<int>(column), kColumnWidths.at(column));
    headings_.at(column)->setText(headings().at(column));
    headings_.at(column)->setColor(TextColor::secondary);
  }
  table_->hide();

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(title_, 0, Qt::AlignLeading);
  layout->addWidget(table_);
}

bool DailySummaryView::isUnfolded() const { return title_->isChecked(); }

void DailySummaryView::show(const std::vector<DayRow>& rows) {
  for (auto i = lines_.size(); i < rows.size(); ++i) {
    lines_.push_back(addLine(static_cast<int>(i) + 1));
  }
  for (std::size_t i = 0; i < lines_.size(); ++i) {
    const bool used = i < rows.size();
    for (Label* cell : lines_[i]) cell->setVisible(used);
    if (!used) continue;
    const std::array<const std::string*, kColumns> texts = {&rows[i].day, &rows[i].average,
                                                            &rows[i].range, &rows[i].charging};
    for (std::size_t column = 0; column < kColumns; ++column) {
      lines_[i].at(column)->setText(QString::fromStdString(*texts.at(column)));
    }
  }
  fitFont();
}

int DailySummaryView::widthIn(const QFont& font) const {
  // As a label measures its text: a little more than the letters advance.
  const auto widthOf = [metrics = QFontMetrics(font)](const Label* cell) {
    return metrics.boundingRect(QRect(0, 0, kMost, kMost), Qt::TextSingleLine, cell->text())
        .width();
  };
  int width = (static_cast<int>(kColumns) - 1) * kColumnGap;
  for (std::size_t column = 0; column < kColumns; ++column) {
    int widest = std::max(kColumnWidths.at(column), widthOf(headings_.at(column)));
    for (const Line& line : lines_) {
      widest = std::max(widest, widthOf(line.at(column)));
    }
    width += widest;
  }
  return width;
}

/// Smaller than its role says where the table would be wider than the popover.
void DailySummaryView::fitFont() {
  QFont font = fontFor(TextRole::caption);
  for (int pixels = QFontInfo(font).pixelSize(); pixels > 1 && widthIn(font) > width_;) {
    font.setPixelSize(--pixels);
  }
  const auto setFont = [&font](Label* cell) {
    if (cell->font() != font) cell->setFont(font);
  };
  std::for_each(headings_.begin(), headings_.end(), setFont);
  for (const Line& line : lines_) std::for_each(line.begin(), line.end(), setFont);
}

DailySummaryView::Line DailySummaryView::addLine(int row) {
  Line line{};
  for (std::size_t column = 0; column < kColumns; ++column) {
    Label* cell = makeLabel(TextRole::caption);
    // At the column's side, whichever direction the text itself has.
    const bool atLeft = (column == 0) != QWidget::isRightToLeft();
    cell->setAlignment((atLeft ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter |
                       Qt::AlignAbsolute);
    grid_->addWidget(cell, row, static_cast<int>(column));
    line.at(column) = cell;
  }
  return line;
}

}  // namespace lumora
