// The charted analyses on sample problems and on studies made to order: the
// program folder of the build for the tables and texts, an empty chart page
// to start from, and figures worked out independently of the program, from
// the raw data and the published constants, to check it against.
#pragma once

#include <gtest/gtest.h>

#include <boost/math/distributions/students_t.hpp>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include "analyses/AnalysisFixture.h"
#include "charts/ChartPage.h"
#include "core/Sentinels.h"
#include "data/Statistics.h"

namespace kestrow::test {

class ChartFixture : public AnalysisFixture {
 protected:
  void SetUp() override {
    AnalysisFixture::SetUp();
    gphStart();
  }
  void TearDown() override {
    gphStart();
    AnalysisFixture::TearDown();
  }
  // A sample problem kept for the test's lifetime; its first study.
  Study& SampleStudy(const std::string& name) {
    sample = Sample(name);
    return sample->Studies(1);
  }
  // The charts made, and the data points of one that carry a value.
  static std::deque<Chart>& Charts() { return gPage.Charts; }
  static std::vector<DataPoint> Valued(const Chart& c) {
    std::vector<DataPoint> out;
    for (const DataPoint& p : c.DataPoints)
      if (p.fY != MISSING_VALUE) out.push_back(p);
    return out;
  }

  std::unique_ptr<Problem> sample;
  Statistics stats;
};

// The upper-tail point of Student's t with v degrees of freedom.
inline double StudentT(double upperTail, double v) {
  return boost::math::quantile(boost::math::complement(boost::math::students_t_distribution<double>(v), upperTail));
}

// Duncan's d2* and degrees of freedom for the average range of k subgroups
// of a size with range constants d2 and d3 (Patnaik, Biometrika 37, 1950):
// d2*^2 = d2^2 + d3^2 / k, and v solves a(v)^2 = d2^2 / d2*^2 with
// a(v) = sqrt(2 / v) Gamma((v + 1) / 2) / Gamma(v / 2).
inline void Patnaik(double d2, double d3, double k, double& d2star, double& v) {
  d2star = std::sqrt(d2 * d2 + d3 * d3 / k);
  double goal = d2 * d2 / (d2star * d2star);
  auto a2 = [](double x) {
    double a = std::sqrt(2 / x) * std::exp(std::lgamma((x + 1) / 2) - std::lgamma(x / 2));
    return a * a;
  };
  double lo = 0.01, hi = 1e7;  // a(v)^2 rises with v towards 1
  for (int i = 0; i < 200; ++i) {
    double mid = std::sqrt(lo * hi);
    (a2(mid) < goal ? lo : hi) = mid;
  }
  v = std::sqrt(lo * hi);
}

// The range constants of three normals in closed form: E W = 3 / sqrt(pi),
// E W^2 = 2 + 3 sqrt 3 / pi.
inline const double D2_OF_3 = 3 / std::sqrt(std::acos(-1.0));
inline const double D3_OF_3 = std::sqrt(2 + 3 * std::sqrt(3.0) / std::acos(-1.0) - D2_OF_3 * D2_OF_3);

}  // namespace kestrow::test
