// SPDX-License-Identifier: MIT
#include "bench/driver_library.h"
#include "bench/position_reader.h"

struct PositionReader::Driver {
  DriverLibrary library;
};

PositionReader::PositionReader() : driver(std::make_unique<Driver>()) {}

PositionReader::~PositionReader() = default;

bool PositionReader::IsReady() const {
  return driver->library.IsReady();
}

const char* PositionReader::Name() const {
  return "TelescopeGetPos";
}

void PositionReader::Read(double* radec) {
  driver->library.getPos(nullptr, radec);
}
