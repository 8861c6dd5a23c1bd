// SPDX-License-Identifier: MIT
#include "tests/library/endurance/trend.h"

#include <algorithm>

void Trend::Add(double at, double value) {
  points_.push_back({at, value});
}

double Trend::Smallest() const {
  double smallest = First();
  for (const Point& point : points_) smallest = std::min(smallest, point.value);
  return smallest;
}

double Trend::Largest() const {
  double largest = First();
  for (const Point& point : points_) largest = std::max(largest, point.value);
  return largest;
}

double Trend::Slope() const {
  const auto count = static_cast<double>(points_.size());
  // From the first value on, so that a figure that never moves has a slope of exactly 0.
  const double first = First();
  double meanAt = 0.0;
  double meanValue = 0.0;
  for (const Point& point : points_) {
    meanAt += point.at / count;
    meanValue += (point.value - first) / count;
  }
  double products = 0.0;
  double squares = 0.0;
  for (const Point& point : points_) {
    products += (point.at - meanAt) * (point.value - first - meanValue);
    squares += (point.at - meanAt) * (point.at - meanAt);
  }
  return squares > 0.0 ? products / squares : 0.0;
}
