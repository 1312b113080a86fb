// Writes the game's three sound effects as WAV files into the folder given as argument.
#include "wav_file.h"

#include <filesystem>
#include <fstream>
#include <iostream>

namespace sounds = corvalta::shell::sounds;

namespace {

bool write(const std::filesystem::path& path, const sounds::Samples& samples) {
  const auto bytes = sounds::wavBytes(samples);
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (!file) {
    std::cerr << "cannot write " << path << '\n';
    return false;
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: " << argv[0] << " <folder>\n";
    return 2;
  }
  const std::filesystem::path folder = argv[1];
  std::filesystem::create_directories(folder);
  const bool written = write(folder / "OK3.wav", sounds::makeOK3()) &&
                       write(folder / "Microwave.wav", sounds::makeMicrowave()) &&
                       write(folder / "Applause.wav", sounds::makeApplause());
  return written ? 0 : 1;
}
