// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
// The popover's measures, fonts and colours, as pixels show them.
#include "Views/Controls/Disclosure.h"
#include "Views/Controls/Labels.h"
#include "Views/Controls/LinkButton.h"
#include "Views/Controls/SegmentedPicker.h"
#include "Views/Pixels.h"
#include "Views/Popover/DailySummaryView.h"
#include "Views/Popover/EvenDigits.h"
#include "Views/Popover/HistoryChart.h"
#include "Views/Popover/RingView.h"
#include "Views/Theme/Contrast.h"
#include "Views/ViewTest.h"

#include <QFontDatabase>
#include <QFrame>
#include <QPushButton>
#include <cmath>

namespace lumora::test {
namespace {

const Dictionary kEverything = {{"CycleCount", 412},     {"DesignCapacity", 50'000},
                                {"MaxCapacity", 43'500}, {"Temperature", 3140},
                                {"Voltage", 12'000},     {"Amperage", -2100}};

class PopoverLayoutTest : public ViewTest {
 protected:
  /// As high as it needs to be.
  PopoverView& open() {
    ViewTest::open();
    view->resize(view->width(), view->wantedHeight());
    QCoreApplication::processEvents();
    return *view;
  }

  /// Where a widget is in the popover.
  QRect at(const QWidget* widget) const {
    return {widget->mapTo(view.get(), QPoint()), widget->size()};
  }

  Label* label(const QString& text) const {
    for (auto* child : view->findChildren<QLabel*>()) {
      if (child->isVisible() && child->text() == text) return dynamic_cast<Label*>(child);
    }
    ADD_FAILURE() << "no label " << text.toStdString();
    return nullptr;
  }

  static QColor colorOf(const Label* of) { return of->palette().color(QPalette::WindowText); }

  static bool hasInk(const QImage& image, const QRect& within, const QColor& color) {
    constexpr int kAlike = 24;
    for (int y = within.top(); y <= within.bottom(); ++y) {
      for (int x = within.left(); x <= within.right(); ++x) {
        if (distance(image.pixelColor(x, y), color) <= kAlike) return true;
      }
    }
    return false;
  }

  /// A pixel of the ring, at a share of the way round.
  QColor ringPixel(double share) const {
    auto* ring = only<RingView>();
    const double angle = share * 2 * M_PI;
    const double radius = (104 - 2 * 6) / 2.0;
    const QPointF place(52 + radius * std::sin(angle), 52 - radius * std::cos(angle));
    return picture(*ring).pixelColor(place.toPoint());
  }

  QPalette palette() const { return view->palette(); }
  QColor window() const { return palette().color(QPalette::Window); }
  QColor track() const { return over(window(), trackColor(palette())); }
};

TEST_F(PopoverLayoutTest, HasItsMeasures) {
  host.setBattery(73, {{"Time to Empty", 185}}, kEverything);
  host.model().snooze();
  open();
  const QRect ring = at(only<RingView>());
  EXPECT_EQ(ring, QRect(16, 16, 104, 104));
  const QRect state = at(label("On battery, 3 h 5 min left"));
  EXPECT_EQ(state.left(), ring.right() + 1 + 16);
  const QRect snoozed = at(label("Alerts snoozed until 15:13"));
  EXPECT_EQ(at(label("Alerts snoozed until 15:13")->parentWidget()).top() - state.bottom() - 1, 4);
  EXPECT_EQ(at(only<LinkButton>()).left() - snoozed.right() - 1, 4);
  // The texts stand in the middle of the ring's height.
  const QRect lines = state | at(only<LinkButton>()) | snoozed;
  EXPECT_NEAR(lines.center().y(), ring.center().y(), 2);

  const QRect cycles = at(label("Cycle count"));
  EXPECT_EQ(cycles.top() - ring.bottom() - 1, 14);
  EXPECT_EQ(cycles.left(), 16);
  EXPECT_EQ(at(label("412 of 1000")).right() + 1, 340 - 16);
  const QRect bar = at(only<CycleBarView>());
  EXPECT_EQ(bar.top() - cycles.bottom() - 1, 4);
  EXPECT_EQ(bar.width(), 308);
  const QRect health = at(label("Battery health"));
  const QRect temperature = at(label("Temperature"));
  EXPECT_EQ(health.top() - bar.bottom() - 1, 14);
  EXPECT_EQ(temperature.top() - health.bottom() - 1, 6);
  EXPECT_EQ(at(label("31.4 °C")).right() + 1, 340 - 16);
  const QRect range = at(only<SegmentedPicker>());
  EXPECT_EQ(range.top() - at(label("Power out")).bottom() - 1, 14);
  EXPECT_EQ(range.width(), 308);
  const QRect chart = at(only<HistoryChart>());
  EXPECT_EQ(chart.top() - range.bottom() - 1, 14);
  EXPECT_EQ(chart.size(), QSize(308, 110));
  const QRect summary = at(only<DailySummaryView>());
  EXPECT_EQ(summary.top() - chart.bottom() - 1, 14);
  const QRect settings = at(button(QStringLiteral("Settings…")));
  const QRect quit = at(button("Quit"));
  EXPECT_EQ(settings.left(), 16);
  EXPECT_EQ(quit.right() + 1, 340 - 16);
  EXPECT_EQ(quit.bottom() + 1, view->height() - 16);
  const QRect notice = at(label("Lumora can only remind you. A Mac app cannot stop the charger."));
  EXPECT_EQ(settings.top() - notice.bottom() - 1, 14);
  for (const auto* divider : view->findChildren<QFrame*>()) {
    if (divider->frameShape() != QFrame::HLine) continue;
    EXPECT_EQ(notice.top() - at(divider).bottom() - 1, 14);
    EXPECT_EQ(at(divider).top() - summary.bottom() - 1, 14);
  }
}

TEST_F(PopoverLayoutTest, HasItsMeasuresWithoutABattery) {
  host.powerSources.sources.reset();
  open();
  const QRect symbol = at(only<NoBatterySymbol>());
  const QRect title = at(label("No battery found"));
  const QRect why = at(label("This Mac does not report a battery, so Lumora stays quiet."));
  EXPECT_EQ(symbol.top(), 16 + 20);
  EXPECT_NEAR(symbol.center().x(), 169, 1);
  EXPECT_EQ(title.top() - symbol.bottom() - 1, 8);
  EXPECT_NEAR(title.center().x(), 169, 1);
  EXPECT_EQ(why.top() - title.bottom() - 1, 8);
  for (const auto* divider : view->findChildren<QFrame*>()) {
    if (divider->frameShape() == QFrame::HLine) {
      EXPECT_EQ(at(divider).top() - why.bottom() - 1, 20 + 14);
    }
  }
}

TEST_F(PopoverLayoutTest, GivesEveryTextTheFontAndColorOfItsRole) {
  host.setBattery(73, {{"Power Source State", "AC Power"}}, kEverything);
  host.model().snooze();
  open();
  click("Daily summary");
  const QColor primary = textColor(TextColor::primary, palette());
  const QColor secondary = textColor(TextColor::secondary, palette());
  struct Row {
    const char* text = nullptr;
    TextRole role = {};
    QColor color;
  };
  for (const Row& row : {
           Row{"Plugged in, not charging", TextRole::headline, primary},
           Row{"Plugged in for 1 min", TextRole::caption, secondary},
           Row{"Alerts snoozed until 15:13", TextRole::caption, secondary},
           Row{"Cycle count", TextRole::callout, primary},
           Row{"412 of 1000", TextRole::callout, secondary},
           Row{"Battery health", TextRole::callout, primary},
           Row{"87% · Fair", TextRole::callout, textColor(TextColor::orange, palette())},
           Row{"31.4 °C", TextRole::callout, secondary},
           Row{"25.2 W", TextRole::callout, secondary},
           Row{"Lumora can only remind you. A Mac app cannot stop the charger.", TextRole::caption2,
               secondary},
       }) {
    const Label* shown = label(row.text);
    ASSERT_NE(shown, nullptr) << texts().join('|').toStdString();
    EXPECT_EQ(shown->font(), fontFor(row.role)) << row.text;
    EXPECT_EQ(colorOf(shown), row.color) << row.text;
  }
  EXPECT_EQ(tableOf(*view)->font(), fontFor(TextRole::caption));
  const QImage image = picture(*view);
  for (const Cell& cell : cellsOf(*view)) {
    const bool heading = cell.row < 0;
    EXPECT_TRUE(hasInk(image, cell.rect, heading ? secondary : primary)) << cell.text.toStdString();
    EXPECT_NE(hasInk(image, cell.rect, primary), heading) << cell.text.toStdString();
  }
  EXPECT_EQ(only<LinkButton>()->font(), fontFor(TextRole::caption));
  EXPECT_EQ(only<Disclosure>()->font(), fontFor(TextRole::callout));
  host.powerSources.sources.reset();
  refresh();
  EXPECT_EQ(label("No battery found")->font(), fontFor(TextRole::headline));
  const Label* why = label("This Mac does not report a battery, so Lumora stays quiet.");
  EXPECT_EQ(why->font(), fontFor(TextRole::caption));
  EXPECT_EQ(colorOf(why), secondary);
}

TEST_F(PopoverLayoutTest, ColorsTheHealthByItsLevel) {
  for (const auto& [capacity, text, color] :
       {std::tuple(45'500, "91% · Good", TextColor::green),
        std::tuple(42'500, "85% · Fair", TextColor::orange),
        std::tuple(39'000, "78% · Service recommended", TextColor::red)}) {
    host.setBattery(73, {}, {{"DesignCapacity", 50'000}, {"MaxCapacity", capacity}});
    open();
    QColor shown;
    for (const auto* child : childrenOf<Label>(*view)) {
      if (child->isVisible() && child->text().startsWith(QString(text).left(3)))
        shown = colorOf(child);
    }
    EXPECT_EQ(shown, textColor(color, palette())) << text;
  }
}

TEST_F(PopoverLayoutTest, FillsTheRingInTheColorOfTheState) {
  struct Row {
    std::int64_t percent;
    Dictionary description;
    Tint tint;
  };
  for (const Row& row :
       {Row{73, {}, Tint::accent}, Row{20, {}, Tint::red}, Row{21, {}, Tint::accent},
        Row{50, {{"Power Source State", "AC Power"}, {"Is Charging", true}}, Tint::green},
        Row{20, {{"Power Source State", "AC Power"}}, Tint::accent}}) {
    host.setBattery(row.percent, row.description);
    open();
    const double filled = static_cast<double>(row.percent) / 100;
    const QColor color = markColor(row.tint, palette());
    EXPECT_LT(distance(ringPixel(0.01), color), 8) << row.percent;
    EXPECT_LT(distance(ringPixel(filled - 0.02), color), 8) << row.percent;
    EXPECT_LT(distance(ringPixel(filled + 0.06), track()), 8) << row.percent;
    EXPECT_LT(distance(ringPixel(0.94), track()), 8) << row.percent;
  }
}

TEST_F(PopoverLayoutTest, DrawsTheRingElevenPixelsWideWithThePercentInIt) {
  open();
  const QImage image = picture(*only<RingView>());
  const QColor color = markColor(Tint::accent, palette());
  // From three o'clock inwards.
  int width = 0;
  for (int x = 103; x > 70; --x) width += distance(image.pixelColor(x, 52), color) < 60 ? 1 : 0;
  EXPECT_NEAR(width, 11, 1);
  // Its middle is 6 pixels from the edge.
  EXPECT_LT(distance(image.pixelColor(102, 52), color), 60);
  EXPECT_LT(distance(image.pixelColor(94, 52), color), 60);
  EXPECT_GT(distance(image.pixelColor(91, 52), color), 60);
  // Digits of 28 pixels are about 20 high.
  int top = 104;
  int bottom = 0;
  for (int y = 25; y < 80; ++y) {
    for (int x = 22; x < 82; ++x) {
      if (distance(image.pixelColor(x, y), palette().color(QPalette::WindowText)) > 60) continue;
      top = std::min(top, y);
      bottom = std::max(bottom, y);
    }
  }
  EXPECT_NEAR(bottom - top, 20, 2);
}

TEST_F(PopoverLayoutTest, HasTheFiguresInTheMiddleOfTheRingInEveryFont) {
  constexpr int kScale = 4;
  for (const char* family : {"DejaVu Sans", "Inter", "Loma", "Lohit Tamil"}) {
    ASSERT_TRUE(QFontDatabase::families().contains(family)) << family;
    RingView ring;
    ring.setFont(QFont(family));
    ring.show(62, Tint::accent);
    ring.resize(ring.sizeHint());
    QImage image(ring.size() * kScale, QImage::Format_RGB32);
    image.setDevicePixelRatio(kScale);
    ring.render(&image);
    // Of the first figure alone: the sign reaches beyond it in some.
    int top = image.height();
    int bottom = 0;
    for (int y = 25 * kScale; y < 80 * kScale; ++y) {
      for (int x = 20 * kScale; x < 36 * kScale; ++x) {
        if (distance(image.pixelColor(x, y), ring.palette().color(QPalette::WindowText)) > 60) {
          continue;
        }
        top = std::min(top, y);
        bottom = std::max(bottom, y);
      }
    }
    // To a quarter of a pixel.
    EXPECT_NEAR((top + bottom) / 2.0, (image.height() - 1) / 2.0, kScale / 4.0) << family;
  }
}

TEST_F(PopoverLayoutTest, FillsTheBarByTheCyclesInTheirColor) {
  struct Row {
    std::int64_t cycles;
    Tint tint;
  };
  for (const Row& row : {Row{412, Tint::accent}, Row{700, Tint::accent}, Row{701, Tint::orange},
                         Row{900, Tint::orange}, Row{901, Tint::red}, Row{1200, Tint::red}}) {
    host.setBattery(73, {}, {{"CycleCount", row.cycles}});
    open();
    auto* bar = only<CycleBarView>();
    const QImage image = picture(*bar);
    const int end = static_cast<int>(308 * std::min<std::int64_t>(row.cycles, 1000) / 1000);
    const QColor color = markColor(row.tint, palette());
    EXPECT_LT(distance(image.pixelColor(4, 3), color), 8) << row.cycles;
    EXPECT_LT(distance(image.pixelColor(end - 4, 3), color), 8) << row.cycles;
    if (end == 308) continue;
    EXPECT_LT(distance(image.pixelColor(end + 2, 3), track()), 8) << row.cycles;
  }
}

TEST_F(PopoverLayoutTest, IsNoHigherForDaysThatLieAhead) {
  const auto height = [this](int daysAhead) {
    FakeHost machine;
    machine.clock.time = host.clock.time;
    std::vector<Sample> samples = minuteSamples(machine.now() - Seconds(60), 7 * 1440);
    for (int day = 1; day <= daysAhead; ++day) {
      samples.push_back({secondsSince1970(machine.now()) + 86'400.0 * day, 50, false, false});
    }
    machine.setBattery(73);
    machine.setHistory(samples);
    machine.model().refresh(AppModel::Reason::change);
    EXPECT_GE(machine.model().history().samples().size(), samples.size());
    view = std::make_unique<PopoverView>(machine);
    view->show();
    EXPECT_TRUE(waitUntilExposed(view.get()));
    click("Daily summary");
    QCoreApplication::processEvents();
    EXPECT_TRUE(texts().contains("Tue 24")) << texts().join('|').toStdString();
    const int needed = view->wantedHeight();
    view.reset();
    return needed;
  };
  const int usual = height(0);
  EXPECT_EQ(height(30), usual);
  EXPECT_EQ(height(7300), usual);
}

TEST_F(PopoverLayoutTest, HasColumnsOfTheirWidthsWhereTheTextsAreShort) {
  host.setHistory({{secondsSince1970(host.now()) - 60, 50, false, false}});
  open();
  click("Daily summary");
  QCoreApplication::processEvents();
  const QList<Cell> cells = cellsOf(*view);
  ASSERT_EQ(cells.size(), 8);
  constexpr int kMostGap = 16;
  EXPECT_EQ(cells[1].rect.width(), kMostGap + 38);
  EXPECT_EQ(cells[2].rect.width(), kMostGap + 68);
  EXPECT_EQ(cells[3].rect.width(), kMostGap + 62);
}

TEST_F(PopoverLayoutTest, KeepsTheColumnsOfTheTableApart) {
  host.setHistory([&] {
    std::vector<Sample> samples;
    for (int minute = 7 * 1440; minute >= 0; --minute) {
      const bool charging = minute % 1440 < 179;  // 2 h 59 min
      samples.push_back({secondsSince1970(host.now()) - 60.0 * minute,
                         charging ? 100 : 20 + minute % 60, charging, charging});
    }
    return samples;
  }());
  for (const double points : {10.0, 11.0, 16.0, 20.0}) {
    const ScopedFontSize size(points);
    open();
    click("Daily summary");
    QCoreApplication::processEvents();
    view->resize(view->width(), view->wantedHeight());
    QCoreApplication::processEvents();
    const QList<Cell> cells = cellsOf(*view);
    const QImage image = picture(*view);
    const QFont font = tableOf(*view)->font();
    const int line = QFontMetrics(font).height();
    const std::vector<int> widths = {0, 38, 68, 62};
    // Each row's ink keeps out of the gap before its column.
    for (const Cell& cell : cells) {
      const int gap = cell.column == 0 ? 0 : 8;
      EXPECT_GE(cell.rect.width(), gap + widths.at(static_cast<std::size_t>(cell.column)));
      EXPECT_GE(cell.rect.width() - gap, EvenDigits(font).width(cell.text))
          << points << " " << cell.text.toStdString();
      for (int x = cell.rect.left(); x < cell.rect.left() + gap; ++x) {
        for (int y = cell.rect.top(); y <= cell.rect.bottom(); ++y) {
          EXPECT_LT(distance(image.pixelColor(x, y), window()), 60)
              << points << " " << cell.text.toStdString();
        }
      }
    }
    EXPECT_EQ(cells[0].rect.left(), 16);
    EXPECT_EQ(cells[3].rect.right() + 1, 340 - 16);
    EXPECT_EQ(cells[0].rect.top() - at(only<Disclosure>()).bottom() - 1, 4);
    EXPECT_EQ(cells[0].rect.height(), line);
    EXPECT_GE(cells.size(), 4 * 8);
    for (const Cell& cell : cells) {
      if (cell.row < 0) continue;
      EXPECT_EQ(cell.rect.top(), cells[0].rect.bottom() + 1 + cell.row * (line + 4));
    }
    EXPECT_TRUE(texts().contains("2 h 59 min")) << texts().join('|').toStdString();
  }
}

}  // namespace
}  // namespace lumora::test
