#include "animation/easing.h"

#include <algorithm>
#include <cmath>

#include "base/arithmetic.h"

namespace {

constexpr double kOvershoot = 1.70158;
constexpr double kOvershootBothSides = 2.5949095;  // 1.70158 * 1.525
constexpr double kTwoPi = 6.2831853;
constexpr double kPeriod = 0.3;                           // of the duration
constexpr double kPeriodBothSides = 0.44999999999999996;  // 0.3 * 1.5

/// A motion at one moment, all of it as doubles.
struct Motion {
  double elapsed;
  double begin;
  double change;
  double duration;

  double Part() const { return elapsed / duration; }
  double HalfPart() const { return elapsed / (duration * 0.5); }
};

double Power(double exponent) {
  return std::pow(2.0, exponent);
}

double QuadInOut(const Motion& m) {
  const double x = m.HalfPart();
  if (x < 1) return m.change * x * x * 0.5 + m.begin;
  const double y = x - 1;
  return m.begin - m.change * 0.5 * (y * (y - 2) - 1);
}

double ExpoIn(const Motion& m) {
  if (m.elapsed == 0) return m.begin;
  return m.change * Power(10 * (m.Part() - 1)) + m.begin;
}

double ExpoOut(const Motion& m) {
  if (m.elapsed == m.duration) return m.begin + m.change;
  return m.change * (1 - Power(-10 * m.elapsed / m.duration)) + m.begin;
}

double ExpoInOut(const Motion& m) {
  if (m.elapsed == 0) return m.begin;
  if (m.elapsed == m.duration) return m.begin + m.change;
  const double x = m.HalfPart();
  if (x < 1) return m.change * 0.5 * Power(10 * (x - 1)) + m.begin;
  return m.change * 0.5 * (2 - Power(-10 * (x - 1))) + m.begin;
}

double BackIn(const Motion& m) {
  const double x = m.Part();
  return m.change * x * x * ((kOvershoot + 1) * x - kOvershoot) + m.begin;
}

double BackOut(const Motion& m) {
  const double x = m.Part() - 1;
  return m.change * (x * x * ((kOvershoot + 1) * x + kOvershoot) + 1) + m.begin;
}

double BackInOut(const Motion& m) {
  const double x = m.HalfPart();
  if (x < 1) return m.change * 0.5 * x * x * ((kOvershootBothSides + 1) * x - kOvershootBothSides) + m.begin;
  const double y = x - 2;
  return m.change * 0.5 * (y * y * ((kOvershootBothSides + 1) * y + kOvershootBothSides) + 2) + m.begin;
}

/// The oscillation of the elastic curves, shifted by a quarter of its period.
double Wave(double position, double duration, double period) {
  return std::sin((position * duration - period / 4) / period * kTwoPi);
}

double ElasticIn(const Motion& m) {
  if (m.elapsed == 0) return m.begin;
  const double x = m.Part();
  if (x == 1) return m.begin + m.change;
  const double y = x - 1;
  return m.begin - m.change * Power(10 * y) * Wave(y, m.duration, m.duration * kPeriod);
}

double ElasticOut(const Motion& m) {
  if (m.elapsed == 0) return m.begin;
  const double x = m.Part();
  if (x == 1) return m.begin + m.change;
  return m.change * Power(-10 * x) * Wave(x, m.duration, m.duration * kPeriod) + m.begin + m.change;
}

double ElasticInOut(const Motion& m) {
  if (m.elapsed == 0) return m.begin;
  const double x = m.HalfPart();
  if (x == 2) return m.begin + m.change;
  const double y = x - 1;
  const double wave = Wave(y, m.duration, m.duration * kPeriodBothSides);
  if (x < 1) return m.begin - 0.5 * m.change * Power(10 * y) * wave;
  return 0.5 * m.change * Power(-10 * y) * wave + m.begin + m.change;
}

/// Four arcs of one parabola.
double BounceOut(const Motion& m) {
  constexpr double kArc = 7.5625;
  const double x = m.Part();
  if (x < 0.36363636363636365) return m.change * (kArc * x * x) + m.begin;
  const auto arc = [&](double centre, double low) {
    const double y = x - centre;
    return m.change * (kArc * (y * y) + low) + m.begin;
  };
  if (x < 0.7272727272727273) return arc(0.5454545454545454, 0.75);
  if (x < 0.9090909090909091) return arc(0.8181818181818182, 0.9375);
  return arc(0.9545454545454546, 0.984375);
}

/// The bounce of the same motion at another moment, as an offset.
double BounceAt(const Motion& m, double elapsed) {
  return BounceOut({elapsed, 0, m.change, m.duration});
}

double BounceInOut(const Motion& m) {
  if (m.elapsed < m.duration * 0.5) return 0.5 * (m.change - BounceAt(m, m.duration - 2 * m.elapsed)) + m.begin;
  return 0.5 * (m.change + BounceAt(m, 2 * m.elapsed - m.duration)) + m.begin;
}

double Position(const Motion& m, INT curve) {
  if (curve == EASE_LINEAR) return m.elapsed * m.change / m.duration + m.begin;
  const double x = m.Part();
  switch (curve) {
    case EASE_QUAD_IN: return m.change * x * x + m.begin;
    case EASE_QUAD_OUT: return m.begin - m.change * x * (x - 2);
    case EASE_QUAD_IN_OUT: return QuadInOut(m);
    case EASE_EXPO_IN: return ExpoIn(m);
    case EASE_EXPO_OUT: return ExpoOut(m);
    case EASE_EXPO_IN_OUT: return ExpoInOut(m);
    case EASE_BACK_IN: return BackIn(m);
    case EASE_BACK_OUT: return BackOut(m);
    case EASE_BACK_IN_OUT: return BackInOut(m);
    case EASE_ELASTIC_IN: return ElasticIn(m);
    case EASE_ELASTIC_OUT: return ElasticOut(m);
    case EASE_ELASTIC_IN_OUT: return ElasticInOut(m);
    case EASE_BOUNCE_IN: return m.change - BounceAt(m, m.duration - m.elapsed) + m.begin;
    case EASE_BOUNCE_OUT: return BounceOut(m);
    default: return BounceInOut(m);
  }
}

/// Halves go away from zero.
INT Round(double value) {
  const double whole = Truncate(value);
  if (std::fabs(value) - std::fabs(whole) < 0.5) return static_cast<INT>(whole);
  return Truncate(value < 0 ? whole - 1 : whole + 1);
}

}  // namespace

INT Ease(DWORD elapsed, INT begin, INT change, DWORD duration, INT curve) noexcept {
  if (curve < EASE_LINEAR || curve > EASE_BOUNCE_IN_OUT) return 0;
  const double target = static_cast<double>(begin) + static_cast<double>(change);
  if (duration == 0) return Truncate(target);
  // A time past the duration counts as the duration: the steep curves would leave 32 bits.
  const Motion motion = {static_cast<double>(std::min(elapsed, duration)), static_cast<double>(begin),
                         static_cast<double>(change), static_cast<double>(duration)};
  return Round(Position(motion, curve));
}
