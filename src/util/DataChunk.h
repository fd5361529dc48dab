/// The save format of every rig: a named tree of byte blocks.
#pragma once

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace orv::util {

/// A named block of bytes with children of the same form.
///
/// A rig's field is a child whose name is the key and whose payload is the field as it stands in
/// memory, so a later version adds keys and finds out by `hasChunk` what old data lacks.
/// Wire form, integers 32-bit signed little-endian, nothing aligned: payload size, number of
/// children, length of the name, name, payload, children in order.
class DataChunk {
 public:
  static constexpr std::size_t kHeaderBytes = 12;
  static constexpr int kMaxNameBytes = 256;  ///< a longer name makes a header bad
  static constexpr int kMaxDepth = 1000;     ///< levels below the top; deeper data is refused

  DataChunk() = default;
  explicit DataChunk(std::string chunkName);
  /// Reads one chunk from memory that is known to be whole; empty when its header is bad.
  explicit DataChunk(const unsigned char* data);
  /// Reads one chunk from `size` bytes of anybody's; empty when they hold none.
  DataChunk(const void* data, std::size_t size);
  DataChunk(const DataChunk&) = default;
  DataChunk(DataChunk&&) noexcept = default;
  DataChunk& operator=(const DataChunk&) = default;
  DataChunk& operator=(DataChunk&&) noexcept = default;
  virtual ~DataChunk() = default;

  /// Reads one chunk and returns the address just behind it. Null when `data` is null or a header
  /// is bad, with this chunk as it was. Name and payload are replaced, the children read are added
  /// behind those already here. Trusts the sizes found: data from outside goes through the form
  /// below.
  const void* read(const void* data);
  /// As above, where a chunk that claims more than `size` bytes is bad too.
  const void* read(const void* data, std::size_t size);

  /// The wire form, exact mirror of `read`. Empty (as no chunk's form is) when `read` would refuse
  /// it: a name over `kMaxNameBytes`, a size or count over 2^31 - 1, nesting over `kMaxDepth`.
  std::vector<unsigned char> flatten() const;

  /// Appends a copy as the last child and returns the copy.
  DataChunk& addChunk(const DataChunk& chunk);
  DataChunk& addChunk(DataChunk&& chunk);
  /// The first child of that name (case matters), or the shared empty chunk.
  const DataChunk& getChunk(std::string_view key) const;
  bool hasChunk(std::string_view key) const;

  /// Appends a child whose payload is the value as it stands in memory.
  template <typename T>
  void addValue(std::string_view key, const T& value) {
    static_assert(std::is_trivially_copyable_v<T>, "a payload holds plain bytes");
    addBytes(key, &value, sizeof value);
  }
  /// Copies the payload of child `key`. False, with `value` untouched, when there is no such child
  /// or its payload has another size.
  template <typename T>
  bool getValue(std::string_view key, T& value) const {
    static_assert(std::is_trivially_copyable_v<T>, "a payload holds plain bytes");
    return getBytes(key, &value, sizeof value);
  }
  void addBytes(std::string_view key, const void* bytes, std::size_t size);
  /// Copies exactly `size` bytes of child `key`; false, with `bytes` untouched, as `getValue`.
  bool getBytes(std::string_view key, void* bytes, std::size_t size) const;
  /// The payload of child `key`; empty when there is no such child.
  const std::vector<unsigned char>& getBytes(std::string_view key) const;
  void addText(std::string_view key, std::string_view text);
  /// The payload of child `key` as text. False, with `text` untouched, when there is no such child.
  bool getText(std::string_view key, std::string& text) const;

 private:
  const DataChunk* find(std::string_view key) const;

  // Declared first, as the layout of the class is fixed; `flatten` returns its result instead.
  std::vector<unsigned char> m_flat;

 public:
  std::vector<DataChunk> children;     ///< in insertion order
  std::vector<unsigned char> payload;  ///< the bytes of a field
  std::string name;                    ///< key
};

/// Same name, payload and children in the same order.
bool operator==(const DataChunk& a, const DataChunk& b);
inline bool operator!=(const DataChunk& a, const DataChunk& b) {
  return !(a == b);
}

}  // namespace orv::util
