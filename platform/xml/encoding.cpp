#include "xml/encoding.h"

#include <unicode/ucnv.h>
#include <unicode/uset.h>

#include <algorithm>
#include <array>
#include <memory>
#include <new>

#include "system/text.h"

namespace phone::xml {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

struct CloseConverter {
  void operator()(UConverter* converter) const noexcept { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, CloseConverter>;

struct CloseSet {
  void operator()(USet* set) const noexcept { uset_close(set); }
};
using CharacterSet = std::unique_ptr<USet, CloseSet>;

bool IsLetter(char c) noexcept {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// Whether the name is one that XML allows; the converter's library would read more into others.
bool IsEncodingName(std::string_view name) noexcept {
  return !name.empty() && name.size() < UCNV_MAX_CONVERTER_NAME_LENGTH && IsLetter(name.front()) &&
         std::all_of(name.begin(), name.end(),
                     [](char c) { return IsLetter(c) || (c >= '0' && c <= '9') || c == '.' || c == '_' || c == '-'; });
}

bool SameEncoding(std::string_view a, const char* b) {
  return ucnv_compareNames(std::string(a).c_str(), b) == 0;
}

void ThrowIfNoMemory(UErrorCode error) {
  if (error == U_MEMORY_ALLOCATION_ERROR) throw std::bad_alloc();
}

/// A converter that stops at what is not in its encoding. Null for an unknown encoding.
Converter Open(std::string_view name) {
  if (!IsEncodingName(name)) return nullptr;
  UErrorCode error = U_ZERO_ERROR;
  Converter converter(ucnv_open(std::string(name).c_str(), &error));
  ThrowIfNoMemory(error);
  if (U_FAILURE(error)) return nullptr;
  ucnv_setToUCallBack(converter.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
  ucnv_setFromUCallBack(converter.get(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
  ucnv_setFallback(converter.get(), false);
  return U_SUCCESS(error) ? std::move(converter) : nullptr;
}

std::string_view TrimBlanks(std::string_view text) noexcept {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// How the bytes begin: the encoding that follows from it, and the length of a byte order mark.
struct Signature {
  std::string_view encoding;
  std::size_t length = 0;
};

Signature FindSignature(std::string_view bytes) {
  struct Known {
    std::string_view start;
    Signature signature;
  };
  // Longer ones first. The last two are "<?" in 16 bits without a mark.
  static constexpr std::array<Known, 7> kKnown{{
      {{"\xFF\xFE\0\0", 4}, {"UTF-32LE", 4}},
      {{"\0\0\xFE\xFF", 4}, {"UTF-32BE", 4}},
      {"\xEF\xBB\xBF", {"UTF-8", 3}},
      {"\xFF\xFE", {"UTF-16LE", 2}},
      {"\xFE\xFF", {"UTF-16BE", 2}},
      {{"<\0?\0", 4}, {"UTF-16LE", 0}},
      {{"\0<\0?", 4}, {"UTF-16BE", 0}},
  }};
  for (const Known& known : kKnown)
    if (bytes.starts_with(known.start)) return known.signature;
  return {};
}

/// Converts piece by piece, and stops at what no document holds: the text may be far longer than anybody would read.
std::optional<std::string> Convert(std::string_view bytes, std::string_view encoding) {
  const Converter from = Open(encoding);
  const Converter to = Open("UTF-8");
  if (!from || !to) return std::nullopt;
  std::string text;
  std::array<char, 16'384> chunk;
  std::array<UChar, 4'096> pivot;
  UChar* pivot_source = pivot.data();
  UChar* pivot_target = pivot.data();
  const char* source = bytes.data();
  UErrorCode error = U_BUFFER_OVERFLOW_ERROR;
  for (bool first = true; error == U_BUFFER_OVERFLOW_ERROR; first = false) {
    error = U_ZERO_ERROR;
    char* target = chunk.data();
    ucnv_convertEx(to.get(), from.get(), &target, chunk.data() + chunk.size(), &source, bytes.data() + bytes.size(),
                   pivot.data(), &pivot_source, &pivot_target, pivot.data() + pivot.size(), first, /*flush=*/true,
                   &error);
    const std::string_view converted(chunk.data(), static_cast<std::size_t>(target - chunk.data()));
    if (converted.find('\0') != std::string_view::npos) return std::nullopt;
    text += converted;
  }
  ThrowIfNoMemory(error);
  if (U_FAILURE(error)) return std::nullopt;
  return text;
}

/// A converter for writing: one of 16 or 32 bits writes no mark of its own, by whichever of its names it is asked for,
/// and is little-endian where the name leaves the order open.
Converter OpenForWriting(std::string_view name) {
  Converter converter = Open(name);
  switch (converter ? ucnv_getType(converter.get()) : UCNV_UNSUPPORTED_CONVERTER) {
    case UCNV_UTF16:
    case UCNV_UTF16_LittleEndian: return Open("UTF-16LE");
    case UCNV_UTF16_BigEndian: return Open("UTF-16BE");
    case UCNV_UTF32:
    case UCNV_UTF32_LittleEndian: return Open("UTF-32LE");
    case UCNV_UTF32_BigEndian: return Open("UTF-32BE");
    default: return converter;
  }
}

/// Writes text in one encoding.
class Encoder {
 public:
  /// False for an unknown encoding.
  bool Begin(std::string_view name) {
    converter_ = OpenForWriting(name);
    UErrorCode error = U_ZERO_ERROR;
    if (!converter_) return false;
    holds_.reset(uset_openEmpty());
    if (!holds_) throw std::bad_alloc();
    ucnv_getUnicodeSet(converter_.get(), holds_.get(), UCNV_ROUNDTRIP_SET, &error);
    ThrowIfNoMemory(error);
    if (U_FAILURE(error)) return false;
    // Every encoding of 16 or 32 bits gets its mark.
    return ucnv_getMinCharSize(converter_.get()) == 1 || Write(u"\uFEFF");
  }

  /// Writes text in which no character reference can stand.
  bool Verbatim(std::u16string_view text) { return Held(text) == text.size() && Write(text); }

  /// Writes the text of an element: its markup, and what stands between.
  bool Markup(std::u16string_view text) {
    while (!text.empty()) {
      const std::size_t data = std::min(text.find(u'<'), text.size());
      if (!Data(text.substr(0, data))) return false;
      text.remove_prefix(data);
      if (!text.empty() && !Tag(text)) return false;
    }
    return true;
  }

  std::vector<std::byte> Finish() {
    Drain({}, /*flush=*/true);
    return std::move(bytes_);
  }

 private:
  std::size_t Held(std::u16string_view text) const noexcept {
    return static_cast<std::size_t>(
        uset_span(holds_.get(), text.data(), static_cast<std::int32_t>(text.size()), USET_SPAN_CONTAINED));
  }

  /// Writes text with references, each between `before` and `after`, for what the encoding does not hold.
  bool Data(std::u16string_view text, std::u16string_view before = {}, std::u16string_view after = {}) {
    while (!text.empty()) {
      const std::size_t held = Held(text);
      if (!Write(text.substr(0, held))) return false;
      text.remove_prefix(held);
      if (text.empty()) break;
      const bool pair = text.size() > 1 && U16_IS_LEAD(text[0]);
      const UChar32 character = pair ? U16_GET_SUPPLEMENTARY(text[0], text[1]) : text[0];
      const std::string digits = std::to_string(character);
      std::u16string reference(before);
      ((reference += u"&#").append(digits.begin(), digits.end()) += u';') += after;
      if (!Write(reference)) return false;
      text.remove_prefix(pair ? 2 : 1);
    }
    return true;
  }

  /// Writes what begins with "<" at the start of `text`, and removes it.
  bool Tag(std::u16string_view& text) {
    constexpr std::u16string_view kCdata = u"<![CDATA[";
    if (text.starts_with(kCdata)) {
      const std::u16string_view section = Take(text, u"]]>");
      const std::u16string_view content = section.substr(kCdata.size(), section.size() - kCdata.size() - 3);
      return Write(kCdata) && Data(content, u"]]>", kCdata) && Write(u"]]>");
    }
    if (text.starts_with(u"<!--")) return Verbatim(Take(text, u"-->"));
    if (text.starts_with(u"<?")) return Verbatim(Take(text, u"?>"));
    // Names are verbatim, the quoted values between them are data.
    while (!text.empty()) {
      const std::size_t stop = std::min(text.find_first_of(u"\"'>"), text.size() - 1);
      const char16_t quote = text[stop];
      if (!Verbatim(text.substr(0, stop + 1))) return false;
      text.remove_prefix(stop + 1);
      if (quote == u'>') return true;
      const std::size_t end = std::min(text.find(quote), text.size());
      if (!Data(text.substr(0, end)) || !Write(text.substr(end, 1))) return false;
      text.remove_prefix(std::min(end + 1, text.size()));
    }
    return true;
  }

  static std::u16string_view Take(std::u16string_view& text, std::u16string_view end) noexcept {
    const std::size_t at = text.find(end);
    const std::u16string_view taken = text.substr(0, at == text.npos ? at : at + end.size());
    text.remove_prefix(taken.size());
    return taken;
  }

  bool Write(std::u16string_view text) { return Drain(text, /*flush=*/false); }

  bool Drain(std::u16string_view text, bool flush) {
    std::array<char, 4096> chunk;
    const UChar* source = text.data();
    UErrorCode error = U_BUFFER_OVERFLOW_ERROR;
    while (error == U_BUFFER_OVERFLOW_ERROR) {
      error = U_ZERO_ERROR;
      char* target = chunk.data();
      ucnv_fromUnicode(converter_.get(), &target, chunk.data() + chunk.size(), &source, text.data() + text.size(),
                       nullptr, flush, &error);
      const auto* const first = reinterpret_cast<const std::byte*>(chunk.data());
      bytes_.insert(bytes_.end(), first, first + (target - chunk.data()));
    }
    ThrowIfNoMemory(error);
    return U_SUCCESS(error);
  }

  Converter converter_;
  CharacterSet holds_;
  std::vector<std::byte> bytes_;
};

std::vector<std::byte> Join(std::span<const Piece> pieces) {
  std::size_t size = 0;
  for (const Piece& piece : pieces) size += piece.text.size();
  std::vector<std::byte> bytes;
  bytes.reserve(size);
  for (const Piece& piece : pieces) {
    const auto* const first = reinterpret_cast<const std::byte*>(piece.text.data());
    bytes.insert(bytes.end(), first, first + piece.text.size());
  }
  return bytes;
}

}  // namespace

std::optional<std::string_view> FindDeclaration(std::string_view text) noexcept {
  constexpr std::string_view kStart = "<?xml";
  if (!text.starts_with(kStart) || text.size() <= kStart.size()) return std::nullopt;
  if (kBlanks.find(text[kStart.size()]) == std::string_view::npos) return std::nullopt;
  const std::size_t end = text.find("?>");
  if (end == std::string_view::npos) return std::nullopt;
  return TrimBlanks(text.substr(kStart.size(), end - kStart.size()));
}

std::string_view DeclaredEncoding(std::string_view declaration) noexcept {
  while (!declaration.empty()) {
    const std::size_t equals = declaration.find('=');
    const std::size_t open = declaration.find_first_of("\"'", equals);
    if (equals == std::string_view::npos || open == std::string_view::npos) break;
    const std::size_t close = declaration.find(declaration[open], open + 1);
    if (close == std::string_view::npos) break;
    if (TrimBlanks(declaration.substr(0, equals)) == "encoding") return declaration.substr(open + 1, close - open - 1);
    declaration.remove_prefix(close + 1);
  }
  return {};
}

bool IsUtf8(std::string_view encoding) {
  return encoding.empty() || SameEncoding(encoding, "UTF-8");
}

bool Decode(std::span<const std::byte> bytes, DecodedText& decoded) {
  std::string_view raw(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  const Signature signature = FindSignature(raw);
  raw.remove_prefix(signature.length);
  std::string_view encoding = signature.encoding;
  if (encoding.empty())
    if (const auto declaration = FindDeclaration(raw)) encoding = DeclaredEncoding(*declaration);
  if (IsUtf8(encoding)) {
    decoded.text = raw;
    return true;
  }
  std::optional<std::string> converted = Convert(raw, encoding);
  if (!converted) return false;
  decoded.storage = std::move(*converted);
  decoded.text = decoded.storage;
  // A declaration that was read as ASCII belongs to an encoding that says the same.
  return !signature.encoding.empty() || FindDeclaration(decoded.text) == FindDeclaration(raw);
}

std::optional<std::vector<std::byte>> Encode(std::span<const Piece> pieces, std::string_view encoding) {
  if (IsUtf8(encoding)) return Join(pieces);
  Encoder encoder;
  if (!encoder.Begin(encoding)) return std::nullopt;
  for (const Piece& piece : pieces) {
    const std::optional<std::u16string> text = ToUtf16(piece.text);
    if (!text) return std::nullopt;
    if (!(piece.verbatim ? encoder.Verbatim(*text) : encoder.Markup(*text))) return std::nullopt;
  }
  return encoder.Finish();
}

}  // namespace phone::xml
