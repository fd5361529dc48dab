// Readers of the files that carry animation to other programs, written from their formats alone.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "util/Matrix.h"

namespace orv::tests {

/// Keys in frames or seconds, straight lines between them, held outside.
struct DeliveredCurve {
  std::vector<double> times, values;

  void add(double time, double value) {
    EXPECT_TRUE(times.empty() || time > times.back()) << time;
    times.push_back(time);
    values.push_back(value);
  }
  double at(double time) const {
    const auto next = std::upper_bound(times.begin(), times.end(), time);
    if (next == times.begin()) return values.at(0);
    const auto i = static_cast<std::size_t>(next - times.begin());
    if (next == times.end()) return values.back();
    const double part = (time - times[i - 1]) / (times[i] - times[i - 1]);
    return values[i - 1] + part * (values[i] - values[i - 1]);
  }
};

struct DeliveredNode {
  std::string name, parent;
  std::map<std::string, DeliveredCurve> channels;  ///< "tx" to "sz", "v", and of a lens "fl", "fd"
  std::map<std::string, std::string> shape;        ///< its attributes' texts; "type" among them
};

struct DeliveredFile {
  std::vector<DeliveredNode> nodes;  ///< in the file's order
  std::map<std::string, std::string> head;
  double metre = 1.0, first = 0.0, last = 0.0;

  DeliveredNode& node(const std::string& name) {
    for (DeliveredNode& node : nodes)
      if (node.name == name) return node;
    ADD_FAILURE() << "no node " << name;
    return nodes.at(0);
  }
  void addNode(const std::string& name, const std::string& parent) {
    EXPECT_TRUE(std::regex_match(name, std::regex("[A-Za-z_][A-Za-z0-9_]*"))) << name;
    for (const DeliveredNode& node : nodes) EXPECT_NE(node.name, name);
    nodes.push_back({name, parent, {}, {}});
  }
  /// In the file's unit.
  util::Matrix<double> world(const std::string& name, double time) {
    const DeliveredNode& n = node(name);
    const auto value = [&](const char* channel) { return n.channels.at(channel).at(time); };
    util::Matrix<double> local;
    for (int i = 0; i < 3; ++i) {
      const char* const scales[] = {"sx", "sy", "sz"};
      const char* const angles[] = {"rx", "ry", "rz"};
      util::Vector3<double> axis;
      axis[i] = value(scales[i]);
      for (int about = 0; about < 3; ++about) {  // X acts first
        const double angle = value(angles[about]) * std::acos(-1.0) / 180.0;
        const int j = (about + 1) % 3, k = (about + 2) % 3;
        const double y = axis[j], z = axis[k];
        axis[j] = y * std::cos(angle) - z * std::sin(angle);
        axis[k] = y * std::sin(angle) + z * std::cos(angle);
      }
      local.setAxisRow(i, axis);
    }
    local.setTranslation({value("tx"), value("ty"), value("tz")});
    return n.parent.empty() ? local : world(n.parent, time) * local;
  }
};

/// Words, quoted texts (with one quote ahead) and single signs out of `signs`.
inline std::vector<std::string> wordsOf(const std::string& text, const std::string& signs) {
  std::vector<std::string> words;
  for (std::size_t i = 0; i < text.size();) {
    const std::size_t start = i;
    if (std::isspace(static_cast<unsigned char>(text[i])) != 0) {
      ++i;
    } else if (text[i] == '"') {
      i = text.find('"', i + 1);
      if (i == text.npos) throw std::runtime_error("a quote is open");
      words.push_back(text.substr(start, i++ - start));
    } else if (signs.find(text[i]) != signs.npos) {
      words.push_back(text.substr(i++, 1));
    } else {
      while (i < text.size() && std::isspace(static_cast<unsigned char>(text[i])) == 0 &&
             signs.find(text[i]) == signs.npos && text[i] != '"')
        ++i;
      words.push_back(text.substr(start, i - start));
    }
  }
  return words;
}

/// "key value key value".
inline std::map<std::string, std::string> pairsOf(const std::string& text) {
  std::map<std::string, std::string> pairs;
  std::istringstream words(text);
  for (std::string key; words >> key;) words >> pairs[key];
  return pairs;
}

/// A text that is read word by word; what does not belong there throws.
struct WordReader {
  std::vector<std::string> words;
  std::size_t at = 0;

