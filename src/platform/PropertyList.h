#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace vembrix {

/// An untyped value: a stored setting, an answer of the window server, decoded JSON. Immutable; a
/// copy shares its contents and never allocates. Equality is deep. Usable from any thread.
///
/// The default value is null, which stands for a missing value and for JSON's null; it has no
/// property-list form.
class PropertyList {
 public:
  using Data = std::vector<std::uint8_t>;
  using Array = std::vector<PropertyList>;
  using Dictionary = std::map<std::string, PropertyList, std::less<>>;

  /// Seconds since 2001-01-01 00:00:00 UTC.
  struct Date {
    double seconds = 0;
    bool operator==(const Date&) const = default;
  };

  PropertyList() = default;
  PropertyList(bool value);
  PropertyList(int value);
  PropertyList(std::int64_t value);
  PropertyList(double value);
  PropertyList(const char* value);
  PropertyList(std::string value);
  PropertyList(Date value);
  PropertyList(Data value);
  PropertyList(Array value);
  PropertyList(Dictionary value);

  [[nodiscard]] bool isNull() const;

  // Exact views: the contents when the value has exactly that type, else null.
  // The pointers live as long as any copy of this value.
  [[nodiscard]] const bool* asBool() const;
  [[nodiscard]] const std::int64_t* asInteger() const;
  [[nodiscard]] const double* asReal() const;
  [[nodiscard]] const std::string* asString() const;
  [[nodiscard]] const Date* asDate() const;
  [[nodiscard]] const Data* asData() const;
  [[nodiscard]] const Array* asArray() const;
  [[nodiscard]] const Dictionary* asDictionary() const;

  /// The array where all entries are dictionaries (strings), else null.
  [[nodiscard]] const Array* asArrayOfDictionaries() const;
  [[nodiscard]] const Array* asArrayOfStrings() const;

  // Lenient readings for stored settings; empty for a value of another kind.

  /// A Boolean, or a number that is exactly 0 or 1.
  [[nodiscard]] std::optional<bool> boolean() const;
  /// An integer, or a real of a whole value that fits; not a Boolean.
  [[nodiscard]] std::optional<std::int64_t> integer() const;
  /// An integer or a real; not a Boolean.
  [[nodiscard]] std::optional<double> number() const;
  /// The entry of a dictionary; null when there is none or this is not a dictionary.
  [[nodiscard]] const PropertyList& operator[](std::string_view key) const;

  friend bool operator==(const PropertyList& a, const PropertyList& b);

 private:
  std::variant<std::monostate, bool, std::int64_t, double, Date, std::shared_ptr<const std::string>,
               std::shared_ptr<const Data>, std::shared_ptr<const Array>,
               std::shared_ptr<const Dictionary>>
      value_;
};

}  // namespace vembrix
