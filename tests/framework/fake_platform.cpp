// SPDX-License-Identifier: MIT
// What the linker puts in the place of the platform's functions.
#include "tests/framework/fake_platform.h"

#include "platform/sockets.h"
#include "platform/threads.h"
#include "platform/user_notice.h"

namespace {

FakePlatform* fake = nullptr;

}  // namespace

FakePlatform::FakePlatform() {
  fake = this;
}

FakePlatform::~FakePlatform() {
  fake = nullptr;
}

// Each pair is the system's own function, then what is called instead; the names are the compiler's
// for the functions in CMakeLists.txt.
namespace real {

platform::Thread* BeginThread(platform::ThreadRoutine routine, void* parameter) __asm__(
    "__real__ZN8platform11BeginThreadEPFvPvES0_");
int StartSockets(uint16_t version, platform::SocketStartupData& data) __asm__(
    "__real__ZN8platform12StartSocketsEtRNS_17SocketStartupDataE");
void StopSockets() __asm__("__real__ZN8platform11StopSocketsEv");
void RestorePointer(void* previous) __asm__("__real__ZN8platform14RestorePointerEPv");
int ShowMessageBox(const char* text, const char* title,
                   uint32_t type) __asm__("__real__ZN8platform14ShowMessageBoxEPKcS1_j");
void* ShowBusyPointer() __asm__("__real__ZN8platform15ShowBusyPointerEv");
platform::RecursiveLock* CreateRecursiveLock(uint32_t& error) __asm__(
    "__real__ZN8platform19CreateRecursiveLockERj");

}  // namespace real

namespace wrapped {

platform::Thread* BeginThread(platform::ThreadRoutine routine, void* parameter) __asm__(
    "__wrap__ZN8platform11BeginThreadEPFvPvES0_");
platform::Thread* BeginThread(platform::ThreadRoutine routine, void* parameter) {
  if (fake != nullptr && fake->noThreads) return nullptr;
  return real::BeginThread(routine, parameter);
}

int StartSockets(uint16_t version, platform::SocketStartupData& data) __asm__(
    "__wrap__ZN8platform12StartSocketsEtRNS_17SocketStartupDataE");
int StartSockets(uint16_t version, platform::SocketStartupData& data) {
  if (fake == nullptr) return real::StartSockets(version, data);
  fake->startedVersions.push_back(version);
  return fake->socketStartResult;
}

void StopSockets() __asm__("__wrap__ZN8platform11StopSocketsEv");
void StopSockets() {
  if (fake == nullptr) return real::StopSockets();
  ++fake->socketStops;
}

void RestorePointer(void* previous) __asm__("__wrap__ZN8platform14RestorePointerEPv");
void RestorePointer(void* previous) {
  if (fake == nullptr) return real::RestorePointer(previous);
  fake->restoredPointers.push_back(previous);
}

int ShowMessageBox(const char* text, const char* title,
                   uint32_t type) __asm__("__wrap__ZN8platform14ShowMessageBoxEPKcS1_j");
int ShowMessageBox(const char* text, const char* title, uint32_t type) {
  if (fake == nullptr) return real::ShowMessageBox(text, title, type);
  fake->boxes.push_back({text, title, type});
  return fake->pressedButton;
}

void* ShowBusyPointer() __asm__("__wrap__ZN8platform15ShowBusyPointerEv");
void* ShowBusyPointer() {
  if (fake == nullptr) return real::ShowBusyPointer();
  ++fake->busyPointers;
  return fake->pointer;
}

platform::RecursiveLock* CreateRecursiveLock(uint32_t& error) __asm__(
    "__wrap__ZN8platform19CreateRecursiveLockERj");
platform::RecursiveLock* CreateRecursiveLock(uint32_t& error) {
  if (fake == nullptr || !fake->lockError) return real::CreateRecursiveLock(error);
  error = *fake->lockError;
  return nullptr;
}

}  // namespace wrapped
