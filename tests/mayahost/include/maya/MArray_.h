// What all array classes of the API have in common; no header of the API itself.
#pragma once
#include <maya/MApiNamespace.h>
#include <maya/MStatus.h>

#include <initializer_list>
#include <iostream>
#include <type_traits>
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
  template <class N, std::size_t K>
  Array(const N (*items)[K], unsigned int count) {
    for (unsigned int i = 0; i < count; ++i) fItems.emplace_back(items[i]);
  }
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
  template <class... N>
  typename std::enable_if<(sizeof...(N) > 1), MStatus>::type set(unsigned int i, N... parts) {
    return set(T(parts...), i);
  }
  unsigned int length() const { return static_cast<unsigned int>(fItems.size()); }
  MStatus setLength(unsigned int size) { return fItems.resize(size), MStatus::kSuccess; }
  MStatus clear() { return fItems.clear(), MStatus::kSuccess; }
  MStatus append(const T& value) { return fItems.push_back(value), MStatus::kSuccess; }
  template <class... N>
  typename std::enable_if<(sizeof...(N) > 1), MStatus>::type append(N... parts) {
    return append(T(parts...));
  }
  MStatus append(const Array& other) { return *this += other, MStatus::kSuccess; }
  Array& operator+=(const Array& other) {
    for (unsigned int i = 0, count = other.length(); i < count; ++i) fItems.push_back(T(other.fItems[i]));
    return *this;
  }
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
  template <class N, std::size_t K>
  MStatus get(N (*array)[K]) const {
    for (unsigned int i = 0; i < length(); ++i)
      for (unsigned int c = 0; c < K; ++c) array[i][c] = fItems[i][c];
    return MStatus::kSuccess;
  }
  int indexOf(const T& value) const {
    for (unsigned int i = 0; i < length(); ++i)
      if (fItems[i] == value) return static_cast<int>(i);
    return -1;
  }
  typename std::vector<T>::iterator begin() { return fItems.begin(); }
  typename std::vector<T>::iterator end() { return fItems.end(); }
  typename std::vector<T>::const_iterator begin() const { return fItems.begin(); }
  typename std::vector<T>::const_iterator end() const { return fItems.end(); }

 protected:
  std::vector<T> fItems;
};
template <class T>
std::ostream& operator<<(std::ostream& os, const Array<T>& array) {
  for (unsigned int i = 0; i < array.length(); ++i) os << (i ? ", " : "[") << array[i];
  return os << (array.length() ? "]" : "[]");
}
}  // namespace mayahost

#define MAYAHOST_ARRAY(Name, T)                                                     \
  class Name : public mayahost::Array<T> {                                          \
   public:                                                                          \
    using Array::Array;                                                             \
    Name() = default;                                                               \
    Name(const Name&) = default;                                                    \
    Name& operator=(const Name&) = default;                                         \
    Name& operator+=(const Name& other) { return Array::operator+=(other), *this; } \
    Name operator+(const Name& other) const { return Name(*this) += other; }        \
  };
