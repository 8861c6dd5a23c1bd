// SPDX-License-Identifier: MIT
// Loading velquin.dll and finding its exports.
#include "console/driver.h"

#include <windows.h>

#include "console/failure.h"
#include "console/text_encoding.h"

namespace velquinctl {
namespace {

[[noreturn]] void Unusable(const std::string& text) {
  throw Failure(ExitCode::kLibraryUnusable, text);
}

std::wstring ProgramFolder() {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path.substr(0, path.find_last_of(L'\\') + 1);
}

/// @return the whole path, because a bare name would be searched for in other folders as well.
std::wstring FullPath(const std::wstring& path) {
  std::wstring full(32768, L'\0');
  full.resize(
      GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
  return full;
}

std::string SystemMessage(DWORD error) {
  wchar_t text[512] = {};
  FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0,
                 text, 512, nullptr);
  std::string message = Utf8FromWide(text);
  message.erase(message.find_last_not_of(" .\r\n") + 1);
  return message.empty() ? "system error " + std::to_string(error) : message;
}

template <typename Function>
void FindExport(void* module, const char* name, Function& function, std::string& missing) {
  const FARPROC found = GetProcAddress(static_cast<HMODULE>(module), name);
  if (found == nullptr && missing.empty()) missing = name;
  function = reinterpret_cast<Function>(reinterpret_cast<void*>(found));
}

}  // namespace

Driver::Driver(const std::string& libraryPath) {
  const std::wstring path =
      libraryPath.empty() ? ProgramFolder() + L"velquin.dll" : FullPath(WideFromUtf8(libraryPath));
  const std::string shown = Utf8FromWide(path);
  if (GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES) {
    Unusable("library not found: " + shown +
             (libraryPath.empty() ? " (--library tells where it is)" : ""));
  }
  module_ = LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH);
  if (module_ == nullptr)
    Unusable("cannot load the library " + shown + ": " + SystemMessage(GetLastError()));
  FindExports(shown);
}

Driver::~Driver() {
  FreeLibrary(static_cast<HMODULE>(module_));
}

void Driver::FindExports(const std::string& path) {
  std::string missing;
  FindExport(module_, "TelescopeAlignReset", AlignReset, missing);
  FindExport(module_, "TelescopeBaseSetting", BaseSetting, missing);
  FindExport(module_, "TelescopeCheck", Check, missing);
  FindExport(module_, "TelescopeDialog", Dialog, missing);
  FindExport(module_, "TelescopeEnd", End, missing);
  FindExport(module_, "TelescopeGetEastWest", GetEastWest, missing);
  FindExport(module_, "TelescopeGetParking", GetParking, missing);
  FindExport(module_, "TelescopeGetPos", GetPos, missing);
  FindExport(module_, "TelescopeGetSlewSpeedMax", GetSlewSpeedMax, missing);
  FindExport(module_, "TelescopeGetStatus", GetStatus, missing);
  FindExport(module_, "TelescopeHome", Home, missing);
  FindExport(module_, "TelescopeLook", Look, missing);
  FindExport(module_, "TelescopePark", Park, missing);
  FindExport(module_, "TelescopeSetEastWest", SetEastWest, missing);
  FindExport(module_, "TelescopeSetGuideSpeed", SetGuideSpeed, missing);
  FindExport(module_, "TelescopeSetIni", SetIni, missing);
  FindExport(module_, "TelescopeSetLogPath", SetLogPath, missing);
  FindExport(module_, "TelescopeSetLogPrefix", SetLogPrefix, missing);
  FindExport(module_, "TelescopeSetName", SetName, missing);
  FindExport(module_, "TelescopeSetPos", SetPos, missing);
  FindExport(module_, "TelescopeSetVendor", SetVendor, missing);
  FindExport(module_, "TelescopeSlew", Slew, missing);
  FindExport(module_, "TelescopeSlewPulseDuration", SlewPulseDuration, missing);
  FindExport(module_, "TelescopeStart", Start, missing);
  FindExport(module_, "TelescopeStop", Stop, missing);
  FindExport(module_, "TelescopeSync", Sync, missing);
  FindExport(module_, "TelescopeUnPark", UnPark, missing);
  if (missing.empty()) return;
  FreeLibrary(static_cast<HMODULE>(module_));  // no destructor runs for half an object
  Unusable("the library " + path + " has no export " + missing + ", so it is no velquin.dll");
}

}  // namespace velquinctl
