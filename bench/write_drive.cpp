#include <cstdio>
#include <cstdlib>
#include <string>

#include "generated_drive.h"

// write_drive RECORDS START: a made-up log on standard output, for trying what takes many records.
int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("usage: write_drive RECORDS START\n", stderr);
    return 2;
  }
  constexpr std::size_t kPiece = 100'000;
  std::size_t left = std::strtoull(argv[1], nullptr, 10);
  std::size_t start = std::strtoull(argv[2], nullptr, 10);
  while (left > 0) {
    const std::size_t count = left < kPiece ? left : kPiece;
    const std::string text = kestrum::bench::GeneratedDrive(count, start);
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) return 1;
    start += count;
    left -= count;
  }
  return std::fflush(stdout) == 0 ? 0 : 1;
}
