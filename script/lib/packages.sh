# shellcheck shell=bash disable=SC2034
# The packages for Debian 12 and Ubuntu 24.04, by purpose, and those that Fedora needs to
# build and run the program. The only list of packages.

packages_build=(
  cmake
  g++
  ninja-build
  pkg-config
  qt6-base-dev
  libxcb1-dev
  libxcb-ewmh-dev
  libxcb-icccm4-dev
  libxcb-randr0-dev
  libxcb-sync-dev
  libxcb-xfixes0-dev
  libxcb-xinput-dev
  nlohmann-json3-dev
  # The text of the strip.
  fonts-inter
)

packages_fedora_build=(
  cmake
  gcc-c++
  ninja-build
  pkgconf-pkg-config
  qt6-qtbase-devel
  libxcb-devel
  xcb-util-wm-devel
  json-devel
  rsms-inter-fonts
)

# The product's tests on the desktop in the process.
packages_embedded=(
  cmake
  g++
  googletest
  libgmock-dev
  libgtest-dev
  ninja-build
  nlohmann-json3-dev
)

# Replaces g++ if CXX names it; the library is still that of g++.
packages_clang=(
  clang
)

# Checks whether a display answers.
packages_display=(
  x11-utils
)
packages_fedora_display=(
  xprop
)

# A private desktop, and what drives and reads it.
packages_desktop=(
  dbus
  hsetroot
  openbox
  picom
  python3
  python3-dbus
  python3-gi
  wmctrl
  x11-utils
  xdotool
  xclip
  xvfb
)

# The fonts of tests and pictures, with those of the build.
packages_fonts=(
  fonts-dejavu-core
  fonts-inter
  fonts-noto-color-emoji
)

packages_test=(
  # Fonts of other widths and heights.
  fonts-jetbrains-mono
  fonts-noto-core
  fonts-noto-mono
  # The bus of assistive programs.
  at-spi2-core
  python3-pyatspi
  libplist-utils
  libxcb-xtest0-dev
  googletest
  libgmock-dev
  libgtest-dev
  icewm
  weston
  xwayland
  xterm
)

# The look of the private desktop.
packages_demo=(
  x11-apps
  xterm
)

# The window managers of script/matrix, with what belongs to their sessions.
packages_matrix=(
  awesome
  bspwm
  dbus-bin
  fluxbox
  fvwm3
  herbstluftwm
  i3-wm
  icewm
  jwm
  kwin-x11
  marco
  mate-panel
  metacity
  mutter
  pekwm
  x11-xserver-utils
  xfce4-panel
  xfce4-settings
  xfconf
  xfwm4
)

# Build a Debian package and check it.
packages_package=(
  dpkg-dev
  lintian
)

# The checking tools for the files that are installed beside the program.
packages_validate=(
  appstream
  desktop-file-utils
  man-db
  mandoc
)

# For script/check-package, besides a private desktop.
packages_check_package=(
  desktop-file-utils
  man-db
  x11-xserver-utils
  xfce4-panel
  xfce4-session
  xfce4-settings
  xfwm4
)

# Draws the icon.
packages_icon=(
  cmake
  g++
  zlib1g-dev
)

# Reduce the pictures of the documentation.
packages_gallery=(
  imagemagick
  pngquant
)

packages_fuzz=(
  clang
  libclang-rt-14-dev
)

packages_bench=(
  libbenchmark-dev
)

# Build for macOS on Linux, and check the result.
packages_macos_cross=(
  clang-19
  cmake
  lld-19
  llvm-19
  ninja-build
)
packages_macos_lint=(
  clang-tidy-19
  python3
)

packages_lint=(
  clang-format
  clang-tidy
  git
  python3
  shellcheck
)
