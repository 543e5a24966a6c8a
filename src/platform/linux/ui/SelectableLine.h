#pragma once

#include <QLineEdit>
#include <string>

namespace vembrix {

/// One line that can be selected and copied. Cut off with an ellipsis where it
/// is too long, until the keyboard is in it and can reach its end. Main thread.
class SelectableLine : public QLineEdit {
  Q_OBJECT

 public:
  enum class Bezel { None, Rounded };

  SelectableLine(const std::string& text, Bezel bezel, QWidget* parent);

  /// From its top, at its natural height.
  [[nodiscard]] int baseline() const;
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] int baseline(int height) const;
  /// Of a framed one.
  [[nodiscard]] int fieldHeight() const;
  void liftText();
};

}  // namespace vembrix
