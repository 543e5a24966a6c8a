#include <cstdlib>
#include <cstring>
#include <memory>

#include "platform/linux/support/X11Client.h"

namespace vembrix {
namespace {

struct Free {
  void operator()(void* memory) const { std::free(memory); }
};
template <typename T>
using Reply = std::unique_ptr<T, Free>;

}  // namespace

std::optional<X11Client::Property> X11Client::property(xcb_window_t window, std::string_view name) {
  constexpr std::uint32_t kLimit = 1 << 20;
  const Reply<xcb_get_property_reply_t> reply{
      xcb_get_property_reply(ewmh_.connection,
                             xcb_get_property(ewmh_.connection, 0, window, atom(name),
                                              XCB_GET_PROPERTY_TYPE_ANY, 0, kLimit),
                             nullptr)};
  if (!reply || reply->type == XCB_NONE) return std::nullopt;
  const auto size = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
  return Property{atomName(reply->type), reply->format,
                  std::string(static_cast<const char*>(xcb_get_property_value(reply.get())), size)};
}

std::vector<std::uint32_t> X11Client::cardinals(xcb_window_t window, std::string_view name) {
  const auto value = property(window, name);
  if (!value || value->format != 32) return {};
  std::vector<std::uint32_t> result(value->bytes.size() / sizeof(std::uint32_t));
  // An empty list may have a null address, which memcpy() does not allow.
  if (!result.empty()) {
    std::memcpy(result.data(), value->bytes.data(), result.size() * sizeof(std::uint32_t));
  }
  return result;
}

std::vector<std::string> X11Client::atoms(xcb_window_t window, std::string_view name) {
  std::vector<std::string> result;
  for (const std::uint32_t value : cardinals(window, name)) result.push_back(atomName(value));
  return result;
}

void X11Client::setProperty(xcb_window_t window, std::string_view name, const Property& property) {
  const auto units = property.bytes.size() * 8 / static_cast<unsigned>(property.format);
  xcb_change_property(ewmh_.connection, XCB_PROP_MODE_REPLACE, window, atom(name),
                      atom(property.type), static_cast<std::uint8_t>(property.format),
                      static_cast<std::uint32_t>(units), property.bytes.data());
  xcb_flush(ewmh_.connection);
}

void X11Client::setAtom(xcb_window_t window, std::string_view name, std::string_view value) {
  const xcb_atom_t atomOfValue = atom(value);
  setProperty(
      window, name,
      {"ATOM", 32, std::string(reinterpret_cast<const char*>(&atomOfValue), sizeof atomOfValue)});
}

void X11Client::setWindow(xcb_window_t window, std::string_view name, xcb_window_t value) {
  setProperty(window, name,
              {"WINDOW", 32, std::string(reinterpret_cast<const char*>(&value), sizeof value)});
}

void X11Client::deleteProperty(xcb_window_t window, std::string_view name) {
  xcb_delete_property(ewmh_.connection, window, atom(name));
  xcb_flush(ewmh_.connection);
}

std::vector<std::string> X11Client::desktopNames() {
  std::vector<std::string> names;
  const auto value = property(root(), "_NET_DESKTOP_NAMES");
  if (!value) return names;
  std::size_t start = 0;
  while (start < value->bytes.size()) {
    const std::size_t end = std::min(value->bytes.find('\0', start), value->bytes.size());
    names.push_back(value->bytes.substr(start, end - start));
    start = end + 1;
  }
  return names;
}

}  // namespace vembrix
