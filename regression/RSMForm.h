// The rules of the response surface dialog: the view (two angles, the net's
// size, the shading, fill, rainbow and hidden net), the two factors plotted
// and the values of the others, and a preview of the surface as it stands.
#pragma once

#include <string>
#include <vector>

#include "analyses/FormParts.h"

namespace kestrow {

class Chart;
class Study;
class Statistics;

class RSMForm {
 public:
  static constexpr int ANGLE_MIN = 0, ANGLE_MAX = 90;
  static constexpr int NET_MIN = 4, NET_MAX = 60;
  // The bits of REGRESS_RSM_flags.
  static constexpr int SHADE = 1, FILLED = 2, RAINBOW = 4, HIDE_NET = 8;

  struct Row {
    int factor = 0;  // the factor's number in the study
    std::string name;
    bool ticked = false;  // plotted
    std::string value;    // the held value of a factor not plotted
  };

  RSMForm(Study& study, const Statistics& stats);

  // SetupRSMOK: two factors ticked (RSMerr1), a number for each other one
  // (RSMerr2); then the values held through the model's terms, the plotted
  // factors and the view stored.
  FormOutcome OK(std::string& message);
  bool Edited() const;
  // A small surface as the dialog stands, for the preview; false when the
  // choices do not make one yet.
  bool Preview(Chart& chart) const;

  int sldAlpha = 40, sldBeta = 25, sldNetsize = 10;
  bool chkShade = false, chkFilled = false, chkRainbow = false, chkHideNet = false;
  std::vector<Row> grdSelFac;
  bool stored = false;

 private:
  std::string Snapshot() const;
  int Flags() const;
  // The choices written into a study; false with the message of a refusal.
  bool Apply(Study& study, std::string& message) const;
  Study& study_;
  std::string before_;
};

}  // namespace kestrow
