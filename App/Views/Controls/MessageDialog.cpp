// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Controls/MessageDialog.h"

#include "Views/Controls/Labels.h"
#include "Views/Controls/OwnFrame.h"

#include <QDialog>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

namespace lumora {
namespace {

constexpr int kWidth = 360;
constexpr int kMargin = 20;
constexpr int kSpacing = 10;
// A dialog that is closed otherwise has the result 0.
constexpr int kFirstResult = 1;

}  // namespace

void showDialog(const Dialog& dialog, QDialogButtonBox::ButtonRole firstRole, QWidget* parent,
                const std::function<void(std::size_t)>& answer) {
  auto* window = new QDialog(parent);
  window->setAttribute(Qt::WA_DeleteOnClose);
  window->setWindowTitle("Lumora");
  auto* layout = new QVBoxLayout(window);
  layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  layout->setSpacing(kSpacing);
  layout->addWidget(makeWrapping(TextRole::headline, QString::fromStdString(dialog.message)));
  layout->addWidget(makeWrapping(TextRole::body, QString::fromStdString(dialog.informativeText)));
  layout->addSpacing(kSpacing);

  auto* box = new QDialogButtonBox;
  layout->addWidget(box);
  // What destroys something is never a slip of the return key.
  const std::size_t last = dialog.buttons.size() - 1;
  const std::size_t usual = firstRole == QDialogButtonBox::DestructiveRole ? last : 0;
  for (std::size_t i = 0; i <= last; ++i) {
    const auto role = i == 0 ? firstRole : QDialogButtonBox::RejectRole;
    auto* button = box->addButton(QString::fromStdString(dialog.buttons[i]), role);
    button->setDefault(i == usual);
    if (i == usual) button->setFocus();
    QObject::connect(button, &QPushButton::clicked, window,
                     [window, i] { window->done(static_cast<int>(i) + kFirstResult); });
  }
  QObject::connect(window, &QDialog::finished, window, [answer, last](int result) {
    answer(result == QDialog::Rejected ? last : static_cast<std::size_t>(result - kFirstResult));
  });
  if (OwnFrame::isAround(*parent)) new OwnFrame(*window);
  const int width = std::max(kWidth, layout->minimumSize().width());
  const QSize content(width, layout->heightForWidth(width));
  window->setFixedSize(content.grownBy(window->contentsMargins()));
  window->open();
  window->raise();
  window->activateWindow();
}

}  // namespace lumora
