// The pages of help.
#pragma once

#include <string>
#include <vector>

#include "core/windows/Window.h"

namespace orv::app {

/// Shows the documents that the program carries, by their titles; needs no network.
class HelpWindow : public rws::core::windows::Window {
 public:
  explicit HelpWindow(rws::core::windows::Windows& windows);

 protected:
  void OnBuilt() override;
  void OnComponent(gui::Component& source, util::Message& message) override;

 private:
  struct Page {
    std::string path;  ///< below ":/help/"
    std::string title;
  };

  void ShowPage(std::size_t page);
  void Follow(const std::string& link);

  std::vector<Page> m_pages;
  std::size_t m_shown = 0;
};

}  // namespace orv::app
