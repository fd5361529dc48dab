#include "util/DataChunk.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <limits>

namespace orv::util {

namespace {

std::int32_t loadInt(const unsigned char* p) {
  return static_cast<std::int32_t>(std::uint32_t(p[0]) | std::uint32_t(p[1]) << 8 |
                                   std::uint32_t(p[2]) << 16 | std::uint32_t(p[3]) << 24);
}

void storeInt(std::vector<unsigned char>& out, std::size_t value) {
  for (int shift = 0; shift < 32; shift += 8) {
    out.push_back(static_cast<unsigned char>(value >> shift));
  }
}

constexpr std::size_t kMaxInt = std::numeric_limits<std::int32_t>::max();

/// Reads chunks from one buffer; `left` runs along with the address.
struct Source {
  const unsigned char* at;
  std::size_t left;

  bool take(std::size_t size, const unsigned char*& taken) {
    if (size > left) return false;
    taken = at;
    at += size;
    left -= size;
    return true;
  }
};

bool readChunk(Source& source, DataChunk& chunk, int depth) {
  const unsigned char* header = nullptr;
  const unsigned char* name = nullptr;
  const unsigned char* payload = nullptr;
  if (depth > DataChunk::kMaxDepth || !source.take(DataChunk::kHeaderBytes, header)) return false;
  const std::int32_t size = loadInt(header);
  const std::int32_t childCount = loadInt(header + 4);
  // A negative length is as good as none: old data has it.
  const std::int32_t nameLength = std::max(loadInt(header + 8), 0);
  if (nameLength > DataChunk::kMaxNameBytes || size < 0 || childCount < 0) return false;
  if (!source.take(std::size_t(nameLength), name)) return false;
  if (!source.take(std::size_t(size), payload)) return false;
  if (std::size_t(childCount) > source.left / DataChunk::kHeaderBytes) return false;
  chunk.name.assign(reinterpret_cast<const char*>(name), std::size_t(nameLength));
  chunk.payload.assign(payload, payload + size);
  for (std::int32_t i = 0; i < childCount; ++i) {
    chunk.children.emplace_back();
    if (!readChunk(source, chunk.children.back(), depth + 1)) return false;
  }
  return true;
}

/// Adds up the wire form's size; false when some chunk in it cannot be stored.
bool measure(const DataChunk& chunk, int depth, std::size_t& total) {
  if (depth > DataChunk::kMaxDepth || chunk.name.size() > DataChunk::kMaxNameBytes ||
      chunk.payload.size() > kMaxInt || chunk.children.size() > kMaxInt) {
    return false;
  }
  total += DataChunk::kHeaderBytes + chunk.name.size() + chunk.payload.size();
  return std::all_of(chunk.children.begin(), chunk.children.end(),
                     [&](const DataChunk& child) { return measure(child, depth + 1, total); });
}

void append(const DataChunk& chunk, std::vector<unsigned char>& out) {
  storeInt(out, chunk.payload.size());
  storeInt(out, chunk.children.size());
  storeInt(out, chunk.name.size());
  out.insert(out.end(), chunk.name.begin(), chunk.name.end());
  out.insert(out.end(), chunk.payload.begin(), chunk.payload.end());
  for (const DataChunk& child : chunk.children) append(child, out);
}

}  // namespace

DataChunk::DataChunk(std::string chunkName) : name(std::move(chunkName)) {}

DataChunk::DataChunk(const unsigned char* data) {
  read(data);
}

DataChunk::DataChunk(const void* data, std::size_t size) {
  read(data, size);
}

const void* DataChunk::read(const void* data) {
  if (!data) return nullptr;
  // The end is unknown: the last address of the machine stands for it.
  return read(data,
              std::numeric_limits<std::uintptr_t>::max() - reinterpret_cast<std::uintptr_t>(data));
}

const void* DataChunk::read(const void* data, std::size_t size) {
  if (!data) return nullptr;
  Source source{static_cast<const unsigned char*>(data), size};
  DataChunk fresh;
  if (!readChunk(source, fresh, 0)) return nullptr;
  name = std::move(fresh.name);
  payload = std::move(fresh.payload);
  if (children.empty()) {
    children = std::move(fresh.children);
  } else {
    std::move(fresh.children.begin(), fresh.children.end(), std::back_inserter(children));
  }
  return source.at;
}

std::vector<unsigned char> DataChunk::flatten() const {
  std::vector<unsigned char> out;
  std::size_t total = 0;
  if (!measure(*this, 0, total)) return out;
  out.reserve(total);
  append(*this, out);
  return out;
}

DataChunk& DataChunk::addChunk(const DataChunk& chunk) {
  return addChunk(DataChunk(chunk));
}

DataChunk& DataChunk::addChunk(DataChunk&& chunk) {
  children.push_back(std::move(chunk));
  return children.back();
}

const DataChunk* DataChunk::find(std::string_view key) const {
  for (const DataChunk& child : children) {
    if (child.name == key) return &child;
  }
  return nullptr;
}

const DataChunk& DataChunk::getChunk(std::string_view key) const {
  static const DataChunk empty;
  const DataChunk* found = find(key);
  return found ? *found : empty;
}

bool DataChunk::hasChunk(std::string_view key) const {
  return find(key) != nullptr;
}

void DataChunk::addBytes(std::string_view key, const void* bytes, std::size_t size) {
  const auto* first = static_cast<const unsigned char*>(bytes);
  DataChunk& child = addChunk(DataChunk(std::string(key)));
  if (size > 0) child.payload.assign(first, first + size);
}

bool DataChunk::getBytes(std::string_view key, void* bytes, std::size_t size) const {
  const DataChunk* found = find(key);
  if (!found || found->payload.size() != size) return false;
  if (size > 0) std::memcpy(bytes, found->payload.data(), size);
  return true;
}

const std::vector<unsigned char>& DataChunk::getBytes(std::string_view key) const {
  return getChunk(key).payload;
}

void DataChunk::addText(std::string_view key, std::string_view text) {
  addBytes(key, text.data(), text.size());
}

bool DataChunk::getText(std::string_view key, std::string& text) const {
  const DataChunk* found = find(key);
  if (!found) return false;
  text.assign(found->payload.begin(), found->payload.end());
  return true;
}

bool operator==(const DataChunk& a, const DataChunk& b) {
  return a.name == b.name && a.payload == b.payload && a.children == b.children;
}

}  // namespace orv::util
