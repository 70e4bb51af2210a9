/// \file
/// The whole program, driven through the scripted phone as anyone outside would drive it.
#pragma once

#include <sys/types.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "support/phone_folder.h"

class ScriptedPhone {
 public:
  using Json = nlohmann::ordered_json;

  /// Starts the program on the phone folder.
  explicit ScriptedPhone(const PhoneFolder& folder, const std::vector<std::string>& options = {});
  /// Ends the script if that is still to be done.
  ~ScriptedPhone();
  ScriptedPhone(const ScriptedPhone&) = delete;
  ScriptedPhone& operator=(const ScriptedPhone&) = delete;

  /// Gives a command and takes its reply. Fails the test when there is none within a minute, or it is not JSON.
  Json Do(const std::string& command);
  /// Gives commands one after the other, each of which must succeed, and takes the last one's reply.
  Json Play(const std::vector<std::string>& commands);
  Json State() { return Do("state"); }
  /// Opens the menu of the left soft key, chooses an item, and plays what follows.
  Json Menu(const std::string& label, const std::vector<std::string>& then = {});
  /// Paints a whole frame and takes the texts drawn in it, in order.
  std::vector<std::string> Texts();
  /// The screen that is shown, by its caption; "About" for the one without.
  std::string Screen();
  /// The texts of the rows within the view, from top to bottom, on a list screen at rest.
  std::vector<std::string> Rows();
  /// The text of the open message box; empty for none.
  std::string Box();
  /// The text of the row under the selection bar, on a list screen at rest.
  std::string Selected();

  /// Sends a line without waiting for a reply.
  void Send(const std::string& line);
  /// Ends the process this very moment; End then gives the signal.
  void Kill();
  /// Ends the script and gives the exit status; 128 and more for a signal.
  int End();

 private:
  std::string ReadLine();
  Json Frame();

  pid_t process_ = -1;
  int script_ = -1;
  int replies_ = -1;
  std::string buffer_;
};

/// Texts of a reply's drawing, in order, without the empty ones.
std::vector<std::string> TextsIn(const ScriptedPhone::Json& reply);
