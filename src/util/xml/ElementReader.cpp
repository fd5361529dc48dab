#include <cstring>

#include "util/AtomicFile.h"
#include "util/xml/Element.h"

namespace orv::util::xml {

namespace {

constexpr bool isSpace(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

const char* skipSpace(const char* at, const char* end) {
  while (at != end && isSpace(*at)) ++at;
  return at;
}

/// First `wanted` in [at, end), or `end`.
const char* find(const char* at, const char* end, char wanted) {
  const void* found =
      at == end ? nullptr : std::memchr(at, wanted, static_cast<std::size_t>(end - at));
  return found ? static_cast<const char*>(found) : end;
}

int digitValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return 16;
}

/// Reads a numeric reference at `at`, which points to "&". Returns the address behind it, or null
/// when there is none or its number is no byte: it then stays as it stands.
const char* readReference(const char* at, const char* end, char& byte) {
  if (end - at < 3 || at[1] != '#') return nullptr;
  at += 2;
  const int base = *at == 'x' ? 16 : 10;
  if (base == 16) ++at;
  const char* const digits = at;
  int value = 0;
  for (; at != end && digitValue(*at) < base; ++at) {
    value = value * base + digitValue(*at);
    if (value > 255) return nullptr;
  }
  if (at == digits) return nullptr;
  byte = static_cast<char>(value);
  return at != end && *at == ';' ? at + 1 : at;
}

/// Appends the text with its numeric references turned back into bytes.
void appendDecoded(std::string& out, std::string_view text) {
  const char* at = text.data();
  const char* const end = at + text.size();
  while (at != end) {
    const char* const mark = find(at, end, '&');
    out.append(at, mark);
    if (mark == end) return;
    char byte = '&';
    const char* const behind = readReference(mark, end, byte);
    out += byte;
    at = behind ? behind : mark + 1;
  }
}

/// What the writer puts around a comment's content, or what others do.
std::string_view commentContent(std::string_view mark) {
  const auto startsWith = [&](std::string_view s) { return mark.substr(0, s.size()) == s; };
  const auto endsWith = [&](std::string_view s) {
    return mark.size() >= s.size() && mark.substr(mark.size() - s.size()) == s;
  };
  if (startsWith("--")) mark.remove_prefix(2);
  if (startsWith(" ")) mark.remove_prefix(1);
  if (endsWith("-- ")) {
    mark.remove_suffix(3);
  } else if (endsWith("--")) {
    mark.remove_suffix(2);
  }
  return mark;
}

/// The reader would take such a tag for something else when the writer has written it.
bool isWritable(std::string_view name) {
  return !name.empty() && name.front() != '/' && name.front() != '!' && name.back() != '/';
}

/// Cuts a document into tokens and builds its tree from them.
class Reader {
 public:
  explicit Reader(std::string_view document)
      : m_at(document.data()), m_end(document.data() + document.size()) {}
  ~Reader() {
    for (Element* element : m_built) delete element;
  }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  int read(Element& root) {
    for (m_at = skipSpace(m_at, m_end); m_at != m_end; m_at = skipSpace(m_at, m_end)) {
      const int error = *m_at == '<' ? readMark() : readText();
      if (error) return error;
    }
    if (!m_open.empty()) return kMalformed;
    if (m_built.empty()) return kNoRoot;
    root = std::move(*m_built.front());
    return kReadOk;
  }

 private:
  int readMark() {
    const char* at = m_at + 1;
    const char* end = find(at, m_end, '>');
    m_at = end == m_end ? m_end : end + 1;
    const char first = at == end ? '\0' : *at;
    if (first == '!') return addComment(commentContent({at + 1, std::size_t(end - at - 1)}));
    if (first == '/') {
      const int error = readNameAndAttributes(at + 1, end);
      return error ? error : close();
    }
    const bool isEmptyElement = end != m_end && end != at && end[-1] == '/';
    const int error = readNameAndAttributes(at, isEmptyElement ? end - 1 : end);
    if (error) return error;
    // The declaration line carries nothing for us, nor does any other such mark.
    if (!m_name.empty() && m_name.front() == '?') return kReadOk;
    return open(isEmptyElement);
  }

