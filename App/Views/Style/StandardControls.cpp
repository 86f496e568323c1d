// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Style/StandardControls.h"

#include "Views/Style/Shapes.h"
#include "Views/Theme/Colors.h"
#include "Views/Theme/Contrast.h"
#include "Views/Theme/Tokens.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QDialogButtonBox>
#include <algorithm>
#include <cstdint>

namespace lumora {
namespace {

constexpr int kLeastButtonWidth = 80;
constexpr int kButtonPadding = 8;
constexpr int kStepWidth = 32;
constexpr int kEntryInset = 4;
// Its text has the place of a check mark before it.
constexpr int kEntryBefore = kEntryInset + kSignSide + kSignGap;
constexpr int kEntryAfter = kSignGap;
constexpr int kSeparatorHeight = 9;
constexpr int kHandleMargin = 4;
constexpr int kLeastHandle = 32;

/// The side in a language that is written from the left, mirrored in the others.
int atSide(const QStyleOption& option, Qt::AlignmentFlag side) {
  return static_cast<int>(QStyle::visualAlignment(option.direction, side));
}

void drawHairline(QPainter& painter, const QRect& area, const QPalette& palette) {
  painter.fillRect(QRect(area.left(), area.center().y(), area.width(), 1), hairlineColor(palette));
}

enum class Meaning { usual, answer, danger };

/// Of a button in a dialog: what Return presses, what destroys something, or neither. Elsewhere Qt
/// has Return press whatever button has the focus.
Meaning meaningOf(const QStyleOptionButton& button, const QWidget* widget) {
  const auto* box =
      widget != nullptr ? qobject_cast<QDialogButtonBox*>(widget->parentWidget()) : nullptr;
  if (box == nullptr) return Meaning::usual;
  for (QAbstractButton* other : box->buttons()) {
    if (other != widget) continue;
    if (box->buttonRole(other) == QDialogButtonBox::DestructiveRole) return Meaning::danger;
  }
  return button.features.testFlag(QStyleOptionButton::DefaultButton) ? Meaning::answer
                                                                     : Meaning::usual;
}

struct ButtonColors {
  QColor ground;
  QColor text;
};

ButtonColors colorsOf(Meaning meaning, const QStyleOptionButton& button) {
  const Touch touch = touchOf(button);
  switch (meaning) {
    case Meaning::answer: {
      const QColor ground = actionColor(button.palette, touch);
      return {ground, textOn(ground)};
    }
    case Meaning::danger:
      return {dangerFieldColor(button.palette, touch), dangerColor(button.palette)};
    case Meaning::usual:
      break;
  }
  return {fieldColor(button.palette, touch), primaryColor(button)};
}

}  // namespace

QSize buttonSize(const QStyleOption& button, const QSize& text) {
  return {std::max(kLeastButtonWidth, text.width() + 2 * kButtonPadding),
          controlHeight(button.fontMetrics)};
}

void drawButton(QPainter& painter, const QStyleOptionButton& button, const QWidget* widget) {
  const Painting painting(painter, button);
  const Meaning meaning = meaningOf(button, widget);
  const auto [ground, text] = colorsOf(meaning, button);
  drawGround(painter, button.rect, kControlRadius, ground, button.palette);
  painter.setPen(text);
  painter.drawText(button.rect, Qt::AlignCenter | Qt::TextHideMnemonic, button.text);
  if (!showsFocus(button)) return;
  if (meaning == Meaning::answer) {
    // On the accent the ring would not be seen.
    constexpr int kGap = 2;
    drawRing(painter, QRectF(button.rect).adjusted(kGap, kGap, -kGap, -kGap), kInnerRadius, text);
  } else {
    drawRing(painter, button.rect, kControlRadius, focusColor(button.palette));
  }
}

QSize choiceSize(const QStyleOption& box, const QSize& text) {
  return {text.width() + 2 * kControlPadding + kSignGap + kSignSide,
          controlHeight(box.fontMetrics)};
}

QRect choiceTextArea(const QStyleOptionComboBox& box) {
  const QRect text =
      box.rect.adjusted(kControlPadding, 0, -kControlPadding - kSignSide - kSignGap, 0);
  return QStyle::visualRect(box.direction, box.rect, text);
}

void drawChoice(QPainter& painter, const QStyleOptionComboBox& box) {
  const Painting painting(painter, box);
  const Touch touch = box.state.testFlag(QStyle::State_On) ? Touch::pressed : touchOf(box);
  drawGround(painter, box.rect, kControlRadius, fieldColor(box.palette, touch), box.palette);
  const QRect sign(box.rect.right() + 1 - kControlPadding - kSignSide, box.rect.top(), kSignSide,
                   box.rect.height());
  drawAngle(painter, QRectF(QStyle::visualRect(box.direction, box.rect, sign)).center(),
            kSignSide / 2.0, kPointsDown, primaryColor(box));
  if (showsFocus(box)) drawRing(painter, box.rect, kControlRadius, focusColor(box.palette));
}

void drawChoiceText(QPainter& painter, const QStyleOptionComboBox& box) {
  const Painting painting(painter, box);
  painter.setPen(primaryColor(box));
  painter.drawText(choiceTextArea(box), Qt::AlignVCenter | atSide(box, Qt::AlignLeft),
                   box.currentText);
}

QSize numberFieldSize(const QStyleOption& field, const QSize& text) {
  return {text.width() + kControlPadding + kSignGap + 2 * kStepWidth,
          controlHeight(field.fontMetrics)};
}

QRect numberFieldPart(const QStyleOptionSpinBox& field, QStyle::SubControl part) {
  QRect area = field.rect;
  switch (part) {
    case QStyle::SC_SpinBoxEditField:
      area.adjust(kControlPadding, 0, -2 * kStepWidth - kSignGap, 0);
      break;
    case QStyle::SC_SpinBoxDown:
      area.setLeft(area.right() + 1 - 2 * kStepWidth);
      area.setWidth(kStepWidth);
      break;
    case QStyle::SC_SpinBoxUp:
      area.setLeft(area.right() + 1 - kStepWidth);
      break;
    default:
      return area;
  }
  return QStyle::visualRect(field.direction, field.rect, area);
}

void drawNumberField(QPainter& painter, const QStyleOptionSpinBox& field) {
  const Painting painting(painter, field);
  drawGround(painter, field.rect, kControlRadius, fieldColor(field.palette), field.palette);
  struct Part {
    Step step;
    QStyle::SubControl place;
    QAbstractSpinBox::StepEnabledFlag possible;
  };
  for (const Part& part :
       {Part{Step::less, QStyle::SC_SpinBoxDown, QAbstractSpinBox::StepDownEnabled},
        Part{Step::more, QStyle::SC_SpinBoxUp, QAbstractSpinBox::StepUpEnabled}}) {
    const QRect area = numberFieldPart(field, part.place);
    const bool possible = field.stepEnabled.testFlag(part.possible);
    const bool touched = possible && field.activeSubControls.testFlag(part.place);
    if (!possible) painter.setOpacity(kDisabledOpacity);
    drawStep(painter, area, part.step, touched ? touchOf(field) : Touch::none, field.palette);
    if (!possible && field.state.testFlag(QStyle::State_Enabled)) painter.setOpacity(1);
    const bool rightToLeft = field.direction == Qt::RightToLeft;
    drawParting(painter, rightToLeft ? area.right() : area.left(), area, field.palette);
  }
  // A field is written into, so it always shows that it will be.
  if (field.state.testFlag(QStyle::State_HasFocus)) {
    drawRing(painter, field.rect, kControlRadius, focusColor(field.palette));
  }
}

QRect scrollBarPart(const QStyleOptionSlider& bar, QStyle::SubControl part) {
  const bool horizontal = bar.orientation == Qt::Horizontal;
  const std::int64_t length = horizontal ? bar.rect.width() : bar.rect.height();
  const std::int64_t range = std::int64_t{bar.maximum} - bar.minimum;
  const auto handle = static_cast<int>(std::clamp<std::int64_t>(
      length * bar.pageStep / std::max<std::int64_t>(range + bar.pageStep, 1),
      std::min<std::int64_t>(kLeastHandle, length), length));
  const int rest = static_cast<int>(length) - handle;
  const int start = QStyle::sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition,
                                                    rest, bar.upsideDown);
  const auto along = [&](int from, int size) {
    const QRect area = horizontal
                           ? QRect(bar.rect.left() + from, bar.rect.top(), size, bar.rect.height())
                           : QRect(bar.rect.left(), bar.rect.top() + from, bar.rect.width(), size);
    return QStyle::visualRect(bar.direction, bar.rect, area);
  };
  switch (part) {
    case QStyle::SC_ScrollBarSlider:
      return along(start, handle);
    case QStyle::SC_ScrollBarSubPage:
      return along(0, start);
    case QStyle::SC_ScrollBarAddPage:
      return along(start + handle, rest - start);
    case QStyle::SC_ScrollBarGroove:
      return bar.rect;
    default:
      return {};
  }
}

