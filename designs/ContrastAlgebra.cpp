#include "designs/ContrastAlgebra.h"

#include "core/Study.h"

namespace kestrow {

std::string MultiplyWords(const std::string& a, const std::string& b) {
  const std::string PAD = "zzzzzzzzzzzzzzzz";
  std::string x = (a + PAD).substr(0, 16);
  std::string y = (b + PAD).substr(0, 16);
  std::string out;
  // The walk stops short of the sixteenth position, so a word keeps at most
  // its first fifteen letters.
  std::size_t i = 0, j = 0;
  while (i < 15 && j < 15) {
    if (x[i] < y[j]) {
      out += x[i++];
    } else if (y[j] < x[i]) {
      out += y[j++];
    } else {
      if (x[i] == 'z') break;
      ++i, ++j;
    }
  }
  // A letter that met the padding of the other word has gone out as it is;
  // the padding itself never does.
  std::string word;
  for (char c : out)
    if (c != 'z') word += c;
  return word;
}

std::string ResolutionText(int resolution) {
  static const char* ROMAN[] = {"", "I", "II", "III", "IV", "V", "VI", "VII", "VIII", "IX"};
  if (resolution >= 0 && resolution <= 9) return ROMAN[resolution];
  return "Full";
}

namespace {

// The signature step: a sign and the level's character so far give the new one.
char Step(char sign, char so) {
  switch (sign) {
    case 'P':
      if (so == ' ' || so == 'P') return 'P';
      if (so == '0' || so == 'p') return 'p';
      return 'X';
    case 'N':
      if (so == ' ' || so == 'N') return 'N';
      if (so == '0' || so == 'n') return 'n';
      return 'X';
    default:  // '0'
      if (so == ' ' || so == '0') return '0';
      if (so == 'P' || so == 'p') return 'p';
      if (so == 'N' || so == 'n') return 'n';
      return 'X';
  }
}

}  // namespace

std::string ClassifyContrast(const std::string& signs, const std::string& levels, int levelCount) {
  std::string signature(8, ' ');
  for (std::size_t t = 0; t < signs.size(); ++t) {
    int l = static_cast<unsigned char>(levels[t]);
    if (l < 1 || l > 8) continue;  // a centre point has no level of its own
    char next = Step(signs[t], signature[static_cast<std::size_t>(l - 1)]);
    if (next == 'X') return "";
    signature[static_cast<std::size_t>(l - 1)] = next;
  }
  std::string plus, minus;
  for (int l = 1; l <= levelCount && l <= 8; ++l) {
    char c = signature[static_cast<std::size_t>(l - 1)];
    if (c == 'P' || c == 'p') plus += static_cast<char>('0' + l);
    if (c == 'N' || c == 'n') minus += static_cast<char>('0' + l);
  }
  return plus < minus ? plus + "v" + minus : minus + "v" + plus;
}

void Study::SetContrastMeaning(int contrast, int factor) {
  if (contrast < 1 || contrast > Contrasts.Count()) return;
  Contrast& c = Contrasts(contrast);
  std::string signs;
  for (int run = 1; run <= Treatments.Count(); ++run) {
    float v = c.fGetLevel(run);
    signs += v > 0 ? 'P' : v < 0 ? 'N' : '0';
  }
  auto classify = [&](int f) {
    std::string levels;
    for (int run = 1; run <= Treatments.Count(); ++run)
      levels += static_cast<char>(GetTreatmentLevel(f, run));
    return ClassifyContrast(signs, levels, GetNumLevels(f));
  };
  if (factor > 0) {
    c.iMain = static_cast<std::int16_t>(factor);
    c.sMain = classify(factor);
    return;
  }
  for (int f = 1; f <= Factors.Count(); ++f) {
    std::string meaning = classify(f);
    if (!meaning.empty()) {
      c.iMain = static_cast<std::int16_t>(f);
      c.sMain = meaning;
      return;
    }
  }
}

}  // namespace kestrow
