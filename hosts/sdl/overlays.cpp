#include "hosts/sdl/overlays.h"

#include <unicode/unistr.h>

#include <algorithm>
#include <iostream>
#include <limits>
#include <utility>

#include "hosts/sdl/overlay_pictures.h"

namespace sdl {
namespace {

constexpr Uint64 kNoticeTime = 6'000;        // ms
constexpr Uint64 kTimeForOthers = 1'000;     // ms more for each notice that is read before
constexpr Uint64 kIntroductionTime = 8'000;  // ms
constexpr std::size_t kMostNotices = 12;

/// A file's name may hold bytes that are no text.
std::u16string ToText(const std::string& utf8) {
  const icu::UnicodeString text = icu::UnicodeString::fromUTF8(utf8);
  return {text.getBuffer(), static_cast<std::size_t>(text.length())};
}

bool IsModifier(SDL_Keycode key) {
  constexpr SDL_Keycode kModifiers[] = {SDLK_LSHIFT, SDLK_RSHIFT,   SDLK_LCTRL,       SDLK_RCTRL,
                                        SDLK_LALT,   SDLK_RALT,     SDLK_LGUI,        SDLK_RGUI,
                                        SDLK_MODE,   SDLK_CAPSLOCK, SDLK_NUMLOCKCLEAR};
  return std::ranges::find(kModifiers, key) != std::end(kModifiers);
}

SDL_Rect Moved(SDL_Rect rect, SDL_Point by) {
  return {rect.x + by.x, rect.y + by.y, rect.w, rect.h};
}

SDL_Point Middle(const SDL_Rect& area, int width, int height) {
  return {area.x + (area.w - width) / 2, area.y + (area.h - height) / 2};
}

}  // namespace

void Overlays::Notify(const std::string& text) {
  std::cerr << "quillmark: " << text << std::endl;
  const auto same = [&](const Notice& notice) { return notice.text == text; };
  std::erase_if(notices_, same);
  if (notices_.size() == kMostNotices) notices_.pop_front();
  notices_.push_back({text, SDL_GetTicks64() + kNoticeTime + kTimeForOthers * notices_.size()});
  window_.ShowNotice(LastNotice());
  Draw();
}

void Overlays::Opened() {
  window_.ShowNotice(LastNotice());
  Draw();
}

void Overlays::ShowKeyMap() {
  key_map_ = true;
  key_map_end_.reset();
  Draw();
}

void Overlays::IntroduceKeys() {
  key_map_ = true;
  key_map_end_ = SDL_GetTicks64() + kIntroductionTime;
  Draw();
}

void Overlays::Ask(const std::string& text, const std::string& yes, const std::string& no,
                   std::function<void(bool)> answer) {
  key_map_ = false;
  questions_.push_back({text, yes, no, std::move(answer)});
  Draw();
}

void Overlays::ShowComposition(const Composition& composition, const SDL_Rect& caret) {
  const bool same = composition == composition_ && (composition.text.empty() || SDL_RectEquals(&caret, &caret_));
  if (same) return;
  composition_ = composition;
  caret_ = caret;
  Draw();
}

void Overlays::Draw() {
  std::vector<Layer> layers;
  const View view = window_.CurrentView();
  if (window_.IsOpen() && view.screen.w > 0) {
    if (!composition_.text.empty()) {
      phone::Surface picture = DrawComposition(composition_, caret_.h, view.screen.w, view.scale);
      const int most = view.screen.x + view.screen.w - picture.width();
      layers.push_back({std::move(picture), {std::min(caret_.x, most), caret_.y}});
    }
    if (key_map_) {
      phone::Surface picture = DrawKeyMap(view.window, view.scale);
      const SDL_Rect whole = {0, 0, view.window.width, view.window.height};
      const SDL_Point at = Middle(whole, picture.width(), picture.height());
      layers.push_back({std::move(picture), at});
    }
    if (!questions_.empty()) DrawQuestionInto(layers, view);
    if (!notices_.empty()) {
      std::vector<std::u16string> texts;
      for (const Notice& notice : notices_) texts.push_back(ToText(notice.text));
      layers.push_back({DrawNotices(texts, view.screen.w, view.scale), {view.screen.x, view.screen.y}});
    }
  }
  window_.SetLayers(std::move(layers));
}

void Overlays::Expire() {
  const Uint64 now = SDL_GetTicks64();
  const auto over = [&](const Notice& notice) { return notice.end <= now; };
  const bool some_are_over = std::erase_if(notices_, over) > 0;
  const bool introduced = key_map_ && key_map_end_ && *key_map_end_ <= now;
  if (introduced) key_map_ = false;
  if (some_are_over) window_.ShowNotice(LastNotice());
  if (some_are_over || introduced) Draw();
}

std::uint32_t Overlays::TimeLeft() const {
  constexpr Uint64 kNever = std::numeric_limits<Uint64>::max();
  Uint64 end = key_map_ ? key_map_end_.value_or(kNever) : kNever;
  for (const Notice& notice : notices_) end = std::min(end, notice.end);
  const Uint64 now = SDL_GetTicks64();
  return static_cast<std::uint32_t>(
      std::min<Uint64>(end > now ? end - now : 0, std::numeric_limits<std::uint32_t>::max()));
}

bool Overlays::TakeKey(SDL_Keycode key) {
  if (!questions_.empty()) {
    if (key == SDLK_RETURN || key == SDLK_KP_ENTER) Answer(true);
    if (key == SDLK_ESCAPE) Answer(false);
    return true;
  }
  if (!key_map_ || IsModifier(key)) return false;
  // What nobody has asked for takes nobody's key, but for the one that is pressed to be rid of it.
  const bool asked_for = !key_map_end_;
  CloseKeyMap();
  return asked_for || key == SDLK_ESCAPE || key == SDLK_F10;
}

bool Overlays::TakeClick(SDL_Point at) {
  if (!questions_.empty()) {
    if (SDL_PointInRect(&at, &yes_)) {
      Answer(true);
    } else if (SDL_PointInRect(&at, &no_)) {
      Answer(false);
    }
    return true;
  }
  if (!key_map_) return false;
  CloseKeyMap();
  return true;
}

void Overlays::CloseKeyMap() {
  key_map_ = false;
  Draw();
}

void Overlays::Answer(bool yes) {
  const std::function<void(bool)> answer = std::move(questions_.front().answer);
  questions_.pop_front();
  Draw();
  answer(yes);
}

void Overlays::DrawQuestionInto(std::vector<Layer>& layers, const View& view) {
  const Question& question = questions_.front();
  QuestionPicture drawn =
      DrawQuestion(ToText(question.text), ToText(question.yes), ToText(question.no), view.screen.w, view.scale);
  const SDL_Point at = Middle(view.screen, drawn.picture.width(), drawn.picture.height());
  yes_ = Moved(drawn.yes, at);
  no_ = Moved(drawn.no, at);
  layers.push_back({std::move(drawn.picture), at});
}

}  // namespace sdl
