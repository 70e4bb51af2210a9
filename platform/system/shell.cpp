/// \file
/// Starting programs: what the program wants shown is handed to the host.
#include <exception>

#include "shellapi.h"
#include "system/faults.h"
#include "system/outside.h"
#include "system/text.h"
#include "system/volume.h"

namespace {

struct Document {
  std::string location;
  bool is_there = false;
};

/// What the host is to open: a web address as it is, a file of the phone by its path on this machine, and nothing for
/// everything else, so that no path of this machine gets through.
Document DocumentOf(std::u16string_view parameters) {
  for (const std::u16string_view scheme : {u"http://", u"https://"})
    if (phone::CompareFolded(parameters.substr(0, scheme.size()), scheme) == 0)
      return {phone::ToUtf8Lossy(parameters), true};
  phone::Place place;
  const DWORD error = phone::LocateFile(parameters, place);
  if (error != ERROR_SUCCESS && error != ERROR_FILE_NOT_FOUND) return {};
  return {place.path.string(), error == ERROR_SUCCESS};
}

bool Launch(const SHELLEXECUTEINFOW& info) {
  const std::u16string_view parameters = info.lpParameters ? info.lpParameters : u"";
  phone::RecordLaunch({std::u16string(info.lpFile), std::u16string(parameters)});
  const Document document = DocumentOf(parameters);
  const bool opened = phone::CurrentHost().OpenDocument(phone::ToUtf8Lossy(info.lpFile), document.location);
  if (opened && document.is_there) return true;
  const DWORD error = document.is_there ? ERROR_NO_ASSOCIATION : ERROR_FILE_NOT_FOUND;
  phone::ReportOutcome(phone::Operation::ShellExecuteEx, parameters, error);
  return false;
}

}  // namespace

BOOL ShellExecuteEx(SHELLEXECUTEINFOW* info) {
  if (phone::FaultDue(phone::Operation::ShellExecuteEx)) {
    SetLastError(ERROR_GEN_FAILURE);
    return FALSE;
  }
  if (!info || !info->lpFile) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  try {
    if (Launch(*info)) return TRUE;
    SetLastError(ERROR_FILE_NOT_FOUND);
  } catch (const std::exception&) {
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
  }
  return FALSE;
}
