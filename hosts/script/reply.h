/// \file
/// What the replies tell of the phone.
#pragma once

#include "hosts/script/command.h"

namespace script {

/// What a person could see or hear, and what the program has done so far.
void DescribeState(Execution& execution, Reply& reply);

/// What the last frame drew, call by call.
Reply DescribeDrawing();

}  // namespace script
