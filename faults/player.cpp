#include "faults/player.h"

#include <iterator>

#include "graphics/object.h"
#include "hosts/program.h"
#include "hosts/script/performer.h"
#include "phone.h"
#include "system/handles.h"

namespace faults {
namespace {

constexpr std::uint32_t kFirstTick = 1000;

/// A host whose clock moves when told.
class Player : public phone::Host {
 public:
  Player(const std::optional<Fault>& fault, Hands hands) : fault_(fault), hands_(std::move(hands)) {}

  int RunProgram(HINSTANCE instance, HINSTANCE previous, LPWSTR command_line, int show) {
    phone::ResetFaults();
    if (fault_) phone::SetFault(fault_->operation, 1, fault_->call);
    const int exit_code = hosts::ProgramEntry()(instance, previous, command_line, show);
    ending_.graphics_handles = phone::OpenHandles();
    ending_.kernel_handles = phone::OpenKernelHandles();
    return exit_code;
  }
  Ending& ending() { return ending_; }

  std::uint32_t TickCount() override { return clock_.Now(); }
  bool ClockIsManual() const override { return true; }
  void MoveClockTo(std::uint32_t tick) override { clock_.MoveTo(tick); }
  bool FrameIsDue() override { return frames_.MayPaint(); }
  void WaitForInput(bool) override;
  void Wake() override {}
  void Present(const phone::ScreenImage&) override {}
  void ShowCursor(phone::Cursor) override {}
  void LeaveForeground() override {}
  void ComeToForeground() override {}
  bool OpenDocument(const std::string&, const std::string&) override { return true; }

 private:
  /// The hands' next line is begun; false when there is none.
  bool BeginNext();
  void Refuse(const std::string& why);

  const std::optional<Fault> fault_;
  Hands hands_;
  script::ManualClock clock_{kFirstTick};
  script::Frames frames_;
  script::Performer performer_{clock_, frames_};
  Ending ending_;
  bool done_ = false;
};

void Player::WaitForInput(bool) {
  if (phone::LetThreadsRun()) return;
  frames_.Close();
  if (performer_.Running() && !performer_.StepsLeft()) {
    const script::Reply reply = performer_.Finish();
    if (!reply["ok"].get<bool>()) Refuse(reply["error"]);
  }
  if (!performer_.Running() && !BeginNext()) return phone::Close();
  performer_.TakeStep();
  phone::LetThreadsRun();
}

bool Player::BeginNext() {
  if (done_ || !hands_.Next()) {
    done_ = true;
    return false;
  }
  std::optional<script::Command> command = script::ParseCommand(hands_.Line());
  if (!command) {
    Refuse("not understood");
    return false;
  }
  performer_.Begin(std::move(*command));
  return true;
}

void Player::Refuse(const std::string& why) {
  ending_.refused = hands_.Line() + ": " + why;
  done_ = true;
}

// The entry point is a plain function of the platform; this is what it belongs to.
Player* g_player = nullptr;

int WINAPI StartProgram(HINSTANCE instance, HINSTANCE previous, LPWSTR command_line, int show) {
  return g_player->RunProgram(instance, previous, command_line, show);
}

}  // namespace

Counts CallCounts() {
  Counts counts;
  for (std::size_t i = 0; i < counts.size(); ++i) counts[i] = phone::CallCount(static_cast<phone::Operation>(i));
  return counts;
}

Ending Play(const std::filesystem::path& folder, const std::optional<Fault>& fault, Hands hands) {
  Player player(fault, std::move(hands));
  g_player = &player;
  hosts::Settings settings;
  settings.phone = folder;
  player.ending().exit_code = phone::Run(player, hosts::PhoneOptions(settings), StartProgram);
  g_player = nullptr;
  const std::filesystem::directory_iterator open_files("/proc/self/fd");
  player.ending().open_files = static_cast<std::size_t>(std::distance(begin(open_files), end(open_files)));
  return player.ending();
}

}  // namespace faults
