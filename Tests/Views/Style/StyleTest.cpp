// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
// The controls of the settings are one family, as pixels show it.
#include "Views/Settings/SettingsTest.h"
#include "Views/Theme/Contrast.h"
#include "Views/Theme/DesktopLooks.h"

#include <QFrame>
#include <QMenu>
#include <QPainter>
#include <QStyleOption>

namespace lumora::test {
namespace {

class StyleTest : public SettingsTest {
 public:
  ~StyleTest() override {
    looks.apply({});
    QApplication::setLayoutDirection(Qt::LeftToRight);
  }

 protected:
  /// In a scheme, with the times enabled.
  void open(Appearance::ColorScheme scheme = Appearance::ColorScheme::light) {
    looks.apply({scheme, {}});
    write("quietEnabled", "true");
    SettingsTest::open();
  }

  /// One of each kind that has a ground of its own: button, list, time and number.
  QList<QWidget*> fields() const {
    return {button(QStringLiteral("Reset History…")), sounds()[0], time("From"),
            stepper("Alert when charging reaches 80%")};
  }

  QPalette palette() const { return window->palette(); }
  QColor card() const { return over(palette().color(QPalette::Window), cardColor(palette())); }

  /// Without text, signs and the ring that marks the focus.
  static QPoint plain(const QWidget* field) { return {5, field->height() / 2}; }

  /// A widget as it is seen in the window.
  QImage seen(QWidget* widget) const {
    window->findChild<QScrollArea*>()->ensureWidgetVisible(widget);
    const QImage whole = picture(*window);
    return whole.copy({widget->mapTo(window.get(), QPoint()), widget->size()});
  }

