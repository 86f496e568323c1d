// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Support/ScopedLocale.h"
#include "Views/Cells.h"
#include "Views/Patience.h"
#include "Views/Pixels.h"
#include "Views/Popover/DailySummaryView.h"
#include "Views/Popover/DayTable.h"
#include "Views/Popover/EvenDigits.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QFontDatabase>
#include <QSignalSpy>
#include <memory>

#include <gtest/gtest.h>

namespace lumora::test {
namespace {

constexpr int kWidth = 308;

const std::vector<DayRow> kRows = {{"Tue 24", "11%", "1–100%", "–"},
                                   {"Mon 23", "74%", "41–77%", "1 h 11 min"},
                                   {"Sun 11", "100%", "100–100%", "2 h"},
                                   {"Sat 21", "8%", "4–9%", "47 min"}};

/// A family with digits of different widths, for a desktop's font.
class ScopedFamily {
 public:
  explicit ScopedFamily(const QString& family) {
    QFont font = usual_;
    font.setFamilies({family});
    QApplication::setFont(font);
  }
  ~ScopedFamily() { QApplication::setFont(usual_); }
  ScopedFamily(const ScopedFamily&) = delete;
  ScopedFamily& operator=(const ScopedFamily&) = delete;

 private:
  QFont usual_ = QApplication::font();
};

class DayTableTest : public testing::Test {
 public:
  ~DayTableTest() override { QApplication::setLayoutDirection(Qt::LeftToRight); }

 protected:
  DayTable& open(const std::vector<DayRow>& rows = kRows) {
    window = std::make_unique<QWidget>();
    window->resize(kWidth, 400);
    table = new DayTable(kWidth);
    table->setParent(window.get());
    table->show(rows);
    table->setVisible(true);
    window->show();
    EXPECT_TRUE(waitUntilExposed(window.get()));
    image = picture(*window);
    return *table;
  }

  /// The first and the last column of pixels with ink within a rectangle.
  std::pair<int, int> ink(const QRect& rect) const {
    std::pair<int, int> ends{rect.right() + 1, rect.left() - 1};
    const QColor ground = window->palette().color(QPalette::Window);
    for (int x = rect.left(); x <= rect.right(); ++x) {
      for (int y = rect.top(); y <= rect.bottom(); ++y) {
        if (distance(image.pixelColor(x, y), ground) < 60) continue;
        ends = {std::min(ends.first, x), std::max(ends.second, x)};
      }
    }
    return ends;
  }

