#include "platform/linux/support/ContrastTable.h"

#include <QDir>
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <map>

#include "support/Contrast.h"

namespace vembrix {
namespace {

Srgb colorOf(QRgb pixel) {
  return {qRed(pixel) / 255.0, qGreen(pixel) / 255.0, qBlue(pixel) / 255.0};
}

}  // namespace

double contrastIn(const QImage& picture) {
  std::map<QRgb, int> counts;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) counts[picture.pixel(x, y)] += 1;
  }
  if (counts.empty()) return 1;
  const auto most =
      std::ranges::max_element(counts, {}, [](const auto& one) { return one.second; });
  const Srgb ground = colorOf(most->first);
  double highest = 1;
  for (const auto& [pixel, count] : counts) {
    highest = std::max(highest, contrast(colorOf(pixel), ground));
  }
  return highest;
}

void noteContrast(const std::string& place, const std::string& text, double contrast) {
  const QString folder = qEnvironmentVariable("VEMBRIX_PICTURES");
  if (folder.isEmpty()) return;
  std::ofstream table(QDir(folder).filePath("contrast.md").toStdString(), std::ios::app);
  char number[16];
  std::snprintf(number, sizeof number, "%.2f", contrast);
  table << "| " << place << " | " << text << " | " << number << " |\n";
}

}  // namespace vembrix
