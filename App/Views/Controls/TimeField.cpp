// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Controls/TimeField.h"

#include "Base/NumberText.h"
#include "Base/TimeText.h"

#include <QEvent>
#include <QLineEdit>
#include <QLocale>
#include <QWheelEvent>
#include <algorithm>

namespace lumora {
namespace {

/// As all other times are written.
QString localesFormat() {
  const ClockForm form = clockForm();
  const QString separator = QString::fromStdString(form.separator);
  if (!form.twelveHours) return "HH" + separator + "mm";
  const QString time = "h" + separator + "mm";
  return form.markFirst ? "AP " + time : time + " AP";
}

/// The toolkit's account of the user's locale, or another of the language, with the digits of all
/// other numbers.
QLocale fieldLocale() {
  const QString zero = QString::fromStdString(numberText(0));
  const QLocale users;
  QList<QLocale> locales = {users};
  locales += QLocale::matchingLocales(users.language(), users.script(), QLocale::AnyTerritory);
  const auto found = std::find_if(locales.begin(), locales.end(), [&](const QLocale& locale) {
    return locale.zeroDigit() == zero;
  });
  return found != locales.end() ? *found : QLocale::c();
}

}  // namespace

TimeField::TimeField(QWidget* parent) : QTimeEdit(parent) {
  // Hours before minutes in every language.
  setLayoutDirection(Qt::LeftToRight);
  setLocale(fieldLocale());
  setDisplayFormat(localesFormat());
  setFocusPolicy(Qt::StrongFocus);
  lineEdit()->installEventFilter(this);
}

QSize TimeField::sizeHint() const {
  // The mark of the half of the day can be of letters that a taller font has.
  const int taller = fontMetrics().size(0, text()).height() - fontMetrics().height();
  return QTimeEdit::sizeHint() + QSize(0, taller);
}

bool TimeField::eventFilter(QObject* watched, QEvent* event) {
  const bool handled = QTimeEdit::eventFilter(watched, event);
  if (watched == lineEdit() && event->type() == QEvent::MouseButtonRelease) {
    // After the line has put its cursor there.
    QMetaObject::invokeMethod(
        this, [this] { setSelectedSection(currentSection()); }, Qt::QueuedConnection);
  }
  return handled;
}

void TimeField::wheelEvent(QWheelEvent* event) {
  if (hasFocus()) {
    QTimeEdit::wheelEvent(event);
  } else {
    event->ignore();
  }
}

}  // namespace lumora
