// What all rigs here have in common.
#pragma once

#include <string>
#include <vector>

#include "core/interface/CCamera.h"
#include "core/interface/CInterface.h"
#include "plugins/common/HideModes.h"
#include "plugins/common/Parameters.h"
#include "plugins/common/RigSceneNode.h"

namespace orv::rws::addon {

/// Base of a rig. Its files: <Rig>Settings.h, what a user edits; <Rig>Parameters.cpp, the rows of
/// that and the events; <Rig>Save.cpp; <Rig>Memory, what a take leaves behind; <Rig>Take.cpp, the
/// frame. A small rig has all of them in one.
class Rig : public CCamera, public CInterface::Callback {
 public:
  using SceneNode = RigSceneNode;

  using CCamera::CCamera;

  void Update(double /*time*/) override { m_pInterface->RefreshConfig(); }

 protected:
  /// In Define: declares the elements, with this as the receiver of their events.
  void DefineParameters(const std::vector<Parameter>& parameters, const DefineOwn& own = {}) {
    m_hideModes.Define(parameters);
    addon::DefineParameters(*m_pInterface, parameters, *this, own);
  }
  /// Tells the user by a box with a button to close it.
  void Tell(const std::string& title, const std::string& text,
            MessageBoxIcon icon = kIconWarning) const {
    m_pInterface->MessageBox(title, text, kButtonsOk | icon);
  }

  HideModes m_hideModes;
};

}  // namespace orv::rws::addon
