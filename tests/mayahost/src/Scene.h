// What the stand-in keeps: nodes, their attributes, values and connections, and what takes changes back.
#pragma once
#define MNoPluginEntry
#define MNoVersionString
#include <maya/MDagPath.h>
#include <maya/MFnPlugin.h>
#include <maya/MMatrix.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>
#include <maya/MPoint.h>
#include <maya/MPxNode.h>
#include <maya/MSelectionList.h>
#include <maya/MTime.h>
#include <maya/MTransformationMatrix.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace mayahost {

/// Geometry, never changed once it is a node's: points of meshes in single precision.
struct Shape {
  std::vector<float> points;          ///< of a mesh, three each (cm)
  std::vector<int> counts, connects;  ///< of its faces
  std::vector<float> u, v;            ///< of its one set of texture coordinates
  std::vector<int> uvs;               ///< which of them each face's corner has; below zero: none
  std::vector<MPoint> cvs;            ///< of curves and surfaces
  std::vector<double> knots, vKnots;
  int degree = 1, form = 1, vDegree = 1, vForm = 1;
};
using ShapePtr = std::shared_ptr<const Shape>;

struct Thing : std::enable_shared_from_this<Thing> {
  explicit Thing(MFn::Type t) : type(t) {}
  virtual ~Thing() = default;
  virtual bool Has(MFn::Type fn) const;
  MFn::Type type;
};
using ThingPtr = std::shared_ptr<Thing>;

struct Data : Thing {
  using Thing::Thing;
  std::string text;
  std::vector<std::string> texts;
  std::vector<double> numbers;
  MMatrix matrix;
  ShapePtr shape;
};
using DataPtr = std::shared_ptr<Data>;

/// Elements of a shape, for what they are by its type.
struct Component : Thing {
  using Thing::Thing;
  bool Has(MFn::Type fn) const override { return fn == MFn::kComponent || fn == MFn::kSingleIndexedComponent || Thing::Has(fn); }
  std::set<int> elements;
  std::optional<int> complete;  ///< how many there are, where all are meant
};
using ComponentPtr = std::shared_ptr<Component>;
/// "vtx[2:4]" of a shape; null where the words are none of a component.
ComponentPtr ParseComponent(const MDagPath& path, const std::string& text);
/// "vtx[2:4]" and so on, each run of elements by itself.
std::vector<std::string> RunsOf(const Component& component);

struct Value {
  double number = 0.0;  ///< cm, rad, s
  DataPtr data;
};

enum AttrFlag : unsigned {
  kReadable = 1,
  kWritable = 2,
  kConnectable = 4,
  kStorable = 8,
  kCached = 16,
  kIsArray = 32,
  kKeyable = 64,
  kHidden = 128,
  kChannelBox = 256,
  kDynamicAttr = 512,
  kWorldSpaceAttr = 1024,
  kInternal = 2048,
  kUsedAsColor = 4096,
  kIndeterminant = 8192,
  kBuilder = 16384,
  kRender = 32768,
  kAppearance = 65536,
  kLockedPlug = 131072,
  kAffectsWorld = 262144,
  kFileName = 524288,
  kIndexIgnored = 1048576
};

struct Attr : Thing {
  using Thing::Thing;
  std::string name, brief, nice;
  int subtype = 0;  ///< of numbers, units and data, as their function sets number them
  unsigned flags = kReadable | kWritable | kConnectable | kStorable | kCached;
  double fallback = 0.0;
  DataPtr fallbackData;
  std::optional<double> min, max;
  std::map<short, std::string> fields;
  std::vector<std::shared_ptr<Attr>> children;
  Attr* parent = nullptr;
  std::vector<Attr*> affects;
  bool computed = false;  ///< something affects it
  int disconnect = 2;
  std::optional<double> softMin, softMax;
  std::set<std::string> categories;
  std::set<int> accepted;  ///< by a generic one: MFnData's kinds, MFnNumericData's below zero
  bool Is(AttrFlag f) const { return flags & f; }
  bool IsData() const { return type == MFn::kTypedAttribute || type == MFn::kMatrixAttribute || type == MFn::kGenericAttribute; }
  bool IsCompound() const { return !children.empty() || type == MFn::kCompoundAttribute; }
};
using AttrPtr = std::shared_ptr<Attr>;

struct NodeType {
  std::string name;
  MFn::Type fn = MFn::kDependencyNode;
  const NodeType* base = nullptr;
  unsigned id = 0;
  std::vector<AttrPtr> attrs;
  std::map<std::string, AttrPtr> byName;  ///< also inherited ones, by long and short names
  MCreatorFunction creator = nullptr;
  std::string plugin;
  bool IsA(const std::string& other) const { return name == other || (base && base->IsA(other)); }
};

