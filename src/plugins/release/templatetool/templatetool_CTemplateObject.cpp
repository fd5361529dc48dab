#include "plugins/release/templatetool/templatetool_CTemplateObject.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "core/interface/CSnapshot_Helper.h"
#include "core/interface/CSnapshot_Lens.h"
#include "plugins/common/History.h"
#include "plugins/common/NodeScale.h"
#include "plugins/common/ReplayedEvent.h"
#include "plugins/release/templatetool/templatetool_TemplateReader.h"
#include "unidevice/Property.h"
#include "util/Angles.h"
#include "util/FrameGrid.h"
#include "util/Quat.h"

namespace orv::rws::addon {

using Matrix = util::Matrix<double>;
using Vector = util::Vector3<double>;
using Quat = util::Quat<double>;

namespace {

const char kChunkName[] = "TemplateDataChunk";
const char kHistories[] = "histories";
const char kReInitialize[] = "Re-Initialize";
/// Version of how documents are worked out, as `RigFactory` has one.
constexpr int kInterpreter = 1;
/// A take goes on from memories that end no longer than this before its start (s).
constexpr double kLongestGap = 0.5;
/// Relative difference by which a pose counts as another one than that in memory.
constexpr double kMoved = 1e-7;
// Lenses that a camera can have.
constexpr double kLeastFieldOfView = 0.01;   // degrees
constexpr double kMostFieldOfView = 179.0;   // degrees
constexpr double kMostFocusDistance = 1e18;  // m

/// About X first, then Y, then Z (radians).
Quat FromAngles(const Vector& angles) {
  return Quat::fromRotationVector({angles.x, 0.0, 0.0}) *
         Quat::fromRotationVector({0.0, angles.y, 0.0}) *
         Quat::fromRotationVector({0.0, 0.0, angles.z});
}

/// The angles of a rotation matrix; of the two sets that there are, the one of the smaller turns.
Vector ToAngles(const Matrix& m) {
  using util::kPi;
  const Vector x = m.axisRow(0), y = m.axisRow(1), z = m.axisRow(2);
  const double flat = std::hypot(x.x, x.y);
  if (flat < 1e-9) {  // X stands upright: turns about X and Z are one, and all of it goes to X
    const double turn = std::atan2(-x.z * y.x, y.y);
    return {turn, std::atan2(-x.z, flat), 0.0};
  }
  const Vector first{std::atan2(y.z, z.z), std::atan2(-x.z, flat), std::atan2(x.y, x.x)};
  Vector second;
  second.x = first.x > 0.0 ? first.x - kPi : first.x + kPi;
  second.y = first.y > 0.0 ? kPi - first.y : -kPi - first.y;
  second.z = first.z > 0.0 ? first.z - kPi : first.z + kPi;
  const auto turns = [](const Vector& v) { return std::abs(v.x) + std::abs(v.y) + std::abs(v.z); };
  return turns(second) < turns(first) ? second : first;
}

/// One channel of a pose.
double ChannelOf(Matrix pose, int channel) {
  if (channel < kRotateX) return pose.translation()[channel];
  Vector scale = ScaleOf(pose);
  if (pose.axisRow(0).dot(pose.axisRow(1).cross(pose.axisRow(2))) < 0.0) {
    scale.x = -scale.x;
    pose.setAxisRow(0, -pose.axisRow(0));
  }
  if (channel >= kScaleX) return scale[channel - kScaleX];
  return ToAngles(Quat::fromMatrix(pose).toMatrix())[channel - kRotateX];
}

Matrix ComposePose(const double (&c)[kPoseChannels]) {
  Matrix pose = FromAngles({c[3], c[4], c[5]}).toMatrix();
  ScaleRows(pose, {c[6], c[7], c[8]});
  pose.setTranslation({c[0], c[1], c[2]});
  return pose;
}

bool IsSamePose(const Matrix& a, const Matrix& b) {
  for (int i = 0; i < 16; ++i)
    if (!(std::abs(a[i] - b[i]) <= kMoved * (1.0 + std::abs(a[i])))) return false;
  return true;
}

/// A camera of a template.
class TemplateCameraNode : public RigCameraNode {
 public:
  TemplateCameraNode(CCamera& rig, const TemplateNode& node, const RigSceneNode* parent)
      : RigCameraNode(rig, node.name, parent) {
    lens = node.lens;
  }
};

}  // namespace

CTemplateObject::CTemplateObject(const CreationRecord& record,
                                 std::shared_ptr<const TemplateDefinition> definition)
    : Rig(record),
      m_definition(std::move(definition)),
      m_outputSlot(m_definition->OutputSlot()),
      m_beforeSlot(m_definition->BeforeSlot()),
      m_values(static_cast<std::size_t>(m_definition->SlotCount())),
      m_settings(m_definition->parameters.size()) {
  m_memory.histories.resize(m_definition->outputs.size());
  for (std::size_t i = 0; i < m_settings.size(); ++i) {
    const TemplateParameter& parameter = m_definition->parameters[i];
    m_settings[i].number = parameter.value;
    m_settings[i].on = parameter.value != 0.0;
    if (parameter.kind == ParameterKind::kCount)
      m_settings[i].whole = static_cast<int>(parameter.value);
  }
  MakeNodes();
  MakePrograms();
}

void CTemplateObject::MakeNodes() {
  std::vector<RigSceneNode*> helpers;
  for (const TemplateNode& node : m_definition->nodes) {
    const RigSceneNode* parent =
        node.parent >= 0 ? m_nodes[static_cast<std::size_t>(node.parent)].get() : nullptr;
    if (node.isCamera)
      m_nodes.push_back(std::make_unique<TemplateCameraNode>(*this, node, parent));
    else
      m_nodes.push_back(std::make_unique<RigMeshNode>(*this, node.name, parent, node.mesh));
    if (node.IsMoved()) m_nodes.back()->SetWritten();
    if (node.isHelper) helpers.push_back(m_nodes.back().get());
  }
  m_hasHelpers = !helpers.empty();
  if (!m_hasHelpers) return;
  m_hideModes.SetNodes(m_modes.hideHelpers, helpers);
  m_hideModes.SetNodes(m_modes.hideHelpersDuringRecording, helpers);
}

void CTemplateObject::MakePrograms() {
  const auto fill = [this](core::MathScriptRoot& root, const util::xml::Tag& tree) {
    root.SetValues(m_values.data(), static_cast<int>(m_values.size()));
    if (!tree.name.empty()) root.addChild(core::MathScript::Create(tree));
  };
  for (const TemplateOutput& output : m_definition->outputs) {
    Program& program = m_programs.emplace_back();
    fill(program.expression, output.expression);
    fill(program.start, output.start);
    m_hasMemory = m_hasMemory || (output.isRemembered && output.HasExpression());
  }
}

// --- configuration ---

int CTemplateObject::Define() {
  using Row = ParameterRow<Modes>;
  static constexpr Row kModes[] = {
      Row::Group("General Modes", "What is shown"),
      Row::Flag(kNotSaved, nullptr, "Hide Helpers", "Hides what is there for the animator alone.",
                &Modes::hideHelpers, Hides::kAlways),
      Row::Flag(kNotSaved, nullptr, "Hide Helpers During Recording",
                "Hides the helpers while a take runs.", &Modes::hideHelpersDuringRecording,
                Hides::kDuringTakes),
      Row::EndGroup(),
  };
  m_pInterface->BeginConfig();
  if (m_hasHelpers) DefineParameters(ParametersOf(kModes, m_modes));
  DefineParameters(TemplateParameters());
  if (m_hasMemory)
    m_pInterface->AddButton(kReInitialize,
                            "The next take begins anew, and not from where the rig stood", this);
  m_inputs.clear();
  for (const TemplateInput& input : m_definition->inputs)
    m_inputs.push_back(m_pInterface->AddInput(input.label, input.kinds));
  m_pInterface->EndConfig();
  return 0;
}

/// The template's own, with the groups round them.
std::vector<Parameter> CTemplateObject::TemplateParameters() {
  std::vector<Parameter> all;
  const auto add = [&](ParameterKind kind) -> Parameter& {
    all.emplace_back().kind = kind;
    return all.back();
  };
  int group = -1;
  const auto changeGroup = [&](int next) {
    if (next == group) return;
    if (group >= 0) add(ParameterKind::kEndGroup);
    group = next;
    if (next < 0) return;
    const TemplateGroup& opened = m_definition->groups[static_cast<std::size_t>(next)];
    Parameter& parameter = add(ParameterKind::kGroup);
    parameter.label = opened.label.c_str();
    parameter.tooltip = opened.tooltip.c_str();
  };
  for (std::size_t i = 0; i < m_settings.size(); ++i) {
    const TemplateParameter& told = m_definition->parameters[i];
    changeGroup(told.group);
    Parameter& parameter = add(told.kind);
    parameter.label = told.label.c_str();
    parameter.tooltip = told.tooltip.c_str();
    parameter.range = told.range;
    parameter.asInput = told.asInput;
    parameter.number = &m_settings[i].number;
    parameter.count = &m_settings[i].whole;
    parameter.flag = &m_settings[i].on;
  }
  changeGroup(-1);
  return all;
}

void CTemplateObject::OnCallback(std::string name) {
  if (m_hideModes.OnCallback(*m_pInterface, *this, name)) return;
  const ReplayedEvent event(name);
  // Undo and redo never re-initialise.
  if (!event.IsReplay() && event.label == kReInitialize) {
    PushVariableUndo(*m_pInterface, m_memory.bReInitialize);
    m_memory.bReInitialize = true;
  }
}

// --- nodes ---

int CTemplateObject::Create() {
  const double now = m_pInterface->GetTime();
  for (std::size_t i = 0; i < m_nodes.size(); ++i) {
    if (m_nodes[i]->Create() != 0) return 1;
    const TemplateNode& node = m_definition->nodes[i];
    CNode* const created = m_nodes[i]->GetNode();
    if (node.place != Vector()) {
      Matrix place = m_nodes[i]->ReadMatrix(now);
      place.setTranslation(place.transformPoint(node.place));
      m_nodes[i]->Place(now, place);
    }
    CSnapshot_Helper* const display =
        node.colour ? m_pInterface->GetSnapshotHelper(created) : nullptr;
    if (!display) continue;
    display->SetColor(static_cast<float>(node.colour->x), static_cast<float>(node.colour->y),
                      static_cast<float>(node.colour->z));
    m_pInterface->ReleaseSnapshotHelper(display);
  }
  return 0;
}

Matrix CTemplateObject::ReadPose(std::size_t node, double time) const {
  const Matrix world = m_nodes[node]->ReadMatrix(time);
  const int parent = m_definition->nodes[node].parent;
  if (parent < 0) return world;
  return m_nodes[static_cast<std::size_t>(parent)]->ReadMatrix(time).affineInverse() * world;
}

double CTemplateObject::ReadChannel(std::size_t node, int channel, double time) const {
  if (channel < kPoseChannels) return ChannelOf(ReadPose(node, time), channel);
  CSnapshot_Lens* const lens = m_pInterface->GetSnapshotLens(m_nodes[node]->GetNode(), time);
  if (!lens) return 0.0;
  const double value = channel == kFieldOfView ? lens->GetFieldOfView() : lens->GetFocusDistance();
  m_pInterface->ReleaseSnapshotLens(lens);
  return value;
}

void CTemplateObject::WriteNode(std::size_t index, double time) {
  const TemplateNode& node = m_definition->nodes[index];
  const auto value = [&](int channel) {
    return Value(node.outputs[static_cast<std::size_t>(channel)]);
  };
  if (node.IsMoved()) {
    double channels[kPoseChannels];
    for (int i = 0; i < kPoseChannels; ++i) channels[i] = value(i);
    Matrix pose = ComposePose(channels);
    if (node.parent >= 0)
      pose = m_nodes[static_cast<std::size_t>(node.parent)]->ReadMatrix(time) * pose;
    m_nodes[index]->WriteKey(time, pose);
  }
  const bool hasFieldOfView = node.outputs[kFieldOfView] >= 0;
  const bool hasFocus = node.outputs[kFocusDistance] >= 0;
  if (!hasFieldOfView && !hasFocus) return;
  CSnapshot_Lens* const lens = m_pInterface->GetSnapshotLens(m_nodes[index]->GetNode(), time);
  if (!lens) return;
  if (hasFieldOfView && std::isfinite(value(kFieldOfView)))
    lens->SetFieldOfView(std::clamp(value(kFieldOfView), kLeastFieldOfView, kMostFieldOfView));
  if (hasFocus && std::isfinite(value(kFocusDistance)))
    lens->SetFocusDistance(std::clamp(value(kFocusDistance), 0.0, kMostFocusDistance));
  m_pInterface->ReleaseSnapshotLens(lens);
}

// --- a take ---

/// All slots but those of outputs; inputs at rest.
void CTemplateObject::FillSettings(double time) {
  const TemplateDefinition& d = *m_definition;
  m_values[TemplateDefinition::kTimeSlot] = time;
  m_values[TemplateDefinition::kDurationSlot] = m_pInterface->GetFrameDuration();
  auto slot = m_values.begin() + d.ParameterSlot();
  for (std::size_t i = 0; i < m_settings.size(); ++i) {
    const ParameterKind kind = d.parameters[i].kind;
    const Setting& setting = m_settings[i];
    *slot++ = kind == ParameterKind::kNumber  ? setting.number
              : kind == ParameterKind::kCount ? setting.whole
              : setting.on                    ? 1.0
                                              : 0.0;
  }
  for (const unidevice::Property* input : m_inputs) *slot++ = input->offset;
  for (const TemplateMotion& motion : d.motions)
    *slot++ =
        ChannelOf(m_nodes[static_cast<std::size_t>(motion.node)]->ReadMatrix(time), motion.channel);
}

bool CTemplateObject::IsKept(int output) const {
  const TemplateOutput& o = m_definition->outputs[static_cast<std::size_t>(output)];
  return o.isRemembered || o.node >= 0;
}

void CTemplateObject::Remember(int output, double time) {
  if (IsKept(output) && std::isfinite(Value(output)))
    m_memory.histories[static_cast<std::size_t>(output)].set(time, Value(output));
}

bool CTemplateObject::GoesOn(int output, double time) const {
  const auto& samples = m_memory.histories[static_cast<std::size_t>(output)].samples;
  if (m_memory.bReInitialize || samples.empty() ||
      samples.back().time < time - util::kFrameTolerance)
    return false;
  const auto isBefore = [](const auto& sample, double t) { return sample.time < t; };
  const auto at =
      std::lower_bound(samples.begin(), samples.end(), time - util::kFrameTolerance, isBefore);
  return at != samples.begin() && time - std::prev(at)->time <= kLongestGap;
}

/// Whether the node stands where the rig has put it at this time.
bool CTemplateObject::IsAsRemembered(const TemplateNode& node, std::size_t index,
                                     double time) const {
  double channels[kPoseChannels];
  for (int i = 0; i < kPoseChannels; ++i) {
    const auto& history =
        m_memory.histories[static_cast<std::size_t>(node.outputs[std::size_t(i)])];
    const int at = history.find(time);
    if (at < 0) return false;
    const auto& sample = history.samples[static_cast<std::size_t>(at)];
    if (std::abs(sample.time - time) > util::kFrameTolerance) return false;
    channels[i] = sample.value;
  }
  return IsSamePose(ComposePose(channels), ReadPose(index, time));
}

void CTemplateObject::BeginAnew(int output, double time, bool isAsRemembered) {
  const auto index = static_cast<std::size_t>(output);
  const TemplateOutput& o = m_definition->outputs[index];
  if (o.HasStart())
    Value(output) = m_programs[index].start.Evaluate();
  else if (o.node < 0)
    Value(output) = 0.0;
  else if (isAsRemembered)  // to the bit, which the way through a pose is not
    Value(output) = m_memory.histories[index].value(time);
  else
    Value(output) = ReadChannel(static_cast<std::size_t>(o.node), o.channel, time);
  if (!std::isfinite(Value(output))) Value(output) = 0.0;
}

void CTemplateObject::Start(double time) {
  const TemplateDefinition& d = *m_definition;
  PushVariableUndo(*m_pInterface, m_memory);
  FillSettings(time);
  std::vector<bool> asRemembered(d.nodes.size(), false);
  for (std::size_t i = 0; i < d.nodes.size(); ++i)
    asRemembered[i] = d.nodes[i].IsMoved() && IsAsRemembered(d.nodes[i], i, time);
  const int count = static_cast<int>(d.outputs.size());
  std::vector<bool> isSettled(d.outputs.size(), false);
  for (int i = 0; i < count; ++i) {
    const TemplateOutput& o = d.outputs[static_cast<std::size_t>(i)];
    const bool isOfPose = o.node >= 0 && o.channel < kPoseChannels;
    const bool isSame = isOfPose && asRemembered[static_cast<std::size_t>(o.node)];
    const bool goesOn = IsKept(i) && GoesOn(i, time);
    if (goesOn && isOfPose && !isSame)  // moved by the user since
      Value(i) = ReadChannel(static_cast<std::size_t>(o.node), o.channel, time);
    else if (goesOn)
      Value(i) = m_memory.histories[static_cast<std::size_t>(i)].value(time);
    else if (o.HasStart() || (o.isRemembered && o.readsMemory))
      BeginAnew(i, time, isSame);
    else
      continue;
    isSettled[static_cast<std::size_t>(i)] = true;
    Before(i) = Value(i);
  }
  // What no memory goes into can be computed at once, and may be what others remember.
  for (const bool readsMemory : {false, true}) {
    for (const int i : d.order) {
      const auto index = static_cast<std::size_t>(i);
      if (isSettled[index] || d.outputs[index].readsMemory != readsMemory) continue;
      Value(i) = Before(i) = m_programs[index].expression.Evaluate();
    }
  }
  const double next = util::frameAfter(time, m_pInterface->GetFrameDuration());
  for (int i = 0; i < count; ++i) {
    CutHistory(m_memory.histories[static_cast<std::size_t>(i)], next);
    Remember(i, time);
  }
  m_memory.bReInitialize = false;
  for (std::size_t i = 0; i < d.nodes.size(); ++i) WriteNode(i, time);
  m_hideModes.Start();
}

void CTemplateObject::Stop() {
  m_hideModes.Stop();
}

void CTemplateObject::Step(double time) {
  const TemplateDefinition& d = *m_definition;
  FillSettings(time);
  for (std::size_t i = 0; i < m_inputs.size(); ++i)
    m_values[static_cast<std::size_t>(d.InputSlot()) + i] = m_inputs[i]->read();
  const double before = util::frameBefore(time, m_pInterface->GetFrameDuration());
  const int count = static_cast<int>(d.outputs.size());
  for (int i = 0; i < count; ++i)
    if (d.outputs[static_cast<std::size_t>(i)].isRemembered)
      Before(i) = m_memory.histories[static_cast<std::size_t>(i)].value(before);
  for (const int i : d.order) {
    const bool isComputed = d.outputs[static_cast<std::size_t>(i)].HasExpression();
    Value(i) =
        isComputed ? m_programs[static_cast<std::size_t>(i)].expression.Evaluate() : Before(i);
    Remember(i, time);
  }
  for (std::size_t i = 0; i < d.nodes.size(); ++i) WriteNode(i, time);
}

// --- saving ---

int CTemplateObject::Restore() {
  const TemplateDefinition& d = *m_definition;
  // What only carries may be gone: the rig goes on from the origin. What it moves is needed.
  for (std::size_t i = 0; i < m_nodes.size(); ++i) {
    const TemplateNode& node = d.nodes[i];
    const bool isNeeded =
        node.IsMoved() || node.outputs[kFieldOfView] >= 0 || node.outputs[kFocusDistance] >= 0;
    if (!m_nodes[i]->Find() && isNeeded) return 1;
  }
  if (LoadBlob() == SaveState::kDamaged) return 1;
  m_hideModes.Restore();
  return 0;
}

SaveState CTemplateObject::LoadBlob() {
  util::DataChunk chunk;
  const SaveState state = LoadSaveChunk(*m_pInterface, kChunkName, kSaveVersion, chunk);
  if (state != SaveState::kGood) return state;
  Memory memory;
  memory.histories.resize(m_memory.histories.size());
  SaveReader reader(chunk);
  reader.Read("bReInitialize", memory.bReInitialize);
  if (!reader.IsGood()) return SaveState::kDamaged;
  // By name: the file of the template may have changed since.
  SaveReader histories(chunk.getChunk(kHistories));
  for (std::size_t i = 0; i < memory.histories.size(); ++i)
    if (IsKept(static_cast<int>(i)))
      histories.ReadHistory(m_definition->outputs[i].name, memory.histories[i]);
  if (!histories.IsGood()) return SaveState::kDamaged;
  m_memory = std::move(memory);
  return state;
}

int CTemplateObject::Store() {
  util::DataChunk chunk = MakeSaveChunk(kChunkName, kSaveVersion);
  chunk.addValue("bReInitialize", m_memory.bReInitialize);
  util::DataChunk histories(kHistories);
  for (std::size_t i = 0; i < m_memory.histories.size(); ++i)
    if (IsKept(static_cast<int>(i)))
      AddHistory(histories, m_definition->outputs[i].name, m_memory.histories[i]);
  chunk.addChunk(std::move(histories));
  return StoreSaveChunk(*m_pInterface, chunk);
}

// --- the factory ---

CTemplatePlugin::CTemplatePlugin(TemplateDefinition definition)
    : m_definition(std::make_shared<const TemplateDefinition>(std::move(definition))) {}

// It goes up with the interpreter's, and with the document's.
std::intptr_t CTemplatePlugin::Extension(int code, void* a, void* b) {
  return code == kTellSimulation ? kInterpreter - 1 + m_definition->simulation
                                 : CCameraPlugin::Extension(code, a, b);
}

CCamera* CTemplatePlugin::CreateObject(const CreationRecord& record) {
  return new CTemplateObject(record, m_definition);
}

CCameraPlugin* MakeTemplatePlugin(const std::string& document, std::string& element,
                                  std::string& reason) {
  TemplateReader reader;
  TemplateDefinition definition;
  if (reader.Read(document, definition)) return new CTemplatePlugin(std::move(definition));
  element = reader.GetElement();
  reason = reader.GetReason();
  return nullptr;
}

}  // namespace orv::rws::addon
