#include "adaptor/headless/GltfJson.h"

#include <cmath>

namespace orv::rws::adaptor::headless {

namespace {
constexpr double kLargestWhole = 9007199254740992.0;  // 2^53
}

std::string Place::Text() const {
  std::string result = m_outer != nullptr ? m_outer->Text() : std::string();
  if (!result.empty() && *m_name != '\0') result += '.';
  result += m_name;
  if (m_hasIndex) result += '[' + std::to_string(m_index) + ']';
  return result;
}

const Json* Member(const Json& object, const char* key) {
  if (!object.is_object()) return nullptr;
  const auto at = object.find(key);
  return at == object.end() ? nullptr : &*at;
}

const Json& ListAt(const Json& object, const char* key, const Place& place) {
  static const Json empty = Json::array();
  const Json* value = Member(object, key);
  if (value == nullptr) return empty;
  if (!value->is_array()) place.In(key).Fail("is no list");
  return *value;
}

const Json* ObjectAt(const Json& object, const char* key, const Place& place) {
  const Json* value = Member(object, key);
  if (value != nullptr && !value->is_object()) place.In(key).Fail("is no object");
  return value;
}

std::string TextAt(const Json& object, const char* key, const Place& place) {
  const Json* value = Member(object, key);
  if (value == nullptr) return {};
  if (!value->is_string()) place.In(key).Fail("is no text");
  return value->get<std::string>();
}

std::size_t WholeNumber(const Json& value, const Place& place) {
  if (value.is_number_unsigned()) {
    const auto number = value.get<std::uint64_t>();
    if (number <= static_cast<std::uint64_t>(kLargestWhole)) return number;
  } else if (value.is_number_float()) {
    const double number = value.get<double>();
    if (number >= 0.0 && number <= kLargestWhole && number == std::floor(number))
      return static_cast<std::size_t>(number);
  }
  place.Fail(value.is_number() ? value.dump() + " is no whole number from 0 up"
                               : "is no whole number");
}

std::size_t WholeAt(const Json& object, const char* key, const Place& place) {
  const Json* value = Member(object, key);
  if (value == nullptr) place.In(key).Fail("is missing");
  return WholeNumber(*value, place.In(key));
}

std::size_t WholeAt(const Json& object, const char* key, std::size_t fallback, const Place& place) {
  const Json* value = Member(object, key);
  return value == nullptr ? fallback : WholeNumber(*value, place.In(key));
}

int IndexAt(const Json& object, const char* key, std::size_t count, const Place& place) {
  const Json* value = Member(object, key);
  if (value == nullptr) return -1;
  const std::size_t index = WholeNumber(*value, place.In(key));
  if (index >= count)
    place.In(key).Fail("refers to " + std::to_string(index) + ", but there are only " +
                       std::to_string(count));
  return static_cast<int>(index);
}

double FiniteNumber(const Json& value, const Place& place) {
  if (!value.is_number()) place.Fail("is no number");
  const double number = value.get<double>();
  if (!std::isfinite(number)) place.Fail("is not finite");
  return number;
}

double FiniteAt(const Json& object, const char* key, double fallback, const Place& place) {
  const Json* value = Member(object, key);
  return value == nullptr ? fallback : FiniteNumber(*value, place.In(key));
}

double NumberOr(const Json& object, const char* key, double fallback) {
  const Json* value = Member(object, key);
  if (value == nullptr || !value->is_number()) return fallback;
  const double number = value->get<double>();
  return std::isfinite(number) ? number : fallback;
}

bool NumbersAt(const Json& object, const char* key, std::size_t count, double* numbers,
               const Place& place) {
  const Json* value = Member(object, key);
  if (value == nullptr) return false;
  const Place here = place.In(key);
  if (!value->is_array() || value->size() != count)
    here.Fail("is no list of " + std::to_string(count) + " numbers");
  for (std::size_t i = 0; i < count; ++i) numbers[i] = FiniteNumber((*value)[i], here.In("", i));
  return true;
}

const Json* OwnExtras(const Json& element) {
  const Json* extras = Member(element, "extras");
  return extras == nullptr ? nullptr : Member(*extras, kOwnKey);
}

bool IsOwn(const Json& element) {
  const Json* own = OwnExtras(element);
  const Json* mark = own == nullptr ? nullptr : Member(*own, "own");
  return mark != nullptr && *mark == true;
}

Json& ExtrasObject(Json& element) {
  Json& extras = element["extras"];
  if (extras.is_null()) extras = Json::object();
  if (!extras.is_object()) {
    Json value = std::move(extras);
    extras = Json::object();
    extras["value"] = std::move(value);
  }
  return extras;
}

void EraseExtra(Json& element, const char* key) {
  const auto extras = element.find("extras");
  if (extras == element.end() || !extras->is_object()) return;
  extras->erase(key);
  if (extras->empty()) element.erase("extras");
}

}  // namespace orv::rws::adaptor::headless