  DesktopLooks looks;
};

constexpr auto kSchemes = {Appearance::ColorScheme::light, Appearance::ColorScheme::dark};

TEST_F(StyleTest, GivesAllFieldsOneGroundWithRoundCorners) {
  for (const auto scheme : kSchemes) {
    open(scheme);
    const QColor ground = over(card(), fieldColor(palette()));
    for (QWidget* field : fields()) {
      const char* name = field->metaObject()->className();
      const QImage image = seen(field);
      EXPECT_LE(distance(image.pixelColor(plain(field)), ground), 1) << name;
      for (const int x : {0, image.width() - 1}) {
        for (const int y : {0, image.height() - 1}) {
          EXPECT_LE(distance(image.pixelColor(x, y), card()), 4) << name << " " << x << " " << y;
        }
        // The side is straight.
        EXPECT_LE(distance(image.pixelColor(x, 8), ground), 1) << name << " " << x;
      }
      // And flat.
      EXPECT_EQ(image.pixelColor(5, 8), image.pixelColor(5, image.height() - 8)) << name;
    }
  }
}

TEST_F(StyleTest, MakesEveryControlEasyToHit) {
  for (const double points : {8.0, 10.0, 11.0, 16.0}) {
    const ScopedFontSize size(points);
    open();
    click(button(QStringLiteral("Reset History…")));
    int count = 0;
    for (auto* widget : window->findChildren<QWidget*>()) {
      const bool isControl = qobject_cast<QAbstractButton*>(widget) != nullptr ||
                             qobject_cast<QComboBox*>(widget) != nullptr ||
                             qobject_cast<QTimeEdit*>(widget) != nullptr ||
                             qobject_cast<QSlider*>(widget) != nullptr;
      if (!isControl || !widget->isVisible()) continue;
      EXPECT_GE(widget->height(), 32) << widget->metaObject()->className() << " " << points;
      EXPECT_GE(widget->width(), 32) << widget->metaObject()->className() << " " << points;
      ++count;
    }
    // Nine switches, four numbers of two buttons, five sounds, two times, three buttons.
    EXPECT_GE(count, 9 + 4 * 3 + 5 + 2 + 3);
  }
}

TEST_F(StyleTest, AnswersTheMouse) {
  for (const auto scheme : kSchemes) {
    open(scheme);
    auto* reset = button(QStringLiteral("Reset History…"));
    EXPECT_TRUE(reset->testAttribute(Qt::WA_Hover));
    for (auto* field : fields()) field->setAttribute(Qt::WA_UnderMouse);
    for (auto* field : {fields()[0], fields()[1]}) {
      EXPECT_LE(distance(seen(field).pixelColor(plain(field)),
                         over(card(), fieldColor(palette(), Touch::hovered))),
                1);
    }
    reset->setDown(true);
    EXPECT_LE(distance(seen(reset).pixelColor(plain(reset)),
                       over(card(), fieldColor(palette(), Touch::pressed))),
              1);
  }
}

TEST_F(StyleTest, MakesWhatIsDisabledHalfAsStrong) {
  for (const auto scheme : kSchemes) {
    open(scheme);
    const QColor field = over(card(), fieldColor(palette()));
    const auto all = fields();
    for (auto* widget : all) {
      if (widget != all[0]) widget->setEnabled(true);
      const QImage enabled = seen(widget);
      widget->setEnabled(false);
      const QImage disabled = seen(widget);
      EXPECT_LE(distance(disabled.pixelColor(plain(widget)), mixed(field, card(), 0.5)), 2)
          << widget->metaObject()->className();
      // The text and the signs, too: nothing is left of the full strength.
      const auto strongest = [&](const QImage& image) {
        int most = 0;
        for (int y = 4; y < image.height() - 4; ++y) {
          for (int x = 4; x < image.width() - 4; ++x) {
            most = std::max(most, distance(image.pixelColor(x, y), card()));
          }
        }
        return most;
      };
      EXPECT_NEAR(strongest(disabled), strongest(enabled) / 2.0, 16)
          << widget->metaObject()->className();
    }
  }
}

TEST_F(StyleTest, MarksTheFocusOnlyWhereTheKeyboardIs) {
  open();
  window->activateWindow();
  auto* toggle = this->toggle("Charge limit");
  for (QWidget* control : {static_cast<QWidget*>(toggle), fields()[0], fields()[1], fields()[3]}) {
    window->setAttribute(Qt::WA_KeyboardFocusChange, false);
    window->setFocus();
    const QImage without = seen(control);
    control->setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(differences(without, seen(control)), 0) << control->metaObject()->className();
    window->setAttribute(Qt::WA_KeyboardFocusChange);
    EXPECT_GT(differences(without, seen(control)), control->width() / 2)
        << control->metaObject()->className();
  }
}

TEST_F(StyleTest, SaysWithColorsWhatReturnDoesAndWhatDestroys) {
  for (const auto scheme : kSchemes) {
    open(scheme);
    click(button(QStringLiteral("Reset History…")));
    const QColor ground = palette().color(QPalette::Window);
    const QImage cancel = picture(*button("Cancel"));
    EXPECT_EQ(cancel.pixelColor(5, 16), actionColor(palette()));
    EXPECT_TRUE(hasNear(cancel, {40, 16}, textOn(actionColor(palette())), 20));
    auto* reset = button("Reset");
    const QImage image = picture(*reset->parentWidget()).copy(reset->geometry());
    EXPECT_LE(distance(image.pixelColor(5, 16), over(ground, dangerFieldColor(palette()))), 1);
    EXPECT_TRUE(hasNear(image, {40, 16}, dangerColor(palette()), 20));
  }
}

TEST_F(StyleTest, ScrollsWithAThinHandleOverTheForm) {
  open();
  auto* scroll = window->findChild<QScrollArea*>();
  auto* bar = scroll->verticalScrollBar();
  EXPECT_EQ(scroll->viewport()->width(), 480);
  const QImage image = picture(*window);
  const QPoint handle = bar->mapTo(window.get(), QPoint(bar->width() / 2, 40));
  EXPECT_LE(distance(image.pixelColor(handle), neutralMarkColor(palette())), 1);
  // No arrows, no groove: beside the handle is the window.
  for (const QPoint& at : {handle - QPoint(5, 0), handle + QPoint(5, 0), QPoint(handle.x(), 1),
                           QPoint(handle.x(), window->height() - 10)}) {
    EXPECT_EQ(image.pixelColor(at), palette().color(QPalette::Window)) << at.x() << " " << at.y();
  }
  // It follows the mouse, also within its place beside the handle.
  const QPoint begin(1, 40);
  QTest::mousePress(bar, Qt::LeftButton, {}, begin);
  QMouseEvent move(QEvent::MouseMove, begin + QPoint(0, 100),
                   bar->mapToGlobal(begin + QPoint(0, 100)), Qt::NoButton, Qt::LeftButton, {});
  QCoreApplication::sendEvent(bar, &move);
  QTest::mouseRelease(bar, Qt::LeftButton, {}, begin + QPoint(0, 100));
  const double shown = static_cast<double>(bar->pageStep()) / (bar->maximum() + bar->pageStep());
  EXPECT_NEAR(bar->value(), 100 / shown, 3);
  // Beside it a click turns a page.
  bar->setValue(0);
  QTest::mouseClick(bar, Qt::LeftButton, {}, {6, bar->height() - 20});
  EXPECT_EQ(bar->value(), std::min(bar->pageStep(), bar->maximum()));
}

TEST_F(StyleTest, StepsATimeWithButtonsBesideEachOther) {
  open();
  auto* field = time("From");
  field->setSelectedSection(QDateTimeEdit::MinuteSection);
  QTest::mouseClick(field, Qt::LeftButton, {}, {field->width() - 16, 4});
  EXPECT_EQ(field->time(), QTime(22, 1));
  QTest::mouseClick(field, Qt::LeftButton, {}, {field->width() - 16, field->height() - 4});
  EXPECT_EQ(field->time(), QTime(22, 2));
  QTest::mouseClick(field, Qt::LeftButton, {}, {field->width() - 48, 4});
  EXPECT_EQ(field->time(), QTime(22, 1));
}

TEST_F(StyleTest, ListsTheSoundsWithAMarkAtTheChosenOne) {
  write("limitSound", "\"Ping\"");
  for (const auto direction : {Qt::LeftToRight, Qt::RightToLeft}) {
    for (const double points : {10.0, 16.0}) {
      const ScopedFontSize size(points);
      QApplication::setLayoutDirection(direction);
      open();
      auto* box = sounds()[0];
      box->showPopup();
      auto* list = box->view();
      // The mark, the gaps and the widest name.
      EXPECT_GE(list->viewport()->width(),
                44 + QFontMetrics(list->font()).horizontalAdvance("Submarine"))
          << points;
      EXPECT_GE(list->visualRect(list->model()->index(0, 0)).height(), 32);
      const QImage image = picture(*list->viewport());
      const QRect entry =
          list->visualRect(list->model()->index(box->currentIndex(), 0)) & list->viewport()->rect();
      const QColor ground = actionColor(palette());
      const QColor mark = textOn(ground);
      const bool mirrored = direction == Qt::RightToLeft;
      const QPoint sign(mirrored ? entry.right() - 16 : entry.left() + 16, entry.center().y());
      const QPoint opposite(mirrored ? entry.left() + 8 : entry.right() - 8, entry.center().y());
      EXPECT_TRUE(hasNear(image, sign, mark, 5)) << points << " " << mirrored;
      EXPECT_EQ(image.pixelColor(opposite), ground);
      // No other entry has one.
      EXPECT_FALSE(hasNear(image, sign + QPoint(0, entry.height()),
                           textColor(TextColor::primary, palette()), 5));
      box->hidePopup();
    }
  }
}

TEST_F(StyleTest, DrawsMenusAsLists) {
  looks.apply({Appearance::ColorScheme::dark, {}});
  QMenu menu;
  QAction* undo = menu.addAction("Undo\tCtrl+Z");
  menu.addSeparator();
  menu.addAction("Paste");
  menu.setActiveAction(undo);
  menu.resize(menu.sizeHint());
  const QImage image = picture(menu);
  const QPalette palette = menu.palette();
  const QRect entry = menu.actionGeometry(undo);
  EXPECT_GE(entry.height(), 32);
  EXPECT_EQ(image.pixelColor(entry.center().x(), entry.top() + 2), actionColor(palette));
  EXPECT_EQ(image.pixelColor(3, entry.center().y()), popupColor(palette));
  EXPECT_LE(distance(image.pixelColor(0, entry.center().y()),
                     over(popupColor(palette), outlineColor(palette))),
            40);
}

/// What the style draws of a widget, on nothing.
QImage drawn(QStyle::PrimitiveElement element, const QWidget& widget) {
  QStyleOption option;
  option.initFrom(&widget);
  QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter painter(&image);
  widget.style()->drawPrimitive(element, &option, &painter, &widget);
  return image;
}

TEST(StylesPopups, AreRoundWhereTheyMayBeTranslucentAndSquareElsewhere) {
  for (const auto element : {QStyle::PE_PanelMenu, QStyle::PE_PanelTipLabel}) {
    QWidget popup;
    popup.resize(60, 40);
    EXPECT_GT(drawn(element, popup).pixelColor(0, 0).alpha(), 40);
    EXPECT_EQ(drawn(element, popup).pixelColor(30, 20).alpha(), 255);
    popup.setAttribute(Qt::WA_TranslucentBackground);
    EXPECT_EQ(drawn(element, popup).pixelColor(0, 0).alpha(), 0);
    EXPECT_GT(drawn(element, popup).pixelColor(0, 20).alpha(), 40);
    EXPECT_EQ(drawn(element, popup).pixelColor(30, 20).alpha(), 255);
  }
}

TEST(StylesDivider, IsOneLine) {
  QFrame divider;
  divider.setFrameStyle(QFrame::HLine | QFrame::Sunken);
  divider.resize(60, 9);
  const QImage image = picture(divider);
  const QColor window = divider.palette().color(QPalette::Window);
  const QColor line = over(window, hairlineColor(divider.palette()));
  for (const int x : {0, 30, 59}) {
    int lines = 0;
    for (int y = 0; y < image.height(); ++y) {
      const QColor color = image.pixelColor(x, y);
      if (distance(color, line) <= 1) {
        ++lines;
      } else {
        EXPECT_EQ(color, window) << x << " " << y;
      }
    }
    EXPECT_EQ(lines, 1);
  }
}

}  // namespace
}  // namespace lumora::test
