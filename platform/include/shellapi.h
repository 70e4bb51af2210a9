/// \file
/// Starting programs.
#pragma once

#include <windows.h>

struct SHELLEXECUTEINFOW {
  DWORD cbSize;
  ULONG fMask;
  HWND hwnd;
  LPCWSTR lpVerb;
  LPCWSTR lpFile;
  LPCWSTR lpParameters;
  LPCWSTR lpDirectory;
  int nShow;
  HINSTANCE hInstApp;
  void* lpIDList;
  LPCWSTR lpClass;
  HKEY hkeyClass;
  DWORD dwHotKey;
  HANDLE hIcon;
  HANDLE hProcess;
};

/// Starts lpFile with lpParameters. False on failure, with the last error set.
BOOL ShellExecuteEx(SHELLEXECUTEINFOW* info);
