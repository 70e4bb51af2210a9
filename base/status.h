/// \file
/// Status codes: the first failing step ends an operation.
#pragma once

#include <winerror.h>

/// Ends the operation with the step's status if that is a failure.
#define RETURN_IF_FAILED(step)                                           \
  do {                                                                   \
    if (const HRESULT status_ = (step); FAILED(status_)) return status_; \
  } while (false)

/// Drops a status in the open: the outcome of the step is not examined.
inline void Unexamined(HRESULT) noexcept {}
