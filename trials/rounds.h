/// \file
/// Trials that go round after round, each with a seed that brings it back.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <functional>
#include <iostream>
#include <random>

struct Rounds {
  int count;
  std::uint32_t seed;  ///< of the first round; each further one adds 1
};

/// Takes "--rounds N" and "--seed S"; a seed that is not given is drawn.
inline Rounds ParseRounds(int count, char** arguments, int usual) {
  Rounds rounds = {usual, std::random_device()()};
  for (int i = 1; i + 1 < count; i += 2) {
    if (std::strcmp(arguments[i], "--rounds") == 0) rounds.count = std::atoi(arguments[i + 1]);
    if (std::strcmp(arguments[i], "--seed") == 0)
      rounds.seed = static_cast<std::uint32_t>(std::atoll(arguments[i + 1]));
  }
  return rounds;
}

/// Plays the rounds; false as soon as one throws what went wrong.
inline bool Play(const Rounds& rounds, const std::function<void(std::uint32_t seed)>& play) {
  for (int round = 0; round < rounds.count; ++round) {
    const std::uint32_t seed = rounds.seed + static_cast<std::uint32_t>(round);
    try {
      play(seed);
    } catch (const std::exception& failure) {
      std::cout << "with --rounds 1 --seed " << seed << ": " << failure.what() << std::endl;
      return false;
    }
  }
  return true;
}
