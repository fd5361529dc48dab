#include <algorithm>
#include <cstring>

#include "util/AtomicFile.h"
#include "util/xml/Element.h"
#include "util/xml/Names.h"

namespace orv::util::xml {

namespace {

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

/// Line and column, from 1. A column is a character of UTF-8, as editors count.
std::string placeOf(std::string_view document, const char* at) {
  const std::string_view before = document.substr(0, std::size_t(at - document.data()));
  const auto lines = std::count(before.begin(), before.end(), '\n');
  const auto line = before.substr(before.rfind('\n') + 1);
  const auto column = std::count_if(
      line.begin(), line.end(), [](char c) { return (static_cast<unsigned char>(c) >> 6) != 2; });
  return "line " + std::to_string(lines + 1) + ", column " + std::to_string(column + 1);
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
    if (!m_open.empty()) return fail(kMalformed, m_open.back().at, "the tag is not closed");
    if (m_built.empty()) return fail(kNoRoot, m_end);
    root = std::move(*m_built.front());
    return kReadOk;
  }
  /// Of an error: where in the document, and in words.
  const char* where() const { return m_where; }
  const char* why() const { return m_why; }

 private:
  struct Open {
    std::size_t place;  ///< of the tag in `m_built`
    const char* at;     ///< of its mark
  };

  int fail(ReadError error, const char* at, const char* why = nullptr) {
    m_where = at;
    m_why = why ? why : errorText(error);
    return error;
  }

  int readMark() {
    m_mark = m_at;
    const char* at = m_at + 1;
    const char* end = find(at, m_end, '>');
    m_at = end == m_end ? m_end : end + 1;
    const char first = at == end ? '\0' : *at;
    if (first == '!') return addComment(commentContent({at + 1, std::size_t(end - at - 1)}));
    if (first == '/') {
      readName(at + 1, end);
      return close(end);
    }
    const bool isEmptyElement = end != m_end && end != at && end[-1] == '/';
    readName(at, isEmptyElement ? end - 1 : end);
    const int error = readAttributes(isEmptyElement ? end - 1 : end);
    if (error) return error;
    // The declaration line carries nothing for us, nor does any other such mark.
    if (!m_name.empty() && m_name.front() == '?') return kReadOk;
    return open(isEmptyElement);
  }

  /// Also the white space behind the name.
  void readName(const char* at, const char* end) {
    at = skipSpace(at, end);
    const char* const start = at;
    while (at != end && !isSpace(*at)) ++at;
    m_name = {start, std::size_t(at - start)};
    m_behindName = skipSpace(at, end);
  }

  int readAttributes(const char* end) {
    m_attributes.clear();
    for (const char* at = m_behindName; at != end && *at != '?'; at = skipSpace(at, end)) {
      const char* start = at;
      const auto broken = [&] { return fail(kMalformed, start, "the attribute is broken"); };
      while (at != end && *at != '=' && !isSpace(*at)) ++at;
      const std::string_view key(start, std::size_t(at - start));
      if (end - at < 2 || at[0] != '=' || (at[1] != '"' && at[1] != '\'')) return broken();
      const char* const value = at + 2;
      at = find(value, end, at[1]);
      if (at == end) return broken();
      m_attributes.emplace_back(key, std::string_view(value, std::size_t(at - value)));
      ++at;
    }
    return kReadOk;
  }

  int open(bool isEmptyElement) {
    if (m_open.empty() && !m_built.empty()) return fail(kOutsideRoot, m_mark);
    if (!hasEndsOfTagName(m_name)) return fail(kBadName, m_mark);
    if (m_open.size() >= std::size_t(kMaxReadDepth)) return fail(kTooDeep, m_mark);
    Element& tag = append(kTag);
    tag.name.assign(m_name);
    tag.attributes.resize(m_attributes.size());
    for (std::size_t i = 0; i < m_attributes.size(); ++i) {
      tag.attributes[i].first.assign(m_attributes[i].first);
      appendDecoded(tag.attributes[i].second, m_attributes[i].second);
    }
    if (!isEmptyElement) m_open.push_back({m_built.size() - 1, m_mark});
    return kReadOk;
  }

  /// A closing mark, which ends at `end`.
  int close(const char* end) {
    if (m_open.empty()) return fail(kWrongClosing, m_mark);
    const std::size_t place = m_open.back().place;
    Element& tag = *m_built[place];
    if (m_name != tag.name) return fail(kWrongClosing, m_mark);
    if (m_behindName != end)
      return fail(kMalformed, m_behindName, "a closing tag holds more than its name");
    const auto first = m_built.begin() + std::ptrdiff_t(place + 1);
    tag.children.assign(first, m_built.end());
    m_built.erase(first, m_built.end());
    m_open.pop_back();
    return kReadOk;
  }

  int readText() {
    if (m_open.empty()) return fail(kOutsideRoot, m_at);
    const char* const end = find(m_at, m_end, '<');
    const bool continues =
        m_open.back().place + 1 < m_built.size() && m_built.back()->kind == kText;
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
  const char* m_mark = nullptr;        ///< where the mark read last begins
  std::string_view m_name;             ///< of that mark
  const char* m_behindName = nullptr;  ///< and where something else may stand in it
  std::vector<std::pair<std::string_view, std::string_view>> m_attributes;  ///< of that mark
  // Elements whose parent is still open, in document order, so that a tag's children lie behind it
  // until it closes and gets them in one go.
  std::vector<Element*> m_built;
  std::vector<Open> m_open;
  const char* m_where = nullptr;
  const char* m_why = "";
};

}  // namespace

int Element::loadText(std::string_view document, std::string* problem) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  if (document.substr(0, kByteOrderMark.size()) == kByteOrderMark) {
    document.remove_prefix(kByteOrderMark.size());
  }
  Element root;
  Reader reader(document);
  const int error = reader.read(root);
  if (error && problem) *problem = placeOf(document, reader.where()) + ": " + reader.why();
  Element::operator=(std::move(root));  // after an error the empty element
  return error;
}

int Element::load(const std::string& path, std::string* problem) {
  std::string document;
  if (!readFile(path, document, problem)) {
    Element::operator=(Element());
    return kCannotRead;
  }
  const int error = loadText(document, problem);
  if (error && problem) *problem = path + ": " + *problem;
  return error;
}

}  // namespace orv::util::xml
