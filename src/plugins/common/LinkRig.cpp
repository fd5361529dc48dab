#include "plugins/common/LinkRig.h"

#include <cmath>
#include <utility>

#include "plugins/common/History.h"
#include "plugins/common/MeshParts.h"
#include "plugins/common/NodeScale.h"
#include "plugins/common/SaveChunk.h"
#include "unidevice/Control.h"
#include "unidevice/Property.h"
#include "util/CMesh_Box.h"
#include "util/FrameGrid.h"

namespace orv::rws::addon {

using Matrix = util::Matrix<double>;

namespace {

/// Edge length of the cage, which shows the way of a translation by its default maximum (m).
constexpr double kCageSize = 2.0;
/// Thickness of the cage's bars (m).
constexpr double kBarSize = 0.02;
/// No bound for a user, and far from what arithmetic could not hold.
constexpr double kHuge = 1e18;

/// The twelve edges of a cube around the origin.
util::CMesh CageMesh() {
  util::CMesh mesh;
  const double half = kCageSize / 2;
  for (int axis = 0; axis < 3; ++axis)
    for (int edge = 0; edge < 4; ++edge) {
      util::Vector3<double> size(kBarSize, kBarSize, kBarSize);
      util::Vector3<double> centre;
      size[axis] = kCageSize + kBarSize;
      centre[(axis + 1) % 3] = edge & 1 ? half : -half;
      centre[(axis + 2) % 3] = edge & 2 ? half : -half;
      AppendMesh(mesh, util::CMesh_Box(size.x, size.y, size.z, centre));
    }
  return mesh;
}

}  // namespace

CRelativeCageNode::CRelativeCageNode(CCamera& rig)
    : RigMeshNode(rig, "RelativeCageMesh", nullptr, CageMesh()) {}

ActuatorNode::ActuatorNode(CCamera& rig, std::string name, const CRelativeCageNode& cage,
                           util::CMesh mesh)
    : RigMeshNode(rig, std::move(name), &cage, std::move(mesh)), m_cage(cage) {
  SetWritten();
}

void ActuatorNode::Write(double time, const Matrix& local) const {
  WriteKey(time, m_cage.ReadMatrix(time) * local);
}

LinkRig::LinkRig(const CreationRecord& record, const Kind& kind, util::CMesh actuatorMesh)
    : Rig(record),
      m_cage(*this),
      m_actuator(*this, kind.actuatorName, m_cage, std::move(actuatorMesh)),
      m_kind(kind),
      m_channels(kind.channels.size()),
      m_histories(kind.channels.size()) {
  for (std::size_t i = 0; i < m_channels.size(); ++i) {
    m_channels[i].name = kind.channels[i].name;
    m_channels[i].filter.settings.maximum = kind.channels[i].maximum;
  }
  for (const bool* on : {&m_settings.hideHelpers, &m_settings.hideHelpersDuringRecording})
    m_hideModes.SetNodes(*on, {&m_cage, &m_actuator});
}

int LinkRig::Define() {
  using Row = ParameterRow<Settings>;
  static constexpr Row kRows[] = {
      Row::Group("General Modes", "What is shown"),
      Row::Flag(kNotSaved, nullptr, "Hide Helpers", "Hides the cage and the actuator.",
                &Settings::hideHelpers, Hides::kAlways),
      Row::Flag(kNotSaved, nullptr, "Hide Helpers During Recording",
                "Hides the cage and the actuator while a take runs.",
                &Settings::hideHelpersDuringRecording, Hides::kDuringTakes),
      Row::Own(kMoreModes),
      Row::EndGroup(),
      Row::Own(kMore),
      Row::Group("Input Property Parameters", "How each input is turned into movement"),
      Row::Own(kChannels),
      Row::EndGroup(),
  };
  m_pInterface->BeginConfig();
  DefineParameters(ParametersOf(kRows, m_settings), [this](int which) { DefineOwn(which); });
  m_pInterface->EndConfig();
  return 0;
}

void LinkRig::DefineOwn(int which) {
  if (which == kMoreModes) DefineMoreModes();
  if (which == kMore) DefineMore();
  if (which == kChannels)
    for (Channel& channel : m_channels) DefineChannel(channel);
}

/// The labels begin with the channel's name.
std::vector<Parameter> LinkRig::ParametersOfChannel(const std::string& name,
                                                    InputFilterSettings& settings) const {
  using S = InputFilterSettings;
  using Row = ParameterRow<S>;
  const InputFilterKeys& keys = m_kind.keys;
  const Row rows[] = {
      Row::Number(kNotSaved, nullptr, " Response Factor",
                  "How quickly the to respond to input value changes.", &S::responseFactor,
                  {0.0, 1.0, 0.01, 3}),
      Row::Number(kNotSaved, nullptr, " Maximum", "The maximum/minimum value of the input.",
                  &S::maximum, {-kHuge, kHuge, 0.01, 3}),
      Row::Number(2, keys.changeLimit, " Change Limit",
                  "This parameter limits the rate of change (the velocity) of the input.",
                  &S::fChangeLimit, {0.0, kHuge, 0.1, 3}),
      Row::Flag(0, keys.isTrinaryStateValue, " Keep Trinary State",
                "If checked the input value is held until activated again by which it returns to "
                "zero. If an analog input is used the trigger value is 0.5 (or -0.5).",
                &S::bIsTrinaryStateValue),
      Row::Flag(1, keys.isIntegratedValue, " Integrate",
                "If checked the input value is integrated (the value is increased/decreased until "
                "the input value is zero again).",
                &S::bIsIntegratedValue),
  };
  std::vector<Parameter> parameters = ParametersOf(rows, settings);
  for (Parameter& parameter : parameters) parameter.prefix = name.c_str();
  return parameters;
}

void LinkRig::DefineChannel(Channel& channel) {
  channel.input = m_pInterface->AddInput(channel.name, unidevice::kAnyControl);
  DefineParameters(ParametersOfChannel(channel.name, channel.filter.settings));
}

int LinkRig::Create() {
  if (m_cage.Create() != 0 || m_actuator.Create() != 0) return 1;
  return CreateMore();
}

void LinkRig::Start(double time) {
  const double dt = m_pInterface->GetFrameDuration();
  PushVariableUndo(*m_pInterface, m_histories);
  for (std::size_t i = 0; i < m_channels.size(); ++i) {
    InputFilterState& state = m_channels[i].filter.state;
    state = m_histories[i].At(time);
    m_histories[i].Cut(util::frameAfter(time, dt));
    // A later start at this time finds what this one settled on, whatever stood around it.
    m_histories[i].Store(time, state);
  }
  if (m_kind.keepsActuatorScale) m_actuatorScale = ScaleOf(m_actuator.ReadLocalMatrix(time));
  m_hideModes.Start();
}

void LinkRig::Stop() {
  m_hideModes.Stop();
}

void LinkRig::Step(double time) {
  const double dt = m_pInterface->GetFrameDuration();
  for (std::size_t i = 0; i < m_channels.size(); ++i) {
    Channel& channel = m_channels[i];
    channel.filter.Step(channel.input->read(), dt);
    m_histories[i].Store(time, channel.filter.state);
  }
  Matrix local = LocalPose();
  if (m_kind.keepsActuatorScale) ScaleRows(local, m_actuatorScale);
  m_actuator.Write(time, local);
}

int LinkRig::Restore() {
  if (!m_cage.Find() || !m_actuator.Find()) return 1;
  RestoreMore();
  if (LoadBlob() == SaveState::kDamaged) return 1;
  m_hideModes.Restore();
  return 0;
}

SaveState LinkRig::LoadBlob() {
  util::DataChunk chunk;
  const SaveState state = LoadSaveChunk(*m_pInterface, m_kind.chunkName, kSaveVersion, chunk);
  if (state != SaveState::kGood) return state;
  std::vector<InputFilterHistory> histories(m_channels.size());
  std::vector<InputFilterSettings> settings;
  const util::DataChunk& all = chunk.getChunk(m_kind.keys.channels);
  for (std::size_t i = 0; i < m_channels.size(); ++i) {
    settings.push_back(m_channels[i].filter.settings);
    SaveReader reader(all.getChunk(m_channels[i].name));
    histories[i].Load(reader, m_kind.keys);
    LoadParameters(reader, ParametersOfChannel(m_channels[i].name, settings[i]));
    if (!reader.IsGood()) return SaveState::kDamaged;
  }
  m_histories = std::move(histories);
  for (std::size_t i = 0; i < m_channels.size(); ++i) m_channels[i].filter.settings = settings[i];
  return state;
}

int LinkRig::Store() {
  util::DataChunk chunk = MakeSaveChunk(m_kind.chunkName, kSaveVersion);
  util::DataChunk all(m_kind.keys.channels);
  for (std::size_t i = 0; i < m_channels.size(); ++i) {
    util::DataChunk channel(m_channels[i].name);
    m_histories[i].Save(channel, m_kind.keys);
    SaveParameters(channel, ParametersOfChannel(m_channels[i].name, m_channels[i].filter.settings));
    all.addChunk(std::move(channel));
  }
  chunk.addChunk(std::move(all));
  return StoreSaveChunk(*m_pInterface, chunk);
}

void LinkRig::OnCallback(std::string name) {
  m_hideModes.OnCallback(*m_pInterface, *this, name);
}

}  // namespace orv::rws::addon
