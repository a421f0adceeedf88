// A chart list as JSON: {"Charts": [...]}, each chart an object with its
// type and every field under its own name, its data points and line points
// in list order. Read back, a field that is left out keeps what a new chart
// of the type has, and points are added as AddData and AddLinePoint add them,
// so a chart can be given by its type and points alone.
#pragma once

#include <string>

#include "charts/ChartPage.h"

namespace kestrow {

std::string ChartsToJson(const ChartPage& page);

// Replaces the page's charts by those of the document; false, with what and
// where ("Charts[1].DataPoints[0].fY: expected a number"), on a malformed
// one, and then the page is as it was.
bool ChartsFromJson(const std::string& json, ChartPage& page, std::string& error);

}  // namespace kestrow
