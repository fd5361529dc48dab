// Sixteen numbers; points are rows, so that a node's world matrix is its own times its parent's.
#pragma once
#include <maya/MStatus.h>

#include <iostream>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MMatrix {
 public:
  static constexpr double kTol = 1e-10;
  MMatrix() { setToIdentity(); }
  MMatrix(const double m[4][4]);
  MMatrix(const float m[4][4]);
  double operator()(unsigned int row, unsigned int col) const { return matrix[row][col]; }
  double& operator()(unsigned int row, unsigned int col) { return matrix[row][col]; }
  const double* operator[](unsigned int row) const { return matrix[row]; }
  double* operator[](unsigned int row) { return matrix[row]; }
  MStatus get(double m[4][4]) const;
  MStatus get(float m[4][4]) const;
  MMatrix transpose() const;
  MMatrix& setToIdentity();
  MMatrix& setToProduct(const MMatrix& a, const MMatrix& b) { return *this = a * b; }
  MMatrix operator+(const MMatrix& o) const;
  MMatrix operator-(const MMatrix& o) const;
  MMatrix operator*(const MMatrix& o) const;
  MMatrix operator*(double s) const;
  MMatrix& operator*=(const MMatrix& o) { return *this = *this * o; }
  MMatrix& operator*=(double s) { return *this = *this * s; }
  bool operator==(const MMatrix& o) const;
  bool operator!=(const MMatrix& o) const { return !(*this == o); }
  MMatrix inverse() const;
  MMatrix adjoint() const;
  MMatrix homogenize() const;
  double det4x4() const;
  double det3x3() const;
  bool isEquivalent(const MMatrix& o, double tolerance = kTol) const;
  bool isSingular() const { return det4x4() == 0; }
  static const MMatrix identity;
  double matrix[4][4];
};
inline MMatrix operator*(double s, const MMatrix& m) { return m * s; }
std::ostream& operator<<(std::ostream& os, const MMatrix& m);
OPENMAYA_MAJOR_NAMESPACE_CLOSE
