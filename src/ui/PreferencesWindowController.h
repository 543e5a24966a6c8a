#pragma once

#include <memory>
#include <string>

#include "platform/SettingsWindow.h"
#include "ui/SettingsTabs.h"

namespace vembrix {

struct AppTheme;
struct DiagnosticLog;

/// The one settings window: which tab it shows, in the look of the current
/// theme. Its content is made anew whenever it is shown and whenever the user
/// chooses a theme. Main thread; lives as long as the process.
class PreferencesWindowController
    : public std::enable_shared_from_this<PreferencesWindowController> {
 public:
  /// Made on first use, with a window that is not shown yet.
  static PreferencesWindowController& shared();

  PreferencesWindowController(const PreferencesWindowController&) = delete;
  PreferencesWindowController& operator=(const PreferencesWindowController&) = delete;

  /// The tab that the next content shows: survives rebuilds, follows the themed
  /// tabs, not those of the plain tab view.
  [[nodiscard]] int selectedTabIndex() const { return selectedTabIndex_; }
  /// May be out of range: themed content then shows the last tab, plain content
  /// the first.
  void setSelectedTabIndex(int index) { selectedTabIndex_ = index; }

  /// Reads the Spaces again and shows the window with fresh content. Activating
  /// the application is the caller's business.
  void showWindow();

  /// The window's content for the current theme, settings and Spaces.
  [[nodiscard]] SettingsContent buildContent();

  /// Stores the theme and shows it at once, on the Theme tab.
  void themeSelected(const std::string& name);
  /// Shows that tab.
  void themedTabClicked(int index);

  /// Puts the recent log lines on the pasteboard. Returns at once; the status
  /// line tells how it went, and until then the button is disabled. Does nothing
  /// while that goes on already.
  void copyDiagnosticLog();
  /// Puts the command that shows the log on the pasteboard.
  void copyLogCommand();

 private:
  PreferencesWindowController();

  [[nodiscard]] TabContext tabContext();
  [[nodiscard]] PlainContent buildPlainContent();
  [[nodiscard]] ThemedContent buildThemedContent(const AppTheme& theme);
  [[nodiscard]] ThemedPage themedPage(const AppTheme& theme);
  void showContent();
  void diagnosticLogGathered(const DiagnosticLog& log);
  void setDiagnosticsStatus(std::string text);

  std::unique_ptr<SettingsWindow> window_;
  int selectedTabIndex_ = 0;
  /// Whether the window has tab buttons of the program's own now.
  bool showsThemedContent_ = false;
  std::string diagnosticsStatus_;
  bool isGathering_ = false;
};

}  // namespace vembrix
