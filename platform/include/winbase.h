/// \file
/// Files, threads, time and text of the platform.
#pragma once

#include <cstdio>

#include <windef.h>
#include <winerror.h>

// --- Errors ---

/// The error that the last failing call of this thread left.
DWORD GetLastError();
void SetLastError(DWORD error);

// --- Time ---

/// Milliseconds since the phone was switched on; wraps after 2^32.
DWORD GetTickCount();
/// Lets the calling thread rest for that many milliseconds.
void Sleep(DWORD milliseconds);

// --- Threads and waiting ---

using LPTHREAD_START_ROUTINE = DWORD(WINAPI*)(LPVOID parameter);
struct SECURITY_ATTRIBUTES;

#define CREATE_SUSPENDED 0x00000004u
#define DUPLICATE_SAME_ACCESS 0x00000002u
#define INFINITE 0xFFFFFFFFu
#define WAIT_OBJECT_0 0u
#define WAIT_TIMEOUT 258u
#define WAIT_FAILED 0xFFFFFFFFu

/// Starts a thread; with CREATE_SUSPENDED it runs only after ResumeThread. Null on failure. The caller closes the
/// handle; closing it does not end the thread.
HANDLE CreateThread(SECURITY_ATTRIBUTES* security, SIZE_T stack_size, LPTHREAD_START_ROUTINE start, LPVOID parameter,
                    DWORD flags, DWORD* thread_id);
/// Resumes a suspended thread. Gives the former suspend count, or 0xFFFFFFFF.
DWORD ResumeThread(HANDLE thread);
HANDLE GetCurrentProcess();
/// Makes a second handle to the same object; within this process only.
BOOL DuplicateHandle(HANDLE source_process, HANDLE source, HANDLE target_process, HANDLE* target, DWORD access,
                     BOOL inherit, DWORD options);
/// Waits for one object (a thread is signalled when it has ended), or until a message of the wake mask stands in the
/// calling thread's queue: WAIT_OBJECT_0 for the object, WAIT_OBJECT_0 + count for a message.
DWORD MsgWaitForMultipleObjectsEx(DWORD count, const HANDLE* handles, DWORD milliseconds, DWORD wake_mask, DWORD flags);
BOOL CloseHandle(HANDLE object);

// --- Files ---

#define FILE_ATTRIBUTE_DIRECTORY 0x00000010u
#define FILE_ATTRIBUTE_NORMAL 0x00000080u

struct FILETIME {
  DWORD dwLowDateTime;
  DWORD dwHighDateTime;
};

struct WIN32_FIND_DATAW {
  DWORD dwFileAttributes;
  FILETIME ftCreationTime;
  FILETIME ftLastAccessTime;
  FILETIME ftLastWriteTime;
  DWORD nFileSizeHigh;
  DWORD nFileSizeLow;
  DWORD dwOID;
  WCHAR cFileName[MAX_PATH];  ///< the bare name
};

/// The first entry whose name matches the pattern of the path's last element (`*` and `?`, without regard to case), in
/// the order of case-folded names. INVALID_HANDLE_VALUE when nothing matches or the folder is missing; null when the
/// search cannot be made at all.
HANDLE FindFirstFileW(LPCWSTR pattern, WIN32_FIND_DATAW* found);
/// The next match; false at the end.
BOOL FindNextFileW(HANDLE search, WIN32_FIND_DATAW* found);
BOOL FindClose(HANDLE search);
BOOL DeleteFileW(LPCWSTR path);
BOOL CreateDirectoryW(LPCWSTR path, SECURITY_ATTRIBUTES* security);

/// The runtime's wide-character stream open, modes "r" and "w+" (both binary: no line-end translation). A stream opened
/// for writing replaces its file only when fclose succeeds. Null on failure.
FILE* _wfopen(const WCHAR* path, const WCHAR* mode);

/// The path of the program's module; at most `size` code units, its terminating zero included. Gives the length, 0 on
/// failure.
DWORD GetModuleFileNameW(HMODULE module, LPWSTR path, DWORD size);

// --- Text and arithmetic ---

/// number * numerator / denominator in 64 bits, rounded to the nearest integer, halves away from zero; -1 when it does
/// not fit or the denominator is 0.
int MulDiv(int number, int numerator, int denominator);
int lstrlenW(LPCWSTR text);
/// Compares without regard to case; 0 when equal.
int lstrcmpiW(LPCWSTR a, LPCWSTR b);
