// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Views/Popover/TimeTicker.h"

#include "Base/TimeText.h"

#include <QFontMetrics>
#include <algorithm>

namespace lumora {
namespace {

constexpr int kHoursApart = 6;
constexpr double kGap = 6;
// Of the chart's width, what the labels at its side leave.
constexpr double kPlotShare = 0.83;

double seconds(const QDateTime& moment) {
  return static_cast<double>(moment.toMSecsSinceEpoch()) / 1000;
}

Date date(const QDateTime& moment) { return dateSince1970(seconds(moment)); }

}  // namespace

void TimeTicker::generate(const QCPRange& range, const QLocale& /*locale*/, QChar /*formatChar*/,
                          int /*precision*/, QVector<double>& ticks, QVector<double>* subTicks,
                          QVector<QString>* tickLabels) {
  marks_.clear();
  labels_.clear();
  const QDate last = QDateTime::fromMSecsSinceEpoch(qRound64(range.upper * 1000)).date();
  QDate day = QDateTime::fromMSecsSinceEpoch(qRound64(range.lower * 1000)).date();
  for (; day <= last; day = day.addDays(1)) days_ == 1 ? addHours(day, range) : addDay(day, range);

  ticks.clear();
  if (subTicks != nullptr) *subTicks = marks_;
  if (tickLabels != nullptr) tickLabels->clear();
  const int stride = strideThatFits(range);
  for (int i = 0; i < labels_.size(); i += stride) {
    ticks.push_back(labels_[i].at);
    if (tickLabels != nullptr) tickLabels->push_back(labels_[i].text);
  }
}

/// One for all labels, two for every other one, and so on.
int TimeTicker::strideThatFits(const QCPRange& range) const {
  const QFontMetrics metrics(axis_.tickLabelFont());
  const auto width = [&](int i) { return metrics.horizontalAdvance(labels_[i].text); };
  const auto touches = [&](int before, int i) {
    const double apart = pixels(labels_[i].at - labels_[before].at, range);
    return apart < (width(before) + width(i)) / 2.0 + kGap;
  };
  int stride = 1;
  for (int i = stride; i < labels_.size(); i += stride) {
    if (!touches(i - stride, i)) continue;
    ++stride;
    i = 0;
  }
  return stride;
}

void TimeTicker::addHours(const QDate& day, const QCPRange& range) {
  for (int hour = 0; hour < 24; hour += kHoursApart) {
    const QDateTime moment(day, QTime(hour, 0));
    if (!range.contains(seconds(moment))) continue;
    marks_.push_back(seconds(moment));
    labels_.push_back({seconds(moment), QString::fromStdString(hourText(date(moment)))});
  }
}

void TimeTicker::addDay(const QDate& day, const QCPRange& range) {
  const double midnight = seconds(day.startOfDay());
  const double next = seconds(day.addDays(1).startOfDay());
  if (range.contains(midnight)) marks_.push_back(midnight);
  const double from = std::max(midnight, range.lower);
  const double to = std::min(next, range.upper);
  const QString name = QString::fromStdString(weekdayText(date(QDateTime(day, QTime(12, 0)))));
  const bool whole = from == midnight && to == next;
  // A day that is cut off is named where the rest has room for it.
  const int width = QFontMetrics(axis_.tickLabelFont()).horizontalAdvance(name);
  if (whole || pixels(to - from, range) >= width) labels_.push_back({(from + to) / 2, name});
}

/// Not of the axis, which knows its width only once it has been drawn.
double TimeTicker::pixels(double seconds, const QCPRange& range) const {
  return seconds / range.size() * axis_.parentPlot()->width() * kPlotShare;
}

}  // namespace lumora
