#include <filesystem>

#include "graphics/imaging_factory.h"
#include "graphics/text_engine.h"
#include "graphics/trace.h"
#include "imaging.h"
#include "msxml2.h"
#include "system/com.h"
#include "system/files.h"
#include "system/handles.h"
#include "system/instance.h"
#include "system/outside.h"
#include "system/scheduler.h"
#include "windows/cursor.h"
#include "windows/desktop.h"
#include "windows/lifetime.h"
#include "xml/dom_document.h"

namespace phone {

namespace {

const HINSTANCE kProgram = reinterpret_cast<HINSTANCE>(static_cast<std::uintptr_t>(0x10000));

/// The name that a second start for the same phone folder comes to as well.
std::string InstanceName(const Options& options) {
  if (!options.instance.empty()) return options.instance;
  std::error_code error;
  const std::filesystem::path folder = std::filesystem::weakly_canonical(options.folder, error);
  return (error ? options.folder : folder).string();
}

/// Everything of the phone that is switched on before the program and off after it.
class Power {
 public:
  Power(Host& host, const Options& options) {
    StartScheduler(host, options.free_threads);
    ResetOutside(host);
    ResetTrace();
    ResetCursor();
    const bool claimed = ClaimInstance(InstanceName(options));
    // A second start draws nothing.
    if (claimed) StartTextEngine();
    try {
      MountFiles(options.folder, options.program_data, options.module);
      if (claimed) RemoveStrayFiles();
      LoadRegistry();
      RegisterComponent(CLSID_DOMDocument, CreateDomDocument);
      RegisterComponent(CLSID_ImagingFactory, CreateImagingFactory);
      SwitchOnDesktop(options);
      SetUiWork(UiWorkWaits);
    } catch (...) {
      SwitchOff();
      throw;
    }
  }
  ~Power() { SwitchOff(); }
  Power(const Power&) = delete;
  Power& operator=(const Power&) = delete;

 private:
  static void SwitchOff() {
    ReleaseInstance();
    StopScheduler();
    LeaveHost();
  }
};

void DestroyWhatIsLeft() {
  Desktop& desktop = TheDesktop();
  desktop.menu.reset();
  for (const HWND window : desktop.windows.TopLevel()) Destroy(window);
}

}  // namespace

int Run(Host& host, const Options& options, EntryPoint entry) {
  const Power power(host, options);
  WCHAR no_arguments[] = u"";
  const int exit_code = entry(kProgram, nullptr, no_arguments, SW_SHOW);
  DestroyWhatIsLeft();
  RefuseSentMessages();
  JoinThreads();
  ShowWantedCursor();
  return exit_code;
}

}  // namespace phone