  const std::string& peek() const { return words.at(at); }
  std::string next() { return words.at(at++); }
  bool takes(const std::string& word) {
    if (at == words.size() || words[at] != word) return false;
    ++at;
    return true;
  }
  void expect(const std::string& text) {
    std::istringstream wanted(text);
    for (std::string word; wanted >> word;)
      if (!takes(word)) throw std::runtime_error(word + " is wanted, not " + peek());
  }
  double number() {
    const std::string word = next();
    std::size_t end = 0;
    const double value = std::stod(word, &end);
    if (end != word.size() || !std::isfinite(value)) throw std::runtime_error(word);
    return value;
  }
};

inline DeliveredFile readAnim(const std::string& text) {
  static const auto kLetters = pairsOf(
      "translateX tx translateY ty translateZ tz rotateX rx rotateY ry rotateZ rz scaleX sx "
      "scaleY sy scaleZ sz visibility v focalLength fl focusDistance fd");
  DeliveredFile file;
  WordReader in{wordsOf(text, ";{}")};
  for (const char* key : {"animVersion", "mayaVersion", "timeUnit", "linearUnit", "angularUnit",
                          "startTime", "endTime"}) {
    in.expect(key);
    file.head[key] = in.next();
    in.expect(";");
  }
  file.metre = file.head["linearUnit"] == "cm" ? 100.0 : 0.0;
  file.first = std::stod(file.head["startTime"]);
  file.last = std::stod(file.head["endTime"]);
  std::vector<std::string> path;
  std::map<std::string, double> childrenTold, children;
  while (in.takes("anim")) {
    const std::string full = in.next(), leaf = in.next(), name = in.next();
    const auto depth = static_cast<std::size_t>(in.number());
    if (file.nodes.empty() || file.nodes.back().name != name) {
      EXPECT_LE(depth, path.size()) << name;
      path.resize(depth);
      const std::string parent = path.empty() ? "" : path.back();
      ++children[parent];
      path.push_back(name);
      file.addNode(name, parent);
    }
    childrenTold[name] = in.number();
    DeliveredNode& node = file.nodes.back();
    EXPECT_EQ(in.number(), static_cast<double>(node.channels.size())) << "the curve's number";
    EXPECT_TRUE(full == leaf || full == leaf.substr(0, leaf.size() - 1) + "." + leaf) << full;
    DeliveredCurve& curve = node.channels[kLetters.at(leaf)];
    in.expect("; animData { input time ; output");
    in.expect(full[0] == 'r'                              ? "angular"
              : full[0] == 't' || leaf == "focusDistance" ? "linear"
                                                          : "unitless");
    in.expect("; weighted 0 ; preInfinity constant ; postInfinity constant ; keys {");
    while (!in.takes("}")) {
      const double time = in.number();
      curve.add(time, in.number());
      in.expect("linear linear 1 1 0 ;");
    }
    in.expect("}");
  }
  EXPECT_EQ(in.at, in.words.size()) << in.peek();
  for (const auto& [name, count] : childrenTold) EXPECT_EQ(count, children[name]) << name;
  return file;
}

inline DeliveredFile readMayaAscii(std::string text) {
  EXPECT_EQ(text.rfind("//Maya ASCII ", 0), 0u);
  std::string code;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    EXPECT_LT(line.size(), 200u);
    if (line.rfind("//", 0) != 0) code += line + "\n";
  }
  struct Object {
    std::string type, name, parent;
    std::map<std::string, std::vector<std::string>> attributes;
  };
  std::vector<Object> objects;
  std::map<std::string, std::size_t> places;
  std::vector<std::pair<std::string, std::string>> links;
  DeliveredFile file;
  WordReader in{wordsOf(code, ";")};
  while (in.at < in.words.size()) {
    const std::string verb = in.next();
    std::vector<std::string> words;
    for (; !in.takes(";"); in.next())
      words.push_back(in.peek()[0] == '"' ? in.peek().substr(1) : in.peek());
    if (verb == "currentUnit") {
      EXPECT_EQ(words.at(1) + words.at(3), "centimeterdegree");
      file.head["timeUnit"] = words.at(5);
      file.metre = 100.0;
    } else if (verb == "createNode") {
      EXPECT_EQ(words.at(1), "-n");
      EXPECT_TRUE(places.emplace(words.at(2), objects.size()).second) << words[2];
      EXPECT_TRUE(words.size() == 3 || places.count(words.at(4)) == 1) << words[2];
      objects.push_back({words[0], words[2], words.size() > 3 ? words[4] : "", {}});
    } else if (verb == "setAttr") {
      auto name = words.begin();
      while ((*name)[0] != '.') ++name;
      const std::string attribute = name->substr(0, name->find('['));
      // Some only say how long an attribute gets.
      if (name + 1 != words.end() && *(name + 1) == "-type") name += 2;
      auto& values = objects.back().attributes[attribute];
      values.insert(values.end(), name + 1, words.end());
    } else if (verb == "connectAttr") {
      links.emplace_back(words.at(0), words.at(1));
    } else {
      EXPECT_EQ(verb, "requires");
    }
  }
  const auto firstOf = [](const Object& object, const char* attribute) {
    const auto found = object.attributes.find(attribute);
    return found == object.attributes.end() ? std::string() : found->second.at(0);
  };
  for (const Object& object : objects) {
    if (object.type == "transform") {
      file.addNode(object.name, object.parent);
      auto& channels = file.nodes.back().channels;
      for (const char* group : {"t", "r", "s"})
        for (std::size_t i = 0; i < 3; ++i)
          channels[group + std::string(1, "xyz"[i])].add(
              0.0, std::stod(object.attributes.at(std::string(".") + group).at(i)));
      channels["v"].add(0.0, firstOf(object, ".v") == "no" ? 0.0 : 1.0);
    } else if (object.type == "script") {
      const auto words = wordsOf(firstOf(object, ".b"), ";");
      file.first = std::stod(words.at(2));
      file.last = std::stod(words.at(4));
    } else if (!object.parent.empty()) {
      auto& shape = file.node(object.parent).shape;
      shape["type"] = object.type;
      for (const auto& [name, values] : object.attributes)
        for (const std::string& value : values) shape[name] += value + " ";
    }
  }
  for (const auto& [from, to] : links) {
    if (to == ":initialShadingGroup.dsm") continue;
    const Object& curve = objects.at(places.at(from.substr(0, from.find('.'))));
    const std::string letters = to.substr(to.find('.') + 1);
    EXPECT_EQ(curve.type, letters[0] == 'r'   ? "animCurveTA"
                          : letters[0] == 't' ? "animCurveTL"
                                              : "animCurveTU");
    EXPECT_EQ(firstOf(curve, ".tan"), "2") << "linear";
    DeliveredCurve keyed;
    const auto& keys = curve.attributes.at(".ktv");
    for (std::size_t i = 0; i < keys.size(); i += 2)
      keyed.add(std::stod(keys[i]), std::stod(keys.at(i + 1)));
    file.node(to.substr(0, to.find('.'))).channels.at(letters) = keyed;
  }
  return file;
}

