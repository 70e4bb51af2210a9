/// \file
/// Others remove or replace what the program shows, while it shows it.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <functional>

#include "looking.h"

namespace {

namespace fs = std::filesystem;

const Lines kSave = {"key action", "softkey left", "menu Save as", "type  II"};

/// A phone inside a folder of its own with a file that is none of its business.
class ReplacedTrial : public testing::Test {
 protected:
  ReplacedTrial() {
    folder.AddLayout("alpha", "Alpha", {"moon"});
    folder.AddLayout("beta", "Beta", {"radio", "steps"});
    folder.UseLayout("beta");
    folder.AddFavorite("Harbour", u"<plugin clsid=\"{H}\" name=\"Harbour\"/>");
    WriteFile(outside.path / "mine", "mine");
  }
  void TearDown() override {
    EXPECT_EQ(ReadFile(outside.path / "mine"), "mine");
    EXPECT_EQ(FilesBelow(outside.path), Lines{"mine"});
  }

  fs::path Layout() const { return folder.Home() / "beta.home.xml"; }

  TemporaryFolder outside;
  PhoneFolder folder;
};

/// What becomes of a layout while it is open in the editor, and what saving it under its own name does then.
TEST_F(ReplacedTrial, ALayoutOpenInTheEditor) {
  struct Row {
    const char* name;
    std::function<void()> happens;
    const char* first_box;
    bool saved;
  };
  const Row rows[] = {
      {"nothing", [] {}, kOverwrite, true},
      {"removed", [&] { fs::remove(Layout()); }, kApply, true},
      {"another file", [&] { WriteFile(Layout(), "theirs"); }, kOverwrite, true},
      {"cut to nothing", [&] { fs::resize_file(Layout(), 0); }, kOverwrite, true},
      {"a folder", [&] { fs::remove(Layout()), fs::create_directory(Layout()); }, kSaveFailed, false},
      {"a link outside", [&] { fs::remove(Layout()), fs::create_symlink(outside.path / "mine", Layout()); },
       kSaveFailed, false},
      {"a pipe", [&] { fs::remove(Layout()), mkfifo(Layout().c_str(), 0600); }, kSaveFailed, false},
      {"without its folder", [&] { fs::remove_all(folder.Home()); }, kSaveFailed, false},
      {"in a folder that is a link",
       [&] { fs::remove_all(folder.Home()), fs::create_directory_symlink(outside.path, folder.Home()); }, kSaveFailed,
       false},
      {"without its phone", [&] { fs::remove_all(folder.path()); }, kSaveFailed, false},
  };
  const std::string before = ReadFile(Layout());
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    fs::remove_all(folder.path());
    WriteFile(Layout(), before);
    folder.UseLayout("beta");
    ScriptedPhone phone(folder);
    phone.Play(kSave);
    row.happens();
    phone.Play({"softkey left"});
    EXPECT_EQ(phone.Box(), row.first_box);
    if (std::string(row.first_box) == kOverwrite) phone.Play({"answer yes"});
    EXPECT_EQ(phone.Box(), row.saved ? kApply : kSaveFailed);
    phone.Play({row.saved ? "answer no" : "answer ok"});
    if (row.saved) {
      const std::string saved = ReadFile(Layout());
      EXPECT_NE(saved.find("Beta II"), std::string::npos);
      EXPECT_NE(saved.find("name=\"steps\""), std::string::npos);
    } else {
      EXPECT_EQ(phone.Screen(), "Save Theme") << "nothing that was typed is lost";
    }
    EXPECT_EQ(phone.End(), 0);
  }
}

TEST_F(ReplacedTrial, WhatOthersHaveRemovedIsNotDeletedAndNothingElseInItsPlace) {
  ScriptedPhone phone(folder);
  const auto refused = [&phone](const char* what) {
    SCOPED_TRACE(what);
    phone.Menu("Delete");
    phone.Play({"answer yes"});
    EXPECT_EQ(phone.Box(), kThemeNotDeleted);
    phone.Play({"answer ok", "wait 600"});
    EXPECT_EQ(phone.Rows(), (Lines{"Alpha", "Beta"}));
  };
  ASSERT_EQ(phone.Rows(), (Lines{"Alpha", "Beta"}));
  fs::remove(Layout());
  refused("removed");
  fs::create_symlink(outside.path / "mine", Layout());
  refused("a link");
  fs::remove(Layout());
  fs::create_directory(Layout());
  refused("a folder");
  EXPECT_TRUE(fs::is_directory(Layout()));
  fs::remove(Layout());
  WriteFile(Layout(), "theirs");
  phone.Menu("Delete");
  phone.Play({"answer no"});
  EXPECT_EQ(ReadFile(Layout()), "theirs");
}

TEST_F(ReplacedTrial, AFavouriteThatIsGoneOrALinkIsNotAdded) {
  ScriptedPhone phone(folder);
  const fs::path favourite = folder.Plugins() / "Harbour.plg";
  fs::copy_file(favourite, folder.path() / "kept");
  phone.Play({"key action", "wait 600", "softkey left", "menu Add new plugin"});
  fs::remove(favourite);
  phone.Play({"key action", "wait 600"});
  EXPECT_EQ(phone.Screen(), "Choose Plugin");
  fs::create_symlink(folder.path() / "kept", favourite);
  phone.Play({"key action", "wait 600"});
  EXPECT_EQ(phone.Screen(), "Choose Plugin");
  phone.Play({"softkey right", "wait 600"});
  EXPECT_EQ(phone.Rows(), (Lines{"radio", "steps"}));
  // A folder for favourites that is gone is made again; one that is something else is left alone.
  fs::remove_all(folder.Plugins());
  phone.Play({"softkey left", "menu Add to favorites", "softkey left"});
  EXPECT_EQ(FilesBelow(folder.Plugins()), Lines{"radio.plg"});
  fs::remove_all(folder.Plugins());
  fs::create_directory_symlink(outside.path, folder.Plugins());
  phone.Play({"softkey left", "menu Add to favorites", "softkey left"});
  EXPECT_EQ(phone.Screen(), "Add to favorites");
}

TEST_F(ReplacedTrial, ARegistryThatIsReplacedKeepsWhatOthersWrote) {
  const fs::path registry = folder.path() / "registry.reg";
  ScriptedPhone phone(folder);
  phone.Play({"key up", "wait 600"});
  fs::remove(registry);
  fs::create_directory(registry);
  phone.Menu("Apply");
  EXPECT_TRUE(fs::is_directory(registry));
  fs::remove(registry);
  WriteFile(registry,
            "Windows Registry Editor Version 5.00\n\n[HKEY_CURRENT_USER\\Other]\n\"a\"=\"theirs\"\n"
            "[HKEY_CURRENT_USER\\ControlPanel\\Home]\n\"Scheme\"=\"x\"\n");
  phone.Menu("Apply");
  EXPECT_EQ(phone.Do("registry get ControlPanel\\Home Scheme")["text"], LayoutPath("alpha"));
  EXPECT_NE(ReadFile(registry).find("\"a\"=\"theirs\""), std::string::npos);
}

}  // namespace
