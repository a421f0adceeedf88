// The rules of the contour dialogs: the plot of a model of two factors
// (its fill, its target contour and its filters), and the plot of a model
// of more, where two factors are plotted, the others held at values, and
// one of them may be the key of a series of plots, one for each of its
// values.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "analyses/FormParts.h"

namespace kestrow {

class Study;
class Statistics;

// The bits of CONTOUR_flags.
inline constexpr int CONTOUR_RAINBOW = 1;
inline constexpr int CONTOUR_TARGET = 2;

// The model's factors that have a term of their own, by number, in term order.
std::vector<int> ModelFactors(const Study& study);

class Contour2Form {
 public:
  Contour2Form(Study& study, const Statistics& stats);
  std::string Caption() const;
  // The sample picture the boxes stand for.
  std::string img1() const;
  std::string lblFilter() const;
  // Takes the filters of the filter dialog (its sFilterList).
  void TakeFilters(const std::string& filterList) { sFilter = filterList; }

  // SetupContourOK: refused without a filter; otherwise the flags and the
  // filters are stored, and the model's two factors are plotted.
  FormOutcome OK(std::string& message);
  bool Edited() const;

  bool chkRainbow = false, chkTgtContour = false;
  std::string sFilter;
  bool stored = false;

 private:
  std::string Snapshot() const;
  Study& study_;
  std::string before_;
};

class MultiConForm {
 public:
  static constexpr int VALUE_COLUMNS = 8;
  struct Row {
    int factor = 0;  // the factor's number in the study
    std::string name;
    bool plotted = false;  // the column "2"
    bool key = false;
    std::array<std::string, VALUE_COLUMNS> values;
  };

  MultiConForm(Study& study, const Statistics& stats);
  // Ticks the key box of a row, clearing it on every other row.
  void SetKey(int row, bool on);

  // MultiConOK: the checks in order, then the values held through the
  // model's terms, and the plotted factors, the key and its values, and the
  // flags stored.
  FormOutcome OK(std::string& message);
  bool Edited() const;

  std::vector<Row> rows;
  bool chkRainbow = false, chkTgtContour = false;
  bool stored = false;

 private:
  std::string Snapshot() const;
  Study& study_;
  std::string before_;
};

}  // namespace kestrow
