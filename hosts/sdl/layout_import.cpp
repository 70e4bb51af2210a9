#include "hosts/sdl/layout_import.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <new>
#include <string_view>

#include "system/files.h"
#include "system/names.h"
#include "system/replacement.h"
#include "system/text.h"
#include "system/volume.h"
#include "xml/encoding.h"
#include "xml/parse.h"

namespace sdl {
namespace {

constexpr std::u16string_view kExtension = u".home.xml";
constexpr std::u16string_view kHome = u"\\Application Data\\Home";
constexpr std::u16string_view kRoot = u"home";
constexpr std::size_t kLongestPath = 255;  // code units that the program has room for

std::u16string PhonePathOf(std::u16string_view name) {
  return std::u16string(kHome) + u'\\' + std::u16string(name);
}

bool IsLayoutName(std::u16string_view name) {
  return name.size() > kExtension.size() &&
         phone::CompareFolded(name.substr(name.size() - kExtension.size()), kExtension) == 0;
}

std::string Reason(DWORD error) {
  switch (error) {
    case ERROR_ACCESS_DENIED: return "the phone's folder or file may not be written to";
    case ERROR_DISK_FULL: return "the disk is full";
    case ERROR_NOT_ENOUGH_MEMORY: return "there is not enough memory";
    case ERROR_INVALID_NAME: return "the phone cannot hold a file of this name";
    default: return "writing failed";
  }
}

std::string ReadContent(const std::filesystem::path& path, std::vector<std::byte>& content, struct stat& status) {
  const phone::UniqueFd file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
  if (!file || fstat(file.get(), &status) != 0) return std::strerror(errno);
  if (S_ISDIR(status.st_mode)) return "it is a folder; drop the layout files in it";
  if (!S_ISREG(status.st_mode)) return "it is no file";
  if (status.st_size > phone::kLargestFile) return "it is too large for the phone";
  // One more than the file claims to have shows whether it still grows.
  content.resize(static_cast<std::size_t>(status.st_size) + 1);
  errno = 0;
  const std::size_t count = phone::ReadFully(file.get(), content.data(), content.size());
  if (count == content.size()) return "it is being written just now";
  content.resize(count);
  return count < static_cast<std::size_t>(status.st_size) && errno != 0 ? std::strerror(errno) : "";
}

bool PhoneReads(const std::vector<std::byte>& content) {
  phone::xml::DecodedText decoded;
  if (!phone::xml::Decode(content, decoded)) return false;
  const phone::xml::TreeRef tree = phone::xml::Parse(decoded.text);
  const xmlNode* const root = tree ? xmlDocGetRootElement(tree->document()) : nullptr;
  if (!root || (root->ns && root->ns->prefix)) return false;
  const auto name = phone::ToUtf16(reinterpret_cast<const char*>(root->name));
  return name && phone::CompareFolded(*name, kRoot) == 0;
}

bool SameFile(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

/// Whether the phone can take a file under the name, and what it would replace.
std::string CheckTarget(std::u16string_view name, const struct stat& source, Layout& layout) {
  phone::Place place;
  const DWORD error = phone::Locate(PhonePathOf(name), place);
  if (error == ERROR_PATH_NOT_FOUND) return {};
  if (error != ERROR_SUCCESS) return Reason(error);
  if (place.found.kind == phone::Kind::missing) return {};
  if (place.found.kind != phone::Kind::file) return "the phone has something else under this name";
  if (SameFile(source, place.found.status)) return "it is in the phone already";
  layout.replaces = true;
  return {};
}

/// Makes the folder of layouts where the phone has none yet.
DWORD MakeHomeFolder() {
  phone::Place place;
  const DWORD error = phone::Locate(kHome, place);
  if (error != ERROR_SUCCESS || place.found.kind != phone::Kind::missing) return error;
  if (mkdirat(place.folder.get(), place.found.disk_name.c_str(), 0777) != 0)
    return phone::ErrorOf(errno, ERROR_ACCESS_DENIED);
  phone::ForgetListing(place.folder.get());
  return ERROR_SUCCESS;
}

}  // namespace

std::string ReadLayout(const std::filesystem::path& file, Layout& layout) {
  // A folder may be dropped with a separator behind its name.
  layout.name = (file.has_filename() ? file : file.parent_path()).filename().string();
  struct stat status = {};
  if (const std::string problem = ReadContent(file, layout.content, status); !problem.empty()) return problem;
  const auto name = phone::ToUtf16(layout.name);
  if (!name || !phone::IsFileName(*name) || PhonePathOf(*name).size() > kLongestPath) return Reason(ERROR_INVALID_NAME);
  if (!IsLayoutName(*name)) return "it is not a layout (*.home.xml)";
  layout.readable = PhoneReads(layout.content);
  return CheckTarget(*name, status, layout);
}

std::string StoreLayout(const Layout& layout) {
  const auto name = phone::ToUtf16(layout.name);
  DWORD error = name ? MakeHomeFolder() : ERROR_INVALID_NAME;
  if (error == ERROR_SUCCESS) error = phone::WriteWholeFile(PhonePathOf(*name), layout.content, phone::Writer::host);
  return error == ERROR_SUCCESS ? std::string() : Reason(error);
}

}  // namespace sdl
