// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Popover/DayTable.h"

#include "Base/Texts.h"
#include "Views/Theme/Colors.h"
#include "Views/Theme/Fonts.h"

#include <QAbstractItemDelegate>
#include <QAbstractTableModel>
#include <QHeaderView>
#include <QPainter>
#include <QStringList>
#include <QStyle>
#include <algorithm>
#include <cmath>

namespace lumora {
namespace {

constexpr int kSpacing = 4;
constexpr int kLeastGap = 8;
constexpr int kMostGap = 16;
// At least: a large font may need more.
constexpr std::array kColumnWidths = {0, 38, 68, 62};  // 0: what is left
constexpr int kDay = 0;
constexpr int kCharging = 3;

QStringList headings() {
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

class Headings : public QHeaderView {
 public:
  explicit Headings(const DayTable& table) : QHeaderView(Qt::Horizontal), table_(table) {}

 protected:
  void paintSection(QPainter* painter, const QRect& rect, int column) const override {
    painter->setPen(textColor(TextColor::secondary, palette()));
    table_.drawText(*painter, rect, column,
                    model()->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
  }

 private:
  const DayTable& table_;
};

class Cells : public QAbstractItemDelegate {
 public:
  explicit Cells(DayTable* table) : QAbstractItemDelegate(table), table_(*table) {}

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& cell) const override {
    painter->setPen(textColor(TextColor::primary, option.palette));
    const bool number = cell.column() != kDay && cell.column() != kCharging;
    const QString text = cell.data().toString();
    const QRect line = option.rect.adjusted(0, kSpacing, 0, 0);
    number ? table_.drawNumber(*painter, line, cell.column(), text)
           : table_.drawText(*painter, line, cell.column(), text);
  }

  QSize sizeHint(const QStyleOptionViewItem& /*option*/,
                 const QModelIndex& /*cell*/) const override {
    return {};
  }

 private:
  const DayTable& table_;
};

}  // namespace

class DayModel : public QAbstractTableModel {
 public:
  using QAbstractTableModel::QAbstractTableModel;

  int rowCount(const QModelIndex& /*parent*/ = {}) const override {
    return static_cast<int>(rows_.size());
  }

  int columnCount(const QModelIndex& /*parent*/ = {}) const override { return DayTable::kColumns; }

  QVariant data(const QModelIndex& cell, int role) const override {
    return role == Qt::DisplayRole ? rows_.at(cell.row()).at(cell.column()) : QVariant();
  }

  QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
    if (role != Qt::DisplayRole) return {};
    return orientation == Qt::Horizontal ? headings_.at(section) : rows_.at(section).at(kDay);
  }

  void show(const std::vector<DayRow>& rows) {
    // A screen reader keeps its place where there are as many.
    const bool asMany = static_cast<qsizetype>(rows.size()) == rows_.size();
    if (!asMany) beginResetModel();
    rows_.clear();
    for (const DayRow& row : rows) {
      QStringList texts;
      for (const auto* text : {&row.day, &row.average, &row.range, &row.charging}) {
        texts << QString::fromStdString(*text);
      }
      rows_ << texts;
    }
    if (!asMany) {
      endResetModel();
    } else if (!rows.empty()) {
      emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    }
  }

 private:
  const QStringList headings_ = headings();
  QList<QStringList> rows_;
};

DayTable::DayTable(int width) : width_(width), model_(new DayModel(this)), digits_(font()) {
  setModel(model_);
  setItemDelegate(new Cells(this));
  setHorizontalHeader(new Headings(*this));
  setAccessibleName(translated("Daily summary"));
  // It is a picture of texts: what else a table can do is not wanted.
  setFrameShape(QFrame::NoFrame);
  setShowGrid(false);
  setCornerButtonEnabled(false);
  setSelectionMode(NoSelection);
  setFocusPolicy(Qt::NoFocus);
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  verticalHeader()->hide();
  for (QHeaderView* header : {horizontalHeader(), verticalHeader()}) {
    header->setMinimumSectionSize(1);
    header->setSectionResizeMode(QHeaderView::Fixed);
  }
  for (QWidget* part : {viewport(), horizontalHeader()->viewport()}) {
    part->setAutoFillBackground(false);
  }
}

void DayTable::show(const std::vector<DayRow>& rows) {
  model_->show(rows);
  fit();
}

/// Gives the columns the widths that a font takes; what that leaves between them.
int DayTable::gapIn(const QFont& font) {
  digits_ = EvenDigits(font);
  int left = width_;
  for (std::size_t column = 0; column < kColumns; ++column) {
    const int section = static_cast<int>(column);
    double widest = 0;
    for (int row = 0; row < model_->rowCount(); ++row) {
      widest = std::max(widest, digits_.width(model_->index(row, section).data().toString()));
    }
    const QVariant heading = model_->headerData(section, Qt::Horizontal, Qt::DisplayRole);
    widest_.at(column) = static_cast<int>(std::ceil(widest));
    widths_.at(column) = std::max({kColumnWidths.at(column), widest_.at(column),
                                   static_cast<int>(std::ceil(digits_.width(heading.toString())))});
    left -= widths_.at(column);
  }
  return std::min(left / (kColumns - 1), kMostGap);
}

/// In a font smaller than its role says where it would be wider than the popover.
void DayTable::fit() {
  int gap = 0;
  const QFont font = fontThatFits(TextRole::caption, [&](const QFont& tried) {
    gap = gapIn(tried);
    return gap >= kLeastGap;
  });
  setFont(font);
  int left = width_;
  for (int column = kColumns - 1; column > kDay; --column) {
    const int width = gap + widths_.at(static_cast<std::size_t>(column));
    setColumnWidth(column, width);
    left -= width;
  }
  setColumnWidth(kDay, left);
  const int line = QFontMetrics(font).height();
  horizontalHeader()->setFixedHeight(line);
  verticalHeader()->setDefaultSectionSize(line + kSpacing);
  setFixedSize(width_, line + model_->rowCount() * (line + kSpacing));
}

/// Days stand at the beginning of their column, all else at the end.
void DayTable::drawText(QPainter& painter, const QRect& rect, int column,
                        const QString& text) const {
  const bool atLeft = (column == kDay) != isRightToLeft();
  digits_.draw(painter, rect, atLeft ? Qt::AlignLeft : Qt::AlignRight, text);
}

/// Numbers are written from left to right in every language: also where they stand at the left,
/// their units are at the right.
void DayTable::drawNumber(QPainter& painter, const QRect& rect, int column,
                          const QString& text) const {
  const QSize size(widest_.at(static_cast<std::size_t>(column)), rect.height());
  const Qt::Alignment end = Qt::AlignTrailing;
  digits_.draw(painter, QStyle::alignedRect(layoutDirection(), end, size, rect), Qt::AlignRight,
               text);
}

}  // namespace lumora
