#include "faults/outcomes.h"

namespace faults {
namespace {

using phone::Operation;

/// Walking a document: the list ends there, nothing is added, nothing is saved.
constexpr unsigned kReading = kEndsEarly | kRefused | kNotice;

}  // namespace

unsigned OutcomesOf(Operation operation) {
  switch (operation) {
    case Operation::LoadStringW: return kNoStart | kUntitled;
    case Operation::RegisterClassW: return kNoStart;
    case Operation::CreateWindowExW: return kNoStart | kNoFields;
    case Operation::SHCreateMenuBar: return kStopped;
    case Operation::CreateCompatibleDC:
    case Operation::CreateCompatibleBitmap:
    case Operation::BitBlt:
    case Operation::StretchBlt:
    case Operation::AlphaBlend: return kOnce;
    case Operation::CreateFontIndirectW: return kOtherFont;
    case Operation::CreateDIBSection:
    case Operation::CreateImageFromFile:
    case Operation::GetImageInfo: return kUndrawn;
    case Operation::CreateBitmapFromImage:
    case Operation::LockBits: return kUndrawn | kBlank;
    case Operation::GetModuleFileNameW: return kUndrawn | kEndsEarly | kRefused | kNotDone;
    case Operation::SHGetSpecialFolderPath: return kEndsEarly | kRefused;
    case Operation::RegistryGetString: return kSelection | kNotDone;
    case Operation::RegistrySetString:
    case Operation::CreateThread:
    case Operation::ShellExecuteEx: return kNotDone;
    case Operation::rename: return kNotDone | kRefused | kNotice;
    case Operation::FindFirstFileW:
    case Operation::FindNextFileW: return kEndsEarly;
    case Operation::DeleteFileW: return kNotice;
    case Operation::CreateDirectoryW: return kNothing;
    case Operation::_wfopen: return kRefused | kOneRowLess | kNoQuestion;
    case Operation::fread: return kRefused | kOneRowLess;
    case Operation::fwrite:
    case Operation::fclose: return kRefused;
    case Operation::CoInitializeEx:
    case Operation::CoCreateInstance: return kUndrawn | kOneRowLess | kRefused | kNotice;
    case Operation::save:
    case Operation::appendChild: return kNotice;
    case Operation::get_xml: return kRefused;
    case Operation::put_text: return kRefused | kNotice;
    case Operation::load: return kOneRowLess;
    case Operation::loadXML:
    case Operation::get_firstChild: return kRefused | kOneRowLess;
    case Operation::get_childNodes:
    case Operation::get_length:
    case Operation::get_item:
    case Operation::get_nodeName:
    case Operation::get_attributes:
    case Operation::get_text:
    case Operation::cloneNode: return kReading;
    case Operation::Allocation: return kStopped | kUndrawn | kEndsEarly | kMisplaced | kRefused | kNotice | kNotDone;
  }
  return kNothing;
}

}  // namespace faults
