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

/// The whole content of a settings window. Has the keyboard focus until the Tab key moves it to the
/// first control. Main thread; needs a Qt application.
class SettingsContentView : public QWidget {
  Q_OBJECT

 public:
  /// `coveredTop` is the height, in points, that the desktop's title bar covers of full-size
  /// content.
  SettingsContentView(const SettingsContent& content, double coveredTop,
                      const std::function<void(int)>& tabClicked, QWidget* parent);

  /// Sets the system's appearance, which applies to content without its own.
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
