// A box along the axes.
#pragma once
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MBoundingBox {
 public:
  MBoundingBox() = default;
  MBoundingBox(const MPoint& corner1, const MPoint& corner2) : fMin(corner1), fMax(corner1), fEmpty(false) { expand(corner2); }
  void clear() { *this = MBoundingBox(); }
  void transformUsing(const MMatrix& m);
  void expand(const MPoint& p);
  void expand(const MBoundingBox& box);
  bool contains(const MPoint& p) const;
  bool intersects(const MBoundingBox& box, double tolerance = 0) const;
  double width() const { return fMax.x - fMin.x; }
  double height() const { return fMax.y - fMin.y; }
  double depth() const { return fMax.z - fMin.z; }
  MPoint center() const { return fMin + (fMax - fMin) * 0.5; }
  MPoint min() const { return fMin; }
  MPoint max() const { return fMax; }

 private:
  MPoint fMin, fMax;
  bool fEmpty = true;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
