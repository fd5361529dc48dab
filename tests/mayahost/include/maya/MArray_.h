// What all array classes of the API have in common; no header of the API itself.
#pragma once
#include <maya/MApiNamespace.h>
#include <maya/MStatus.h>

#include <initializer_list>
#include <iostream>
#include <vector>

namespace mayahost {
/// Methods that fail do so by status, without effect.
template <class T>
class Array {
 public:
  using MStatus = OPENMAYA_MAJOR_NAMESPACE::MStatus;
  Array() = default;
  explicit Array(unsigned int size, const T& value = T()) : fItems(size, value) {}
  Array(const T* items, unsigned int count) : fItems(items, items + count) {}
  Array(std::initializer_list<T> items) : fItems(items) {}
  T& operator[](unsigned int i) { return fItems[i]; }
  const T& operator[](unsigned int i) const { return fItems[i]; }
  bool operator==(const Array& other) const { return fItems == other.fItems; }
  bool operator!=(const Array& other) const { return !(fItems == other.fItems); }
  MStatus set(const T& value, unsigned int i) {
    if (i >= fItems.size()) return MStatus::kInvalidParameter;
    fItems[i] = value;
    return MStatus::kSuccess;
  }
  unsigned int length() const { return static_cast<unsigned int>(fItems.size()); }
  MStatus setLength(unsigned int size) { return fItems.resize(size), MStatus::kSuccess; }
  MStatus clear() { return fItems.clear(), MStatus::kSuccess; }
  MStatus append(const T& value) { return fItems.push_back(value), MStatus::kSuccess; }
  MStatus copy(const Array& other) { return fItems = other.fItems, MStatus::kSuccess; }
  MStatus insert(const T& value, unsigned int i) {
    if (i > fItems.size()) return MStatus::kInvalidParameter;
    fItems.insert(fItems.begin() + i, value);
    return MStatus::kSuccess;
  }
  MStatus remove(unsigned int i) {
    if (i >= fItems.size()) return MStatus::kInvalidParameter;
    fItems.erase(fItems.begin() + i);
    return MStatus::kSuccess;
  }
  void setSizeIncrement(unsigned int) {}
  unsigned int sizeIncrement() const { return 1; }
  template <class U>
  MStatus get(U array) const {
    for (unsigned int i = 0; i < length(); ++i) array[i] = fItems[i];
    return MStatus::kSuccess;
  }
  auto begin() { return fItems.begin(); }
  auto end() { return fItems.end(); }
  auto begin() const { return fItems.begin(); }
  auto end() const { return fItems.end(); }

 protected:
  std::vector<T> fItems;
};
}  // namespace mayahost
