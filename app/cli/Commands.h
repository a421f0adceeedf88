// The commands of kestrow-cli, each given the words after its name and
// giving the exit code.
#pragma once

#include <string>
#include <vector>

namespace kestrow {
class ChartPage;
}

namespace kestrow::cli {

using Words = std::vector<std::string>;

int ToJson(const Words& words);
int FromJson(const Words& words);
int Export(const Words& words);
int Report(const Words& words);
int Designs(const Words& words);
int Design(const Words& words);
int Analyse(const Words& words);
int Apr(const Words& words);
int Calc(const Words& words);
int Stat(const Words& words);
int Draw(const Words& words);

// "WxH", each side from 1 to 10000 pixels.
bool ParseSize(const std::string& text, int& width, int& height);
// Whether the path's extension names a picture format; the complaint if not.
bool CheckImagePath(const std::string& path, std::string& complaint);
// Draws the page into the picture file; the exit code.
int WriteImage(ChartPage& page, const std::string& path, int width, int height);
// Draws the page into the picture file, or without one on a page of that
// size, and prints the chart list as drawn; the exit code.
int PrintChartList(ChartPage& page, const std::string& image, int width, int height);

}  // namespace kestrow::cli
