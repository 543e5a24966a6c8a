// Draws the icon: draw-icon FILE.icns FOLDER writes the icon for macOS, and for other desktops
// vembrix-SIZE.png into the folder.

#include <cstdio>
#include <exception>
#include <fstream>
#include <map>
#include <stdexcept>
#include <string>

#include "Drawing.h"
#include "IconFiles.h"

namespace {

void write(const std::string& path, const std::string& bytes) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file << bytes;
  file.close();
  if (!file) throw std::runtime_error("cannot write " + path);
}

void writeAll(const std::string& icnsPath, const std::string& folder) {
  std::map<int, std::string> files;
  for (const int side : {16, 32, 64, 128, 256, 512, 1024})
    files[side] = icon::png(icon::draw(side));
  // The pictures for screens of two pixels per point have separate letters.
  write(icnsPath, icon::icns({{"icp4", files[16]},
                              {"ic11", files[32]},
                              {"icp5", files[32]},
                              {"ic12", files[64]},
                              {"ic07", files[128]},
                              {"ic13", files[256]},
                              {"ic08", files[256]},
                              {"ic14", files[512]},
                              {"ic09", files[512]},
                              {"ic10", files[1024]}}));
  for (const int side : {48, 128, 256}) {
    write(folder + "/vembrix-" + std::to_string(side) + ".png", icon::png(icon::draw(side)));
  }
}

}  // namespace

int main(int argc, char* argv[]) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: draw-icon FILE.icns FOLDER\n");
    return 2;
  }
  try {
    writeAll(argv[1], argv[2]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "draw-icon: %s\n", error.what());
    return 1;
  }
  return 0;
}
