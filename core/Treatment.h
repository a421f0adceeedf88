// One run of a design, held compactly in sTlist in one of three forms:
//  - level form: character i has as its code the level of factor i (1, 2, ...),
//    code 0 the centre of a numeric factor;
//  - axial form: "*", then "|" and the coded value of each factor ("*|-1.414|0");
//  - text form (unstructured designs): a "|" list of level texts.
#pragma once

#include <string>

namespace kestrow {

class Treatment {
 public:
  std::string sTlist;

  void Clear() { sTlist.clear(); }
  // n characters of code 1, then character n set to code 0.
  void SetZero(int n);
  // n characters of code 0: the centre point.
  void Centralise(int n);
  void SetLevel(int i, int level);
  int GetLevel(int i) const;
  // The axial form: InitCCD starts it, Append adds one coded value.
  void InitCCD() { sTlist = "*"; }
  void Append(float x);
};

}  // namespace kestrow
