#include "platform/embedded/faces/RecordingSettingsWindow.h"

#include <algorithm>
#include <stdexcept>

namespace vembrix {
namespace {

RecordingSettingsWindow* currentWindow = nullptr;

FormControl& controlOf(FormRow& row) {
  return std::visit([](auto& kind) -> FormControl& { return kind.control; }, row);
}

/// Returns the first control of that type that `matches` accepts. `matches` also receives the label
/// of the control's row; empty for a full row.
template <typename Control, typename Matches>
Control& find(SettingsForm& form, const Matches& matches) {
  for (FormRow& row : form.rows) {
    const auto* labelled = std::get_if<ControlRow>(&row);
    auto* control = std::get_if<Control>(&controlOf(row));
    if (control && matches(labelled ? labelled->label : std::string(), *control)) return *control;
  }
  throw std::out_of_range("no such control on the page");
}

template <typename Control>
Control& labelled(SettingsForm& form, std::string_view label) {
  return find<Control>(form,
                       [&](const std::string& text, const Control&) { return text == label; });
}

template <typename Control>
Control& titled(SettingsForm& form, std::string_view title) {
  return find<Control>(
      form, [&](const std::string&, const Control& control) { return control.title == title; });
}

SettingsTab& frontTab(SettingsContent& content) {
  if (auto* themed = std::get_if<ThemedContent>(&content.body)) return themed->page.tab;
  auto& plain = std::get<PlainContent>(content.body);
  return plain.tabs.at(plain.selected);
}

/// Returns the page in front, which callers only read.
SettingsForm& page(const SettingsContent& content) {
  return frontTab(const_cast<SettingsContent&>(content)).form;
}

/// Changes every control of that type in the content, including those of hidden tabs.
template <typename Control, typename Change>
void forEach(SettingsContent& content, const Change& change) {
  const auto visitForm = [&](SettingsForm& form) {
    for (FormRow& row : form.rows) {
      if (auto* control = std::get_if<Control>(&controlOf(row))) change(*control);
    }
  };
  if (auto* themed = std::get_if<ThemedContent>(&content.body)) {
    visitForm(themed->page.tab.form);
    return;
  }
  for (SettingsTab& tab : std::get<PlainContent>(content.body).tabs) visitForm(tab.form);
}

}  // namespace

std::unique_ptr<SettingsWindow> SettingsWindow::create(Size contentSize, std::string_view title) {
  return std::make_unique<RecordingSettingsWindow>(contentSize, title);
}

RecordingSettingsWindow* RecordingSettingsWindow::current() {
  return currentWindow;
}

RecordingSettingsWindow::RecordingSettingsWindow(Size contentSize, std::string_view title)
    : contentSize_(contentSize), title_(title) {
  currentWindow = this;
}

RecordingSettingsWindow::~RecordingSettingsWindow() {
  if (currentWindow == this) currentWindow = nullptr;
}

void RecordingSettingsWindow::setTabClickHandler(std::function<void(int)> handler) {
  tabClicked_ = std::move(handler);
}

void RecordingSettingsWindow::setContent(SettingsContent content) {
  contentCount_ += 1;
  content_ = std::move(content);
}

void RecordingSettingsWindow::setPage(ThemedPage page) {
  auto& themed = std::get<ThemedContent>(content_.body);
  if (themed.page.buttons.size() != page.buttons.size()) {
    throw std::invalid_argument("a page of other tabs");
  }
  themed.page = std::move(page);
}

void RecordingSettingsWindow::setStatus(const ControlID& id, std::string_view text) {
  forEach<StatusLabel>(content_, [&](StatusLabel& label) {
    if (label.id == id) label.text = text;
  });
}

void RecordingSettingsWindow::setEnabled(const ControlID& id, bool isEnabled) {
  forEach<PushButton>(content_, [&](PushButton& button) {
    if (button.id == id) button.isEnabled = isEnabled;
  });
}

const SettingsTab& RecordingSettingsWindow::tab() const {
  return frontTab(const_cast<SettingsContent&>(content_));
}

std::vector<std::string> RecordingSettingsWindow::tabLabels() const {
  std::vector<std::string> labels;
  if (const ThemedContent* content = themed()) {
    for (const TabButton& button : content->page.buttons) labels.push_back(button.text);
  } else {
    for (const SettingsTab& tab : plain()->tabs) labels.push_back(tab.label);
  }
  return labels;
}

const Slider& RecordingSettingsWindow::slider(std::string_view label) const {
  return labelled<Slider>(page(content_), label);
}
const Popup& RecordingSettingsWindow::popup(std::string_view label) const {
  return labelled<Popup>(page(content_), label);
}
const Checkbox& RecordingSettingsWindow::checkbox(std::string_view title) const {
  return titled<Checkbox>(page(content_), title);
}
const PushButton& RecordingSettingsWindow::button(std::string_view title) const {
  return titled<PushButton>(page(content_), title);
}
const SelectableText& RecordingSettingsWindow::selectableText(std::string_view label) const {
  return labelled<SelectableText>(page(content_), label);
}
const ColorGrid& RecordingSettingsWindow::colorGrid() const {
  return find<ColorGrid>(page(content_), [](const auto&, const auto&) { return true; });
}
const StatusLabel& RecordingSettingsWindow::status(const ControlID& id) const {
  return find<StatusLabel>(page(content_),
                           [&](const auto&, const StatusLabel& label) { return label.id == id; });
}

std::string RecordingSettingsWindow::selectedItem(std::string_view label) const {
  const Popup& shown = popup(label);
  return shown.selected ? shown.items.at(static_cast<std::size_t>(*shown.selected)) : std::string();
}

void RecordingSettingsWindow::clickTab(int index) {
  if (auto* content = std::get_if<PlainContent>(&content_.body)) {
    (void)content->tabs.at(static_cast<std::size_t>(index));
    content->selected = static_cast<std::size_t>(index);
    return;
  }
  (void)themed()->page.buttons.at(static_cast<std::size_t>(index));
  if (tabClicked_) tabClicked_(index);
}

// The closures may replace the content: each is copied before it is called.

void RecordingSettingsWindow::drag(std::string_view sliderLabel, double value) {
  auto& control = labelled<Slider>(page(content_), sliderLabel);
  control.value = std::clamp(value, control.minimum, control.maximum);
  const double shown = control.value;
  if (const auto report = control.onChange) report(shown);
}

void RecordingSettingsWindow::toggle(std::string_view checkboxTitle) {
  auto& control = titled<Checkbox>(page(content_), checkboxTitle);
  control.isOn = !control.isOn;
  const bool shown = control.isOn;
  if (const auto report = control.onChange) report(shown);
}

void RecordingSettingsWindow::choose(std::string_view popupLabel, int index) {
  auto& control = labelled<Popup>(page(content_), popupLabel);
  const std::string title = control.items.at(static_cast<std::size_t>(index));
  control.selected = index;
  if (const auto report = control.onSelect) report(index, title);
}

void RecordingSettingsWindow::choose(std::string_view popupLabel, std::string_view title) {
  const auto& items = popup(popupLabel).items;
  choose(popupLabel, static_cast<int>(std::ranges::find(items, title) - items.begin()));
}

void RecordingSettingsWindow::click(std::string_view buttonTitle) {
  const auto& control = button(buttonTitle);
  if (!control.isEnabled) return;
  if (const auto action = control.action) action();
}

void RecordingSettingsWindow::pickColor(int index, const Color& color) {
  auto& control = find<ColorGrid>(page(content_), [](const auto&, const auto&) { return true; });
  control.wells.at(static_cast<std::size_t>(index)).color = color;
  if (const auto report = control.onChange) report(index, color);
}

}  // namespace vembrix
