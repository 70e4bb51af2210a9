#include "graphics/text_engine.h"

#include <fontconfig/fontconfig.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <future>
#include <map>
#include <string>
#include <tuple>

#include "system/text.h"

namespace phone {

namespace {

// Added to the fonts of this machine: what stands in for the program's face, and one way of rendering, whatever the
// desktop is set to, so that the phone's pictures are the same everywhere. What stands in goes by the name of the face:
// Pango looks for a font's metrics by its name, and would search all fonts once more for another one.
constexpr char kFontRules[] = R"(<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "fonts.dtd">
<fontconfig>
  <match target="pattern">
    <test name="family"><string>Verdana</string></test>
    <edit name="family" mode="append" binding="strong"><string>DejaVu Sans</string></edit>
  </match>
  <match target="font">
    <test name="family"><string>DejaVu Sans</string></test>
    <test name="family" target="pattern"><string>Verdana</string></test>
    <edit name="family" mode="assign"><string>Verdana</string></edit>
  </match>
  <match target="font">
    <edit name="antialias" mode="assign"><bool>true</bool></edit>
    <edit name="hinting" mode="assign"><bool>true</bool></edit>
    <edit name="hintstyle" mode="assign"><const>hintslight</const></edit>
    <edit name="autohint" mode="assign"><bool>false</bool></edit>
    <edit name="rgba" mode="assign"><const>none</const></edit>
    <edit name="lcdfilter" mode="assign"><const>lcdnone</const></edit>
  </match>
</fontconfig>
)";

constexpr char16_t kProgramFace[] = u"Verdana";
constexpr int kUsualHeight = 16;  // px

struct ObjectRelease {
  void operator()(void* object) const noexcept { g_object_unref(object); }
};

bool HasFonts(FcConfig* config, FcSetName set) {
  const FcFontSet* fonts = FcConfigGetFonts(config, set);
  return fonts != nullptr && fonts->nfont > 0;
}

/// Makes the fonts of this machine, with the rules above, the process's own, so that no library loads them again. False
/// when there is no font at all.
bool LoadFonts() {
  FcConfig* config = FcInitLoadConfigAndFonts();
  if (config == nullptr) return false;
  FcConfigParseAndLoadFromMemory(config, reinterpret_cast<const FcChar8*>(kFontRules), FcTrue);
  FcConfigSetCurrent(config);
  FcConfigDestroy(config);  // the process holds it
  return HasFonts(config, FcSetSystem) || HasFonts(config, FcSetApplication);
}

struct Engine {
  std::unique_ptr<PangoContext, ObjectRelease> context;  // null without fonts
  std::unique_ptr<PangoLayout, ObjectRelease> layout;
  std::uint32_t face = 0;  ///< that the layout is made with; 0 for none
  std::u16string text;     ///< that is laid out

  Engine();
};

void SetFontOptions(PangoContext* context) {
  cairo_font_options_t* options = cairo_font_options_create();
  cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
  cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_SLIGHT);
  cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_ON);
  pango_cairo_context_set_font_options(context, options);
  cairo_font_options_destroy(options);
}

/// The language that decides which of the Han typefaces is right, by the other characters of the text. It would be this
/// machine's language otherwise.
const char* LanguageOf(std::u16string_view text) noexcept {
  const char* language = "en";
  for (const char16_t unit : text) {
    if (unit >= 0x3040 && unit <= 0x30FF) return "ja";
    if (unit >= 0xAC00 && unit <= 0xD7A3) return "ko";
    if (unit >= 0x3400 && unit <= 0x9FFF) language = "zh-cn";
  }
  return language;
}

Engine::Engine() {
  if (!LoadFonts()) return;
  const std::unique_ptr<PangoFontMap, ObjectRelease> map(pango_cairo_font_map_new_for_font_type(CAIRO_FONT_TYPE_FT));
  context.reset(pango_font_map_create_context(map.get()));
  SetFontOptions(context.get());
  pango_context_set_base_dir(context.get(), PANGO_DIRECTION_WEAK_LTR);
  // Fonts are searched for by language, too: that of most lines, so that a new face's search is its first line's as
  // well.
  pango_context_set_language(context.get(), pango_language_from_string(LanguageOf({})));
  layout.reset(pango_layout_new(context.get()));
  pango_layout_set_single_paragraph_mode(layout.get(), TRUE);
}

/// Never released: Pango's own threads may still look for fonts when the process ends.
Engine* g_engine = nullptr;

