// The record from which an instance can be rebuilt.
#include <algorithm>
#include <cmath>

#include "core/config/ConfigElement.h"
#include "core/host/AdaptorInterface.h"
#include "core/host/CoreNode.h"
#include "core/instances/Instance.h"
#include "core/instances/RecordKeys.h"
#include "core/services/Log.h"
#include "core/tools/Tool.h"
#include "unidevice/Property.h"
#include "util/NumberText.h"
#include "util/xml/Base64.h"
#include "util/xml/Tag.h"

namespace orv::rws::core {

namespace {

using namespace record;
using util::xml::Element;
using util::xml::Tag;

Tag BlobTag(const char* name, const std::vector<unsigned char>& bytes) {
  Tag tag(name);
  tag.setAttribute(kSize, std::to_string(bytes.size()));
  tag.setText(util::xml::encodeBase64(bytes.data(), bytes.size()));
  return tag;
}

/// False when the text is no base64. The size attribute decides how many bytes are kept.
bool ReadBlob(const Element& tag, std::vector<unsigned char>& bytes) {
  if (!util::xml::decodeBase64(tag.text(), bytes)) return false;
  int size = 0;
  if (util::parseNumber(tag.attribute(kSize), size) && size >= 0)
    bytes.resize(std::min(bytes.size(), static_cast<std::size_t>(size)));
  return true;
}

bool IsSound(const util::AVar_Linear<double>& track) {
  for (std::size_t i = 0; i < track.samples.size(); ++i) {
    const auto& sample = track.samples[i];
    if (!std::isfinite(sample.time) || !std::isfinite(sample.value)) return false;
    if (i > 0 && !(sample.time > track.samples[i - 1].time)) return false;
  }
  return true;
}

Tag OutputsTag(const std::vector<unidevice::Property*>& properties) {
  Tag outputs(kOutputs);
  for (const unidevice::Property* property : properties) {
    Tag tag(kOutput);
    tag.setAttribute(kName, property->name);
    tag.setAttribute(kValue, util::exactText(property->read()));
    outputs.emplaceChild(std::move(tag));
  }
  return outputs;
}

/// Calls `use` with each child tag of this name, in order.
template <class Use>
void ForEach(const Element& parent, const char* name, Use use) {
  for (const Element* child : parent.children) {
    if (child->isTag(name)) use(*child);
  }
}

}  // namespace

void Instance::WriteRecord(Tag& out) const {
  auto& self = const_cast<Instance&>(*this);  // properties note what they save
  m_pTool->WriteSaveData(out);
  out.setAttribute(kName, m_name);
  if (m_bHasUserData) out.emplaceChild(BlobTag(kSaveData, m_userData));

  Tag config(kConfigProfile);
  m_config.Write(config);
  config.setAttribute(kName, m_currentProfile);
  out.emplaceChild(std::move(config));

  Tag inputs(kInputProfile);
  Tag profile(kProfile);
  profile.setAttribute(kName, m_name);
  Tag tracks(kTracks);
  for (int i = 0; i < m_properties.count(); ++i) {
    unidevice::Property& property = *self.m_properties.property(i);
    Tag tag(kProperty);
    property.save(tag);
    profile.emplaceChild(std::move(tag));
    const auto index = static_cast<std::size_t>(i);
    if (index >= m_tracks.size() || m_tracks[index].samples.empty()) continue;
    std::vector<unsigned char> bytes(m_tracks[index].flatSize());
    m_tracks[index].save(bytes.data(), bytes.size());
    Tag track = BlobTag(kTrack, bytes);
    track.setAttribute(kInput, property.name);
    tracks.emplaceChild(std::move(track));
  }
  inputs.emplaceChild(std::move(profile));
  out.emplaceChild(std::move(inputs));
  out.emplaceChild(std::move(tracks));
  if (!m_outputs.empty()) out.emplaceChild(OutputsTag(m_outputs));

  Tag spinners(kLiveSpinners);
  for (const LiveSpinnerSpan& span : m_liveSpinnerSpans) {
    Tag tag(kLiveSpinner);
    tag.setAttribute(kId, std::to_string(span.elementId));
    tag.setAttribute(kStart, util::exactText(span.start));
    tag.setAttribute(kEnd, util::exactText(span.end));
    spinners.emplaceChild(std::move(tag));
  }
  out.emplaceChild(std::move(spinners));

  Tag nodes(kNodeInfo);
  for (CoreNode* node : GetNodes()) {
    Tag tag(kNode);
    tag.setAttribute(kName, node->GetName());
    tag.setAttribute(kHandle, node->GetTag());
    if (const NodeHandle parent = ParentOf(*node))
      tag.setAttribute(kParent, parent->GetSceneName());
    nodes.emplaceChild(std::move(tag));
  }
  out.emplaceChild(std::move(nodes));
}

std::string Instance::ReadRecord(const Element& record) {
  std::string problem;
  const Element& config = record.child(kConfigProfile);
  if (!config.isEmpty()) {
    problem = m_config.Read(config);
    if (config.hasAttribute(kName)) m_currentProfile = config.attribute(kName);
  }

  ForEach(record.child(kInputProfile).child(kProfile), kProperty, [&](const Element& tag) {
    unidevice::Property* property = m_properties.find(tag.attribute(kName));
    if (property && !property->load(tag))
      problem = "the mapping of the input \"" + property->name + "\" holds no number";
  });

  m_tracks.resize(static_cast<std::size_t>(m_properties.count()));
  ForEach(record.child(kTracks), kTrack, [&](const Element& tag) {
    const std::string input = tag.attribute(kInput);
    if (!m_properties.find(input))
      LogEntry(LogLevel::kWarning, m_name + " has a recorded track of the input \"" + input +
                                       "\", which this rig does not have: it is left out");
    for (int i = 0; i < m_properties.count(); ++i) {
      if (m_properties.property(i)->name != input) continue;
      auto& track = m_tracks[static_cast<std::size_t>(i)];
      std::vector<unsigned char> bytes;
      if (ReadBlob(tag, bytes)) track.load(bytes.data(), bytes.size());
      if (track.flatSize() == bytes.size() && IsSound(track)) return;
      track.samples.clear();
      problem = "the recorded track of the input \"" + input + "\" is damaged";
    }
  });

  ForEach(record.child(kOutputs), kOutput, [&](const Element& tag) {
    for (unidevice::Property* output : m_outputs) {
      if (output->name != tag.attribute(kName)) continue;
      if (!util::parseNumber(tag.attribute(kValue), output->offset))
        problem = "the output \"" + output->name + "\" holds no number";
    }
  });

  ForEach(record.child(kLiveSpinners), kLiveSpinner, [&](const Element& tag) {
    LiveSpinnerSpan span;
    if (util::parseNumber(tag.attribute(kId), span.elementId) &&
        util::parseNumber(tag.attribute(kStart), span.start) &&
        util::parseNumber(tag.attribute(kEnd), span.end)) {
      m_liveSpinnerSpans.push_back(span);
      // The profile holds whole numbers only; the spinner stood between two of them.
      ConfigElement* element = m_config.Find(span.elementId);
      if (element && element->GetKind() == ConfigElement::Kind::kSpinnerInt &&
          static_cast<double>(std::lround(span.end)) == element->GetNumber())
        element->SetNumber(span.end);
    } else {
      problem = "the recorded values of a live spinner are damaged";
    }
  });

  const Element& saved = record.child(kSaveData);
  if (!saved.isEmpty()) {
    m_bHasUserData = true;
    if (!ReadBlob(saved, m_userData)) problem = "the rig's own data is damaged";
  }
  ForEach(record.child(kNodeInfo), kNode, [&](const Element& tag) {
    // Of two with one name the first counts.
    m_nodeTags.emplace(tag.attribute(kName), tag.attribute(kHandle));
  });
  return problem;
}

}  // namespace orv::rws::core
