/// \file
/// The program on a real disk that fills up, that has room for no further file, or that turns read-only under it.
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <iostream>
#include <tuple>

#include "looking.h"
#include "small_disk.h"

namespace {

constexpr int kPlugins = 300;   // some pages of a layout file
constexpr int kMostPages = 12;  // enough for whatever the program writes

/// Something that a person does to a file, and what becomes of the file.
struct Deed {
  const char* name;
  Lines way;          ///< from the list of layouts to the last step
  Lines last;         ///< the step that writes, where it can be done again after it has failed
  Lines afterwards;   ///< after it has succeeded
  std::string file;   ///< below the phone folder
  std::string holds;  ///< what the file holds once it has succeeded
  const char* says;   ///< the box after a failure; empty for none
};

const std::vector<Deed>& Deeds() {
  static const std::vector<Deed> deeds = {
      {"save over the old layout",
       {"key action", "softkey left", "menu Save as", "type  II"},
       {"softkey left", "answer yes"},
       {"answer no"},
       "Application Data/Home/beta.home.xml",
       "Beta II</title>",
       kSaveFailed},
      {"save a new layout",
       {"key action", "softkey left", "menu Save as", "key down", "key home", "type new"},
       {"softkey left"},
       {"answer no"},
       "Application Data/Home/newbeta.home.xml",
       "name=\"plug-in 299\"",
       kSaveFailed},
      {"keep a favourite",
       {"key action", "softkey left", "menu Add to favorites"},
       {"softkey left"},
       {},
       "Program Files/Quillmark/Plugins/plug-in 0.plg",
       std::string("p\0l\0u\0g", 7),
       ""},
      {"apply a layout",
       {"key down", "wait 600"},
       {"softkey left", "menu Apply", "wait 3000"},
       {},
       "registry.reg",
       "gamma.home.xml",
       ""},
  };
  return deeds;
}

class DiskTrial : public testing::Test {
 protected:
  void SetUp() override {
    if (!disk.Refusal().empty()) GTEST_SKIP() << disk.Refusal();
  }

  /// Has temporary folders made on the disk.
  struct OnDisk {
    explicit OnDisk(const SmallDisk& disk) { setenv("TMPDIR", disk.path().c_str(), 1); }
  };

  /// A phone on the small disk.
  struct DiskPhone : OnDisk, PhoneFolder {
    explicit DiskPhone(const SmallDisk& disk) : OnDisk(disk) {
      // What others keep for the time that they run, the sanitizers among them, is not to count.
      unsetenv("TMPDIR");
      Lines plugins;
      for (int i = 0; i < kPlugins; ++i) plugins.push_back("plug-in " + std::to_string(i));
      AddLayout("alpha", "Alpha", {});
      AddLayout("beta", "Beta", plugins);
      AddLayout("gamma", "Gamma", {});
      UseLayout("beta");
      AddFavorite("Harbour", u"<plugin clsid=\"{H}\" name=\"Harbour\"/>");
    }
  };

  /// Does the last step of a deed; true when it has succeeded. All files are as they were otherwise, and a person is
  /// told where the program tells.
  static bool Try(const Deed& deed, const PhoneFolder& folder, ScriptedPhone& phone) {
    const Files before = FilesOf(folder);
    phone.Play(deed.last);
    const std::string box = phone.Box();
    Files after = FilesOf(folder);
    const bool done = after[deed.file].find(deed.holds) != std::string::npos;
    if (done) {
      phone.Play(deed.afterwards);
    } else {
      EXPECT_EQ(FilesOf(folder), before);
      EXPECT_EQ(box, deed.says);
      if (!box.empty()) phone.Play({"answer ok"});
    }
    after = FilesOf(folder);
    for (const auto& [name, content] : before) {
      if (name == deed.file) continue;
      EXPECT_EQ(after[name], content) << name;
    }
    return done;
  }

  SmallDisk disk;
};

TEST_F(DiskTrial, AFullDiskCostsNothingButTheStepThatFilledIt) {
  for (const Deed& deed : Deeds()) {
    int failures = 0;
    bool done = false;
    for (int pages = 0; pages <= kMostPages && !done; ++pages) {
      SCOPED_TRACE(std::string(deed.name) + " with " + std::to_string(pages) + " pages left");
      const DiskPhone folder(disk);
      ScriptedPhone phone(folder);
      phone.Play(deed.way);
      disk.Fill(pages);
      done = Try(deed, folder, phone);
      failures += done ? 0 : 1;
      disk.Empty();
      EXPECT_TRUE(done || Try(deed, folder, phone)) << "with room again it works";
      EXPECT_EQ(phone.End(), 0);
    }
    EXPECT_GE(failures, 1) << deed.name;
    EXPECT_TRUE(done) << deed.name;
    std::cout << deed.name << ": failed with up to " << failures - 1 << " pages left\n";
  }
}

TEST_F(DiskTrial, ADiskThatTakesNothingCostsNothingAndIsWrittenToAgainLater) {
  using Change = std::function<void()>;
  const std::tuple<const char*, Change, Change> obstacles[] = {
      {"with room for no further file", [this] { disk.AllowNoMoreFiles(); }, [this] { disk.Empty(); }},
      {"read-only", [this] { disk.SetReadOnly(true); }, [this] { disk.SetReadOnly(false); }}};
  for (const auto& [obstacle, begin, end] : obstacles) {
    for (const Deed& deed : Deeds()) {
      SCOPED_TRACE(std::string(deed.name) + ", " + obstacle);
      const DiskPhone folder(disk);
      ScriptedPhone phone(folder);
      phone.Play(deed.way);
      begin();
      EXPECT_FALSE(Try(deed, folder, phone));
      end();
      EXPECT_TRUE(Try(deed, folder, phone));
      EXPECT_EQ(phone.End(), 0);
    }
  }
}

TEST_F(DiskTrial, NothingIsDeletedOnAReadOnlyDiskAndTheProgramStartsOnIt) {
  const DiskPhone folder(disk);
  const Files before = FilesOf(folder);
  disk.SetReadOnly(true);
  {
    ScriptedPhone phone(folder);
    EXPECT_EQ(phone.Rows(), (Lines{"Alpha", "Beta", "Gamma"}));
    phone.Menu("Delete", {"answer yes"});
    EXPECT_EQ(phone.Box(), kThemeNotDeleted);
    phone.Play({"answer ok", "wait 600"});
    EXPECT_EQ(phone.Rows(), (Lines{"Alpha", "Beta", "Gamma"}));
    phone.Play({"key action"});
    phone.Menu("Add new plugin");
    phone.Menu("Delete", {"answer yes"});
    EXPECT_EQ(phone.Box(), kFavouriteNotDeleted);
    phone.Play({"answer ok", "wait 600"});
    EXPECT_EQ(phone.Rows(), Lines{"Harbour"});
    EXPECT_EQ(phone.End(), 0);
  }
  EXPECT_EQ(FilesOf(folder), before);
  disk.SetReadOnly(false);
}

}  // namespace
