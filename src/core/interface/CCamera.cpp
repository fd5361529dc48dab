#include "core/interface/CCamera.h"

namespace orv::rws {

CCamera::CCamera(const CreationRecord& record) : m_id(record.id), m_typeName(record.typeName) {}

CCamera::~CCamera() = default;

void CCamera::Destroy() {
  delete this;
}

}  // namespace orv::rws
