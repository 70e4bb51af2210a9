/// \file
/// Kills the program while it saves, applies, keeps and deletes, and looks at what it leaves on the disk.
///
/// A script of commands is played once to learn what every file holds after each of them. Then each round plays it
/// again, up to a command drawn at random, and kills the process: a third of the kills come at any moment, the others
/// are aimed at commands that change a file, half of these at the moment when a temporary file appears or a file
/// is written to. Every file must then hold what it held before or after that command, and the next start must remove
/// what was left half-way.
#include <poll.h>
#include <signal.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <chrono>
#include <iostream>
#include <random>
#include <set>
#include <stdexcept>
#include <thread>

#include "looking.h"
#include "rounds.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using Microseconds = std::chrono::microseconds;

constexpr const char* kTemporary = ".~writing-";
constexpr int kPlugins = 200;
constexpr int kPatience = 50;                // ms until an aimed kill comes anyway
constexpr Microseconds kAfterCreation{400};  // the most that passes between a temporary file's creation and the kill
constexpr std::size_t kFewestChanges = 8;    // changes that the script must make for the trial to mean anything

const Lines kScript = {
    "trace off",
    // Saves the layout in use over itself, and applies it in its two steps.
    "key action", "softkey left", "menu Save as", "type  II", "softkey left", "answer yes", "answer yes", "wait 1000",
    "wait 1500 250", "softkey left", "menu Apply", "wait 1000", "wait 1500 250",
    // Saves under a new name.
    "key action", "softkey left", "menu Save as", "key down", "key home", "type new", "softkey left", "answer no",
    // Keeps a favourite, once as a new one and once over the old one, and deletes one.
    "key action", "softkey left", "menu Add to favorites", "type  2", "softkey left", "softkey left",
    "menu Add to favorites", "type  2", "softkey left", "answer yes", "softkey left", "menu Add new plugin",
    "softkey left", "menu Delete", "answer yes", "wait 600", "softkey right", "softkey right",
    // Deletes a layout and applies another one.
    "key down", "wait 600", "softkey left", "menu Delete", "answer yes", "wait 600", "key up", "wait 600",
    "softkey left", "menu Apply", "wait 2500"};

/// The phone of the trial.
struct TrialPhone : PhoneFolder {
  TrialPhone() {
    Lines plugins;
    for (int i = 0; i < kPlugins; ++i) plugins.push_back("plug-in " + std::to_string(i));
    AddLayout("alpha", "Alpha", {"clock"});
    AddLayout("beta", "Beta", plugins);
    AddLayout("gamma", "Gamma", {});
    UseLayout("beta");
    AddFavorite("Harbour", u"<plugin clsid=\"{H}\" name=\"Harbour\"/>");
  }
};

/// Takes the temporary files out; gives how many there were.
std::size_t TakeTemporary(Files& files) {
  return std::erase_if(
      files, [](const auto& file) { return fs::path(file.first).filename().string().starts_with(kTemporary); });
}

struct Learnt {
  std::vector<Files> after;          ///< after so many commands; the first is the beginning
  std::vector<std::size_t> changes;  ///< commands that change a file
  std::vector<Microseconds> takes;   ///< how long each command takes
};

Learnt Learn() {
  const TrialPhone folder;
  ScriptedPhone phone(folder);
  phone.State();
  Learnt learnt;
  learnt.after.push_back(FilesOf(folder));
  for (std::size_t i = 0; i < kScript.size(); ++i) {
    const auto begin = Clock::now();
    phone.Play({kScript[i]});
    learnt.takes.push_back(std::chrono::duration_cast<Microseconds>(Clock::now() - begin));
    learnt.after.push_back(FilesOf(folder));
    if (learnt.after[i] != learnt.after[i + 1]) learnt.changes.push_back(i);
  }
  if (learnt.changes.size() < kFewestChanges) throw std::runtime_error("the script changes too few files");
  return learnt;
}

