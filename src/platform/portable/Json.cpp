#include "platform/Json.h"

#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

#include "platform/portable/NestingLimit.h"

namespace vembrix {
namespace {

/// Builds a value from the parser's events. Returning false ends the parsing.
class Builder : public nlohmann::json_sax<nlohmann::json> {
 public:
  PropertyList take() { return std::move(result_); }

  bool null() override { return add({}); }
  bool boolean(bool value) override { return add(value); }
  bool number_integer(std::int64_t value) override { return add(value); }
  // The parser reports every number that is not negative here, even if it fits 64 signed bits.
  bool number_unsigned(std::uint64_t value) override {
    const bool fits = std::in_range<std::int64_t>(value);
    return add(fits ? PropertyList(static_cast<std::int64_t>(value))
                    : PropertyList(static_cast<double>(value)));
  }
  bool number_float(double value, const std::string& /*text*/) override { return add(value); }
  bool string(std::string& value) override { return add(std::move(value)); }
  bool binary(nlohmann::json::binary_t& /*value*/) override { return false; }
  bool start_object(std::size_t /*size*/) override { return open(Kind::Object); }
  bool key(std::string& name) override {
    open_.back().key = std::move(name);
    return true;
  }
  bool end_object() override { return close(); }
  bool start_array(std::size_t /*size*/) override { return open(Kind::Array); }
  bool end_array() override { return close(); }
  bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                   const nlohmann::json::exception& /*error*/) override {
    return false;
  }

 private:
  enum class Kind { Array, Object };

  struct Container {
    Kind kind = Kind::Array;
    PropertyList::Array elements;
    PropertyList::Dictionary members;
    /// The key of the next member.
    std::string key;
  };

  bool open(Kind kind) {
    if (open_.size() == static_cast<std::size_t>(kNestingLimit)) return false;
    open_.emplace_back().kind = kind;
    return true;
  }

  bool close() {
    Container& container = open_.back();
    PropertyList value = container.kind == Kind::Array ? PropertyList(std::move(container.elements))
                                                       : PropertyList(std::move(container.members));
    open_.pop_back();
    if (!open_.empty()) return add(std::move(value));
    result_ = std::move(value);
    return true;
  }

  bool add(PropertyList value) {
    // The whole text is one scalar.
    if (open_.empty()) return false;
    Container& container = open_.back();
    if (container.kind == Kind::Array) {
      container.elements.push_back(std::move(value));
    } else {
      container.members.insert_or_assign(std::move(container.key), std::move(value));
    }
    return true;
  }

  std::vector<Container> open_;
  PropertyList result_;
};

std::optional<nlohmann::json> jsonFrom(const PropertyList& value, std::size_t depth);

std::optional<nlohmann::json> jsonFrom(const PropertyList::Array& array, std::size_t depth) {
  nlohmann::json result = nlohmann::json::array();
  for (const PropertyList& element : array) {
    std::optional<nlohmann::json> json = jsonFrom(element, depth);
    if (!json) return std::nullopt;
    result.push_back(std::move(*json));
  }
  return result;
}

std::optional<nlohmann::json> jsonFrom(const PropertyList::Dictionary& dictionary,
                                       std::size_t depth) {
  nlohmann::json result = nlohmann::json::object();
  for (const auto& [key, content] : dictionary) {
    std::optional<nlohmann::json> json = jsonFrom(content, depth);
    if (!json) return std::nullopt;
    result.emplace(key, std::move(*json));
  }
  return result;
}

std::optional<nlohmann::json> jsonFrom(const PropertyList& value, std::size_t depth) {
  if (value.isNull()) return nlohmann::json(nullptr);
  if (const bool* boolean = value.asBool()) return nlohmann::json(*boolean);
  if (const std::int64_t* integer = value.asInteger()) return nlohmann::json(*integer);
  if (const std::string* string = value.asString()) return nlohmann::json(*string);
  if (const double* real = value.asReal()) {
    return std::isfinite(*real) ? std::optional(nlohmann::json(*real)) : std::nullopt;
  }
  if (depth == kNestingLimit) return std::nullopt;
  if (const PropertyList::Array* array = value.asArray()) return jsonFrom(*array, depth + 1);
  if (const PropertyList::Dictionary* dictionary = value.asDictionary()) {
    return jsonFrom(*dictionary, depth + 1);
  }
  return std::nullopt;
}

}  // namespace

std::optional<std::string> encodeJson(const PropertyList& value) {
  if (!value.asArray() && !value.asDictionary()) return std::nullopt;
  const std::optional<nlohmann::json> json = jsonFrom(value, 0);
  if (!json) return std::nullopt;
  // Bytes that are not UTF-8 become U+FFFD.
  return json->dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

std::optional<PropertyList> decodeJson(std::string_view text) {
  // The parser would take a NUL for the end of the text.
  if (text.find('\0') != std::string_view::npos) return std::nullopt;
  Builder builder;
  if (!nlohmann::json::sax_parse(text, &builder)) return std::nullopt;
  return builder.take();
}

}  // namespace vembrix
