#include "platform/PropertyList.h"

#include <algorithm>
#include <utility>

namespace vembrix {
namespace {

template <typename T>
const T* shared(const std::shared_ptr<const T>* pointer) {
  return pointer ? pointer->get() : nullptr;
}

// The doubles from -2^63 up to but not including 2^63 convert to int64 exactly
// when they are whole.
constexpr double kIntegerLimit = 9223372036854775808.0;

}  // namespace

PropertyList::PropertyList(bool value) : value_(value) {}
PropertyList::PropertyList(int value) : value_(std::int64_t{value}) {}
PropertyList::PropertyList(std::int64_t value) : value_(value) {}
PropertyList::PropertyList(double value) : value_(value) {}
PropertyList::PropertyList(const char* value) : PropertyList(std::string(value)) {}
PropertyList::PropertyList(std::string value)
    : value_(std::make_shared<const std::string>(std::move(value))) {}
PropertyList::PropertyList(Date value) : value_(value) {}
PropertyList::PropertyList(Data value) : value_(std::make_shared<const Data>(std::move(value))) {}
PropertyList::PropertyList(Array value) : value_(std::make_shared<const Array>(std::move(value))) {}
PropertyList::PropertyList(Dictionary value)
    : value_(std::make_shared<const Dictionary>(std::move(value))) {}

bool PropertyList::isNull() const {
  return std::holds_alternative<std::monostate>(value_);
}

const bool* PropertyList::asBool() const {
  return std::get_if<bool>(&value_);
}
const std::int64_t* PropertyList::asInteger() const {
  return std::get_if<std::int64_t>(&value_);
}
const double* PropertyList::asReal() const {
  return std::get_if<double>(&value_);
}
const PropertyList::Date* PropertyList::asDate() const {
  return std::get_if<Date>(&value_);
}

const std::string* PropertyList::asString() const {
  return shared(std::get_if<std::shared_ptr<const std::string>>(&value_));
}
const PropertyList::Data* PropertyList::asData() const {
  return shared(std::get_if<std::shared_ptr<const Data>>(&value_));
}
const PropertyList::Array* PropertyList::asArray() const {
  return shared(std::get_if<std::shared_ptr<const Array>>(&value_));
}
const PropertyList::Dictionary* PropertyList::asDictionary() const {
  return shared(std::get_if<std::shared_ptr<const Dictionary>>(&value_));
}

const PropertyList::Array* PropertyList::asArrayOfDictionaries() const {
  const Array* array = asArray();
  const auto fits = [](const PropertyList& entry) { return entry.asDictionary() != nullptr; };
  return array && std::ranges::all_of(*array, fits) ? array : nullptr;
}

const PropertyList::Array* PropertyList::asArrayOfStrings() const {
  const Array* array = asArray();
  const auto fits = [](const PropertyList& entry) { return entry.asString() != nullptr; };
  return array && std::ranges::all_of(*array, fits) ? array : nullptr;
}

std::optional<bool> PropertyList::boolean() const {
  if (const bool* value = asBool()) return *value;
  const std::optional<double> value = number();
  if (value == 0.0) return false;
  if (value == 1.0) return true;
  return std::nullopt;
}

std::optional<std::int64_t> PropertyList::integer() const {
  if (const std::int64_t* value = asInteger()) return *value;
  const double* real = asReal();
  if (!real || !(*real >= -kIntegerLimit && *real < kIntegerLimit)) return std::nullopt;
  const auto whole = static_cast<std::int64_t>(*real);
  if (static_cast<double>(whole) != *real) return std::nullopt;
  return whole;
}

std::optional<double> PropertyList::number() const {
  if (const std::int64_t* value = asInteger()) return static_cast<double>(*value);
  if (const double* value = asReal()) return *value;
  return std::nullopt;
}

const PropertyList& PropertyList::operator[](std::string_view key) const {
  static const PropertyList null;
  const Dictionary* dictionary = asDictionary();
  if (!dictionary) return null;
  const auto entry = dictionary->find(key);
  return entry == dictionary->end() ? null : entry->second;
}

bool operator==(const PropertyList& a, const PropertyList& b) {
  if (a.value_.index() != b.value_.index()) return false;
  // Shared contents are equal and need no comparison.
  return std::visit(
      [&](const auto& left) {
        const auto& right = std::get<std::decay_t<decltype(left)>>(b.value_);
        if constexpr (requires { left.get(); }) {
          return left == right || *left == *right;
        } else {
          return left == right;
        }
      },
      a.value_);
}

}  // namespace vembrix