/// Attributes along the way that have several values carry an index each.
using PlugKey = std::pair<Attr*, std::vector<int>>;
struct PlugRef {
  Node* node = nullptr;
  Attr* attr = nullptr;
  std::vector<int> idx;
  PlugKey Key() const { return {attr, idx}; }
  bool operator==(const PlugRef& o) const { return node == o.node && attr == o.attr && idx == o.idx; }
};

struct Key {
  long long ticks = 0;
  double value = 0.0;
  double x[2] = {1, 1}, y[2] = {0, 0};  ///< tangents (s, value): in, out
  short type[2] = {2, 2};
  bool tied = true;  ///< both tangents turn together
  bool weightTied = true, breakdown = false;
};
struct Curve {
  std::vector<Key> keys;
  int pre = 0, post = 0;
  bool weighted = false;
};
double Evaluate(const Curve& curve, double seconds);
/// Gives the tangents that are not fixed their directions.
void SetTangents(Curve& curve, std::size_t from, std::size_t to);

/// A node of a reference as its file has it; what differs are edits.
struct Origin {
  std::map<PlugKey, Value> values;
  std::map<PlugKey, unsigned> flags;
  std::map<PlugKey, PlugRef> inputs;  ///< only to be compared
  std::size_t dynamic = 0;
  Node* parent = nullptr;  ///< only to be compared
  std::string path;
};

struct Node : Thing {
  using Thing::Thing;
  bool Has(MFn::Type fn) const override;
  bool IsDag() const { return info->IsA("dagNode"); }
  std::shared_ptr<Node> Ptr() { return std::static_pointer_cast<Node>(shared_from_this()); }
  const NodeType* info = nullptr;
  std::string name, uuid;  ///< with its namespace
  int serial = 0;
  bool inScene = false, locked = false, doNotWrite = false, isDefault = false;
  Node* reference = nullptr;       ///< whose file it is from
  std::unique_ptr<Origin> origin;  ///< of one from such a file
  bool unloaded = false;           ///< of a reference
  std::string edits;               ///< of one that isn't loaded: what was done to its nodes
  std::vector<AttrPtr> dynamic;
  std::map<PlugKey, Value> values;
  std::map<PlugKey, PlugRef> inputs;
  std::map<PlugKey, std::vector<PlugRef>> outputs;
  std::map<PlugKey, unsigned> flags;  ///< of plugs that differ from their attributes
  std::vector<std::pair<std::string, PlugKey>> aliases;
  std::vector<std::shared_ptr<Node>> children;
  std::vector<Node*> parents;
  ShapePtr shape;
  std::unique_ptr<Curve> curve;
  std::vector<MSelectionList::Item> members;  ///< of a set
  std::shared_ptr<MPxNode> user;
  std::set<PlugKey> clean;
  std::string raw, rawTies;  ///< of a node of an unknown type: its parts of the file
  bool readsTime = false;
};
using NodePtr = std::shared_ptr<Node>;

/// What was done, to be taken back and done again.
struct Journal {
  struct Step {
    std::function<void()> undo, redo;
  };
  std::vector<Step> steps;
  void Undo();
  void Redo();
};
/// While it lives, changes go to a journal (null: to none).
class Recording {
 public:
  explicit Recording(Journal* journal);
  ~Recording();
  Recording(const Recording&) = delete;

 private:
  Journal* m_before;
};
/// Does it, and notes it in the journal that records, if any.
void Do(std::function<void()> redo, std::function<void()> undo);
Journal* CurrentJournal();

struct Scene {
  Scene();
  ~Scene();
  std::map<int, NodePtr> nodes;  ///< in the order of their making
  std::multimap<std::string, Node*> byName;
  std::set<std::string> namespaces;  ///< absolute, without a colon ahead
  std::string currentNamespace, file;
  std::map<std::string, std::string> info;  ///< what programs note in the file
  NodePtr world, time;
  MSelectionList selection;
  long long now = 0, minTime, maxTime, startTime, endTime;
  MTime::Unit timeUnit = MTime::kFilm;
  MDistance::Unit lengthUnit = MDistance::kCentimeters;
  MAngle::Unit angleUnit = MAngle::kDegrees;
  bool yUp = true, modified = false;
  int nextSerial = 1, nextUuid = 1;
};
Scene& TheScene();
/// A scene as after starting: default nodes only. Says nothing to anybody.
void ClearScene();

