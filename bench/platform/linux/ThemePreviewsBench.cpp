#include <benchmark/benchmark.h>

#include <QBuffer>
#include <QElapsedTimer>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "BenchSession.h"
#include "app/ThemePreviewRenderer.h"
#include "platform/PreviewCanvas.h"
#include "platform/linux/ui/SettingsContentView.h"
#include "settings/AppTheme.h"
#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"
#include "ui/PreferencesWindowController.h"
#include "ui/SettingsTabs.h"

namespace vembrix {
namespace {

constexpr double kMilliseconds = 1e3;

double seconds(const QElapsedTimer& timer) {
  return static_cast<double>(timer.nsecsElapsed()) / 1e9;
}

/// Returns the time from the start of a program to its successful end.
double timeOfProgram(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.setStandardOutputFile(QProcess::nullDevice());
  process.setStandardErrorFile(QProcess::nullDevice());
  QElapsedTimer timer;
  timer.start();
  process.start(program, arguments);
  if (!process.waitForFinished() || process.exitCode() != 0) std::abort();
  return seconds(timer);
}

struct Parts {
  double painting = 0;
  double encoding = 0;
};

double encodingTime(const QImage& picture) {
  QElapsedTimer timer;
  timer.start();
  QByteArray bytes;
  QBuffer buffer(&bytes);
  if (!picture.save(&buffer, "png")) std::abort();
  return seconds(timer);
}

/// Returns the time for a page that is laid out and was painted before.
double settingsPaintingTime(const SettingsContent& content, QImage& picture) {
  SettingsContentView view(content, 0, {}, nullptr);
  view.setSystemAppearance(Appearance::Light);
  view.resize(picture.size());
  view.render(&picture);
  QElapsedTimer timer;
  timer.start();
  view.render(&picture);
  return seconds(timer);
}

QImage pictureOf(const std::optional<std::string>& png) {
  if (!png) std::abort();
  return QImage::fromData(QByteArray::fromStdString(*png), "PNG")
      .convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

Parts settingsParts(int tab) {
  auto& controller = PreferencesWindowController::shared();
  controller.setSelectedTabIndex(tab);
  QImage picture = pictureOf(PreviewCanvas::shared().draw(controller.buildContent()));
  Parts parts;
  parts.painting = settingsPaintingTime(controller.buildContent(), picture);
  parts.encoding = encodingTime(picture);
  return parts;
}

Parts menuParts() {
  const AppTheme& theme = PreferencesStore::shared().theme();
  MenuMock mock = *ThemePreviewRenderer::renderMenuMock(theme);
  QElapsedTimer timer;
  timer.start();
  const auto png = PreviewCanvas::shared().draw(std::move(mock));
  const double whole = seconds(timer);
  Parts parts;
  parts.encoding = encodingTime(pictureOf(png));
  parts.painting = std::max(whole - parts.encoding, 0.0);
  return parts;
}

/// Returns the parts of all pictures that a run draws.
Parts allParts() {
  Parts sum;
  const auto add = [&sum](const Parts& parts) {
    sum.painting += parts.painting;
    sum.encoding += parts.encoding;
  };
  SpaceManager::shared().reload();
  for (const AppTheme& theme : AppTheme::all()) {
    PreferencesStore::shared().setThemeName(theme.name);
    const int tabs = theme.name == "Alpine" ? kTabCount : 1;
    for (int tab = 0; tab < tabs; ++tab) add(settingsParts(tab));
    add(menuParts());
  }
  return sum;
}

double median(std::vector<double>& values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

/// The time of the program from its start to its end as it renders all previews; "ratio" is to the
/// sum of the unavoidable: its start-up, and painting and encoding every picture once more.
void renderThemePreviews(benchmark::State& state) {
  useBenchSession();
  const QTemporaryDir directory;
  const QStringList arguments{QStringLiteral("--render-theme-previews"), directory.path()};
  // Loads everything that is loaded once per process.
  allParts();
  std::vector<double> wholes;
  std::vector<double> startUps;
  std::vector<double> paintings;
  std::vector<double> encodings;
  for ([[maybe_unused]] auto _ : state) {
    const double whole = timeOfProgram(QStringLiteral(VEMBRIX_PROGRAM), arguments);
    state.SetIterationTime(whole);
    wholes.push_back(whole);
    startUps.push_back(timeOfProgram(QStringLiteral(START_UP_PROGRAM), {}));
    const Parts parts = allParts();
    paintings.push_back(parts.painting);
    encodings.push_back(parts.encoding);
  }
  const double startUp = median(startUps);
  const double painting = median(paintings);
  const double encoding = median(encodings);
  state.counters["start_up_ms"] = startUp * kMilliseconds;
  state.counters["painting_ms"] = painting * kMilliseconds;
  state.counters["encoding_ms"] = encoding * kMilliseconds;
  state.counters["ratio"] = median(wholes) / (startUp + painting + encoding);
}
BENCHMARK(renderThemePreviews)->Iterations(15)->UseManualTime()->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vembrix
