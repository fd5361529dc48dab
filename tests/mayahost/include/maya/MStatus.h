// How a call went.
#pragma once
#include <maya/MApiNamespace.h>

#include <iosfwd>

OPENMAYA_MAJOR_NAMESPACE_OPEN
class MStatus {
 public:
  // clang-format off
  enum MStatusCode {
    kSuccess = 0, kFailure, kInsufficientMemory, kInvalidParameter, kLicenseFailure, kUnknownParameter, kNotImplemented, kNotFound, kEndOfFile
  };
  // clang-format on
  MStatus() = default;
  MStatus(MStatusCode code) : fCode(code) {}
  MStatus(bool, MStatusCode code, const MString&) : fCode(code) {}
  MStatus& operator=(MStatusCode code) { return fCode = code, *this; }
  bool operator==(const MStatus& other) const { return fCode == other.fCode; }
  bool operator==(MStatusCode code) const { return fCode == code; }
  bool operator!=(const MStatus& other) const { return fCode != other.fCode; }
  bool operator!=(MStatusCode code) const { return fCode != code; }
  operator bool() const { return fCode == kSuccess; }
  bool error() const { return fCode != kSuccess; }
  void clear() { fCode = kSuccess; }
  MStatusCode statusCode() const { return fCode; }
  MString errorString() const;
  void perror(const char* text) const;
  void perror(const MString& text) const;

 private:
  MStatusCode fCode = kSuccess;
};
typedef MStatus MS;
inline bool operator==(MStatus::MStatusCode code, const MStatus& status) { return status == code; }
inline bool operator!=(MStatus::MStatusCode code, const MStatus& status) { return status != code; }
std::ostream& operator<<(std::ostream& os, const MStatus& status);
OPENMAYA_MAJOR_NAMESPACE_CLOSE

#define CHECK_MSTATUS(code)                                                                                                             \
  do {                                                                                                                                  \
    MStatus maya_status_(code);                                                                                                         \
    if (maya_status_ != MStatus::kSuccess) std::cerr << "\nAPI error detected in " << __FILE__ << " at line " << __LINE__ << std::endl; \
  } while (0)
#define CHECK_MSTATUS_AND_RETURN(code, result)     \
  do {                                             \
    MStatus maya_status_and_(code);                \
    CHECK_MSTATUS(maya_status_and_);               \
    if (maya_status_and_.error()) return (result); \
  } while (0)
#define CHECK_MSTATUS_AND_RETURN_IT(code)                \
  do {                                                   \
    MStatus maya_status_it_(code);                       \
    CHECK_MSTATUS(maya_status_it_);                      \
    if (maya_status_it_.error()) return maya_status_it_; \
  } while (0)
