// From a document to a tree of components.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>

#include "gui/Component.h"
#include "util/FactoryList.h"

namespace orv::gui {

inline constexpr int kMaxLayoutDepth = 64;
inline constexpr int kMaxLayoutElements = 10000;

/// What a layout needs of its surroundings; any of them may be empty.
struct LayoutServices {
  /// Bytes of a user's document, by a path such as "/core/layout/rws_resimulate.xml" below the data
  /// root. False when there is none.
  std::function<bool(const std::string& path, std::string& bytes)> readUser;
  /// The same of the documents that the program carries.
  std::function<bool(const std::string& path, std::string& bytes)> readFactory;
  /// A line for the log: what is wrong with a document, and what was done about it.
  std::function<void(const std::string& line)> log;
};

/// Builds trees and keeps the documents that it has read, so that a window or row that is opened
/// again costs no parsing.
///
/// A user's document wins over the carried one. One that is no XML, whose root is not the carried
/// document's (or none of dialog, list and border), or which is deeper or has more elements than
/// the limits falls back to the carried one, with a line in the log. An element that no factory
/// knows is left out with its children, an attribute that its element does not know is passed over;
/// each is logged once.
class Layout {
 public:
  using Factories = util::FactoryList<Component>;

  /// Without `factories` those of AbstractFactory<Component>, the language's own registered.
  explicit Layout(LayoutServices services, const Factories* factories = nullptr);
  Layout(const Layout&) = delete;
  Layout& operator=(const Layout&) = delete;
  ~Layout();

  /// A new tree, or null, with a line in the log, when neither document can be used.
  ComponentPtr Load(const std::string& path);
  /// Of a text at hand, which `name` stands for in the log. Null when it can't be used.
  ComponentPtr LoadText(std::string_view document, const std::string& name);
  /// A new tree of a row's document as a child of `parent`, which owns it; realised at once when
  /// the parent is. Null, with `parent` as it was, when the document can't be used. Ids mean what
  /// they mean below the result. Freeze the parent around many of them.
  Component* Instantiate(const std::string& path, Component& parent, int index = -1);

  /// Reads all documents anew when they are needed next.
  void Forget();

 private:
  const util::xml::Element* Document(const std::string& path);
  std::unique_ptr<util::xml::Element> Read(const std::string& path);
  std::unique_ptr<util::xml::Element> Parse(std::string_view bytes, const std::string& name,
                                            std::string& problem) const;
  ComponentPtr Build(const util::xml::Element& tag, const std::string& name);
  void LogOnce(const std::string& line);
  void Log(const std::string& line) const;

  LayoutServices m_services;
  const Factories& m_factories;
  std::map<std::string, std::unique_ptr<util::xml::Element>> m_documents;
  std::set<std::string> m_logged;
};

}  // namespace orv::gui
