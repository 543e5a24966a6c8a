#include "platform/linux/ui/FormPage.h"

#include <QAccessible>
#include <QLabel>
#include <QPushButton>
#include <QResizeEvent>
#include <algorithm>
#include <cmath>

namespace vembrix {
namespace {

constexpr int kMargin = static_cast<int>(form_metrics::kMargin);
constexpr int kColumnSpacing = static_cast<int>(form_metrics::kColumnSpacing);
constexpr int kRowSpacing = static_cast<int>(form_metrics::kRowSpacing);

}  // namespace

FormPage::FormPage(const SettingsForm& form) {
  rows_.reserve(form.rows.size());
  for (const FormRow& row : form.rows) {
    std::visit([this](const auto& kind) { add(kind); }, row);
  }
}

void FormPage::add(const ControlRow& row) {
  rows_.push_back({.label = buildLabel(row.label, row.labelStyle, this),
                   .control = buildControl(row.control, this),
                   .fillsRow = fillsRow(row.control),
                   .controlWidth = row.controlWidth,
                   .alignment = row.alignment});
  keepID(row.control, rows_.back().control.widget);
}

void FormPage::add(const FullRow& row) {
  rows_.push_back({.label = {},
                   .control = buildControl(row.control, this),
                   .fillsRow = fillsRow(row.control),
                   .controlWidth = {},
                   .topPadding = row.topPadding});
  keepID(row.control, rows_.back().control.widget);
}

void FormPage::keepID(const FormControl& control, QWidget* widget) {
  if (const auto* button = std::get_if<PushButton>(&control)) {
    if (!button->id.empty()) named_.emplace_back(button->id, widget);
  } else if (const auto* status = std::get_if<StatusLabel>(&control)) {
    named_.emplace_back(status->id, widget);
  }
}

void FormPage::setStatus(const ControlID& id, std::string_view text) {
  for (const auto& [name, widget] : named_) {
    auto* label = qobject_cast<QLabel*>(widget);
    if (name != id || !label) continue;
    label->setText(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    fit(*label);
    QAccessibleEvent event(label, QAccessible::Alert);
    QAccessible::updateAccessibility(&event);
  }
}

void FormPage::fit(const QWidget& control) {
  for (const Row& row : rows_) {
    if (row.control.widget == &control) row.measuredRoom = kUnmeasured;
  }
  layOut(width(), Placing::Place);
}

void FormPage::setEnabled(const ControlID& id, bool isEnabled) {
  for (const auto& [name, widget] : named_) {
    if (name == id && qobject_cast<QPushButton*>(widget)) widget->setEnabled(isEnabled);
  }
}

int FormPage::heightForWidth(int width) const {
  return layOut(width, Placing::Measure);
}

void FormPage::resizeEvent(QResizeEvent* event) {
  if (event->size().width() != event->oldSize().width()) layOut(width(), Placing::Place);
}

int FormPage::layOut(int width, Placing placing) const {
  int y = kMargin;
  for (const Row& row : rows_) {
    if (y != kMargin) y += kRowSpacing;
    y += static_cast<int>(std::lround(row.topPadding));
    y += layOutRow(row, y, width - 2 * kMargin, placing);
  }
  return y + kMargin;
}

int FormPage::layOutRow(const Row& row, int top, int width, Placing placing) const {
  if (!row.label.widget) {
    const QSize size = controlSize(row, width);
    if (placing == Placing::Place) row.control.widget->setGeometry({{kMargin, top}, size});
    return size.height();
  }
  const int column = labelColumnWidth();
  const QSize label = row.label.widget->sizeHint();
  const QSize control = controlSize(row, width - column - kColumnSpacing);
  int height = std::max(label.height(), control.height());
  int labelTop = (height - label.height()) / 2;
  int controlTop = (height - control.height()) / 2;
  if (row.alignment == RowAlignment::FirstBaseline) {
    const int baseline = std::max(row.label.baseline, row.control.baseline);
    labelTop = baseline - row.label.baseline;
    controlTop = baseline - row.control.baseline;
    height = std::max(labelTop + label.height(), controlTop + control.height());
  }
  if (placing == Placing::Place) {
    const int trailing = kMargin + column;
    row.label.widget->setGeometry({{trailing - label.width(), top + labelTop}, label});
    row.control.widget->setGeometry({{trailing + kColumnSpacing, top + controlTop}, control});
  }
  return height;
}

QSize FormPage::controlSize(const Row& row, int room) {
  if (row.measuredRoom != room) {
    row.measured = measure(row, room);
    row.measuredRoom = room;
  }
  return row.measured;
}

QSize FormPage::measure(const Row& row, int room) {
  const QWidget& control = *row.control.widget;
  const QSize natural = control.sizeHint();
  QSize size(row.fillsRow ? room : std::min(natural.width(), room), natural.height());
  if (row.controlWidth) {
    size.setWidth(std::min(static_cast<int>(std::lround(*row.controlWidth)), room));
  }
  if (control.hasHeightForWidth()) size.setHeight(control.heightForWidth(size.width()));
  return size.expandedTo(control.minimumSize());
}

int FormPage::labelColumnWidth() const {
  int width = 0;
  for (const Row& row : rows_) {
    if (row.label.widget) width = std::max(width, row.label.widget->sizeHint().width());
  }
  return width;
}

}  // namespace vembrix