/// Reads what stands between brackets as words, brackets left out.
inline std::vector<std::string> readUsdValue(WordReader& in) {
  std::vector<std::string> values;
  int depth = 0;
  do {
    const std::string word = in.next();
    const std::string brackets = "[(])";
    const std::size_t kind = word.size() == 1 ? brackets.find(word) : brackets.npos;
    if (kind == brackets.npos && word != ",") values.push_back(word);
    if (kind != brackets.npos) depth += kind < 2 ? 1 : -1;
  } while (depth > 0);
  return values;
}

inline void readUsdPrim(WordReader& in, DeliveredFile& file, const std::string& parent) {
  static const auto kTypes = pairsOf(
      "visibility token xformOp:translate double3 xformOp:rotateXYZ double3 xformOp:scale double3 "
      "xformOpOrder token[] faceVertexCounts int[] faceVertexIndices int[] points point3f[] "
      "extent float3[] primvars:displayColor color3f[] subdivisionScheme token "
      "clippingRange float2 focalLength float focusDistance float horizontalAperture float "
      "verticalAperture float projection token curveVertexCounts int[] type token wrap token");
  const std::set<std::string> uniform{"xformOpOrder", "subdivisionScheme", "type", "wrap"};
  const std::string type = in.next(), name = in.next().substr(1);
  if (type == "Xform") {
    file.addNode(name, parent);
    file.nodes.back().channels["v"].add(0.0, 1.0);
  } else {
    file.node(parent).shape["type"] = type;
  }
  in.expect("{");
  while (!in.takes("}")) {
    if (in.takes("def")) {
      readUsdPrim(in, file, type == "Xform" ? name : throw std::runtime_error("below a shape"));
      continue;
    }
    const bool isUniform = in.takes("uniform");
    std::string declared = in.next();
    if (in.takes("[")) declared += "[" + in.next();
    std::string property = in.next();
    const std::size_t dot = property.find(".timeSamples");
    property = property.substr(0, dot);
    EXPECT_EQ(declared, kTypes.at(property)) << property;
    EXPECT_EQ(isUniform, uniform.count(property) == 1) << property;
    in.expect("=");
    std::vector<std::pair<double, std::vector<std::string>>> samples;
    if (dot == property.npos) {
      samples.emplace_back(0.0, readUsdValue(in));
    } else {
      in.expect("{");
      for (; !in.takes("}"); in.expect(",")) {
        const std::string time = in.next();
        EXPECT_EQ(time.back(), ':');
        samples.emplace_back(std::stod(time), readUsdValue(in));
      }
    }
    if (type != "Xform") {
      for (const std::string& word : samples[0].second)
        file.node(parent).shape[property] += word + " ";
    } else if (property == "visibility") {
      EXPECT_EQ(samples[0].second.at(0), "\"invisible");
      file.node(name).channels["v"].values = {0.0};
    } else if (property == "xformOpOrder") {
      EXPECT_EQ(samples[0].second,
                (std::vector<std::string>{"\"xformOp:translate", "\"xformOp:rotateXYZ",
                                          "\"xformOp:scale"}));
    } else {
      for (const auto& [time, values] : samples)
        for (std::size_t i = 0; i < 3; ++i)
          file.node(name).channels[property[8] + std::string(1, "xyz"[i])].add(
              time, std::stod(values.at(i)));
    }
  }
}

inline DeliveredFile readUsda(const std::string& text) {
  EXPECT_EQ(text.rfind("#usda 1.0\n", 0), 0u);
  DeliveredFile file;
  WordReader in{wordsOf(text.substr(text.find('\n')), "(){}[]=,")};
  in.expect("(");
  while (!in.takes(")")) {
    const std::string key = in.next();
    in.expect("=");
    file.head[key] = in.next();
  }
  file.metre = 1.0 / std::stod(file.head.at("metersPerUnit"));
  file.first = std::stod(file.head.at("startTimeCode"));
  file.last = std::stod(file.head.at("endTimeCode"));
  while (in.takes("def")) readUsdPrim(in, file, "");
  EXPECT_EQ(in.at, in.words.size());
  return file;
}

}  // namespace orv::tests
