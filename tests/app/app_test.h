/// \file
/// What the tests of the whole program share.
#pragma once

#include <gtest/gtest.h>

#include <map>

#include "support/scripted_phone.h"

using Json = ScriptedPhone::Json;
using Lines = std::vector<std::string>;

/// A phone with three layouts, the second in use, and two favourites.
class AppTest : public testing::Test {
 protected:
  AppTest() {
    folder.AddLayout("alpha", "Alpha", {"clock", "agenda", "moon"});
    folder.AddLayout("beta", "Beta", {"radio", "steps"});
    folder.AddLayout("gamma", "Gamma", {});
    folder.UseLayout("beta");
    folder.AddFavorite("Harbour", u"<plugin clsid=\"{H}\" name=\"Harbour\"/>");
    folder.AddFavorite("Tides", u"<plugin clsid=\"{T}\" name=\"Tides\"/>");
  }

  PhoneFolder folder;
};

/// What leads from the start to each screen, by its caption, on the phone of AppTest.
inline const std::map<std::string, Lines>& WayTo() {
  static const std::map<std::string, Lines> ways = {
      {"Select Theme", {}},
      {"Select Plugins", {"key action"}},
      {"Save Theme", {"key action", "softkey left", "menu Save as"}},
      {"Choose Plugin", {"key action", "softkey left", "menu Add new plugin"}},
      {"Add to favorites", {"key action", "softkey left", "menu Add to favorites"}},
      {"About", {"softkey left", "menu About"}},
  };
  return ways;
}

/// A phone on which a screen is shown, at rest.
class PhoneAt : public ScriptedPhone {
 public:
  PhoneAt(const PhoneFolder& folder, const std::string& screen, const Lines& options = {})
      : ScriptedPhone(folder, options) {
    Play(WayTo().at(screen));
    Play({"wait 600"});
  }
};

inline void Append(Lines& lines, const Lines& more) {
  lines.insert(lines.end(), more.begin(), more.end());
}
