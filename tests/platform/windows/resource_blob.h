/// \file
/// Builds compiled resources byte by byte.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "windows.h"
#include "windows/resources.h"

class ResourceBlob {
 public:
  std::vector<std::byte> bytes;

  ResourceBlob& Word(unsigned value) {
    bytes.push_back(static_cast<std::byte>(value & 0xFF));
    bytes.push_back(static_cast<std::byte>(value >> 8 & 0xFF));
    return *this;
  }
  ResourceBlob& Double(unsigned value) { return Word(value & 0xFFFF).Word(value >> 16); }
  ResourceBlob& Units(std::u16string_view text) {
    for (const WCHAR unit : text) Word(unit);
    return *this;
  }
  ResourceBlob& Text(std::u16string_view text) { return Units(text).Word(0); }
  /// An entry whose type and name are numbers.
  ResourceBlob& Entry(WORD type, WORD name, const ResourceBlob& content, WORD language = 1033) {
    Double(static_cast<unsigned>(content.bytes.size())).Double(32);
    return Word(0xFFFF).Word(type).Word(0xFFFF).Word(name).Finish(content, language);
  }
  /// A soft-key bar's entry.
  ResourceBlob& BarEntry(WORD name, const ResourceBlob& content) {
    Double(static_cast<unsigned>(content.bytes.size())).Double(48);
    return Text(u"SHMENUBAR").Word(0xFFFF).Word(name).Finish(content, 1033);
  }

 private:
  ResourceBlob& Finish(const ResourceBlob& content, WORD language) {
    Pad().Double(0).Word(0).Word(language).Double(0).Double(0);
    bytes.insert(bytes.end(), content.bytes.begin(), content.bytes.end());
    return Pad();
  }
  ResourceBlob& Pad() {
    while (bytes.size() % 4 != 0) bytes.push_back(std::byte{0});
    return *this;
  }
};

inline constexpr WORD kListBar = 10;  // "Options" with a menu of three items, "Exit"
inline constexpr WORD kFormBar = 11;  // "Save", "Exit", both plain
inline constexpr WORD kLeftCommand = 40001;
inline constexpr WORD kRightCommand = 40002;

/// Strings 1 "Options", 2 "Exit", 3 "Save", 17 "Über 😀"; a menu with Open 101, Delete 102 and a disabled Apply 103; two
/// bars.
inline std::vector<std::byte> TestResources() {
  constexpr unsigned kPopup = 0x10, kLast = 0x80, kDisabled = 0x01;
  constexpr unsigned kNoImage = 0xFFFE, kEnabled = 4, kAutoSize = 0x10, kDropDown = 0x08, kNoPopup = 0xFFFF;
  ResourceBlob strings, more_strings, menu, list_bar, form_bar, file;
  strings.Word(0);
  for (const std::u16string_view text : {u"Options", u"Exit", u"Save"})
    strings.Word(static_cast<unsigned>(text.size())).Units(text);
  for (int rest = 4; rest < 16; ++rest) strings.Word(0);
  const std::u16string_view umlaut = u"Über 😀";
  more_strings.Word(0).Word(static_cast<unsigned>(umlaut.size())).Units(umlaut);
  menu.Word(0).Word(0).Word(kPopup).Text(u"Options");
  menu.Word(0).Word(101).Text(u"Open").Word(0).Word(102).Text(u"Delete");
  menu.Word(kDisabled | kLast).Word(103).Text(u"Apply").Word(kLast).Word(kRightCommand).Text(u"Exit");
  list_bar.Word(20).Word(2);
  list_bar.Word(kNoImage).Word(kLeftCommand).Word(kEnabled).Word(kDropDown | kAutoSize).Word(1).Word(0).Word(0);
  list_bar.Word(kNoImage).Word(kRightCommand).Word(kEnabled).Word(kAutoSize).Word(2).Word(0).Word(kNoPopup);
  form_bar.Word(0).Word(2);
  form_bar.Word(kNoImage).Word(kLeftCommand).Word(kEnabled).Word(kAutoSize).Word(3).Word(0).Word(kNoPopup);
  form_bar.Word(kNoImage).Word(kRightCommand).Word(kEnabled).Word(kAutoSize).Word(2).Word(0).Word(kNoPopup);
  file.Entry(0, 0, {}, 0);
  file.Entry(phone::kStringTableType, 1, strings).Entry(phone::kStringTableType, 2, more_strings);
  file.Entry(phone::kMenuType, 20, menu).BarEntry(kListBar, list_bar).BarEntry(kFormBar, form_bar);
  return file.bytes;
}
