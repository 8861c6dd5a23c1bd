// SPDX-License-Identifier: MIT
// PositionReader: reads the driver's position as a host does: on Windows through the export of the
// built library, elsewhere through the engine.
#pragma once

#include <memory>

class PositionReader {
 public:
  PositionReader();
  ~PositionReader();
  const char* Name() const;
  void Read(double* radec);

 private:
  struct Driver;
  std::unique_ptr<Driver> driver;
};
