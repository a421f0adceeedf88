// The start of the program, before any window: settings, the language
// database, the design catalogue, the text-editor advice, the random source
// and the command line; and the settings written at the end.
#pragma once

#include <random>
#include <string>

namespace kestrow {

// The general pseudo-random source, seeded from the clock once at start.
inline std::mt19937 gPlatformRandom;
// Its next number in the half-open range 0 to 1, as a 32-bit float.
inline float PlatformRnd() {
  // 24 random bits: every value is a float below 1.
  return static_cast<float>(gPlatformRandom() >> 8) / 16777216.0f;
}
// The help file, in the program folder.
inline std::string gsHelpFile;

// Runs the steps up to the main window. False when the run must end with no
// window: the language database or the design catalogue is missing (the
// reason has been shown). The settings are written either way, so that a
// first run leaves a complete settings file.
bool StartUp(const std::string& commandLine);

// The advice about the text editor, or empty when the setting names a file.
std::string TextEditorAdvice();

}  // namespace kestrow
