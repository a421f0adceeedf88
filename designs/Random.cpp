#include "designs/Random.h"

#include <utility>

namespace kestrow {

void Random::Init(std::int32_t seed, std::int16_t count) {
  Multiplier = 965;
  Increment = 1;
  Seed = seed & 0xFFFF;
  Pointer = 0;
  Count = count;
  Table.assign(static_cast<std::size_t>(count > 0 ? count : 0) + 1, 0);
}

// The product is taken in 32 bits and wraps there; only its low 16 bits are
// kept. The divisor is 65535, not 65536, so 1.0 is a possible result.
float Random::GetRnd() {
  std::uint32_t next = static_cast<std::uint32_t>(Seed) * static_cast<std::uint32_t>(Multiplier) +
                       static_cast<std::uint32_t>(Increment);
  Seed = static_cast<std::int32_t>(next & 0xFFFFu);
  return static_cast<float>(Seed / 65535.0);
}

int Random::GetNextInt1ToN(int n) {
  float u = GetRnd();
  float scaled = static_cast<float>(n) * u;
  return static_cast<int>(scaled) + 1;
}

// Step i swaps Table[i] with a place from i to Count. When the draw gives its
// n+1 the place would be Count+1, beyond the table: that step leaves Table[i]
// where it is. The draw is still made, so the generator's sequence is not
// disturbed, and the table stays a permutation.
std::int16_t Random::GetNextInSequence() {
  if (Count < 1) return 0;
  if (static_cast<int>(Table.size()) < Count + 1) Table.resize(static_cast<std::size_t>(Count) + 1, 0);
  // A pointer outside the cycle (the fields are public) starts a new one.
  if (Pointer <= 0 || Pointer >= Count) {
    Pointer = 0;
    for (int i = 1; i <= Count; ++i) Table[static_cast<std::size_t>(i)] = static_cast<std::int16_t>(i);
    for (int i = 1; i <= Count - 1; ++i) {
      int r = GetNextInt1ToN(Count - i + 1);
      int other = r + i - 1;
      if (other > Count) continue;
      std::swap(Table[static_cast<std::size_t>(i)], Table[static_cast<std::size_t>(other)]);
    }
  }
  ++Pointer;
  std::int16_t result = Table[static_cast<std::size_t>(Pointer)];
  if (Pointer >= Count) Pointer = 0;
  return result;
}

}  // namespace kestrow
