// What commands of the command language have in common.
#pragma once
#include <map>
#include <string>
#include <vector>

#include "Scene.h"
#include "State.h"

namespace mayahost {
using Words = std::vector<std::string>;
struct Args {
  std::map<std::string, Words> flags;  ///< by short name
  Words rest;
  bool bad = false;
  bool Has(const char* flag) const { return flags.count(flag) > 0; }
  std::string operator[](const char* flag) const { return Has(flag) && !flags.at(flag).empty() ? flags.at(flag)[0] : ""; }
  double Number(const char* flag, double fallback = 0) const { return Has(flag) ? MString((*this)[flag].c_str()).asDouble() : fallback; }
};
/// Flags by a text such as "q/query n/name:1"; what is asked has no values, unless the count has a '!' behind it.
Args Sort(const Words& words, const std::string& known);
std::string Text(double value);
/// Says an error; false.
bool Fail(const std::string& text);
bool IsOn(const std::string& word);
/// Nodes by names; or those selected. Says so of one that isn't there.
bool Find(const Words& names, std::vector<MSelectionList::Item>& found);
PlugRef FindPlug(const std::string& text);
/// What one of the user's units is inside.
double Unit(const PlugRef& plug);
/// The type of an attribute as `addAttr` and `setAttr` name it.
std::string TypeText(const Attr& attr);
std::string NameOf(const MSelectionList::Item& item);
void Selected(const MSelectionList& list);
using Builtin = bool (*)(const Words&, Words&);
/// Commands on nodes, attributes, keys and plug-ins.
const std::map<std::string, Builtin>& NodeCommands();
/// Commands on files, references and namespaces.
const std::map<std::string, Builtin>& FileCommands();
}  // namespace mayahost
