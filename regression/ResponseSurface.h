// The response surface: the fitted equation over two factors, the others
// held at chosen values, as a net of line points that the surface chart
// projects and paints from the back to the front.
#pragma once

namespace kestrow {

class Chart;
class Study;

// Fills a surface chart with the net of the study's stored model and
// plotted factors, in the view the study keeps. False when it cannot be
// made: after a message, or in silence when quiet.
bool FillSurfaceChart(Study& study, Chart& chart, bool quiet);

// Adds the surface chart of the study's stored model and plotted factors
// to the chart page, in the view the study keeps. False after a message.
bool SetupRSM(Study& study);

}  // namespace kestrow