/// Tells when a file of the phone appears or is written to in its place.
class Appearance {
 public:
  explicit Appearance(const PhoneFolder& folder) : descriptor_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    for (const fs::path& watched : {folder.path(), folder.Home(), folder.Plugins()})
      inotify_add_watch(descriptor_, watched.c_str(), IN_CREATE | IN_MODIFY);
  }
  Appearance(const Appearance&) = delete;
  Appearance& operator=(const Appearance&) = delete;
  ~Appearance() { close(descriptor_); }

  void Await() const {
    pollfd waiting = {descriptor_, POLLIN, 0};
    poll(&waiting, 1, kPatience);
  }

 private:
  int descriptor_;
};

class Trial {
 public:
  /// One kill. Throws what is wrong with the files it left.
  void Round(std::uint32_t seed) {
    random_.seed(seed);
    const TrialPhone folder;
    const std::size_t command = KillDuring(folder);
    Files files = FilesOf(folder);
    const std::size_t temporary = TakeTemporary(files);
    if (temporary) ++half_way;
    if (files != learnt_.after[command]) ++changed;
    Check(files, command);
    CheckNextStart(folder, files);
  }

  int half_way = 0;  ///< kills that left a temporary file
  int changed = 0;   ///< kills after which the command's change stood

 private:
  /// Plays the script and kills the process in the middle of it; gives the command that was under way.
  std::size_t KillDuring(const TrialPhone& folder) {
    const int way = Draw(0, 2);
    ScriptedPhone phone(folder);
    phone.State();
    const std::size_t command =
        way == 0 ? static_cast<std::size_t>(Draw(0, static_cast<int>(kScript.size()) - 1))
                 : learnt_.changes[static_cast<std::size_t>(Draw(0, static_cast<int>(learnt_.changes.size()) - 1))];
    for (std::size_t i = 0; i < command; ++i) phone.Play({kScript[i]});
    const Appearance appearance(folder);
    phone.Send(kScript[command]);
    if (way == 2) appearance.Await();
    Pause(way == 2 ? kAfterCreation : 2 * learnt_.takes[command]);
    phone.Kill();
    if (phone.End() != 128 + SIGKILL) throw std::runtime_error("the process ended by itself");
    return command;
  }

  void Check(const Files& files, std::size_t command) const {
    const Files& before = learnt_.after[command];
    const Files& after = learnt_.after[command + 1];
    std::set<std::string> names;
    for (const Files* some : {&files, &before, &after})
      for (const auto& [name, content] : *some) names.insert(name);
    for (const std::string& name : names)
      if (Of(files, name) != Of(before, name) && Of(files, name) != Of(after, name))
        throw std::runtime_error(name + " is neither old nor new, killed during \"" + kScript[command] + "\"");
  }

  static void CheckNextStart(const TrialPhone& folder, const Files& files) {
    ScriptedPhone phone(folder);
    if (phone.State()["windows"] == 0) throw std::runtime_error("the next start finds another one running");
    if (phone.Rows().empty()) throw std::runtime_error("the next start lists nothing");
    if (FilesOf(folder) != files) throw std::runtime_error("the next start leaves or changes files");
    if (phone.End() != 0) throw std::runtime_error("the next start ends with an error");
  }

  /// A file's content, or none.
  static const std::string* Find(const Files& files, const std::string& name) {
    const auto at = files.find(name);
    return at == files.end() ? nullptr : &at->second;
  }
  static std::string Of(const Files& files, const std::string& name) {
    const std::string* const content = Find(files, name);
    return content ? "there: " + *content : "missing";
  }

  int Draw(int least, int most) { return std::uniform_int_distribution(least, most)(random_); }

  void Pause(Microseconds most) {
    const Microseconds pause(Draw(0, static_cast<int>(most.count())));
    const auto until = Clock::now() + pause;
    while (Clock::now() < until) std::this_thread::yield();
  }

  std::mt19937 random_;
  const Learnt learnt_ = Learn();
};

}  // namespace

int main(int count, char** arguments) {
  const Rounds rounds = ParseRounds(count, arguments, 300);
  Trial trial;
  if (!Play(rounds, [&trial](std::uint32_t seed) { trial.Round(seed); })) return 1;
  std::cout << rounds.count << " kills from seed " << rounds.seed << " on, " << trial.half_way
            << " of them while a temporary file was there, " << trial.changed
            << " after the change: every file old or new, nothing left behind\n";
  return 0;
}
