/// \file
/// The help and product pages are shown by the desktop's viewer, which gets their path as one argument, whatever the
/// path looks like. A viewer of the trial's own writes down what it is given.
#include <gtest/gtest.h>
#include <poll.h>

#include <cstdlib>

#include "hosts/sdl/document.h"
#include "support/file_content.h"
#include "support/temporary_folder.h"

namespace {

class PageTrial : public testing::Test {
 protected:
  PageTrial() {
    const std::filesystem::path viewer = folder.path / "xdg-open";
    WriteFile(viewer, "#!/bin/sh\nprintf '%s\\0' \"$#\" \"$@\" >'" + folder.path.string() + "/given'\nprintf x >>'" +
                          folder.path.string() + "/starts'\nexit \"${STATUS:-0}\"\n");
    std::filesystem::permissions(viewer, std::filesystem::perms::owner_all);
    setenv("PATH", (folder.path.string() + ":" + path).c_str(), 1);
  }
  ~PageTrial() override { setenv("PATH", path.c_str(), 1); }

  /// Shows a document and gives what the viewer was given.
  std::string Given(const std::string& document) const {
    std::filesystem::remove(folder.path / "given");
    std::optional<sdl::Viewer> viewer = sdl::Viewer::Open(document);
    if (!viewer) return "nothing";
    pollfd waiting = {viewer->descriptor(), POLLIN, 0};
    poll(&waiting, 1, -1);
    shown = viewer->Finish();
    return ReadFile(folder.path / "given");
  }

  const std::string path = getenv("PATH");
  const TemporaryFolder folder;
  mutable bool shown = false;
};

TEST_F(PageTrial, APathIsOneArgumentWhateverItLooksLike) {
  for (const std::string& document :
       {std::string("/usr/share/quillmark/program/help_en.html"), std::string("/a b/it's \"the\" page.html"),
        std::string("/%2e%2e/%s %n.html"), std::string("/$(touch x)/`id`;ls|cat&.html"), std::string("/-rf/--help"),
        std::string("/*?[a]~{b,c}.html"), std::string("/line\nbreak\t.html"), std::string("/Größe/\xFF.html"),
        std::string("https://example.invalid/?a=b&c='d'#e")}) {
    EXPECT_EQ(Given(document), std::string("1\0", 2) + document + '\0') << document;
    EXPECT_TRUE(shown);
  }
}

TEST_F(PageTrial, NothingIsStartedForWhatWouldBeAnOptionOrIsNothing) {
  for (const char* const document : {"", "-", "--help", "-rf /"}) EXPECT_EQ(Given(document), "nothing") << document;
  EXPECT_FALSE(std::filesystem::exists(folder.path / "starts"));
}

TEST_F(PageTrial, AViewerThatFailsOrIsMissingIsNoticed) {
  setenv("STATUS", "3", 1);
  Given("/x.html");
  unsetenv("STATUS");
  EXPECT_FALSE(shown);
  setenv("PATH", "/nowhere", 1);
  EXPECT_EQ(Given("/x.html"), "nothing");
}

}  // namespace
