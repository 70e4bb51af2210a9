/// \file
/// The text of a registry file, "Windows Registry Editor Version 5.00". What is not understood as a string under
/// HKEY_CURRENT_USER is kept and written back as it stands. Keys and names are found without regard to case; where one
/// stands twice, the last counts, as when such a file is imported.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace phone {

class RegistryFile {
 public:
  /// An empty registry.
  RegistryFile();
  /// Nothing for text that is not such a file. Empty text is an empty registry.
  static std::optional<RegistryFile> Parse(std::u16string_view text);
  std::u16string Text() const;

  /// `key` is a path under HKEY_CURRENT_USER; an empty `name` is the key's default value.
  std::optional<std::u16string> Get(std::u16string_view key, std::u16string_view name) const;
  /// False for a key, name or text that such a file cannot hold.
  bool Set(std::u16string_view key, std::u16string_view name, std::u16string_view text);
  /// False when there is no such value.
  bool Delete(std::u16string_view key, std::u16string_view name);

 private:
  friend class RegistryParser;

  /// A piece of the file, with its line ends.
  struct Entry {
    std::u16string raw;
    bool is_value = false;
    std::u16string name;
    std::optional<std::u16string> text;  ///< of a string value
    std::u16string remark = {};          ///< what stands behind it, from its semicolon on
  };
  struct Section {
    std::u16string key;  ///< under HKEY_CURRENT_USER
    bool is_current_user = false;
    std::vector<Entry> entries;  ///< the first is the line with the key, except in the section before all keys
  };

  std::u16string FormatValue(std::u16string_view name, std::u16string_view text) const;
  Section& SectionFor(std::u16string_view key);

  std::vector<Section> sections_;
  std::u16string line_end_ = u"\n";
};

}  // namespace phone
