#include "ui/PreferencesWindowController.h"

#include <algorithm>
#include <utility>

#include "platform/BackgroundWork.h"
#include "platform/LogTool.h"
#include "platform/Pasteboard.h"
#include "settings/PreferencesStore.h"
#include "spaces/SpaceManager.h"
#include "ui/DiagnosticLog.h"
#include "ui/ThemedLook.h"

namespace vembrix {
namespace {

constexpr Size kWindowSize{600, 520};
constexpr const char* kWindowTitle = "Vembrix Preferences";
constexpr Size kThemedRootSize{kWindowSize.width, kWindowSize.height + kTitleBarHeight};
constexpr double kPlainInset = 12;

constexpr const char* kGathering = "Gathering log…";
constexpr const char* kCommandCopied = "Command copied to clipboard.";
constexpr const char* kNotCopied = "The clipboard is in use. Try again.";

bool isTab(int index) {
  return index >= 0 && index < kTabCount;
}

}  // namespace

PreferencesWindowController& PreferencesWindowController::shared() {
  // Never destroyed, because the platform's windows may be destroyed before static objects.
  static const auto& controller = *new auto([] {
    std::shared_ptr<PreferencesWindowController> made(new PreferencesWindowController());
    made->window_->setTabClickHandler([weak = std::weak_ptr(made)](int index) {
      if (const auto controller = weak.lock()) controller->themedTabClicked(index);
    });
    made->showContent();
    return made;
  }());
  return *controller;
}

PreferencesWindowController::PreferencesWindowController()
    : window_(SettingsWindow::create(kWindowSize, kWindowTitle)) {}

void PreferencesWindowController::showWindow() {
  SpaceManager::shared().reload();
  showContent();
  window_->show();
}

void PreferencesWindowController::showContent() {
  SettingsContent content = buildContent();
  showsThemedContent_ = std::holds_alternative<ThemedContent>(content.body);
  window_->setContent(std::move(content));
}

SettingsContent PreferencesWindowController::buildContent() {
  const AppTheme& theme = PreferencesStore::shared().theme();
  diagnosticsStatus_ = isGathering_ ? kGathering : "";
  SettingsContent content{.chrome = windowChrome(theme), .body = {}};
  if (theme.isPlain()) {
    content.body = buildPlainContent();
  } else {
    content.body = buildThemedContent(theme);
  }
  return content;
}

TabContext PreferencesWindowController::tabContext() {
  const std::weak_ptr<PreferencesWindowController> weak = weak_from_this();
  return {.themeSelected =
              [weak](const std::string& name) {
                if (const auto controller = weak.lock()) controller->themeSelected(name);
              },
          .copyDiagnosticLog =
              [weak] {
                if (const auto controller = weak.lock()) controller->copyDiagnosticLog();
              },
          .copyLogCommand =
              [weak] {
                if (const auto controller = weak.lock()) controller->copyLogCommand();
              },
          .diagnosticsStatus = diagnosticsStatus_,
          .canCopyDiagnosticLog = !isGathering_};
}

PlainContent PreferencesWindowController::buildPlainContent() {
  PlainContent content{.size = kWindowSize, .inset = kPlainInset, .tabs = {}};
  const TabContext context = tabContext();
  for (int i = 0; i < kTabCount; ++i) content.tabs.push_back(makeTab(i, context));
  if (isTab(selectedTabIndex_)) content.selected = static_cast<std::size_t>(selectedTabIndex_);
  return content;
}

ThemedContent PreferencesWindowController::buildThemedContent(const AppTheme& theme) {
  selectedTabIndex_ = std::clamp(selectedTabIndex_, 0, kTabCount - 1);
  return {.rootSize = kThemedRootSize,
          .backdrop = backdropOf(theme),
          .navigation = navigationLayout(theme.navigation),
          .card = cardOf(theme),
          .page = themedPage(theme)};
}

ThemedPage PreferencesWindowController::themedPage(const AppTheme& theme) {
  ThemedPage page{.buttons = tabButtons(theme, selectedTabIndex_),
                  .tab = makeTab(selectedTabIndex_, tabContext())};
  applyThemeTypography(page.tab.form, theme);
  return page;
}

void PreferencesWindowController::themeSelected(const std::string& name) {
  selectedTabIndex_ = kThemeTabIndex;
  PreferencesStore::shared().setThemeName(name);
  showContent();
}

void PreferencesWindowController::themedTabClicked(int index) {
  selectedTabIndex_ = index;
  if (!showsThemedContent_ || !isTab(index)) return;
  window_->setPage(themedPage(PreferencesStore::shared().theme()));
}

void PreferencesWindowController::copyDiagnosticLog() {
  if (std::exchange(isGathering_, true)) return;
  setDiagnosticsStatus(kGathering);
  window_->setEnabled(kCopyDiagnosticLogID, false);
  runInBackground(
      [&tool = std::as_const(LogTool::shared())] { return gatherDiagnosticLog(tool); },
      [self = shared_from_this()](const DiagnosticLog& log) { self->diagnosticLogGathered(log); });
}

void PreferencesWindowController::diagnosticLogGathered(const DiagnosticLog& log) {
  const bool isCopied = Pasteboard::general().setString(log.text);
  setDiagnosticsStatus(isCopied ? copiedLinesStatus(log.lineCount) : kNotCopied);
  isGathering_ = false;
  window_->setEnabled(kCopyDiagnosticLogID, true);
}

void PreferencesWindowController::copyLogCommand() {
  const bool isCopied = Pasteboard::general().setString(LogTool::shared().command().shellText);
  setDiagnosticsStatus(isCopied ? kCommandCopied : kNotCopied);
}

void PreferencesWindowController::setDiagnosticsStatus(std::string text) {
  diagnosticsStatus_ = std::move(text);
  window_->setStatus(kDiagnosticsStatusID, diagnosticsStatus_);
}

}  // namespace vembrix
