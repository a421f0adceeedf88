// The items a chart plots: data points, with their labels and the pixel
// they were last drawn at, and line points, the corners of polylines.
#pragma once

#include <cstdint>
#include <string>

#include "core/Sentinels.h"

namespace kestrow {

struct DataPoint {
  std::string sId;         // category or text under the x axis or beside the point; "COL" and "T" are a contour's
  std::string sId2;        // second text: the point's label
  std::int16_t idf = 0;    // 1: a tick and sId at the x axis; 2: sId2 beside the point
  float fX = 0;            // position in data units; fY MISSING_VALUE is not drawn
  float fY = MISSING_VALUE;
  float fZ = 0;            // third value: colour percent of a contour seed
  std::int16_t iWhereX = 0, iWhereY = 0;  // pixel at the last drawing, for Click
  std::int16_t iSeqPtr = 0;  // rank by fX, from RankForNPP
  std::int16_t iDotType = 0;  // marker shape, 0 none
  bool bJoined = false;       // a line joins this point to the one before
};

struct LinePoint {
  float fX = 0, fY = 0, fZ = 0;
  std::int16_t iTag = 0;  // the polyline it belongs to
  bool bJoined = false;   // false starts a new stroke here, true draws to it
};

}  // namespace kestrow
