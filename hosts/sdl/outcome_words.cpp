#include "hosts/sdl/outcome_words.h"

#include <algorithm>
#include <string_view>

#include "system/faults.h"
#include "system/text.h"
#include "winerror.h"

namespace sdl {
namespace {

using phone::Operation;

constexpr std::u16string_view kListed = u".home.xml";

std::string NameIn(const std::string& path) {
  return "\u201c" + path.substr(path.rfind('\\') + 1) + "\u201d";
}

std::string_view CauseOf(std::uint32_t error) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND: return "it is not there";
    case ERROR_PATH_NOT_FOUND: return "its folder is not there";
    case ERROR_ACCESS_DENIED: return "this machine does not allow it (read-only, or another person's)";
    case ERROR_ALREADY_EXISTS: return "the name is taken by something else";
    case ERROR_FILENAME_EXCED_RANGE: return "the name is too long for the disk";
    case ERROR_DISK_FULL: return "the disk has no room";
    case ERROR_NOT_ENOUGH_MEMORY: return "there is not enough memory";
    case ERROR_INVALID_NAME: return "the phone's files cannot have such a name";
    case ERROR_INVALID_DATA: return "its content could not be read again";
    case ERROR_NO_ASSOCIATION: return "no program of the desktop shows it (xdg-open)";
    default: return "the disk reports an error";
  }
}

/// True when the phone's list of layouts shows a file of that name.
bool IsListed(const std::string& path) {
  const std::u16string name = phone::FoldCase(phone::ToUtf16(path).value_or(u""));
  return name.ends_with(phone::FoldCase(kListed));
}

std::string Refused(const std::string& what, const phone::Outcome& outcome) {
  return what + ": " + std::string(CauseOf(outcome.error)) + ".";
}

}  // namespace

std::string WordsFor(const phone::Outcome& outcome) {
  switch (outcome.operation) {
    case Operation::save:
      if (outcome.error != ERROR_SUCCESS) return Refused(NameIn(outcome.name) + " is not saved", outcome);
      if (IsListed(outcome.name)) return {};
      return NameIn(outcome.name) + " is saved, but the list will not show it: its name does not end in .home.xml.";
    case Operation::_wfopen: return Refused(NameIn(outcome.name) + " cannot be opened", outcome);
    case Operation::fclose: return Refused(NameIn(outcome.name) + " is not written", outcome);
    case Operation::CreateDirectoryW: return Refused("The folder " + outcome.name + " cannot be made", outcome);
    case Operation::RegistryGetString:
      return "The layout is not applied: the phone's registry.reg is missing or has no value \u201c" + outcome.name +
             "\u201d.";
    case Operation::RegistrySetString:
      return Refused("The layout is not applied, as registry.reg cannot be changed (\u201c" + outcome.name + "\u201d)",
                     outcome);
    case Operation::ShellExecuteEx: return Refused("The page " + outcome.name + " cannot be opened", outcome);
    default: return {};
  }
}

}  // namespace sdl
