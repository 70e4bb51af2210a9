/// \file
/// Has the program read the list of layouts again, as a person would: away from the list and back.
#pragma once

namespace sdl {

class ListRefresh {
 public:
  /// Begins, if the list is what the person sees and nothing is open. False otherwise: from elsewhere the way to the
  /// list could cost what was edited.
  bool Begin();
  /// Goes on when the phone has nothing left to do. True when it has handed input over.
  bool GoOn();
  /// True while the person need not see what the phone shows.
  bool Underway() const { return step_ == Step::come_back; }

 private:
  enum class Step { none, leave, come_back };

  Step step_ = Step::none;
};

}  // namespace sdl
