// A context for as long as this lives.
#pragma once
#include <maya/MDGContext.h>
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MDGContextGuard {
 public:
  explicit MDGContextGuard(const MDGContext& context) : fBefore(context.makeCurrent()) {}
  ~MDGContextGuard() { fBefore.makeCurrent(); }
  MDGContextGuard(const MDGContextGuard&) = delete;
  MDGContextGuard& operator=(const MDGContextGuard&) = delete;

 private:
  MDGContext fBefore;
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
