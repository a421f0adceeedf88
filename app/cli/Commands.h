// The commands of kestrow-cli, each given the words after its name and
// giving the exit code.
#pragma once

#include <string>
#include <vector>

namespace kestrow::cli {

using Words = std::vector<std::string>;

int ToJson(const Words& words);
int FromJson(const Words& words);
int Export(const Words& words);
int Report(const Words& words);
int Designs(const Words& words);
int Design(const Words& words);
int Analyse(const Words& words);
int Stat(const Words& words);

}  // namespace kestrow::cli
