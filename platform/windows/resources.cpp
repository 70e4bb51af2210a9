#include "windows/resources.h"

#include "system/text.h"

namespace phone {

namespace {

constexpr WORD kEnglish = 1033;
constexpr WORD kNumberMark = 0xFFFF;       ///< before a type or name that is a number
constexpr std::size_t kTableStrings = 16;  ///< strings in one table
constexpr DWORD kLeastHeader = 32;         ///< bytes of a header whose type and name are numbers

std::optional<ResourceId> ReadId(ByteReader& reader) {
  ByteReader ahead = reader;
  const std::optional<WORD> mark = ahead.Word();
  if (!mark) return std::nullopt;
  ResourceId id;
  if (*mark == kNumberMark) {
    id.number = ahead.Word();
    if (!id.number) return std::nullopt;
    reader = ahead;
    return id;
  }
  std::optional<std::u16string> text = reader.Text();
  if (!text) return std::nullopt;
  id.text = std::move(*text);
  return id;
}

std::optional<Resource> ReadResource(ByteReader& file) {
  const std::optional<DWORD> content_size = file.Double();
  const std::optional<DWORD> header_size = file.Double();
  if (!content_size || !header_size || *header_size < kLeastHeader) return std::nullopt;
  const std::optional<Bytes> header_bytes = file.Take(*header_size - 2 * sizeof(DWORD));
  if (!header_bytes) return std::nullopt;
  ByteReader header(*header_bytes);
  std::optional<ResourceId> type = ReadId(header);
  if (!type) return std::nullopt;
  std::optional<ResourceId> name = ReadId(header);
  if (!name) return std::nullopt;
  // The two sizes before the header's rest are eight bytes, so its alignment is the file's.
  header.Align();
  if (!header.Double() || !header.Word()) return std::nullopt;  // data version, memory flags
  const std::optional<WORD> language = header.Word();
  if (!language) return std::nullopt;
  file.Align();
  const std::optional<Bytes> content = file.Take(*content_size);
  if (!content) return std::nullopt;
  file.Align();
  return Resource{std::move(*type), std::move(*name), *language, *content};
}

template <class IsType>
const Resource* Find(std::span<const Resource> resources, WORD name, IsType is_type) {
  const Resource* best = nullptr;
  for (const Resource& resource : resources) {
    if (resource.name.number != name || !is_type(resource.type)) continue;
    if (resource.language == kEnglish) return &resource;
    if (best == nullptr) best = &resource;
  }
  return best;
}

}  // namespace

std::optional<WORD> ByteReader::Word() {
  const std::optional<Bytes> bytes = Take(sizeof(WORD));
  if (!bytes) return std::nullopt;
  return static_cast<WORD>(std::to_integer<unsigned>((*bytes)[0]) | std::to_integer<unsigned>((*bytes)[1]) << 8);
}

std::optional<DWORD> ByteReader::Double() {
  const std::optional<WORD> low = Word();
  const std::optional<WORD> high = Word();
  if (!low || !high) return std::nullopt;
  return static_cast<DWORD>(*low) | static_cast<DWORD>(*high) << 16;
}

std::optional<std::u16string> ByteReader::Text() {
  std::u16string text;
  while (true) {
    const std::optional<WORD> unit = Word();
    if (!unit) return std::nullopt;
    if (*unit == 0) return text;
    text.push_back(*unit);
  }
}

std::optional<std::u16string> ByteReader::Text(std::size_t length) {
  std::optional<Bytes> bytes = Take(length * sizeof(WCHAR));
  if (!bytes) return std::nullopt;
  ByteReader units(*bytes);
  std::u16string text;
  text.reserve(length);
  while (const std::optional<WORD> unit = units.Word()) text.push_back(*unit);
  return text;
}

std::optional<Bytes> ByteReader::Take(std::size_t count) {
  if (count > rest_.size()) {
    rest_ = {};
    return std::nullopt;
  }
  const Bytes taken = rest_.first(count);
  rest_ = rest_.subspan(count);
  return taken;
}

void ByteReader::Align() {
  const std::size_t gap = (sizeof(DWORD) - position() % sizeof(DWORD)) % sizeof(DWORD);
  rest_ = rest_.subspan(std::min(gap, rest_.size()));
}

std::vector<Resource> ReadResources(Bytes file) {
  std::vector<Resource> resources;
  ByteReader reader(file);
  while (!reader.at_end()) {
    std::optional<Resource> resource = ReadResource(reader);
    if (!resource) break;
    resources.push_back(std::move(*resource));
  }
  return resources;
}

const Resource* FindResource(std::span<const Resource> resources, WORD type, WORD name) {
  return Find(resources, name, [type](const ResourceId& id) { return id.number == type; });
}

const Resource* FindResource(std::span<const Resource> resources, std::u16string_view type, WORD name) {
  return Find(resources, name,
              [type](const ResourceId& id) { return !id.number && CompareFolded(id.text, type) == 0; });
}

std::optional<std::u16string> FindString(std::span<const Resource> resources, UINT id) {
  if (id > 0xFFFF) return std::nullopt;
  const WORD table = static_cast<WORD>(id / kTableStrings + 1);
  const Resource* resource = FindResource(resources, kStringTableType, table);
  if (resource == nullptr) return std::nullopt;
  ByteReader strings(resource->content);
  for (std::size_t before = id % kTableStrings;; --before) {
    const std::optional<WORD> length = strings.Word();
    if (!length) return std::nullopt;
    std::optional<std::u16string> text = strings.Text(*length);
    if (!text) return std::nullopt;
    if (before > 0) continue;
    if (text->empty()) return std::nullopt;  // the table has room for it, but no string of that number exists
    return text;
  }
}

}  // namespace phone
