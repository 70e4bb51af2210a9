/// \file
/// What a failed call may lead to.
#pragma once

#include "system/faults.h"

namespace faults {

/// Besides the screen being the one that the step leads to anyway.
enum Outcome : unsigned {
  kNothing = 0,
  kRefused = 1 << 0,      ///< the step is not taken: everything is as before it
  kNotice = 1 << 1,       ///< the program says that it could not save or delete; after OK everything is as before
  kUndrawn = 1 << 2,      ///< pictures are missing
  kOtherFont = 1 << 3,    ///< a text has another font
  kOnce = 1 << 4,         ///< a frame lacks something, or is not shown; the next one is as it should be
  kEndsEarly = 1 << 5,    ///< a list that the step builds ends early, or the text of one row could not be had
  kMisplaced = 1 << 6,    ///< rows or bars stay where they were: a motion without memory is left out
  kNotDone = 1 << 7,      ///< what the step does to the outside is left out, wholly or from some point on
  kNoQuestion = 1 << 8,   ///< a file that cannot be opened counts as missing: nobody is asked before it is replaced
  kNoFields = 1 << 9,     ///< a form lacks fields, and still shows those of the form before
  kNoStart = 1 << 10,     ///< the program ends at once
  kStopped = 1 << 11,     ///< the window's set-up ends early
  kUntitled = 1 << 12,    ///< the window has no title
  kBlank = 1 << 13,       ///< a picture has its place, but nothing is in it
  kOneRowLess = 1 << 14,  ///< a list that the step builds lacks one row
  kSelection = 1 << 15,   ///< another row is selected
};

/// What a failed call of that operation may lead to, on whatever screen: a set of outcomes.
unsigned OutcomesOf(phone::Operation operation);

}  // namespace faults
