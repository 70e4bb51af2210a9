/// \file
/// Nobody gets out of the phone folder: what a person types, what the files of a phone say, and how they are named.
#include <gtest/gtest.h>

#include <cstdlib>

#include "looking.h"

namespace {

namespace fs = std::filesystem;

/// A phone folder inside a folder whose other content is none of its business.
class EscapeTrial : public testing::Test {
 protected:
  struct Inside {
    explicit Inside(const TemporaryFolder& outside) { setenv("TMPDIR", outside.path.c_str(), 1); }
    ~Inside() { unsetenv("TMPDIR"); }
  };

  EscapeTrial() {
    folder.AddLayout("beta", "Beta", {"radio", "steps"});
    folder.UseLayout("beta");
    fs::create_directories(folder.Plugins());
    WriteFile(outside.path / "secret", "secret");
    WriteFile(outside.path / "secret.home.xml", ReadFile(folder.Home() / "beta.home.xml"));
  }

  /// Everything on the disk that the program could reach by getting out, and in the phone folder: what each file holds,
  /// where each link leads, and the folders.
  Files Everything() const {
    Files all;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(outside.path)) {
      const std::string name = fs::relative(entry.path().parent_path(), outside.path) / entry.path().filename();
      all[name] = entry.is_symlink()        ? "link to " + fs::read_symlink(entry).string()
                  : entry.is_regular_file() ? "file: " + ReadFile(entry)
                                            : "folder";
    }
    return all;
  }
  /// The same but for the registry file.
  Files AllButRegistry() const {
    Files all = Everything();
    std::erase_if(all, [](const auto& file) { return fs::path(file.first).filename() == "registry.reg"; });
    return all;
  }
  static void Retype(ScriptedPhone& phone, const std::string& text) {
    const auto edits = phone.State()["edits"];
    for (std::size_t press = 0; press < edits.back()["text"].get<std::string>().size(); ++press)
      phone.Play({"key back"});
    phone.Play({"type " + text});
  }

  const TemporaryFolder outside;
  const Inside inside{outside};
  const PhoneFolder folder;
};

TEST_F(EscapeTrial, ByANameTypedIntoAForm) {
  const Lines refused = {
      "..\\secret",          "..\\..\\..\\secret",    "../../secret",       "/etc/quillmark.xml",
      "\\secret.home.xml",   "C:\\secret.home.xml",   "C:secret.home.xml",  "\\\\server\\share\\x.xml",
      "\\\\?\\C:\\file.xml", "\\\\.\\pipe\\x.xml",    "a/b.home.xml",       "stream:x.home.xml",
      "*.home.xml",          "be?a.home.xml",         "\"q\".home.xml",     "<beta>.home.xml",
      "a|b.home.xml",        "nowhere\\x.home.xml",   ".~writing-1-1",      ".~WRITING-9-9",
      "beta.home.xml\\",     "beta.home.xml\\..\\xx", std::string(250, 'x')};
  const Lines kept = {"CON.home.xml", "NUL.xml",        "%2e%2e%2fsecret", "~root.home.xml",
                      "-rf.home.xml", "$(id).home.xml", "..home.xml",      "...home.xml",
                      "`id`; ls",     "Größe 📱.xml",    "'quoted'.xml"};
  const Files before = Everything();
  ScriptedPhone phone(folder);
  phone.Play({"key action", "softkey left", "menu Save as", "key down"});
  for (const std::string& name : refused) {
    SCOPED_TRACE(name);
    Retype(phone, name);
    phone.Play({"softkey left"});
    EXPECT_EQ(phone.Box(), kSaveFailed);
    phone.Play({"answer ok"});
    EXPECT_EQ(Everything(), before);
  }
  for (const std::string& name : kept) {
    SCOPED_TRACE(name);
    Retype(phone, name);
    phone.Play({"softkey left"});
    EXPECT_EQ(phone.Box(), kApply);
    phone.Play({"answer no"});
    EXPECT_TRUE(fs::remove(folder.Home() / name)) << "in the folder of the layouts, under just that name";
    EXPECT_EQ(Everything(), before);
    phone.Play({"key action", "softkey left", "menu Save as", "key down"});
  }
  phone.Play({"softkey right", "softkey left", "menu Add to favorites"});
  for (const std::string& name : refused) {
    SCOPED_TRACE(name);
    if (name.size() > 200 || name.starts_with(".~")) continue;  // with its ending a valid name, or cut to one
    Retype(phone, name);
    phone.Play({"softkey left"});
    EXPECT_EQ(phone.Screen(), "Add to favorites");
    EXPECT_EQ(Everything(), before);
  }
}

