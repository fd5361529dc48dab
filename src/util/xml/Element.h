/// The tree behind every text format of the system: profiles, layouts, a tool's save data.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orv::util::xml {

/// What an element is; the values stand in `Element::kind`.
enum Kind : int {
  kTag = 1,      ///< `name` is the tag's name
  kText = 2,     ///< `name` is the content
  kComment = 4,  ///< `name` is the content
};

/// What `load` and `loadText` return. `errorText` puts each into words.
enum ReadError : int {
  kReadOk = 0,
  kCannotRead = 1,    ///< the file is absent or unreadable
  kNoRoot = 2,        ///< no tag in the whole text
  kOutsideRoot = 3,   ///< text or a second tag beside the root
  kWrongClosing = 4,  ///< a closing tag that does not match the open one
  kMalformed = 5,     ///< a broken attribute, or the text ends inside a tag
  kBadName = 6,       ///< a tag with no name, or with one that could not be written back
  kTooDeep = 7,       ///< nested deeper than `kMaxReadDepth`
};

/// Deepest nesting that a document may have to be read. Trees built in memory have no limit.
inline constexpr int kMaxReadDepth = 1000;

/// A sentence part for a message, such as "an attribute is broken or a tag is not closed".
const char* errorText(int readError);

/// One node of a document. Strings are bytes in no particular encoding.
///
/// An element owns its children and deletes them; a copy is deep. Copying, comparing, writing and
/// destroying take no stack per level. The writer cannot escape names: see `save` for what a tree
/// must keep to.
class Element {
 public:
  Element() = default;
  Element(const Element& other);
  Element(Element&& other) noexcept;
  Element& operator=(Element&& other) noexcept;

  /// Deep copy. `other` may be part of this tree.
  virtual Element& operator=(const Element& other);
  /// Replaces `name` and returns it.
  virtual const std::string& setName(const std::string& newName);
  /// Appends a copy as the last child and returns the copy. An element with an empty name and no
  /// children is not added: this element itself is returned.
  virtual Element& addChild(const Element& child);
  virtual ~Element();

  /// As `addChild`, but takes the content of `child` over instead of copying it.
  Element& emplaceChild(Element&& child);
  /// Removes the first child that equals `child`. False when none does.
  bool removeChild(const Element& child);

  /// The child of that name at `index` among its namesakes (text and comments have no name). The
  /// shared empty element when there is none, so lookups chain without checks.
  const Element& child(std::string_view childName, int index = 0) const;
  /// As `child`, to change what is found; null when there is none.
  Element* findChild(std::string_view childName, int index = 0);
  /// The shared empty element.
  static const Element& empty();
  /// True for the shared empty element and all that look like it: no kind, name or content.
  bool isEmpty() const {
    return kind == 0 && name.empty() && attributes.empty() && children.empty();
  }

  /// True for a tag of that name.
  bool isTag(std::string_view tagName) const { return kind == kTag && name == tagName; }
  bool hasAttribute(std::string_view attributeName) const;
  /// The value of the first attribute of that name; empty when there is none.
  std::string attribute(std::string_view attributeName) const;
  /// Replaces the first attribute of that name, or appends a new one.
  void setAttribute(std::string_view attributeName, std::string_view value);

  /// The content of all text children, joined.
  std::string text() const;
  /// Replaces all text children by one (none when `content` is empty), behind the other children.
  void setText(std::string_view content);

  /// Reads a file into this element, which becomes the root. 0 or a `ReadError`; after an error the
  /// element is empty, and `problem`, when given, names path, line, column and reason.
  int load(const std::string& path, std::string* problem = nullptr);
  /// As `load`, from memory, and with no path in `problem`. The declaration line may be absent.
  int loadText(std::string_view document, std::string* problem = nullptr);

  /// The element and all below it, without a declaration. Each element stands on a line of its own
  /// but for what lies beside or in text, which is written without a break.
  std::string toText(std::string_view indent = "\t", std::string_view lineEnd = "\n") const;
  /// Writes the declaration and the tree; the file is replaced whole or stays as it was. On failure
  /// `error`, when given, names the path and the reason. A tree that `load` would refuse or take
  /// for another is not written: a root that is no tag, names that no mark can hold, deeper nesting
  /// than `kMaxReadDepth`.
  bool save(const std::string& path, std::string* error = nullptr) const;

  std::vector<std::pair<std::string, std::string>> attributes;  ///< name and value, in order
  std::vector<Element*> children;                               ///< owned
  std::string name;  ///< a tag's name, or the content of a text or comment
  int kind = 0;      ///< a `Kind`; any other value writes nothing

 private:
  Element& adopt(Element* child);
  void destroyChildren() noexcept;
};

/// Same kind, name, attributes in the same order, and equal children.
bool operator==(const Element& a, const Element& b);
inline bool operator!=(const Element& a, const Element& b) {
  return !(a == b);
}

}  // namespace orv::util::xml
