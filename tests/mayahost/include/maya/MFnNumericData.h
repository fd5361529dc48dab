// Kinds of numbers, and small tuples of them.
#pragma once
#include <maya/MFnData.h>

#include <vector>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MFnNumericData : public MFnData {
  declareMinimalMFn(MFnNumericData)
  // clang-format off
  enum Type {
    kInvalid = 0, kBoolean, kByte, kChar, kShort, k2Short, k3Short, kLong, kInt = kLong, k2Long, k2Int = k2Long, k3Long, k3Int = k3Long, kInt64, kFloat,
    k2Float, k3Float, kDouble, k2Double, k3Double, k4Double, kAddr, kMatrix, kLast
  };
  // clang-format on
  MObject create(Type dataType, MStatus* status = NULL);
  Type numericType(MStatus* status = NULL) const;
  template <class N>
  MStatus getData(N& a, N& b) const {
    return Get(a, b);
  }
  template <class N>
  MStatus getData(N& a, N& b, N& c) const {
    return Get(a, b, c);
  }
  MStatus getData(double& a, double& b, double& c, double& d) const { return Get(a, b, c, d); }
  template <class N>
  MStatus setData(N a, N b) {
    return Set({double(a), double(b)});
  }
  template <class N>
  MStatus setData(N a, N b, N c) {
    return Set({double(a), double(b), double(c)});
  }
  MStatus setData(double a, double b, double c, double d) { return Set({a, b, c, d}); }
  MStatus getData2Short(short& a, short& b) const { return Get(a, b); }
  MStatus getData3Short(short& a, short& b, short& c) const { return Get(a, b, c); }
  MStatus setData2Short(short a, short b) { return Set({double(a), double(b)}); }
  MStatus setData3Short(short a, short b, short c) { return Set({double(a), double(b), double(c)}); }
  MStatus getData2Int(int& a, int& b) const { return Get(a, b); }
  MStatus getData3Int(int& a, int& b, int& c) const { return Get(a, b, c); }
  MStatus setData2Int(int a, int b) { return Set({double(a), double(b)}); }
  MStatus setData3Int(int a, int b, int c) { return Set({double(a), double(b), double(c)}); }
  MStatus getData2Float(float& a, float& b) const { return Get(a, b); }
  MStatus getData3Float(float& a, float& b, float& c) const { return Get(a, b, c); }
  MStatus setData2Float(float a, float b) { return Set({double(a), double(b)}); }
  MStatus setData3Float(float a, float b, float c) { return Set({double(a), double(b), double(c)}); }
  MStatus getData2Double(double& a, double& b) const { return Get(a, b); }
  MStatus getData3Double(double& a, double& b, double& c) const { return Get(a, b, c); }
  MStatus setData2Double(double a, double b) { return Set({double(a), double(b)}); }
  MStatus setData3Double(double a, double b, double c) { return Set({double(a), double(b), double(c)}); }

 private:
  std::vector<double> Numbers() const;
  MStatus Set(const std::vector<double>& numbers);
  template <class... N>
  MStatus Get(N&... to) const {
    const std::vector<double> all = Numbers();
    if (all.size() != sizeof...(N)) return MStatus::kFailure;
    std::size_t i = 0;
    const int each[] = {(to = static_cast<N>(all[i++]), 0)...};
    return (void)each, MStatus::kSuccess;
  }
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
