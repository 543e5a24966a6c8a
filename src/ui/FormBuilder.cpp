#include "ui/FormBuilder.h"

#include <utility>

#include "ui/DS.h"

namespace vembrix {
namespace {

template <typename Control>
concept Named = requires(Control control) {
  control.accessibleName;
};

std::string withoutColon(std::string label) {
  if (label.ends_with(':')) label.pop_back();
  return label;
}

void nameAfter(const std::string& label, FormControl& control) {
  std::visit(
      [&](auto& kind) {
        if constexpr (Named<decltype(kind)>) kind.accessibleName = withoutColon(label);
      },
      control);
}

}  // namespace

void FormBuilder::row(std::string label, FormControl control, std::optional<double> width) {
  nameAfter(label, control);
  const bool hasBaseline = !std::holds_alternative<Slider>(control);
  form_.rows.emplace_back(
      ControlRow{.label = std::move(label),
                 .labelStyle = {ds::kBodyFont, ds::kTextColor},
                 .control = std::move(control),
                 .controlWidth = width,
                 .alignment = hasBaseline ? RowAlignment::FirstBaseline : RowAlignment::Centered});
}

void FormBuilder::full(FormControl control, double topPadding) {
  form_.rows.emplace_back(FullRow{std::move(control), topPadding});
}

void FormBuilder::header(std::string text) {
  full(Header{std::move(text), {ds::kHeaderFont, ds::kTextColor}}, headerPadding);
}

void FormBuilder::note(std::string text) {
  full(WrappingLabel{.text = std::move(text), .style = {ds::kNoteFont, ds::kSecondaryTextColor}});
}

SettingsForm FormBuilder::take() {
  return std::exchange(form_, {});
}

}  // namespace vembrix
