// Shared value sentinels. They are 32-bit floats compared by equality, and
// their bit patterns are part of the problem file, so they must never change.
#pragma once

#include <bit>
#include <cstdint>

namespace kestrow {

inline constexpr float MISSING_VALUE = -999999872.0f;  // empty data cell, empty number, no target
inline constexpr float BAD_NUMBER = -999999808.0f;     // text that is no number
inline constexpr float TARGET_MAX = 1.0e9f;            // "MAX..." typed as a target: maximise
inline constexpr float TARGET_MIN = -1.0e9f;           // "MIN..." typed as a target: minimise
inline constexpr float RTERM_NOT_SET = -999999680.0f;  // fValue of a regression term not set

static_assert(std::bit_cast<std::uint32_t>(MISSING_VALUE) == 0xCE6E6B26u);
static_assert(std::bit_cast<std::uint32_t>(BAD_NUMBER) == 0xCE6E6B25u);
static_assert(std::bit_cast<std::uint32_t>(TARGET_MAX) == 0x4E6E6B28u);
static_assert(std::bit_cast<std::uint32_t>(TARGET_MIN) == 0xCE6E6B28u);

// The title of every message box.
inline constexpr const char* PROGRAM_TITLE = "Kestrow for Windows";

// The 52 letters of contrast words; letter number i names contrast number i.
inline constexpr const char* CONTRAST_ALPHABET =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

}  // namespace kestrow
