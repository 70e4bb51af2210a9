#include "regext.h"
#include "system/instance.h"
#include "system_fixture.h"

namespace {

using phone::RegistryGet;
using phone::RegistrySet;

const std::string kHeader = "Windows Registry Editor Version 5.00\r\n";

class Registry : public SystemTest {
 protected:
  Registry() {
    EXPECT_TRUE(phone::ClaimInstance(base.string()));
    Load("");
  }
  ~Registry() override { phone::ReleaseInstance(); }
  void Load(const std::string& content) {
    WriteFile(File(), content);
    phone::LoadRegistry();
  }
  std::filesystem::path File() const { return folder / "registry.reg"; }
};

TEST_F(Registry, KeepsWhatItDoesNotUnderstand) {
  const std::string before = kHeader +
                             "; a comment\r\n\r\n[HKEY_LOCAL_MACHINE\\x]\r\n\"Scheme\"=\"other root\"\r\n"
                             "[HKEY_CURRENT_USER\\ControlPanel\\Home]\r\n@=\"default\"\r\n\"d\"=dword:0000000f\r\n"
                             "\"h\"=hex(7):41,00,\\\r\n  42,00\r\n";
  const std::string after = "\r\n[HKEY_CURRENT_USER\\Last]\r\n\"q\"=\"say \\\"hi\\\" \\\\ there\"\r\n";
  Load(before + "\"Scheme\"=\"old\" ; note\r\n" + after);
  EXPECT_EQ(RegistryGet(u"controlpanel\\HOME", u"SCHEME"), u"old");
  EXPECT_EQ(RegistryGet(u"ControlPanel\\Home", u""), u"default");
  EXPECT_EQ(RegistryGet(u"ControlPanel\\Home", u"d"), std::nullopt);
  EXPECT_EQ(RegistryGet(u"Last", u"q"), u"say \"hi\" \\ there");
  ASSERT_TRUE(RegistrySet(u"ControlPanel\\Home", u"Scheme", u"\\a\\\"b\" é"));
  EXPECT_EQ(Content(File()), before + "\"Scheme\"=\"\\\\a\\\\\\\"b\\\" é\" ; note\r\n" + after);
  ASSERT_TRUE(RegistrySet(u"controlpanel\\home", u"New", u"1"));
  EXPECT_EQ(Content(File()), before + "\"Scheme\"=\"\\\\a\\\\\\\"b\\\" é\" ; note\r\n\"New\"=\"1\"\r\n" + after);
  ASSERT_TRUE(phone::RegistryDelete(u"ControlPanel\\Home", u"new"));
  ASSERT_TRUE(phone::RegistryDelete(u"ControlPanel\\Home", u"scheme"));
  EXPECT_FALSE(phone::RegistryDelete(u"ControlPanel\\Home", u"scheme"));
  EXPECT_EQ(Content(File()), before + after);
}

TEST_F(Registry, TextsSurviveARoundTrip) {
  for (const std::u16string text : {u"", u"a\nb\r\nc", u"\\\"\\", u"]\n[x]\n", u"\U0001F642"}) {
    ASSERT_TRUE(RegistrySet(u"New Key\\é]", u"a \"name\"\\", text));
    phone::LoadRegistry();
    EXPECT_EQ(RegistryGet(u"new key\\É]", u"A \"NAME\"\\"), text);
  }
  const std::string before = Content(File());
  EXPECT_FALSE(RegistrySet(u"k", u"v", u"\xD800"));
  EXPECT_FALSE(RegistrySet(u"k", u"v", std::u16string(1, u'\0')));
  EXPECT_FALSE(RegistrySet(u"k\n[x]", u"v", u"t"));
  EXPECT_EQ(Content(File()), before);
}

TEST_F(Registry, ReadsOtherEncodings) {
  Load("\xEF\xBB\xBF" + kHeader + "[HKEY_CURRENT_USER\\k]\n\"v\"=\"é\"");
  EXPECT_EQ(RegistryGet(u"k", u"v"), u"é");
  std::string utf16 = "\xFF\xFE";
  for (const char unit : kHeader + "[HKEY_CURRENT_USER\\k]\r\n\"v\"=\"t\"\r\n") utf16 += {unit, '\0'};
  Load(utf16);
  EXPECT_EQ(RegistryGet(u"k", u"v"), u"t");
}

TEST_F(Registry, KeepsABrokenFileAside) {
  const std::string key = "[HKEY_CURRENT_USER\\k]\n";
  const std::string broken[] = {"garbage",
                                "REGEDIT4\n",
                                kHeader + "\"v\"=\"before any key\"\n",
                                kHeader + key + "\"v\"=\"never ends\n",
                                kHeader + key + "\"v\"=\"a\"b\n",
                                kHeader + key + "\"v\"\n",
                                kHeader + key + "\"v\"=\"\\n\"\n",
                                kHeader + key + "\"v\"=dword:xyz\n",
                                kHeader + key + "\"v\"=\"1\\",
                                kHeader + key + "\"v\"=hex:01,\\",
                                kHeader + key + "\"v\"=hex:01,\\\r\n\r\n",
                                kHeader + "[HKEY_CURRENT_USER\\k\n",
                                kHeader + key + "word\n",
                                kHeader + "\xFF",
                                "\xFF\xFE" + kHeader + "x"};
  std::string kept = "registry.reg.kept";
  for (std::size_t i = 0; i < std::size(broken); ++i) {
    Load(broken[i]);
    EXPECT_EQ(RegistryGet(u"k", u"v"), std::nullopt);
    EXPECT_EQ(Content(File()), "(none)");
    EXPECT_EQ(Content(folder / (i == 0 ? kept : kept + '.' + std::to_string(i + 1))), broken[i]);
  }
  EXPECT_TRUE(RegistrySet(u"k", u"v", u"t"));
  // What cannot even be read is not written over.
  std::filesystem::remove(File());
  std::filesystem::create_directory(File());
  phone::LoadRegistry();
  EXPECT_FALSE(RegistrySet(u"k", u"v", u"t"));
}

TEST_F(Registry, FollowsTheFileThatAPersonEdits) {
  const std::string key = kHeader + "[HKEY_CURRENT_USER\\k]\r\n";
  Load(key + "\"v\"=\"1\"\r\n");
  WriteFile(File(), key + "\"v\"=\"two\"\r\n");
  EXPECT_EQ(RegistryGet(u"k", u"v"), u"two");
  WriteFile(File(), key + "\"v\"=\"3\"\r\n\"w\"=\"by hand\"\r\n");
  ASSERT_TRUE(RegistrySet(u"k", u"v", u"4"));
  EXPECT_EQ(Content(File()), key + "\"v\"=\"4\"\r\n\"w\"=\"by hand\"\r\n");
  WriteFile(File(), "torn");
  EXPECT_EQ(RegistryGet(u"k", u"v"), u"4");
  EXPECT_FALSE(RegistrySet(u"k", u"v", u"5"));
  // A second start leaves the file to the phone that runs.
  phone::ReleaseInstance();
  phone::LoadRegistry();
  EXPECT_FALSE(RegistrySet(u"k", u"v", u"5"));
  EXPECT_EQ(Content(File()), "torn");
}

TEST_F(Registry, TheProgramsCalls) {
  const LPCWSTR key = TEXT("ControlPanel\\Home");
  WCHAR text[4] = {};
  EXPECT_TRUE(FAILED(RegistryGetString(HKEY_CURRENT_USER, key, TEXT("Scheme"), text, 4)));
  EXPECT_EQ(RegistrySetString(HKEY_CURRENT_USER, key, TEXT("Scheme"), TEXT("ab\U0001F642")), S_OK);
  EXPECT_EQ(RegistryGetString(HKEY_CURRENT_USER, key, TEXT("scheme"), text, 4), S_OK);
  EXPECT_EQ(std::u16string(text), u"ab");
  for (const phone::Operation operation : {phone::Operation::RegistrySetString, phone::Operation::rename}) {
    phone::SetFault(operation, 1, 0);
    EXPECT_TRUE(FAILED(RegistrySetString(HKEY_CURRENT_USER, key, TEXT("Scheme"), TEXT("x"))));
    EXPECT_EQ(RegistryGet(key, u"Scheme"), u"ab\U0001F642");
  }
  phone::SetFault(phone::Operation::rename, 1, 0);
  EXPECT_TRUE(RegistrySet(key, u"Other", u"x")) << "what is made to fail fails for the program alone";
  phone::ResetFaults();
  EXPECT_TRUE(FAILED(RegistrySetString(nullptr, key, TEXT("Scheme"), TEXT("x"))));
  const auto writes = phone::RegistryWrites();
  ASSERT_EQ(writes.size(), 1u);
  EXPECT_EQ(writes[0].tick, 1000u);
  EXPECT_EQ(writes[0].value, u"Scheme");
}

}  // namespace
