#pragma once

#include <array>
#include <clocale>
#include <locale>
#include <string>

namespace vembrix {

/// While it lives, numbers of the process have a decimal comma: those of C++
/// streams always, those of the C library where such a locale is installed.
class OtherLocale {
 public:
  OtherLocale()
      : formerC_(std::setlocale(LC_ALL, nullptr)),
        former_(std::locale::global(std::locale(std::locale::classic(), new DecimalComma))) {
    constexpr std::array kNames = {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8"};
    for (const char* name : kNames) {
      if (std::setlocale(LC_ALL, name)) return;
    }
  }
  ~OtherLocale() {
    std::locale::global(former_);
    std::setlocale(LC_ALL, formerC_.c_str());
  }
  OtherLocale(const OtherLocale&) = delete;
  OtherLocale& operator=(const OtherLocale&) = delete;

 private:
  struct DecimalComma : std::numpunct<char> {
   protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };

  std::string formerC_;
  std::locale former_;
};

}  // namespace vembrix
