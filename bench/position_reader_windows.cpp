// SPDX-License-Identifier: MIT
#include "bench/position_reader.h"
#include "tests/support/driver_library.h"

struct PositionReader::Driver {
  DriverLibrary library;
};

PositionReader::PositionReader() : driver(std::make_unique<Driver>()) {}

PositionReader::~PositionReader() = default;

const char* PositionReader::Name() const {
  return "TelescopeGetPos";
}

void PositionReader::Read(double* radec) {
  driver->library.GetPos(nullptr, radec);
}
