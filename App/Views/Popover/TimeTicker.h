// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <qcustomplot.h>

namespace lumora {

/// The marks below the history chart: round hours of one day, or midnights of several with each
/// day's name between them. Its ticks are where labels go, its sub-ticks what is to be drawn. Where
/// labels would touch there is only every other one, or fewer.
class TimeTicker : public QCPAxisTicker {
 public:
  /// The axis must outlive it.
  TimeTicker(const QCPAxis& axis, int days) : axis_(axis), days_(days) {}

  void generate(const QCPRange& range, const QLocale& locale, QChar formatChar, int precision,
                QVector<double>& ticks, QVector<double>* subTicks,
                QVector<QString>* tickLabels) override;

 private:
  struct Label {
    double at = 0;  // seconds since 1970
    QString text;
  };

  void addHours(const QDate& day, const QCPRange& range);
  void addDay(const QDate& day, const QCPRange& range);
  int strideThatFits(const QCPRange& range) const;
  double pixels(double seconds, const QCPRange& range) const;

  const QCPAxis& axis_;
  int days_;
  QVector<double> marks_;
  QVector<Label> labels_;
};

}  // namespace lumora
