// Sixteen numbers; points are rows, so that a node's world matrix is its own times its parent's.
#pragma once
#include <maya/MStatus.h>

#include <iostream>

namespace mayahost {
/// What matrices of both precisions have in common; `M` is the matrix.
template <class M, class T>
class MatrixOf {
 public:
  using MStatus = OPENMAYA_MAJOR_NAMESPACE::MStatus;
  MatrixOf() { setToIdentity(); }
  template <class N>
  explicit MatrixOf(const N m[4][4]) {
    for (int i = 0; i < 16; ++i) matrix[i / 4][i % 4] = static_cast<T>(m[i / 4][i % 4]);
  }
  T operator()(unsigned int row, unsigned int col) const { return matrix[row][col]; }
  T& operator()(unsigned int row, unsigned int col) { return matrix[row][col]; }
  const T* operator[](unsigned int row) const { return matrix[row]; }
  T* operator[](unsigned int row) { return matrix[row]; }
  template <class N>
  MStatus get(N m[4][4]) const {
    for (int i = 0; i < 16; ++i) m[i / 4][i % 4] = static_cast<N>(matrix[i / 4][i % 4]);
    return MStatus::kSuccess;
  }
  M& setToIdentity();
  M& setToProduct(const M& a, const M& b) { return Self() = a * b; }
  M transpose() const;
  M operator+(const M& o) const;
  M operator-(const M& o) const;
  M operator*(const M& o) const;
  M operator*(T s) const;
  M& operator+=(const M& o) { return Self() = Self() + o; }
  M& operator-=(const M& o) { return Self() = Self() - o; }
  M& operator*=(const M& o) { return Self() = Self() * o; }
  M& operator*=(T s) { return Self() = Self() * s; }
  bool operator==(const M& o) const;
  bool operator!=(const M& o) const { return !(*this == o); }
  M inverse() const;
  M adjoint() const;
  M homogenize() const;
  T det4x4() const;
  T det3x3() const;
  bool isEquivalent(const M& o, T tolerance = static_cast<T>(sizeof(T) == sizeof(double) ? 1e-10 : 1e-5)) const;
  bool isSingular() const { return det4x4() == 0; }
  T matrix[4][4];

 private:
  M& Self() { return static_cast<M&>(*this); }
};
}  // namespace mayahost

OPENMAYA_MAJOR_NAMESPACE_OPEN
#define MMatrix_kTol 1.0e-10
class MMatrix : public mayahost::MatrixOf<MMatrix, double> {
 public:
  MMatrix() = default;
  MMatrix(const double m[4][4]) : MatrixOf(m) {}
  MMatrix(const float m[4][4]) : MatrixOf(m) {}
  static const MMatrix identity;
};
inline MMatrix operator*(double s, const MMatrix& m) { return m * s; }
std::ostream& operator<<(std::ostream& os, const MMatrix& m);
OPENMAYA_MAJOR_NAMESPACE_CLOSE
