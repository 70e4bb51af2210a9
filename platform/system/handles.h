/// \file
/// The objects behind handles. A handle that was closed, or never given out, is recognised as such; its value is not
/// given out again in the same run. Any thread.
#pragma once

#include <cstddef>
#include <memory>

#include "windows.h"

namespace phone {

/// What a handle stands for. It lives as long as a handle to it, or someone who works with it.
struct KernelObject {
  virtual ~KernelObject() = default;
};

/// A new handle to the object.
HANDLE AddHandle(std::shared_ptr<KernelObject> object);
/// Null for a handle that stands for nothing.
std::shared_ptr<KernelObject> ObjectOf(HANDLE handle);
/// Gives up a handle; false when it stands for nothing.
bool RemoveHandle(HANDLE handle);
/// Gives up all handles.
void CloseAllHandles();
/// How many handles stand for something.
std::size_t OpenKernelHandles();

/// The object as the wanted kind, null when it is none of that kind.
template <typename Kind>
std::shared_ptr<Kind> ObjectAs(HANDLE handle) {
  return std::dynamic_pointer_cast<Kind>(ObjectOf(handle));
}

/// True for a handle that can be waited for: a thread's.
bool HandleIsWaitable(HANDLE handle);
/// True when the thread has ended; also when the handle was closed meanwhile, so that nobody waits for ever. Call it
/// with the scheduler's lock held, as the predicate of WaitUntil is.
bool HandleIsSignalled(HANDLE handle);

/// Ends the run of the program's threads, on the user-interface thread: suspended ones end without having run, the
/// others are waited for, a manual clock going on meanwhile. Then closes what handles the program left open. A message
/// still sent to the user-interface thread must have been answered before.
void JoinThreads();

}  // namespace phone
