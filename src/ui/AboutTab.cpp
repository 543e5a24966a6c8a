#include "platform/Bundle.h"
#include "platform/Workspace.h"
#include "ui/DS.h"
#include "ui/FormBuilder.h"
#include "ui/SettingsTabs.h"

namespace vembrix {
namespace {

constexpr const char* kWebsiteHost = "vembrix.app";
constexpr const char* kWebsiteURL = "https://vembrix.app";

/// Shows the bundle's value under the key if it is a text, else the fallback.
SelectableText bundleText(std::string_view key, const char* fallback) {
  const PropertyList value = Bundle::main().infoValue(key);
  const std::string* text = value.asString();
  return {.text = text ? *text : fallback,
          .style = {ds::kBodyFont, ds::kTextColor},
          .accessibleName = {}};
}

}  // namespace

SettingsForm makeAboutTab(const TabContext& /*context*/) {
  FormBuilder form;
  form.header("Vembrix");
  form.row("Version:", bundleText("CFBundleShortVersionString", "development"));
  form.row("Built:", bundleText("VembrixBuildDate", "unbundled build"));
  form.row("Website:", PushButton{.title = kWebsiteHost,
                                  .action = [] { Workspace::shared().openURL(kWebsiteURL); },
                                  .bezel = PushButton::Bezel::Link,
                                  .style = {ds::kControlFont, Color(SystemColor::Link)},
                                  .isEnabled = true,
                                  .id = {}});
  return form.take();
}

}  // namespace vembrix
