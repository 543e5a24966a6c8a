#pragma once

#include <QWidget>
#include <functional>
#include <string_view>
#include <vector>

#include "platform/SettingsWindow.h"

namespace vembrix {

class FormPage;
class PlainView;
class ThemedView;

/// All that a settings window shows, without the window. Takes the keyboard
/// until the Tab key gives it to the first control. Main thread; needs a Qt
/// application.
class SettingsContentView : public QWidget {
  Q_OBJECT

 public:
  /// `coveredTop`: how much of content of full size lies under what the desktop
  /// draws above the view, in points.
  SettingsContentView(const SettingsContent& content, double coveredTop,
                      const std::function<void(int)>& tabClicked, QWidget* parent);

  /// The system's appearance; it shows where the content has none of its own.
  void setSystemAppearance(Appearance appearance);

  void setPage(const ThemedPage& page);
  void setStatus(const ControlID& id, std::string_view text);
  void setEnabled(const ControlID& id, bool isEnabled);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  [[nodiscard]] std::vector<FormPage*> pages();

  WindowChrome chrome_;
  int coveredTop_;
  PlainView* plain_ = nullptr;
  ThemedView* themed_ = nullptr;
};

}  // namespace vembrix
