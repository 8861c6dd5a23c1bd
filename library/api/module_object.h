// SPDX-License-Identifier: MIT
// CModuleObject: a static object of the library that can skip its destructor at the end of the
// process. By then the system has stopped every other thread, perhaps inside the heap or with a
// lock held. Destructors could then hang the host, and the system frees everything anyway. Built
// and destroyed in the order of the other static objects.
#pragma once

#include <new>

template <class T>
class CModuleObject {
 public:
  CModuleObject() { new (storage) T; }
  ~CModuleObject() {
    if (!abandoned) Get().~T();
  }
  CModuleObject(const CModuleObject&) = delete;
  CModuleObject& operator=(const CModuleObject&) = delete;

  T& Get() { return *std::launder(reinterpret_cast<T*>(storage)); }
  /// From now on the object is not destroyed.
  void Abandon() { abandoned = true; }

 private:
  alignas(T) unsigned char storage[sizeof(T)];
  bool abandoned = false;
};
