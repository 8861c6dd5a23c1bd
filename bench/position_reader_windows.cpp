// SPDX-License-Identifier: MIT
#include <windows.h>

#include <cstdio>

#include "api/telescope_api.h"
#include "bench/position_reader.h"

struct PositionReader::Driver {
  HMODULE library = LoadLibraryW(L"velquin.dll");
  TelescopeGetPosFn getPos =
      library == nullptr ? nullptr
                         : reinterpret_cast<TelescopeGetPosFn>(
                               reinterpret_cast<void*>(GetProcAddress(library, "TelescopeGetPos")));
};

PositionReader::PositionReader() : driver(std::make_unique<Driver>()) {
  if (!IsReady()) std::puts("velquin.dll not found beside this program");
}

PositionReader::~PositionReader() = default;

bool PositionReader::IsReady() const {
  return driver->getPos != nullptr;
}

const char* PositionReader::Name() const {
  return "TelescopeGetPos";
}

void PositionReader::Read(double* radec) {
  driver->getPos(nullptr, radec);
}
