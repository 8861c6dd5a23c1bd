// SPDX-License-Identifier: MIT
#include "bench/position_reader.h"
#include "library/engine/telescope.h"

struct PositionReader::Driver {
  CTelescope engine;
};

PositionReader::PositionReader() : driver(std::make_unique<Driver>()) {}

PositionReader::~PositionReader() = default;

const char* PositionReader::Name() const {
  return "CTelescope::GetPos";
}

void PositionReader::Read(double* radec) {
  driver->engine.GetPos(radec);
}