/// The making of the engine, in a thread where there can be one. The process does not end in the middle of it.
const std::shared_future<void>& MakingEngine() {
  static const std::shared_future<void> making = std::async([] { g_engine = new Engine; });
  return making;
}

Engine& TheEngine() {
  MakingEngine().get();
  return *g_engine;
}

/// A line break, a tab: what is drawn as one blank.
bool IsBreak(char16_t unit) noexcept {
  return (unit >= u'\t' && unit <= u'\r') || unit == 0x85 || unit == 0x2028 || unit == 0x2029;
}

std::string LineText(std::u16string_view text) {
  std::u16string line(text);
  std::replace_if(line.begin(), line.end(), IsBreak, u' ');
  constexpr char16_t kReplacement = 0xFFFD;
  std::replace(line.begin(), line.end(), char16_t{0}, kReplacement);
  return ToUtf8Lossy(line);
}

using FaceKey = std::tuple<std::u16string, int, bool>;

Ref<Face> MakeFace(const FaceKey& key) {
  static std::uint32_t faces_made = 0;
  const auto& [name, height, bold] = key;
  Ref<Face> face(new Face);
  face->description.reset(pango_font_description_new());
  PangoFontDescription* description = face->description.get();
  pango_font_description_set_family(description, ToUtf8Lossy(name).c_str());
  pango_font_description_set_absolute_size(description, double{PANGO_SCALE} * height);
  pango_font_description_set_weight(description, bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
  const std::unique_ptr<PangoFont, ObjectRelease> font(pango_context_load_font(TheEngine().context.get(), description));
  if (font == nullptr) return {};
  // The empty glyph is as high as a line. Asked for its metrics, the font would search for its fallbacks once more.
  PangoRectangle cell = {};
  pango_font_get_glyph_extents(font.get(), PANGO_GLYPH_EMPTY, nullptr, &cell);
  face->ascent = PANGO_PIXELS(PANGO_ASCENT(cell));
  face->line_height = face->ascent + PANGO_PIXELS(PANGO_DESCENT(cell));
  face->id = ++faces_made;
  return face;
}

}  // namespace

void DescriptionRelease::operator()(PangoFontDescription* description) const noexcept {
  pango_font_description_free(description);
}

void StartTextEngine() {
  MakingEngine();
}

bool HasUsableFont() {
  return static_cast<bool>(FindFace(kProgramFace, kUsualHeight, false));
}

Ref<Face> FindFace(std::u16string_view name, int height, bool bold) {
  constexpr std::size_t kMostFaces = 64;
  constexpr int kLargestHeight = 512;  // px; a larger glyph fills the screen just as well
  static std::map<FaceKey, Ref<Face>> faces;
  if (TheEngine().context == nullptr) return {};
  FaceKey key(name, std::clamp(height, 1, kLargestHeight), bold);
  const auto found = faces.find(key);
  if (found != faces.end()) return found->second;
  if (faces.size() >= kMostFaces) std::erase_if(faces, [](const auto& entry) { return entry.second->uses == 1; });
  Ref<Face> face = MakeFace(key);
  if (face) faces.emplace(std::move(key), face);
  return face;
}

PangoLayout* LayOutLine(const Face& face, std::u16string_view text) {
  Engine& engine = TheEngine();
  PangoLayout* layout = engine.layout.get();
  // Who measures a line draws it, too; a field looks at its own again and again.
  if (engine.face == face.id && engine.text == text) return layout;
  engine.face = 0;
  engine.text = text;
  const std::string line = LineText(text);
  pango_context_set_language(engine.context.get(), pango_language_from_string(LanguageOf(text)));
  pango_layout_context_changed(layout);
  pango_layout_set_font_description(layout, face.description.get());
  pango_layout_set_text(layout, line.data(), static_cast<int>(line.size()));
  engine.face = face.id;
  return layout;
}

}  // namespace phone

#if defined(__SANITIZE_ADDRESS__) || defined(__clang__)
// Fontconfig links its records by distances instead of pointers, which the leak checker cannot follow; the library of
// the desktop's message bus, which a host may load, leaves its tables to the end of the process.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() {
  return "leak:libfontconfig\nleak:libpangoft2\nleak:libdbus-1\n";
}
extern "C" const char* __lsan_default_options();
extern "C" const char* __lsan_default_options() {
  return "print_suppressions=0";
}
#endif
