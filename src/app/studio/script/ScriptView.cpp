#include "app/studio/script/ScriptView.h"

#include <QRect>
#include <algorithm>
#include <array>
#include <iterator>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "adaptor/headless/HeadlessNode.h"
#include "adaptor/headless/Scene.h"
#include "app/studio/StagePane.h"
#include "app/studio/script/ScriptLine.h"
#include "util/Angles.h"
#include "util/NumberText.h"

namespace orv::app {

namespace {

using Json = nlohmann::json;
using rws::adaptor::headless::HeadlessAdaptor;
using rws::adaptor::headless::SceneNode;

Json ViewFailure(const std::string& why) {
  return {{"error", why}};
}

Json NoSuchNode(const std::string& name) {
  return ViewFailure("there is no node \"" + name + "\"");
}

Json PlaceJson(const util::Vector3<double>& v) {
  return {v.x, v.y, v.z};
}

std::array<double, 4> Transformed(const std::array<float, 16>& columns,
                                  const std::array<double, 4>& v) {
  std::array<double, 4> result{};
  for (std::size_t row = 0; row < 4; ++row)
    for (std::size_t column = 0; column < 4; ++column)
      result[row] += columns[4 * column + row] * v[column];
  return result;
}

Json ProjectNode(const ScriptLine& line, StagePane& stage, HeadlessAdaptor& host) {
  SceneNode* const node = host.GetScene().Find(line.Word());
  if (!node) return NoSuchNode(line.Word());
  view::StageView& picture = *stage.GetView();
  const QRect place = picture.GetPlace(picture.GetActive());
  picture.ReadIds({place.topLeft(), QSize(1, 1)});  // brings the camera up to date
  const view::FramePacket& packet = picture.GetPacket();
  const util::Vector3<double> at =
      host.NodeFor(*node).GetWorldPose(stage.GetShownTime()).translation() - packet.origin;
  const auto clip = Transformed(packet.camera.projection,
                                Transformed(packet.camera.view, {at.x, at.y, at.z, 1.0}));
  Json answer{{"x", nullptr}, {"y", nullptr}, {"inside", false}};
  if (clip[3] <= 0.0) return answer;  // behind the eye
  const double x = (0.5 + 0.5 * clip[0] / clip[3]) * place.width();
  const double y = (0.5 - 0.5 * clip[1] / clip[3]) * place.height();
  answer["x"] = place.x() + x;
  answer["y"] = place.y() + y;
  answer["inside"] = x >= 0.0 && y >= 0.0 && x < place.width() && y < place.height();
  return answer;
}

/// The topmost of the pictures at a place of the widget.
std::size_t PictureBelow(const view::StageView& pictures, const QPoint& at) {
  for (std::size_t picture = view::kPictures; picture-- > 0;)
    if (pictures.IsShown(picture) && pictures.GetPlace(picture).contains(at)) return picture;
  return pictures.GetActive();
}

Json PickNode(const ScriptLine& line, StagePane& stage) {
  double x = 0.0, y = 0.0;
  view::StageView& picture = *stage.GetView();
  if (line.words.size() != 2 || !util::parseNumber(line.words[0], x) ||
      !util::parseNumber(line.words[1], y))
    return ViewFailure("pick X Y is wanted");
  if (x < 0.0 || y < 0.0 || x >= picture.width() || y >= picture.height())
    return ViewFailure("the picture is " + std::to_string(picture.width()) + " x " +
                       std::to_string(picture.height()) + " pixels");
  const QPoint at(static_cast<int>(x), static_cast<int>(y));
  const auto ids = picture.ReadIds({at, QSize(1, 1)}, PictureBelow(picture, at));
  const SceneNode* const node = ids.empty() ? nullptr : stage.FindNode(ids.front());
  return {{"node", node ? Json(node->GetName()) : Json()}};
}

/// Choices of the picture: the words, and what is kept for each.
struct Look {
  const char* command;
  const char* key;
  std::map<std::string, std::string> values;
};

const std::vector<Look>& GetLooks() {
  static const std::vector<Look> all{
      {"grid", "grid", {{"on", ""}, {"off", "no"}}},
      {"mouse", "navigation", {{"blender", ""}, {"maya", "maya"}}},
      {"between", "between", {{"on", "yes"}, {"off", ""}}},
      {"panes", "panes", {{"one", ""}, {"columns", "columns"}, {"rows", "rows"}}},
      {"inset", "inset", {{"on", "yes"}, {"off", ""}}},
  };
  return all;
}

constexpr const char* kShadingWords[] = {"plain", "wire", "xray"};

std::string WordIsNone(const std::string& word, const std::string& known) {
  return "\"" + word + "\" is none of" + known;
}

bool ChooseLook(StagePane& stage, const Look& look, const std::string& word, Json& answer) {
  const auto found = look.values.find(word);
  if (found != look.values.end()) {
    stage.Keep(look.key, found->second);
    return true;
  }
  std::string known;
  for (const auto& [name, value] : look.values) known += " " + name;
  answer = ViewFailure(WordIsNone(word, known));
  return false;
}

bool ChooseShading(StagePane& stage, const std::string& word, Json& answer) {
  std::string known;
  for (std::size_t i = 0; i < std::size(kShadingWords); ++i) {
    known += std::string(" ") + kShadingWords[i];
    if (word != kShadingWords[i]) continue;
    stage.SetShading(static_cast<view::Shading>(i));
    return true;
  }
  answer = ViewFailure(WordIsNone(word, known));
  return false;
}

bool SetScriptEye(const ScriptLine& line, view::StageView& picture, Json& answer) {
  view::OrbitEye eye = picture.GetEye();
  for (const auto& [key, text] : line.values) {
    double value = 0.0;
    bool good = false;
    if (key == "target") {
      const std::size_t first = text.find(','), last = text.rfind(',');
      good = first < last && util::parseNumber(text.substr(0, first), eye.target.x) &&
             util::parseNumber(text.substr(first + 1, last - first - 1), eye.target.y) &&
             util::parseNumber(text.substr(last + 1), eye.target.z);
    } else if (util::parseNumber(text, value)) {
      good = true;
      if (key == "distance")
        eye.distance =
            std::clamp(value, view::OrbitEye::kLeastDistance, view::OrbitEye::kMostDistance);
      else if (key == "yaw")
        eye.yaw = value * util::kRadiansPerDegree;
      else if (key == "pitch")
        eye.pitch = value * util::kRadiansPerDegree;
      else
        good = false;
    }
    if (good) continue;
    answer =
        ViewFailure(key + "=" + text +
                    " is not understood (target=X,Y,Z in metres, distance=M, yaw=DEG, pitch=DEG)");
    return false;
  }
  picture.SetEye(eye);
  return true;
}

Json PictureState(const StagePane& stage) {
  const view::StageView& picture = *stage.GetView();
  const view::OrbitEye& eye = picture.GetEye();
  const SceneNode* const through = stage.GetLookThrough();
  return {{"width", picture.width()},
          {"height", picture.height()},
          {"look", through ? Json(through->GetName()) : Json()},
          {"eye",
           {{"target", PlaceJson(eye.target)},
            {"distance", eye.distance},
            {"yaw", eye.yaw / util::kRadiansPerDegree},
            {"pitch", eye.pitch / util::kRadiansPerDegree}}},
          {"shading", kShadingWords[static_cast<std::size_t>(picture.GetShading())]},
          {"grid", picture.IsGridVisible()},
          {"inset", picture.IsInsetVisible()}};
}

Json ChangeView(const ScriptLine& line, StagePane& stage, HeadlessAdaptor& host) {
  view::StageView& picture = *stage.GetView();
  const std::string what = line.Word();
  const std::string value = line.words.size() > 1 ? line.words[1] : std::string();
  Json answer;
  if (what.empty()) return PictureState(stage);
  if (what == "frame-all") {
    picture.FrameAll();
  } else if (what == "frame-selected") {
    picture.FrameSelected();
  } else if (what == "look") {
    const SceneNode* const node = value.empty() ? nullptr : host.GetScene().Find(value);
    if (!value.empty() && !node) return NoSuchNode(value);
    if (node && !node->GetLens()) return ViewFailure("\"" + value + "\" is no camera");
    stage.LookThrough(node);
  } else if (what == "eye") {
    if (!SetScriptEye(line, picture, answer)) return answer;
    stage.LookThrough(nullptr);
  } else if (what == "shading") {
    if (!ChooseShading(stage, value, answer)) return answer;
  } else {
    std::string known = " frame-all frame-selected look eye shading";
    for (const Look& look : GetLooks()) {
      if (what == look.command)
        return ChooseLook(stage, look, value, answer) ? PictureState(stage) : answer;
      known += std::string(" ") + look.command;
    }
    return ViewFailure(WordIsNone(what, known));
  }
  return PictureState(stage);
}

}  // namespace

Json RunViewCommand(const ScriptLine& line, StagePane& stage, HeadlessAdaptor& host) {
  if (!stage.GetView()) {
    const std::string& problem = stage.GetProblem();
    return ViewFailure("there is no picture: " +
                       (problem.empty() ? "its window is closed" : problem));
  }
  if (line.verb == "project") return ProjectNode(line, stage, host);
  if (line.verb == "pick") return PickNode(line, stage);
  return ChangeView(line, stage, host);
}

}  // namespace orv::app