void drawScrollBar(QPainter& painter, const QStyleOptionSlider& bar) {
  if (bar.maximum <= bar.minimum) return;
  const Painting painting(painter, bar);
  const bool touched = touchOf(bar) != Touch::none;
  const int margin = touched ? kHandleMargin - 1 : kHandleMargin;
  const QRectF handle = QRectF(scrollBarPart(bar, QStyle::SC_ScrollBarSlider))
                            .adjusted(margin, margin, -margin, -margin);
  const double radius = std::min(handle.width(), handle.height()) / 2;
  painter.setPen(Qt::NoPen);
  painter.setBrush(touched ? textColor(TextColor::secondary, bar.palette)
                           : neutralMarkColor(bar.palette));
  painter.drawRoundedRect(handle, radius, radius);
}

QSize entrySize(const QStyleOptionMenuItem& entry, const QSize& text) {
  if (entry.menuItemType == QStyleOptionMenuItem::Separator) return {0, kSeparatorHeight};
  return {text.width() + kEntryBefore + kEntryAfter + 2 * kEntryInset,
          controlHeight(entry.fontMetrics)};
}

void drawEntry(QPainter& painter, const QStyleOptionMenuItem& entry) {
  const QPalette& palette = entry.palette;
  painter.fillRect(entry.rect, popupColor(palette));
  const QRect area = entry.rect.adjusted(kEntryInset, 0, -kEntryInset, 0);
  if (entry.menuItemType == QStyleOptionMenuItem::Separator) {
    return drawHairline(painter, area, palette);
  }
  const Painting painting(painter, entry);
  const bool chosen =
      entry.state.testFlag(QStyle::State_Selected) && entry.state.testFlag(QStyle::State_Enabled);
  const QColor color = chosen ? textOn(actionColor(palette)) : primaryColor(entry);
  if (chosen) drawGround(painter, area, kInnerRadius, actionColor(palette), palette);

  const QRect sign(area.left() + kEntryInset, area.top(), kSignSide, area.height());
  if (entry.checkType != QStyleOptionMenuItem::NotCheckable && entry.checked) {
    drawCheckMark(painter, QRectF(QStyle::visualRect(entry.direction, area, sign)).center(),
                  kSignSide * 0.6, color);
  }
  const QRect text =
      QStyle::visualRect(entry.direction, area, area.adjusted(kEntryBefore, 0, -kEntryAfter, 0));
  // A menu's entry has its keys behind a tab.
  const QStringList words = entry.text.split('\t');
  const int flags = Qt::AlignVCenter | Qt::TextHideMnemonic | Qt::TextSingleLine;
  painter.setFont(entry.font);
  painter.setPen(color);
  painter.drawText(text, flags | atSide(entry, Qt::AlignLeft), words[0]);
  if (words.size() < 2) return;
  painter.drawText(text, flags | atSide(entry, Qt::AlignRight), words[1]);
}

void drawPopup(QPainter& painter, const QStyleOption& popup, const QColor& color,
               const QWidget* widget) {
  const Painting painting(painter, popup);
  const bool round = widget != nullptr && widget->testAttribute(Qt::WA_TranslucentBackground);
  drawPanel(painter, popup.rect, round ? kPopupRadius : 0, color, outlineColor(popup.palette));
}

void drawDivider(QPainter& painter, const QStyleOption& divider) {
  drawHairline(painter, divider.rect, divider.palette);
}

}  // namespace lumora
