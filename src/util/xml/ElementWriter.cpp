#include "util/AtomicFile.h"
#include "util/xml/Element.h"
#include "util/xml/Names.h"

namespace orv::util::xml {

namespace {

/// Appends `text` with every byte but printable ASCII as a numeric reference. ">" is one too where
/// the reader would end a mark there.
void appendEscaped(std::string& out, std::string_view text, bool insideMark) {
  std::size_t start = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const unsigned char c = static_cast<unsigned char>(text[i]);
    const bool plain = c >= 0x20 && c < 0x7f && c != '<' && c != '&' && !(insideMark && c == '>');
    if (plain) continue;
    out.append(text, start, i - start);
    out.append("&#").append(std::to_string(c)).append(";");
    start = i + 1;
  }
  out.append(text, start, std::string_view::npos);
}

void appendQuoted(std::string& out, std::string_view value) {
  const bool hasDouble = value.find('"') != std::string_view::npos;
  const bool hasSingle = value.find('\'') != std::string_view::npos;
  const char quote = hasDouble && !hasSingle ? '\'' : '"';
  out += quote;
  while (hasDouble && hasSingle && !value.empty()) {
    const std::size_t next = value.find('"');
    if (next == std::string_view::npos) break;
    appendEscaped(out, value.substr(0, next), true);
    out += "&#34;";
    value.remove_prefix(next + 1);
  }
  appendEscaped(out, value, true);
  out += quote;
}

bool holdsText(const Element& element) {
  for (const Element* child : element.children) {
    if (child->kind == kText) return true;
  }
  return false;
}

/// Why the reader would not give this tree back; empty when it would.
std::string refusalOf(const Element& root) {
  if (root.kind != kTag) return "the root of a document must be a tag";
  std::vector<std::pair<const Element*, int>> pending = {{&root, 1}};
  while (!pending.empty()) {
    const auto [tag, depth] = pending.back();
    pending.pop_back();
    if (depth > kMaxReadDepth) return errorText(kTooDeep);
    if (!isTagName(tag->name)) return "a tag can't have the name \"" + tag->name + "\"";
    for (const auto& [key, value] : tag->attributes)
      if (!isAttributeName(key))
        return "an attribute of <" + tag->name + "> can't have the name \"" + key + "\"";
    for (const Element* child : tag->children)
      if (child->kind == kTag) pending.emplace_back(child, depth + 1);
  }
  return {};
}

/// Writes a tree with a stack of its own, so that depth is no concern.
class Writer {
 public:
  Writer(std::string_view indent, std::string_view lineEnd)
      : m_indent(indent), m_lineEnd(lineEnd) {}

  std::string write(const Element& root) {
    begin(root, false);
    while (!m_open.empty()) {
      Open& open = m_open.back();
      if (open.next < open.tag->children.size()) {
        begin(*open.tag->children[open.next++], open.unbroken);
      } else {
        end();
      }
    }
    return std::move(m_out);
  }

 private:
  struct Open {
    const Element* tag;
    std::size_t next;  ///< child to write next
    bool inside;       ///< the tag stands inside text
    bool unbroken;     ///< its children must not be set on lines of their own
  };

  void begin(const Element& element, bool inside) {
    if (element.kind == kTag) {
      beginTag(element, inside);
    } else if (element.kind == kText) {
      std::string_view content = element.name;
      // The reader skips blanks in front of a text; a reference keeps the first one.
      if (!content.empty() && content.front() == ' ') {
        m_out += "&#32;";
        content.remove_prefix(1);
      }
      appendEscaped(m_out, content, false);
    } else if (element.kind == kComment) {
      beginLine(inside);
      m_out += "<!-- ";
      appendEscaped(m_out, element.name, true);
      m_out += "-- >";  // the blank is meant: readers of ours end a comment at the first ">"
      endLine(inside);
    }
  }

  void beginTag(const Element& tag, bool inside) {
    beginLine(inside);
    m_out.append("<").append(tag.name);
    for (const auto& [key, value] : tag.attributes) {
      m_out.append(" ").append(key).append("=");
      appendQuoted(m_out, value);
    }
    if (tag.children.empty()) {
      m_out += "/>";
      endLine(inside);
      return;
    }
    m_out += '>';
    m_open.push_back({&tag, 0, inside, inside || holdsText(tag)});
    endLine(m_open.back().unbroken);
  }

  void end() {
    const Open open = m_open.back();
    m_open.pop_back();
    beginLine(open.unbroken);
    m_out.append("</").append(open.tag->name).append(">");
    endLine(open.inside);
  }

  void beginLine(bool inside) {
    if (inside || m_indent.empty()) return;
    for (std::size_t i = 0; i < m_open.size(); ++i) m_out += m_indent;
  }
  void endLine(bool inside) {
    if (!inside) m_out += m_lineEnd;
  }

  std::string m_out;
  std::string_view m_indent;
  std::string_view m_lineEnd;
  std::vector<Open> m_open;
};

}  // namespace

std::string Element::toText(std::string_view indent, std::string_view lineEnd) const {
  return Writer(indent, lineEnd).write(*this);
}

bool Element::save(const std::string& path, std::string* error) const {
  if (const std::string refusal = refusalOf(*this); !refusal.empty()) {
    if (error) *error = path + ": it can't be written: " + refusal;
    return false;
  }
  AtomicFile file(path);
  file.write("<?xml version=\"1.0\"?>\n");
  file.write(toText("\t", "\n"));
  const bool done = file.commit();
  if (!done && error) *error = file.error();
  return done;
}

}  // namespace orv::util::xml