TEST_F(EscapeTrial, ByFilesNamedLikePaths) {
  const std::string layout = ReadFile(folder.Home() / "beta.home.xml");
  const auto add = [&](const std::string& name, const std::string& title) {
    std::string content = layout;
    content.replace(content.find("Beta"), 4, title);
    WriteFile(folder.Home() / name, content);
  };
  for (const char* const name :
       {"..\\..\\secret.home.xml", "line\nbreak.home.xml", "\xFF\xFE.home.xml", "\xED\xA0\x80.home.xml", "C:.home.xml",
        "tab\t.home.xml", "del\x7F.home.xml", "*.home.xml", ".~writing-x.home.xml", "\xC0\xAE\xC0\xAE.home.xml"})
    add(name, "Hidden");
  fs::create_symlink(outside.path / "secret.home.xml", folder.Home() / "link.home.xml");
  fs::create_symlink("beta.home.xml", folder.Home() / "inner link.home.xml");
  fs::create_directory_symlink(outside.path, folder.path() / "out");
  fs::create_directory(folder.Home() / "folder.home.xml");
  add("twin.home.xml", "Twin small");
  add("Twin.home.xml", "Twin tall");
  const Files before = Everything();
  ScriptedPhone phone(folder);
  EXPECT_EQ(phone.Rows(), (Lines{"Beta", "Twin tall", "Twin small"}));
  // The names differ only in case: what is shown is what is deleted.
  phone.Play({"key down", "wait 600", "key down", "wait 600"});
  EXPECT_EQ(phone.Selected(), "Twin small");
  phone.Menu("Delete");
  phone.Play({"answer yes", "wait 600"});
  EXPECT_FALSE(fs::exists(folder.Home() / "twin.home.xml"));
  add("twin.home.xml", "Twin small");
  EXPECT_EQ(Everything(), before) << "nothing else is deleted";
}

TEST_F(EscapeTrial, ByALayoutInUseThatIsNone) {
  const Files before = AllButRegistry();
  for (const std::string& scheme : {std::string("..\\\\..\\\\secret.home.xml"), std::string("/etc/passwd"),
                                    std::string("\\\\..\\\\secret.home.xml"), std::string("C:\\\\secret"),
                                    std::string("\\\\\\\\server\\\\share"), std::string("temp.home.xml"), std::string(),
                                    std::string("\\\\Application Data\\\\Home\\\\..\\\\..\\\\..\\\\secret.home.xml"),
                                    std::string("line\nbreak"), std::string(100'000, 'x')}) {
    SCOPED_TRACE(scheme.substr(0, 60));
    WriteFile(folder.path() / "registry.reg",
              "Windows Registry Editor Version 5.00\n\n[HKEY_CURRENT_USER\\ControlPanel\\Home]\n\"Scheme\"=\"" +
                  scheme + "\"\n");
    ScriptedPhone phone(folder);
    EXPECT_EQ(phone.Rows(), Lines{"Beta"});
    phone.Menu("Apply");
    phone.Play({"wait 3000"});
    EXPECT_EQ(phone.Do("registry get ControlPanel\\Home Scheme")["text"], LayoutPath("beta"));
    EXPECT_EQ(phone.End(), 0);
    EXPECT_EQ(AllButRegistry(), before);
  }
}

TEST_F(EscapeTrial, ByAFavouriteThatSaysItIsNamedLikeAPath) {
  folder.AddFavorite("Tides", u"<plugin clsid=\"..\\..\\secret\" name=\"..\\..\\..\\secret\"/>");
  const fs::path file = folder.Plugins() / "Tides.plg";
  std::string content = ReadFile(file);
  std::string name;
  for (const char unit : std::string("..\\..\\..\\secret")) name += {unit, '\0'};
  WriteFile(file, content.replace(0, name.size(), name));
  WriteFile(folder.Plugins() / "..\\..\\secret.plg", content);
  WriteFile(folder.Plugins() / "line\nbreak.plg", content);
  fs::create_symlink(file, folder.Plugins() / "link.plg");
  const Files before = Everything();
  ScriptedPhone phone(folder);
  phone.Play({"key action", "softkey left", "menu Add new plugin", "wait 600"});
  EXPECT_EQ(phone.Rows(), Lines{"Tides"});
  phone.Play({"key action", "wait 600"});
  EXPECT_EQ(phone.Selected(), "..\\..\\..\\secret");
  phone.Menu("Add to favorites");
  phone.Play({"softkey left"});
  EXPECT_EQ(phone.Screen(), "Add to favorites");
  EXPECT_EQ(Everything(), before);
}

}  // namespace
