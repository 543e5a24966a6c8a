#import "platform/DropdownMenu.h"

#import "platform/macos/Conversions.h"
#import "platform/macos/menubar/NativeDropdownMenu.h"

namespace vembrix {
namespace {

/// Owns the native menu, which knows nothing of this object.
class SystemDropdownMenu : public NativeDropdownMenu {
 public:
  NSMenu* nativeMenu() const override { return menu_; }

  void setAppearance(std::optional<Appearance> appearance) override {
    if (appearance_ == appearance) return;
    appearance_ = appearance;
    menu_.appearance = nativeAppearance(appearance);
  }

 private:
  NSMenu* const menu_ = [[NSMenu alloc] initWithTitle:@""];
  /// A new menu follows the system.
  std::optional<Appearance> appearance_;
};

}  // namespace

std::unique_ptr<DropdownMenu> DropdownMenu::create() {
  return std::make_unique<SystemDropdownMenu>();
}

}  // namespace vembrix
