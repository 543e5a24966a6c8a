#pragma once

#include <QAbstractButton>
#include <QWidget>
#include <functional>
#include <utility>

#include "platform/MainQueue.h"
#include "platform/SpaceRowView.h"
#include "platform/linux/menubar/RowEditField.h"

namespace vembrix {

/// A pencil on a disc. Takes no focus, so that the menu keeps the keyboard.
class RenameButton : public QAbstractButton {
 public:
  RenameButton(const QString& title, QWidget* parent);

  void setColor(const QColor& color);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  QColor color_;
};

/// The widget of a row: draws the row's content and state and reports the user's input to the
/// handler. All three must outlive it. Main thread.
class VembrixSpaceRowView : public QWidget {
 public:
  VembrixSpaceRowView(const SpaceRowContent& content, const SpaceRowState& state,
                      SpaceRowHandler& handler);

  /// Shows the state after a change; `wasEditing` is its former value of isEditing.
  void stateChanged(bool wasEditing);
  /// Sets the appearance for colours of the system.
  void setAppearance(Appearance appearance);

  /// Sets what is called when the accessible name has changed.
  void setNameHandler(std::function<void()> handler) { nameChanged_ = std::move(handler); }

  [[nodiscard]] const SpaceRowContent& content() const { return content_; }
  [[nodiscard]] const SpaceRowState& state() const { return state_; }
  [[nodiscard]] SpaceRowHandler& handler() { return handler_; }
  [[nodiscard]] QString editedText() const { return editField_ ? editField_->text() : QString(); }
  /// Creates the field on first use, as few rows are ever edited.
  [[nodiscard]] RowEditField& editField();
  [[nodiscard]] RenameButton& renameButton() { return *renameButton_; }

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  void applyState();
  void placeEditField();
  void beginEditing();
  void paintDot(QPainter& painter) const;
  void paintLabel(QPainter& painter) const;
  void paintFocusRing(QPainter& painter) const;

  const SpaceRowContent& content_;
  const SpaceRowState& state_;
  SpaceRowHandler& handler_;
  std::function<void()> nameChanged_;
  Appearance appearance_ = Appearance::Light;
  // Children.
  RenameButton* renameButton_;
  RowEditField* editField_ = nullptr;
  WorkItem looking_;
};

}  // namespace vembrix
