/// \file
/// A small file system of a trial's own, in memory, that can be filled up and made read-only.
#pragma once

#include <filesystem>
#include <string>

#include "support/temporary_folder.h"

/// Only this process and those that it starts see the disk; it is gone with them.
class SmallDisk {
 public:
  SmallDisk();
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;
  ~SmallDisk();

  /// Why there is none; empty when there is one.
  const std::string& Refusal() const { return refusal_; }
  const std::filesystem::path& path() const { return folder_.path; }

  /// Fills the disk up, but for so many pages.
  void Fill(int pages_left) const;
  void Empty() const;
  /// Lets nobody make a further file.
  void AllowNoMoreFiles() const;
  void SetReadOnly(bool read_only) const;

 private:
  void Remount(unsigned long flags, const std::string& options) const;

  TemporaryFolder folder_;
  std::string refusal_;
};
