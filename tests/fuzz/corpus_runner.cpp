// Runs a fuzz target over every file of the folders and files given, as
// libFuzzer would replay a corpus. Under libFuzzer (KESTROW_FUZZ) this file is
// left out and the fuzzer's own main is used.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
  int runs = 0;
  for (int i = 1; i < argc; ++i) {
    std::vector<std::filesystem::path> files;
    if (std::filesystem::is_directory(argv[i])) {
      for (const auto& e : std::filesystem::directory_iterator(argv[i]))
        if (e.is_regular_file()) files.push_back(e.path());
    } else {
      files.emplace_back(argv[i]);
    }
    for (const auto& f : files) {
      std::ifstream in(f, std::ios::binary);
      std::vector<std::uint8_t> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
      LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
      ++runs;
    }
  }
  std::printf("%d inputs ran without a crash\n", runs);
  return runs > 0 ? 0 : 1;
}
