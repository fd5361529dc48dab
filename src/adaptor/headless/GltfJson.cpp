#include "adaptor/headless/GltfJson.h"

#include <cmath>

namespace orv::rws::adaptor::headless {

namespace {
constexpr double kLargestWhole = 9007199254740992.0;  // 2^53
}

std::string Place::text() const {
  std::string result = m_outer != nullptr ? m_outer->text() : std::string();
  if (!result.empty() && *m_name != '\0') result += '.';
  result += m_name;
  if (m_hasIndex) result += '[' + std::to_string(m_index) + ']';
  return result;
}

const Json* member(const Json& object, const char* key) {
  if (!object.is_object()) return nullptr;
  const auto at = object.find(key);
  return at == object.end() ? nullptr : &*at;
}

const Json& listAt(const Json& object, const char* key, const Place& place) {
  static const Json empty = Json::array();
  const Json* value = member(object, key);
  if (value == nullptr) return empty;
  if (!value->is_array()) place.in(key).fail("is no list");
  return *value;
}

const Json* objectAt(const Json& object, const char* key, const Place& place) {
  const Json* value = member(object, key);
  if (value != nullptr && !value->is_object()) place.in(key).fail("is no object");
  return value;
}

std::string textAt(const Json& object, const char* key, const Place& place) {
  const Json* value = member(object, key);
  if (value == nullptr) return {};
  if (!value->is_string()) place.in(key).fail("is no text");
  return value->get<std::string>();
}

std::size_t wholeNumber(const Json& value, const Place& place) {
  if (value.is_number_unsigned()) {
    const auto number = value.get<std::uint64_t>();
    if (number <= static_cast<std::uint64_t>(kLargestWhole)) return number;
  } else if (value.is_number_float()) {
    const double number = value.get<double>();
    if (number >= 0.0 && number <= kLargestWhole && number == std::floor(number))
      return static_cast<std::size_t>(number);
  }
  place.fail(value.is_number() ? value.dump() + " is no whole number from 0 up"
                               : "is no whole number");
}

std::size_t wholeAt(const Json& object, const char* key, const Place& place) {
  const Json* value = member(object, key);
  if (value == nullptr) place.in(key).fail("is missing");
  return wholeNumber(*value, place.in(key));
}

std::size_t wholeAt(const Json& object, const char* key, std::size_t fallback, const Place& place) {
  const Json* value = member(object, key);
  return value == nullptr ? fallback : wholeNumber(*value, place.in(key));
}

int indexAt(const Json& object, const char* key, std::size_t count, const Place& place) {
  const Json* value = member(object, key);
  if (value == nullptr) return -1;
  const std::size_t index = wholeNumber(*value, place.in(key));
  if (index >= count)
    place.in(key).fail("refers to " + std::to_string(index) + ", but there are only " +
                       std::to_string(count));
  return static_cast<int>(index);
}

double finiteNumber(const Json& value, const Place& place) {
  if (!value.is_number()) place.fail("is no number");
  const double number = value.get<double>();
  if (!std::isfinite(number)) place.fail("is not finite");
  return number;
}

double finiteAt(const Json& object, const char* key, double fallback, const Place& place) {
  const Json* value = member(object, key);
  return value == nullptr ? fallback : finiteNumber(*value, place.in(key));
}

double numberOr(const Json& object, const char* key, double fallback) {
  const Json* value = member(object, key);
  if (value == nullptr || !value->is_number()) return fallback;
  const double number = value->get<double>();
  return std::isfinite(number) ? number : fallback;
}

bool numbersAt(const Json& object, const char* key, std::size_t count, double* numbers,
               const Place& place) {
  const Json* value = member(object, key);
  if (value == nullptr) return false;
  const Place here = place.in(key);
  if (!value->is_array() || value->size() != count)
    here.fail("is no list of " + std::to_string(count) + " numbers");
  for (std::size_t i = 0; i < count; ++i) numbers[i] = finiteNumber((*value)[i], here.in("", i));
  return true;
}

const Json* ownExtras(const Json& element) {
  const Json* extras = member(element, "extras");
  return extras == nullptr ? nullptr : member(*extras, kOwnKey);
}

bool isOwn(const Json& element) {
  const Json* own = ownExtras(element);
  const Json* mark = own == nullptr ? nullptr : member(*own, "own");
  return mark != nullptr && *mark == true;
}

Json& extrasObject(Json& element) {
  Json& extras = element["extras"];
  if (extras.is_null()) extras = Json::object();
  if (!extras.is_object()) {
    Json value = std::move(extras);
    extras = Json::object();
    extras["value"] = std::move(value);
  }
  return extras;
}

void eraseExtra(Json& element, const char* key) {
  const auto extras = element.find("extras");
  if (extras == element.end() || !extras->is_object()) return;
  extras->erase(key);
  if (extras->empty()) element.erase("extras");
}

}  // namespace orv::rws::adaptor::headless
