// Applying a layout, and ending the program whatever is going on.

#include "app/app_test.h"

namespace {

Json Written(const Json& state) {
  Json writes = Json::array();
  for (const Json& write : state["registry_writes"]) {
    EXPECT_EQ(write["key"], "ControlPanel\\Home");
    EXPECT_EQ(write["value"], "Scheme");
    writes.push_back({write["tick"], write["text"]});
  }
  return writes;
}

Json Ticks(const Json& records) {
  Json ticks = Json::array();
  for (const Json& record : records) ticks.push_back(record["tick"]);
  return ticks;
}

TEST_F(AppTest, AnotherLayoutIsAppliedAtOnce) {
  ScriptedPhone phone(folder);
  phone.Play({"key down"});
  phone.Menu("Apply");
  const Json state = phone.State();
  EXPECT_EQ(Written(state), Json({{1000, LayoutPath("gamma")}}));
  EXPECT_EQ(state["broadcasts"], Json({{{"tick", 1000}, {"message", 26}, {"wparam", 242}, {"lparam", 0}}}));
  EXPECT_EQ(state["worker"], false);
  EXPECT_EQ(state["cursor"], "none");
  EXPECT_EQ(phone.Do("registry get ControlPanel\\Home Scheme")["text"], LayoutPath("gamma"));
}

TEST_F(AppTest, TheLayoutInUseIsAppliedInTwoStepsOfTwoSeconds) {
  ScriptedPhone phone(folder);
  phone.Menu("Apply");
  Json state = phone.State();
  EXPECT_EQ(Written(state), Json({{1000, "temp.home.xml"}}));
  EXPECT_EQ(state["worker"], true);
  EXPECT_EQ(state["cursor"], "wait");
  // Asking again meanwhile changes nothing, and the rest of the program goes on.
  phone.Menu("Apply", {"key up"});
  phone.Menu("Apply");
  state = phone.Play({"wait 1999", "state"});
  EXPECT_EQ(Ticks(state["broadcasts"]), Json({1000}));
  state = phone.Play({"wait 5000 5000", "state"});
  EXPECT_EQ(Written(state), Json({{1000, "temp.home.xml"}, {3000, LayoutPath("beta")}}));
  EXPECT_EQ(Ticks(state["broadcasts"]), Json({1000, 3000}));
  EXPECT_EQ(state["worker"], false);
  EXPECT_EQ(state["cursor"], "none");
  EXPECT_EQ(state["calls"]["CreateThread"], 1);
}

TEST_F(AppTest, ASavedLayoutCanBeAppliedAtOnce) {
  ScriptedPhone phone(folder);
  phone.Play(WayTo().at("Save Theme"));
  phone.Play({"key down", "key home", "type x", "softkey left", "answer yes", "wait 600"});
  EXPECT_EQ(phone.Screen(), "Select Theme");
  EXPECT_EQ(Written(phone.State()), Json({{1000, LayoutPath("xbeta")}}));
  EXPECT_EQ(phone.State()["calls"]["CreateThread"], 1);
}

TEST_F(AppTest, ApplyingStopsAtTheFirstFailure) {
  const std::pair<const char*, Json> faults[] = {
      {"fail RegistryGetString", Json::array()},
      {"fail RegistrySetString", Json::array()},
      {"fail CreateThread", Json::array()},
      {"fail RegistrySetString 1 1", {{1000, "temp.home.xml"}}},
  };
  for (const auto& [fault, writes] : faults) {
    folder.UseLayout("beta");
    ScriptedPhone phone(folder);
    phone.Play({fault});
    phone.Menu("Apply", {"wait 5000"});
    EXPECT_EQ(Written(phone.State()), writes) << fault;
    EXPECT_EQ(phone.State()["worker"], false) << fault;
    // The next time it works.
    phone.Play({"key up"});
    phone.Menu("Apply");
    EXPECT_EQ(phone.State()["registry_writes"].size(), writes.size() + 1) << fault;
  }
}

TEST_F(AppTest, EndsCleanlyOnEveryScreenWithWhateverIsOpen) {
  std::vector<Lines> moments;
  for (const auto& [screen, way] : WayTo()) moments.push_back(way);
  moments.push_back({"softkey left"});
  moments.push_back({"softkey left", "menu Delete"});
  moments.push_back({"key action", "softkey left"});
  moments.push_back({"key action", "key action", "key down", "wait 100"});
  moments.push_back({"key action", "softkey left", "menu Save as", "softkey left"});
  moments.push_back({"key back"});
  const std::vector<std::string> files = FilesBelow(folder.path());
  for (const Lines& moment : moments) {
    SCOPED_TRACE(moment.empty() ? "at the start" : moment.back());
    for (const bool told : {true, false}) {
      ScriptedPhone phone(folder);
      phone.Play(moment);
      if (told) {
        EXPECT_EQ(phone.Do("quit")["ok"], true);
        EXPECT_EQ(phone.State()["exit"], 0);
      }
      EXPECT_EQ(phone.End(), 0);
      EXPECT_EQ(FilesBelow(folder.path()), files);
    }
  }
}

TEST_F(AppTest, AnApplyingWorkerFinishesWhenTheProgramIsToldToEnd) {
  for (const char* const how : {"quit", "softkey right", "end of script"}) {
    for (const char* const when : {"wait 0", "wait 2500"}) {
      SCOPED_TRACE(std::string(how) + ", " + when);
      folder.UseLayout("beta");
      ScriptedPhone phone(folder);
      phone.Menu("Apply", {when});
      if (std::string(how) != "end of script") {
        phone.Play({how});
        const Json state = phone.State();
        EXPECT_EQ(state["exit"], 0);
        EXPECT_EQ(state["tick"], 5000);
        EXPECT_EQ(Written(state), Json({{1000, "temp.home.xml"}, {3000, LayoutPath("beta")}}));
      }
      EXPECT_EQ(phone.End(), 0);
      EXPECT_NE(ReadFile(folder.path() / "registry.reg").find("beta.home.xml"), std::string::npos);
    }
  }
}

/// With threads that run as they please, and an end at any moment; the thread sanitizer has its say here.
TEST_F(AppTest, EndsAtAnyMomentOfApplyingWithFreeThreads) {
  const Lines script = {"softkey left", "menu Apply",    "key down",     "wait 700 300", "key up",
                        "repaint",      "wait 1500 500", "softkey left", "menu Delete",  "answer no",
                        "key action",   "wait 3000 700", "softkey right"};
  for (std::size_t length = 2; length <= script.size(); ++length) {
    folder.UseLayout("beta");
    ScriptedPhone phone(folder, {"--free-threads"});
    for (std::size_t line = 0; line < length; ++line) phone.Send(script[line]);
    EXPECT_EQ(phone.End(), 0) << length;
    EXPECT_NE(ReadFile(folder.path() / "registry.reg").find("beta.home.xml"), std::string::npos) << length;
  }
}

TEST_F(AppTest, ASecondStartBringsTheFirstForward) {
  ScriptedPhone first(folder);
  first.Play({"key action", "key down", "wait 600"});
  const std::string selected = first.Selected();
  first.Play({"softkey right", "key back"});
  EXPECT_EQ(first.State()["foreground"], false);
  {
    ScriptedPhone second(folder);
    const Json state = second.State();
    EXPECT_EQ(state["exit"], 0);
    EXPECT_EQ(state["windows"], 0);
    EXPECT_EQ(second.End(), 0);
  }
  const Json state = first.State();
  EXPECT_EQ(state["raised"], 1);
  EXPECT_EQ(state["foreground"], true);
  EXPECT_EQ(first.Screen(), "Select Theme");
  // Another phone, or another name for the same one, is another instance.
  PhoneFolder other;
  EXPECT_EQ(ScriptedPhone(other).State()["exit"], nullptr);
  EXPECT_EQ(ScriptedPhone(folder, {"--instance", "another"}).State()["exit"], nullptr);
  // Once it has ended, the next start is a first one again, though its script goes on.
  first.Play({"quit"});
  EXPECT_EQ(ScriptedPhone(folder).State()["exit"], nullptr);
}

}  // namespace
