/// \file
/// Which source pixel a target pixel shows when a picture is scaled: target pixel i of n shows source pixel
/// floor((i + 1/2) * m / n) of m, the one whose area holds the centre of the target pixel.
#pragma once

#include <pixman.h>

#include <cstdint>
#include <optional>

namespace phone {

/// The source pixels of target pixels from `first` on, found by adding up instead of dividing.
class NearestSteps {
 public:
  NearestSteps(std::int64_t first, std::int64_t source, std::int64_t target) noexcept
      : step_(source / target), fraction_step_(2 * (source % target)), scale_(2 * target) {
    const std::int64_t position = (2 * first + 1) * source;
    index_ = position / scale_;
    fraction_ = position % scale_;
  }

  int Next() noexcept {
    const std::int64_t index = index_;
    index_ += step_;
    fraction_ += fraction_step_;
    if (fraction_ >= scale_) {
      fraction_ -= scale_;
      ++index_;
    }
    return static_cast<int>(index);
  }

 private:
  std::int64_t step_;
  std::int64_t fraction_step_;
  std::int64_t scale_;
  std::int64_t index_;
  std::int64_t fraction_;
};

/// A scale with 16 bits of fraction.
struct FixedScale {
  pixman_fixed_t step;    ///< source pixels from one target pixel to the next
  pixman_fixed_t offset;  ///< added to every position
};

/// The scale with which pixman samples just these pixels of a source that begins at `origin`; nothing where 16 bits of
/// fraction are too few for that.
std::optional<FixedScale> FindFixedScale(std::int64_t origin, std::int64_t source, std::int64_t target) noexcept;

}  // namespace phone
