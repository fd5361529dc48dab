// Reads the files of template tools.
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "plugins/release/templatetool/templatetool_TemplateDefinition.h"

namespace orv::rws::addon {

/// Reads one document and checks all of it: what a rig is made of afterwards can't fail. The first
/// thing that is wrong is told by the element that it stands in and a reason.
class TemplateReader {
 public:
  /// False, with element and reason filled, when the document is damaged; then `definition` is not
  /// to be used.
  bool Read(const std::string& document, TemplateDefinition& definition);
  /// Way to the element, such as `template/outputs/output "angle"/add`.
  const std::string& GetElement() const { return m_element; }
  const std::string& GetReason() const { return m_reason; }

 private:
  using Element = util::xml::Element;
  using Names = std::vector<std::string>;

  /// What a name stands for in an expression, and which of its kind it is.
  struct Meaning {
    enum Kind { kTime, kDuration, kParameter, kInput, kMotion, kOutput };
    Kind kind;
    int index;
  };
  /// The element that is being read; it stands in the message until the scope ends.
  class Place {
   public:
    Place(TemplateReader& reader, const Element& element);
    ~Place() { m_reader.m_path.pop_back(); }
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;

   private:
    TemplateReader& m_reader;
  };
  /// What an expression stands in.
  struct Use {
    int output;
    bool isStart;
  };

  bool Refuse(const std::string& reason);
  bool RefuseText(const Element& text);
  bool RefuseSecond(const Element& first, const Element& second);
  bool CheckShape(const Element& element, const Names& attributes, const Names& children);
  bool ReadText(const Element& element, const char* attribute, std::string& text);
  bool ReadNumber(const Element& element, const char* attribute, double& number);
  bool ReadWhole(const Element& element, const char* attribute, int& number);
  bool ReadFlag(const Element& element, const char* attribute, bool& flag);
  bool ReadVector(const Element& element, const char* attribute, util::Vector3<double>& vector);
  bool TakeName(const std::string& name, const Meaning& meaning);
  int SlotOf(const Meaning& meaning) const;
  bool TakeLabel(const std::string& label);

  bool ReadHead(const Element& root);
  bool ReadParameters(const Element& section, int group);
  bool ReadParameter(const Element& element, int group);
  bool ReadRange(const Element& element, TemplateParameter& parameter);
  bool ReadInputs(const Element& section);
  bool ReadInput(const Element& element);
  bool ReadMotions(const Element& section);
  bool ReadMotion(const Element& element);
  bool ReadNodes(const Element& section);
  bool ReadNode(const Element& element);
  bool ReadShape(const Element& element, TemplateNode& node);
  bool ReadOutputHeads(const Element& section);
  bool ReadOutputHead(const Element& element);
  void HoldTheRestOfPoses();
  bool ReadOutputs(const Element& section);
  bool ReadOutput(const Element& element, int index);
  bool ReadStart(const Element& element, util::xml::Tag& start, int index);
  bool ReadExpression(Element& element, const Use& use);
  bool ReadReference(Element& element, const Use& use);
  bool ReadBefore(Element& element, const Use& use);
  bool SortOutputs();
  void RefuseCircle(const std::vector<int>& missing);
  int FindNode(const std::string& name) const;
  void FindCarriedNodes();

  TemplateDefinition* m_definition = nullptr;
  std::map<std::string, Meaning> m_names;
  std::map<std::string, int> m_nodes;  ///< by name, which of the definition
  std::vector<bool> m_isCarried;       ///< by node: an output moves it or what it hangs on
  std::set<std::string> m_labels;      ///< of parameters
  std::set<std::string> m_inputLabels;
  std::vector<std::vector<int>> m_reads;  ///< by output: those that it reads in the same frame
  Names m_path;
  std::string m_element;
  std::string m_reason;
};

}  // namespace orv::rws::addon
