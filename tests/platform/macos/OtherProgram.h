#pragma once

#include <string>
#include <string_view>

#include "platform/PropertyList.h"

namespace vembrix {

/// A program other than the one under test, as far as settings go: a process that is
/// started for each call and has ended when it returns. A failure fails the test.
namespace other_program {

/// Makes the dictionary all that the domain holds.
void writeDomain(std::string_view domain, const PropertyList& contents);

/// What the domain holds: a dictionary, or null when there is no such domain. Of the
/// process's own domain, what it would leave behind if it ended now.
PropertyList readDomain(std::string_view domain);

}  // namespace other_program

/// The domains that tests write to: empty when they begin, gone when they end. No other
/// program's, nor that of an installed Vembrix.
class TestDomains {
 public:
  TestDomains();
  ~TestDomains();
  TestDomains(const TestDomains&) = delete;
  TestDomains& operator=(const TestDomains&) = delete;

  /// Of the process's own settings.
  [[nodiscard]] std::string application() const;
  static constexpr std::string_view kOther = "com.vembrix.conformance";

 private:
  void remove() const;
};

}  // namespace vembrix