  int readNameAndAttributes(const char* at, const char* end) {
    m_attributes.clear();
    at = skipSpace(at, end);
    const char* start = at;
    while (at != end && !isSpace(*at)) ++at;
    m_name = {start, std::size_t(at - start)};
    for (at = skipSpace(at, end); at != end && *at != '?'; at = skipSpace(at, end)) {
      start = at;
      while (at != end && *at != '=' && !isSpace(*at)) ++at;
      const std::string_view key(start, std::size_t(at - start));
      if (end - at < 2 || at[0] != '=' || (at[1] != '"' && at[1] != '\'')) return kMalformed;
      start = at + 2;
      at = find(start, end, at[1]);
      if (at == end) return kMalformed;
      m_attributes.emplace_back(key, std::string_view(start, std::size_t(at - start)));
      ++at;
    }
    return kReadOk;
  }

  int open(bool isEmptyElement) {
    if (m_open.empty() && !m_built.empty()) return kOutsideRoot;
    if (!isWritable(m_name)) return kBadName;
    if (m_open.size() >= std::size_t(kMaxReadDepth)) return kTooDeep;
    Element& tag = append(kTag);
    tag.name.assign(m_name);
    tag.attributes.resize(m_attributes.size());
    for (std::size_t i = 0; i < m_attributes.size(); ++i) {
      tag.attributes[i].first.assign(m_attributes[i].first);
      appendDecoded(tag.attributes[i].second, m_attributes[i].second);
    }
    if (!isEmptyElement) m_open.push_back(m_built.size() - 1);
    return kReadOk;
  }

  int close() {
    if (m_open.empty()) return kWrongClosing;
    Element& tag = *m_built[m_open.back()];
    if (m_name != tag.name) return kWrongClosing;
    const auto first = m_built.begin() + std::ptrdiff_t(m_open.back() + 1);
    tag.children.assign(first, m_built.end());
    m_built.erase(first, m_built.end());
    m_open.pop_back();
    return kReadOk;
  }

  int readText() {
    if (m_open.empty()) return kOutsideRoot;
    const char* const end = find(m_at, m_end, '<');
    const bool continues = m_open.back() + 1 < m_built.size() && m_built.back()->kind == kText;
    Element& text = continues ? *m_built.back() : append(kText);
    appendDecoded(text.name, {m_at, std::size_t(end - m_at)});
    m_at = end;
    return kReadOk;
  }

  int addComment(std::string_view content) {
    if (!m_open.empty() && !content.empty()) appendDecoded(append(kComment).name, content);
    return kReadOk;
  }

  Element& append(Kind kind) {
    m_built.push_back(nullptr);
    m_built.back() = new Element;
    m_built.back()->kind = kind;
    return *m_built.back();
  }

  const char* m_at;
  const char* m_end;
  std::string_view m_name;  ///< of the mark read last
  std::vector<std::pair<std::string_view, std::string_view>> m_attributes;  ///< of that mark
  // Elements whose parent is still open, in document order, so that a tag's children lie behind it
  // until it closes and gets them in one go.
  std::vector<Element*> m_built;
  std::vector<std::size_t> m_open;  ///< open tags, as places in `m_built`
};

}  // namespace

int Element::loadText(std::string_view document) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (document.substr(0, kByteOrderMark.size()) == kByteOrderMark) {
    document.remove_prefix(kByteOrderMark.size());
  }
  Element root;
  const int error = Reader(document).read(root);
  Element::operator=(std::move(root));  // after an error the empty element
  return error;
}

int Element::load(const std::string& path) {
  std::string document;
  if (!readFile(path, document)) {
    Element::operator=(Element());
    return kCannotRead;
  }
  return loadText(document);
}

}  // namespace orv::util::xml
