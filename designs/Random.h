// A small 16-bit linear congruential generator with a built-in source of
// random permutations. It feeds the distribution tests of the test bench;
// study run orders come from the platform's source instead.
#pragma once

#include <cstdint>
#include <vector>

namespace kestrow {

class Random {
 public:
  std::int32_t Seed = 0;          // generator state, always within 0 to 65535
  std::int32_t Multiplier = 965;
  std::int32_t Increment = 1;
  std::int16_t Count = 0;         // length of the permutation
  std::int16_t Pointer = 0;       // position in the permutation, 0 at the start of a cycle
  std::vector<std::int16_t> Table;  // the permutation, Table[1] to Table[Count]; Table[0] unused

  // Keeps the low 16 bits of the seed and starts a new permutation cycle.
  void Init(std::int32_t seed, std::int16_t count);

  // An integer in 1 to n. It is n+1 when GetRnd gives 1.0 (after Seed 65535);
  // that is a property of the generator and is kept.
  int GetNextInt1ToN(int n);

  // The next number in 0 to 1, both ends included.
  float GetRnd();

  // The next element of a random permutation of 1 to Count; a new
  // permutation is drawn at the start of each cycle. 0 when Count is below 1.
  std::int16_t GetNextInSequence();
};

}  // namespace kestrow
