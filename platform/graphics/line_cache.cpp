// Lines of text drawn, and kept for the next time.

#include "graphics/face.h"

#include <functional>
#include <list>
#include <string>
#include <unordered_set>

namespace phone {

namespace {

// A line is rendered and kept as far as this; what lies beyond is rendered when it is looked at. Wider than any screen
// shows, and small enough for a line of large glyphs.
constexpr Area kKeptPart = {-1024, -2048, 5120, 4096};

// Some screens full of lines.
constexpr std::size_t kMostLines = 512;
constexpr std::size_t kMostBytes = std::size_t{8} << 20;

struct LineName {
  std::uint32_t face;
  std::u16string_view text;
};

struct Entry {
  std::uint32_t face;
  std::u16string text;
  Line line;
  std::size_t bytes;

  LineName Name() const noexcept { return {face, text}; }
};

/// From the line drawn last to the one drawn longest ago.
using Entries = std::list<Entry>;

LineName NameOf(const LineName& name) noexcept {
  return name;
}
LineName NameOf(const Entries::iterator& entry) noexcept {
  return entry->Name();
}

struct NameHash {
  using is_transparent = void;
  std::size_t operator()(const auto& named) const noexcept {
    constexpr std::size_t kSpread = 0x9E3779B1;  // 2^32 over the golden ratio: spreads small numbers
    const LineName name = NameOf(named);
    return std::hash<std::u16string_view>()(name.text) ^ name.face * kSpread;
  }
};

struct NameEqual {
  using is_transparent = void;
  bool operator()(const auto& a, const auto& b) const noexcept {
    const LineName first = NameOf(a);
    const LineName second = NameOf(b);
    return first.face == second.face && first.text == second.text;
  }
};

class LineCache {
 public:
  const Line& Find(const Face& face, std::u16string_view text) {
    const auto found = index_.find(LineName{face.id, text});
    if (found == index_.end()) return Add(face, text);
    entries_.splice(entries_.begin(), entries_, *found);
    return entries_.front().line;
  }

 private:
  const Line& Add(const Face& face, std::u16string_view text) {
    Line line = RenderLine(face, text, kKeptPart);
    const std::size_t pixels = static_cast<std::size_t>(line.ink.width * line.ink.height);
    const std::size_t bytes = pixels * (line.colored != nullptr ? 5 : 1);
    while (!entries_.empty() && (entries_.size() >= kMostLines || bytes_ + bytes > kMostBytes)) DropLast();
    entries_.push_front({face.id, std::u16string(text), std::move(line), bytes});
    try {
      index_.insert(entries_.begin());
    } catch (...) {
      entries_.pop_front();
      throw;
    }
    bytes_ += bytes;
    return entries_.front().line;
  }

  void DropLast() noexcept {
    bytes_ -= entries_.back().bytes;
    index_.erase(std::prev(entries_.end()));
    entries_.pop_back();
  }

  Entries entries_;
  std::unordered_set<Entries::iterator, NameHash, NameEqual> index_;
  std::size_t bytes_ = 0;
};

}  // namespace

const Line& CachedLine(const Face& face, std::u16string_view text) {
  static LineCache* const cache = new LineCache;
  return cache->Find(face, text);
}

void DrawLineAt(Bitmap& target, const Area& clip, std::int64_t x, std::int64_t baseline, const Face& face,
                std::u16string_view text, COLORREF color) {
  const std::optional<Area> clipped = Intersect(clip, AreaOf(target));
  if (!clipped) return;
  const Line* line = &CachedLine(face, text);
  const Area looked_at = {clipped->x - x, clipped->y - baseline, clipped->width, clipped->height};
  Line part;
  if (!line->complete && !Contains(kKeptPart, looked_at)) {
    part = RenderLine(face, text, looked_at);
    line = &part;
  }
  if (line->mask == nullptr) return;
  const Area ink = {x + line->ink.x, baseline + line->ink.y, line->ink.width, line->ink.height};
  const std::optional<Area> visible = Intersect(ink, *clipped);
  if (!visible) return;
  const std::int64_t image_x = visible->x - ink.x;
  const std::int64_t image_y = visible->y - ink.y;
  Composite(target, *visible, SolidColor(color), line->mask.get(), image_x, image_y);
  if (line->colored != nullptr) Composite(target, *visible, line->colored.get(), nullptr, image_x, image_y);
}

}  // namespace phone
