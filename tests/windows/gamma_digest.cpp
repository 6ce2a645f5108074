// tests/windows/gamma_digest.cpp — gamma tables of a grid of levels, for comparison between
// systems.
//
//   gamma_digest FILE
// Gamma is the one correction that takes the mathematics library: logarithms of the levels, and a
// power for each entry. FILE gets the gamma value and the table of every pair of levels.
#include <cmath>
#include <cstdio>
#include <fstream>

#include "stats/correction_table.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: gamma_digest FILE\n");
    return 2;
  }
  std::ofstream file(argv[1], std::ios::binary);
  varilum::SequenceState state{};
  constexpr int kSteps = 400;  // of 0.64 levels, up to beyond white
  for (int input = 0; input <= kSteps; ++input) {
    for (int desired = 0; desired <= kSteps; ++desired) {
      state.frameInputLuminance = input * 0.64;
      state.frameDesiredLuminance = desired * 0.64;
      varilum::buildGammaTable(state, [](double x) { return std::log(x); });
      const float gamma = state.gammaValue;
      file.write(reinterpret_cast<const char*>(&gamma), sizeof gamma);
      file.write(reinterpret_cast<const char*>(state.correctionTable),
                 sizeof state.correctionTable);
    }
  }
  file.close();
  return file ? 0 : 1;
}
