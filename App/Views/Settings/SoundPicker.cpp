// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Settings/SoundPicker.h"

#include "Base/Texts.h"
#include "Preferences/SoundNames.h"

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QVariant>
#include <QWheelEvent>
#include <utility>

namespace lumora {

SoundPicker::SoundPicker(Picked picked, QWidget* parent) : QComboBox(parent) {
  // TRANSLATORS: The desktop's own sound of a notification.
  addItem(translatedIn("sound", "Default"), kDefaultSoundName);
  // TRANSLATORS: No sound.
  addItem(translatedIn("sound", "None"), kNoSoundName);
  insertSeparator(count());
  for (const char* name : kSoundNames) addItem(name, name);
  setMaxVisibleItems(count());
  setFocusPolicy(Qt::StrongFocus);
  connect(this, &QComboBox::activated, this, [this, picked = std::move(picked)](int index) {
    const std::string sound = itemData(index).toString().toStdString();
    if (sound != shown_) picked(sound);
  });
}

void SoundPicker::show(const std::string& sound) {
  shown_ = sound;
  const QString stored = QString::fromStdString(sound);
  setPlaceholderText(stored);
  setCurrentIndex(findData(stored));
}

void SoundPicker::showPopup() {
  QComboBox::showPopup();
  // After Qt's own, and so asked before it.
  view()->installEventFilter(this);
}

/// Qt has the menu closed by the key itself or, in some versions, by the question before it whether
/// the key is a shortcut.
bool SoundPicker::eventFilter(QObject* watched, QEvent* event) {
  const bool isKey = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
  if (watched != view() || !isKey) return QComboBox::eventFilter(watched, event);
  const int key = static_cast<QKeyEvent*>(event)->key();
  const int entry = view()->currentIndex().row();
  if ((key != Qt::Key_Return && key != Qt::Key_Enter) || entry < 0 || entry == currentIndex()) {
    return QComboBox::eventFilter(watched, event);
  }
  event->accept();
  if (event->type() == QEvent::ShortcutOverride) return true;
  setCurrentIndex(entry);
  emit activated(entry);
  return true;
}

void SoundPicker::wheelEvent(QWheelEvent* event) {
  if (hasFocus()) {
    QComboBox::wheelEvent(event);
  } else {
    event->ignore();
  }
}

}  // namespace lumora
