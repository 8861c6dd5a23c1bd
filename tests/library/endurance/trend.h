// SPDX-License-Identifier: MIT
// One figure over a long run: where it began, where it ended, and the straight line through it.
#pragma once

#include <vector>

class Trend {
 public:
  /// @param at how far the run has come, in whatever it counts; grows from call to call
  void Add(double at, double value);

  // All need at least one point.
  double First() const { return points_.front().value; }
  double Last() const { return points_.back().value; }
  double Smallest() const;
  double Largest() const;
  /// @return the least-squares slope per unit of `at`; 0 for fewer than two points.
  double Slope() const;
  /// @return what the line gains from the first point to the last one.
  double Growth() const { return Slope() * (points_.back().at - points_.front().at); }

 private:
  struct Point {
    double at;
    double value;
  };
  std::vector<Point> points_;
};
