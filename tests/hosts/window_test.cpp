// The arithmetic of the desktop window, and the file that remembers it.

#include <gtest/gtest.h>

#include <vector>

#include "hosts/sdl/geometry.h"
#include "hosts/sdl/window_state.h"

namespace sdl {
namespace {

constexpr Size kPortrait = {240, 320};
constexpr Size kLandscape = {320, 240};

TEST(Geometry, TheScreenHasTheLargestWholeScaleInTheMiddle) {
  struct Case {
    Size screen;
    Size window;
    SDL_Rect picture;
  };
  constexpr Case kCases[] = {
      {kPortrait, {480, 640}, {0, 0, 480, 640}},      {kPortrait, {479, 700}, {119, 190, 240, 320}},
      {kPortrait, {723, 1000}, {1, 20, 720, 960}},    {kLandscape, {1280, 1024}, {0, 32, 1280, 960}},
      {kPortrait, {100, 100}, {-70, -110, 240, 320}},
  };
  for (const Case& it : kCases) {
    const SDL_Rect picture = PlacePicture(it.screen, it.window);
    EXPECT_TRUE(SDL_RectEquals(&picture, &it.picture)) << it.window.width << "x" << it.window.height;
  }
  // A window is never as high as the display: it has a frame.
  EXPECT_EQ(ComfortableScale(kPortrait, {1280, 640}), 1);
  EXPECT_EQ(ComfortableScale(kPortrait, {1920, 1053}), 3);
  EXPECT_EQ(ComfortableScale(kPortrait, {100'000, 100'000}), kLargestScale);
}

TEST(Geometry, TheWindowIsNeverOffTheDisplays) {
  const std::vector<SDL_Rect> displays = {{0, 30, 1000, 970}, {1000, 0, 800, 600}};
  struct Case {
    SDL_Rect window;
    SDL_Point place;
  };
  constexpr Case kCases[] = {
      {{100, 100, 300, 300}, {100, 100}},        // it is all there
      {{-50, 10, 300, 300}, {0, 30}},            // over the edge, and under the panel
      {{900, 100, 300, 300}, {1000, 100}},       // more of it on the second display
      {{1700, 500, 300, 300}, {1500, 300}},      //
      {{5000, 5000, 300, 300}, {350, 365}},      // its display is gone
      {{2147483600, 0, 300, 300}, {350, 365}},   //
      {{-2147483647, 0, 300, 300}, {350, 365}},  //
      {{1100, 100, 2000, 2000}, {1000, 0}},      // larger than its display
  };
  for (const Case& it : kCases) {
    const SDL_Point place = PlaceWindow(it.window, displays);
    EXPECT_EQ(place.x, it.place.x) << it.window.x << "," << it.window.y;
    EXPECT_EQ(place.y, it.place.y) << it.window.x << "," << it.window.y;
  }
  EXPECT_EQ(PlaceWindow({7, 8, 9, 9}, {}).y, 8) << "nothing is known of the displays";
}

TEST(WindowState, ComesBackAsItWas) {
  WindowState state;
  EXPECT_EQ(ParseWindowState(FormatWindowState(state)), state);
  state = {SDL_Point{-1200, 40}, 5, Orientation::landscape};
  EXPECT_EQ(ParseWindowState(FormatWindowState(state)), state);
}

TEST(WindowState, IsNotTakenFromWhatIsNotUnderstood) {
  for (const char* const lines :
       {"position 1\n", "position 1 99999999999\n", "position -1000001 1\n", "scale 9\n", "scale -1\n", "scale 2 3\n",
        "scale two\n", "screen wide\n", "screen\n", "colour red\n", "\n"})
    EXPECT_EQ(ParseWindowState(std::string("quillmark-window 1\n") + lines), std::nullopt) << lines;
  for (const char* const text : {"", "scale 2\n", "quillmark-window 2\nscale 2\n"})
    EXPECT_EQ(ParseWindowState(text), std::nullopt) << text;
}

}  // namespace
}  // namespace sdl
