#pragma once

#include <string>
#include <string_view>

#include "platform/PropertyList.h"

namespace vembrix {

/// Another program that uses settings: a process for each call, which has ended when the call
/// returns. A failure fails the test.
namespace other_program {

/// Replaces the domain's contents by the dictionary.
void writeDomain(std::string_view domain, const PropertyList& contents);

/// Returns the contents of the domain: a dictionary, or null if there is no such domain. For the
/// process's own domain, what it would leave if it ended now.
PropertyList readDomain(std::string_view domain);

}  // namespace other_program

/// The domains that tests write to: empty at their beginning, removed at their end, and used
/// neither by other programs nor by an installed Vembrix.
class TestDomains {
 public:
  TestDomains();
  ~TestDomains();
  TestDomains(const TestDomains&) = delete;
  TestDomains& operator=(const TestDomains&) = delete;

  /// The domain of the process's own settings.
  [[nodiscard]] std::string application() const;
  static constexpr std::string_view kOther = "com.vembrix.conformance";

 private:
  void remove() const;
};

}  // namespace vembrix
