// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Style/Style.h"

#include "Views/Display.h"
#include "Views/Style/Shapes.h"
#include "Views/Style/StandardControls.h"
#include "Views/Theme/Palettes.h"
#include "Views/Theme/Tokens.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QFrame>
#include <QMenu>
#include <QScrollBar>

namespace lumora {
namespace {

constexpr int kScrollBar = 12;
constexpr int kPopupMargin = 4;

template <typename Option>
const Option& as(const QStyleOption* option) {
  return *static_cast<const Option*>(option);
}

bool isLike(const QPalette& one, const QPalette& other) {
  const auto same = [&](QPalette::ColorRole role) {
    return one.color(QPalette::Active, role) == other.color(QPalette::Active, role);
  };
  return same(QPalette::Window) && same(QPalette::Highlight);
}

bool isPopup(const QWidget* widget) {
  return qobject_cast<const QMenu*>(widget) != nullptr || widget->inherits("QTipLabel") ||
         widget->inherits("QComboBoxPrivateContainer");
}

}  // namespace

Style::Style(QStyle* toolkits)
    : QProxyStyle(toolkits), firstPalette_(QProxyStyle::standardPalette()) {}

void Style::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                          const QWidget* widget) const {
  const QPalette& palette = option->palette;
  switch (element) {
    case PE_FrameFocusRect: {
      const Painting painting(*painter, *option);
      return drawRing(*painter, option->rect, kInnerRadius, focusColor(palette));
    }
    case PE_PanelMenu:
      return drawPopup(*painter, *option, popupColor(palette), widget);
    case PE_PanelTipLabel:
      return drawPopup(*painter, *option, palette.color(QPalette::ToolTipBase), widget);
    case PE_FrameMenu:
      return;
    case PE_PanelLineEdit:
      // A field has one ground.
      if (qobject_cast<const QAbstractSpinBox*>(widget->parentWidget()) != nullptr) return;
      [[fallthrough]];
    default:
      QProxyStyle::drawPrimitive(element, option, painter, widget);
  }
}

void Style::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                        const QWidget* widget) const {
  switch (element) {
    case CE_PushButton:
      return drawButton(*painter, as<QStyleOptionButton>(option), widget);
    case CE_ComboBoxLabel:
      return drawChoiceText(*painter, as<QStyleOptionComboBox>(option));
    case CE_MenuItem:
      return drawEntry(*painter, as<QStyleOptionMenuItem>(option));
    case CE_MenuEmptyArea:
      return painter->fillRect(option->rect, popupColor(option->palette));
    case CE_ShapedFrame: {
      const auto shape = as<QStyleOptionFrame>(option).frameShape;
      if (shape == QFrame::HLine) return drawDivider(*painter, *option);
      // It has a ground with an outline.
      if (widget != nullptr && isPopup(widget)) return;
      break;
    }
    default:
      break;
  }
  QProxyStyle::drawControl(element, option, painter, widget);
}

void Style::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                               QPainter* painter, const QWidget* widget) const {
  switch (control) {
    case CC_ComboBox:
      return drawChoice(*painter, as<QStyleOptionComboBox>(option));
    case CC_SpinBox:
      return drawNumberField(*painter, as<QStyleOptionSpinBox>(option));
    case CC_ScrollBar:
      return drawScrollBar(*painter, as<QStyleOptionSlider>(option));
    default:
      QProxyStyle::drawComplexControl(control, option, painter, widget);
  }
}

QRect Style::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                            SubControl part, const QWidget* widget) const {
  if (control == CC_SpinBox) return numberFieldPart(as<QStyleOptionSpinBox>(option), part);
  if (control == CC_ScrollBar) return scrollBarPart(as<QStyleOptionSlider>(option), part);
  if (control == CC_ComboBox && part == SC_ComboBoxEditField) {
    return choiceTextArea(as<QStyleOptionComboBox>(option));
  }
  return QProxyStyle::subControlRect(control, option, part, widget);
}

QSize Style::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                              const QWidget* widget) const {
  switch (type) {
    case CT_PushButton:
      return buttonSize(*option, contents);
    case CT_ComboBox:
      return choiceSize(*option, contents);
    case CT_SpinBox:
      return numberFieldSize(*option, contents);
    case CT_MenuItem:
      return entrySize(as<QStyleOptionMenuItem>(option), contents);
    default:
      return QProxyStyle::sizeFromContents(type, option, contents, widget);
  }
}

int Style::pixelMetric(PixelMetric metric, const QStyleOption* option,
                       const QWidget* widget) const {
  switch (metric) {
    case PM_ScrollBarExtent:
    case PM_ScrollView_ScrollBarOverlap:
      return kScrollBar;
    case PM_MenuPanelWidth:
      return 1;
    case PM_MenuVMargin:
      return kPopupMargin;
    case PM_MenuHMargin:
      return 0;
    case PM_ToolTipLabelFrameWidth:
      return 2 * kPopupMargin;
    default:
      return QProxyStyle::pixelMetric(metric, option, widget);
  }
}

int Style::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                     QStyleHintReturn* answer) const {
  switch (hint) {
    case SH_ComboBox_Popup:
      return 1;
    case SH_ComboBox_PopupFrameStyle:
      return int{QFrame::Box} | int{QFrame::Plain};
    case SH_DialogButtonBox_ButtonsHaveIcons:
      return 0;
    default:
      return QProxyStyle::styleHint(hint, option, widget, answer);
  }
}

void Style::polish(QWidget* widget) {
  QProxyStyle::polish(widget);
  if (qobject_cast<QAbstractButton*>(widget) != nullptr ||
      qobject_cast<QComboBox*>(widget) != nullptr ||
      qobject_cast<QAbstractSpinBox*>(widget) != nullptr ||
      qobject_cast<QScrollBar*>(widget) != nullptr) {
    widget->setAttribute(Qt::WA_Hover);
  }
  // It lies over what is scrolled.
  if (qobject_cast<QScrollBar*>(widget) != nullptr) {
    widget->setAttribute(Qt::WA_OpaquePaintEvent, false);
  }
  const QScreen* screen = widget->screen();
  if (isPopup(widget) && screen != nullptr && blendsWindows(*screen)) {
    widget->setAttribute(Qt::WA_TranslucentBackground);
  }
}

void Style::polish(QPalette& palette) {
  QProxyStyle::polish(palette);
  const QPalette toolkits = QProxyStyle::standardPalette();
  // Before 6.5 an application keeps the palette of its start when the desktop turns dark.
  if (isLike(palette, toolkits) || isLike(palette, firstPalette_)) {
    palette = ownPalette(isDark(toolkits), false);
  }
  groundWindows(palette);
  fadeDisabled(palette);
}

bool isGood(const QString& style) { return style == "breeze"; }

void installStyle() {
  if (!isGood(QApplication::style()->name())) QApplication::setStyle(new Style);
}

}  // namespace lumora
