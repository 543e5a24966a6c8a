# What Homebrew needs to install Vembrix. packaging/macos/make-dmg writes
# build/vembrix.rb, which is this with the version and the checksum of the disk image.
cask "vembrix" do
  version "0.1.0"
  sha256 "0000000000000000000000000000000000000000000000000000000000000000"

  url "https://vembrix.app/download/Vembrix-#{version}.dmg"
  name "Vembrix"
  desc "Names and colours for every Space"
  homepage "https://vembrix.app/"

  depends_on macos: ">= :ventura"

  app "Vembrix.app"

  uninstall quit: "com.vembrix.app"

  zap trash: "~/Library/Preferences/com.vembrix.app.plist"

  caveats <<~EOS
    Vembrix asks for the Accessibility permission when it starts. With it, Vembrix
    moves between Spaces as a swipe on the trackpad does, notices your own swipes, and
    counts typing as work in a Space. You give it or take it back in

      System Settings > Privacy & Security > Accessibility

    Your swipes are noticed from the next start of Vembrix on. A version that is not
    signed as the one before is a stranger to the system: remove the old entry there,
    start Vembrix, and give the permission anew.
  EOS
end
