/// Checked access to the JSON of an untrusted glTF file.
#pragma once

#include <cstddef>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <vector>

namespace orv::rws::adaptor::headless {

/// Keeps the order of an object's members, so that a file comes back as it was.
using Json = nlohmann::ordered_json;

/// What is wrong with a file and where in it. Thrown and caught inside the reader and the writer
/// only.
class GltfError : public std::runtime_error {
 public:
  GltfError(const std::string& place, const std::string& what)
      : std::runtime_error(place.empty() ? what : place + ": " + what) {}
};

/// A place in a file, such as accessors[3].sparse; turned into text only when something is wrong
/// there. A place refers to its outer one, which must outlive it.
class Place {
 public:
  explicit Place(const char* name) : m_name(name) {}
  Place(const char* name, std::size_t index) : m_name(name), m_index(index), m_hasIndex(true) {}
  Place In(const char* name) const { return Place(this, name); }
  Place In(const char* name, std::size_t index) const {
    Place place(this, name);
    place.m_index = index;
    place.m_hasIndex = true;
    return place;
  }

  std::string Text() const;
  [[noreturn]] void Fail(const std::string& what) const { throw GltfError(Text(), what); }

 private:
  Place(const Place* outer, const char* name) : m_outer(outer), m_name(name) {}

  const Place* m_outer = nullptr;
  const char* m_name;
  std::size_t m_index = 0;
  bool m_hasIndex = false;
};

/// The member `key`, or null when there is none.
const Json* Member(const Json& object, const char* key);

/// The member `key` as a list; a shared empty list when there is none. Fails on anything else.
const Json& ListAt(const Json& object, const char* key, const Place& place);
/// The member `key` as an object, or null when there is none. Fails on anything else.
const Json* ObjectAt(const Json& object, const char* key, const Place& place);
/// The member `key` as a text; "" when there is none. Fails on anything else.
std::string TextAt(const Json& object, const char* key, const Place& place);

/// `value` as a whole number from 0 to 2^53.
std::size_t WholeNumber(const Json& value, const Place& place);
/// The member `key` as a whole number; it must be there.
std::size_t WholeAt(const Json& object, const char* key, const Place& place);
/// The same, or `fallback` when there is none.
std::size_t WholeAt(const Json& object, const char* key, std::size_t fallback, const Place& place);
/// The member `key` as an index below `count`; -1 when there is none.
int IndexAt(const Json& object, const char* key, std::size_t count, const Place& place);
/// `value` as a finite number.
double FiniteNumber(const Json& value, const Place& place);
double FiniteAt(const Json& object, const char* key, double fallback, const Place& place);
/// The same, and `fallback` also for what is no finite number.
double NumberOr(const Json& object, const char* key, double fallback);
/// The member `key` as a list of `count` finite numbers; false when there is none.
bool NumbersAt(const Json& object, const char* key, std::size_t count, double* numbers,
               const Place& place);

/// A name as messages show it.
inline std::string Quoted(const std::string& text) {
  return '"' + text + '"';
}

/// The lists that a glTF file may have.
inline constexpr const char* kListNames[] = {"extensionsUsed", "extensionsRequired",
                                             "scenes",         "nodes",
                                             "meshes",         "skins",
                                             "animations",     "cameras",
                                             "materials",      "textures",
                                             "samplers",       "images",
                                             "accessors",      "bufferViews",
                                             "buffers"};

/// Member of an element's extras under which what is ours is kept.
inline constexpr const char* kOwnKey = "rigwright";
/// Member of a node's extras that says to which rig's node it belongs.
inline constexpr const char* kTagKey = "RWT_tag";
/// Members of a node's extras: where a node that hangs on a rig's hung before, and the mark of a
/// hub.
inline constexpr const char* kHomeKey = "RWT_home";
inline constexpr const char* kHubKey = "RWT_hub";
/// Member of a camera node's extras: what stands behind its picture.
inline constexpr const char* kBackdropKey = "RWT_backdrop";

/// What is kept under kOwnKey in the extras of `element`; null when there is none.
const Json* OwnExtras(const Json& element);
/// True for an element that we added to the file.
bool IsOwn(const Json& element);
/// The extras of `element` as an object; extras of another type move to a member "value" of it.
Json& ExtrasObject(Json& element);
/// Takes `key` out of the extras of `element`, and the extras when nothing else is in them.
void EraseExtra(Json& element, const char* key);

}  // namespace orv::rws::adaptor::headless