// Types.
const char* KindName(MFn::Type type);
const NodeType* FindType(const std::string& name);
const NodeType* FindType(unsigned id);
NodeType& AddType(const std::string& name, MFn::Type fn, const NodeType* base, unsigned id);
void RemoveType(unsigned id);
/// What a value of several numbers is, by how MFnNumericData numbers it.
MFn::Type NumericData(int subtype);
MFn::Type NumericAttr(int subtype);
/// How many numbers it has, and what each of them is.
std::pair<int, int> PartsOf(int subtype);
AttrPtr MakeAttr(MFn::Type type, const std::string& name, const std::string& brief, int subtype);
void AddChildAttr(Attr& parent, const AttrPtr& child);
void IndexAttr(NodeType& type, const AttrPtr& attr);
AttrPtr FindAttr(const Node& node, const std::string& name);
std::vector<AttrPtr> AllAttrs(const Node& node);

// Nodes. A node that was made is not in the scene yet.
NodePtr MakeNode(const NodeType* type, const std::string& name = "");
void AddNode(const NodePtr& node, Node* parent);
/// Takes a node out, with its connections and all that only it holds below; false for locked ones.
bool DeleteNode(const NodePtr& node, bool force = false);
std::string UniqueName(const std::string& wanted, const Node& node, const Node* parent);
std::string Rename(const NodePtr& node, const std::string& name);
/// As the host makes a name of any text.
std::string LegalName(const std::string& name);
bool Reparent(const NodePtr& node, Node* from, Node* to, bool add = false);
bool IsBelow(const Node* node, const Node* ancestor);
std::vector<MDagPath> PathsTo(const NodePtr& node);
std::string PathName(const MDagPath& path, bool full);
std::string NodeName(const NodePtr& node);
std::vector<MSelectionList::Item> Resolve(const std::string& pattern);
std::string NamespaceOf(const std::string& name);
/// Absolute, without a colon ahead; names without one there are relative to the current namespace.
std::string FullNamespace(const std::string& name);
/// Takes all that is named below it to another, and itself away.
void MoveNamespace(const std::string& from, const std::string& to);
inline std::string Short(const std::string& name) { return name.substr(name.rfind(':') + 1); }
ShapePtr ShapeOf(Node& node);
MMatrix LocalMatrix(Node& node);
NodePtr ShadingOf(const Node& shape);

// Plugs.
PlugRef RefOf(const NodePtr& node, const std::string& plug);
/// With the elements it is in, or with all that it is in.
std::string PlugName(const PlugRef& plug, bool longNames, bool full = false);
PlugRef ChildOf(const PlugRef& plug, std::size_t i);
Value Get(const PlugRef& plug);
/// What is kept, computed or not.
Value Kept(const PlugRef& plug);
/// Puts a value; false when the plug is locked or has an input.
bool Put(const PlugRef& plug, const Value& value, bool callbacks = true);
double GetNumber(Node& node, const char* name);
bool PutNumber(Node& node, const char* name, double value);
unsigned PlugFlags(const PlugRef& plug);
void SetPlugFlag(const PlugRef& plug, AttrFlag flag, bool on);
bool IsLocked(const PlugRef& plug);
std::string AliasOf(const PlugRef& plug);
/// Another name of the plug; an empty one takes it away. False when the name is taken or not legal.
bool SetAlias(const PlugRef& plug, const std::string& alias);
const PlugRef* InputOf(const PlugRef& plug);
std::vector<PlugRef> OutputsOf(const PlugRef& plug);
bool Connect(const PlugRef& source, const PlugRef& destination);
bool Disconnect(const PlugRef& source, const PlugRef& destination);
bool AddAttr(const NodePtr& node, const AttrPtr& attr);
bool RemoveAttr(const NodePtr& node, const AttrPtr& attr);
void Dirty(const PlugRef& plug);
std::vector<int> Indices(const PlugRef& array);
bool IsTimeDependent(Node& node);

// Time: what is evaluated, by the context or the scene.
long long TicksOf(const MTime& time);
MTime TimeOf(long long ticks);
double Seconds(long long ticks);
double EvaluationSeconds();
void SetNow(long long ticks);

template <class T>
std::shared_ptr<T> As(const MObject& object) {
  return std::dynamic_pointer_cast<T>(object.thing);
}
inline NodePtr NodeOf(const MObject& object) { return As<Node>(object); }
inline MObject Obj(const ThingPtr& thing) { return MObject(thing); }
inline void Ok(MStatus* status, bool ok = true) {
  if (status) *status = ok ? MStatus::kSuccess : MStatus::kFailure;
}
inline MStatus St(bool ok) { return ok ? MStatus::kSuccess : MStatus::kFailure; }

}  // namespace mayahost