  std::unique_ptr<QWidget> window;
  DayTable* table = nullptr;
  QImage image;
};

TEST(EvenDigits, AreAllOfOneWidthInEveryFont) {
  QFont inter = QApplication::font();
  inter.setFamilies({"Inter"});
  ASSERT_NE(QFontMetricsF(inter).horizontalAdvance("111"),
            QFontMetricsF(inter).horizontalAdvance("444"));
  for (const QString& family : QFontDatabase::families()) {
    if (QFontDatabase::isPrivateFamily(family)) continue;
    QFont font = QApplication::font();
    font.setFamilies({family});
    for (const double points : {9.0, 10.0, 11.0, 16.0}) {
      font.setPointSizeF(points);
      const EvenDigits digits(font);
      for (const char* number : {"111%", "777%", "901%", "147%"}) {
        EXPECT_NEAR(digits.width(number), digits.width("000%"), 0.51)
            << family.toStdString() << " " << points << " " << number;
      }
    }
  }
}

TEST(EvenDigits, AreThoseOfTheLocale) {
  const ScopedLocale persian("fa_IR");
  QFont font = QApplication::font();
  const EvenDigits digits(font);
  EXPECT_NEAR(digits.width("۱۱۱"), digits.width("۴۴۴"), 0.51);
}

TEST_F(DayTableTest, HasUnitsBelowUnitsInFontsWithUnevenDigits) {
  const ScopedFamily inter("Inter");
  // What stands before a "1" begins where it does before any other digit.
  open({{"Mon 1", "81%", "41–81%", "–"}, {"Tue 2", "84%", "44–84%", "–"}});
  const auto first = cellsOf(*window);
  const auto at = [&](int row, int column) { return first.at(4 + 4 * row + column).rect; };
  for (const int column : {1, 2}) {
    EXPECT_NEAR(ink(at(0, column)).first, ink(at(1, column)).first, 1) << column;
    EXPECT_NEAR(ink(at(0, column)).second, ink(at(1, column)).second, 1) << column;
  }
}

TEST_F(DayTableTest, EndsAllNumbersAtTheSideOfTheirColumn) {
  for (const double points : {10.0, 11.0, 16.0}) {
    const ScopedFontSize size(points);
    open();
    for (const Cell& cell : cellsOf(*window)) {
      const auto [left, right] = ink(cell.rect);
      if (cell.column == 0) {
        EXPECT_NEAR(left, cell.rect.left(), 2) << cell.text.toStdString();
      } else {
        EXPECT_NEAR(right, cell.rect.right(), 2) << cell.text.toStdString();
      }
    }
  }
}

TEST_F(DayTableTest, IsMirroredWithItsUnitsBelowUnits) {
  QApplication::setLayoutDirection(Qt::RightToLeft);
  open();
  const QList<Cell> cells = cellsOf(*window);
  EXPECT_EQ(cells[0].rect.right() + 1, kWidth);
  EXPECT_EQ(cells[3].rect.left(), 0);
  for (const int column : {1, 2}) {
    int leftmost = kWidth;
    const int units = ink(cells[4 + column].rect).second;
    for (const Cell& cell : cells) {
      if (cell.column != column || cell.row < 0) continue;
      const auto [left, right] = ink(cell.rect);
      leftmost = std::min(leftmost, left);
      EXPECT_NEAR(right, units, 1) << cell.text.toStdString();
    }
    // The widest of them at the column's end, which is the left.
    EXPECT_NEAR(leftmost, cells[column].rect.left(), 2);
  }
  for (const Cell& cell : cells) {
    const auto [left, right] = ink(cell.rect);
    if (cell.column == 3) {
      EXPECT_NEAR(left, cell.rect.left(), 2);
    } else if (cell.column == 0) {
      EXPECT_NEAR(right, cell.rect.right(), 2);
    }
  }
}

TEST_F(DayTableTest, IsATableToAScreenReader) {
  open();
  QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(table);
  ASSERT_NE(accessible, nullptr);
  EXPECT_EQ(accessible->role(), QAccessible::Table);
  EXPECT_EQ(accessible->text(QAccessible::Name), "Daily summary");
  QAccessibleTableInterface* rows = accessible->tableInterface();
  ASSERT_NE(rows, nullptr);
  EXPECT_EQ(rows->rowCount(), 4);
  EXPECT_EQ(rows->columnCount(), 4);
  EXPECT_EQ(rows->columnDescription(2), "Range");
  EXPECT_EQ(rows->columnDescription(3), "Charging");
  EXPECT_EQ(rows->rowDescription(1), "Mon 23");
  QAccessibleInterface* cell = rows->cellAt(1, 2);
  EXPECT_EQ(cell->role(), QAccessible::Cell);
  EXPECT_EQ(cell->text(QAccessible::Name), "41–77%");
  EXPECT_EQ(cell->tableCellInterface()->columnIndex(), 2);
}

TEST_F(DayTableTest, StaysAsItIsWhenItIsRenewed) {
  open();
  const QSignalSpy reset(table->model(), &QAbstractItemModel::modelReset);
  const auto before = cellsOf(*window);
  std::vector<DayRow> rows = kRows;
  rows[0] = {"Tue 24", "12%", "1–99%", "1 min"};
  table->show(rows);
  EXPECT_EQ(picture(*window).size(), image.size());
  const auto after = cellsOf(*window);
  ASSERT_EQ(after.size(), before.size());
  for (qsizetype i = 0; i < after.size(); ++i) EXPECT_EQ(after[i].rect, before[i].rect);
  EXPECT_EQ(after[5].text, "12%");
  EXPECT_NE(picture(*window), image);
  EXPECT_TRUE(reset.isEmpty());
  table->show({});
  EXPECT_EQ(reset.size(), 1);
}

TEST_F(DayTableTest, IsMadeWhenItIsFirstUnfolded) {
  DailySummaryView view(kWidth);
  view.show(kRows);
  view.QWidget::show();
  EXPECT_EQ(view.findChildren<QTableView*>().size(), 0);
  auto* title = view.findChild<QAbstractButton*>();
  title->click();
  ASSERT_EQ(view.findChildren<QTableView*>().size(), 1);
  EXPECT_EQ(cellsOf(view).at(4).text, "Tue 24");
  title->click();
  title->click();
  EXPECT_EQ(view.findChildren<QTableView*>().size(), 1);
}

}  // namespace
}  // namespace lumora::test
