// `dialog`: a window.
#pragma once

#include "gui/StdComponent.h"
#include "gui/componentinterface/Dialog.h"

namespace orv::gui::component {

class Dialog : public Element<componentinterface::Dialog> {
 public:
  explicit Dialog(const util::xml::Element& tag);
  const char* GetElement() const override { return "dialog"; }
  bool KnowsAttribute(std::string_view name) const override;

  void Show() override;
  void Hide() override;
  bool IsShown() const override { return m_shown; }
  void Raise() override;
  bool Close() override { return Close(false); }
  bool Close(bool byEscape);
  void SetModal(bool modal) override { m_modal = modal; }
  bool IsModal() const override { return m_modal; }
  int RunModal() override;
  void EndModal(int answer) override;
  void SetIcon(const std::string& path) override;
  const std::string& GetIcon() const override { return m_icon; }
  std::string GetGeometry() const override;
  bool SetGeometry(const std::string& geometry) override;
  void FitToContent() override;

  const Padding& GetPadding() const { return m_padding; }
  int GetSpacing() const { return m_spacing; }
  bool HasCloseButton() const { return m_closeButton; }
  bool HasMinimizeButton() const { return m_minimizeButton; }
  bool HasTitleBar() const { return m_titleBar; }

  /// What a dialog asks of its toolkit; its peer is one.
  class Window {
   public:
    virtual ~Window() = default;
    virtual void ShowWindow(bool shown) = 0;
    virtual void RaiseWindow() = 0;
    /// Returns when EndLoop was called.
    virtual void RunLoop() = 0;
    virtual void EndLoop() = 0;
    virtual std::string ReadGeometry() const = 0;
    virtual bool WriteGeometry(const std::string& geometry) = 0;
    virtual void FitWindow() = 0;
  };

  const std::string& GetHeldGeometry() const { return m_geometry; }

 protected:
  void PeerGoes() override;

 private:
  Window* GetWindow() const;

  Padding m_padding;
  int m_spacing;
  std::string m_icon;
  std::string m_geometry;  ///< to be taken when it is realised
  bool m_closeButton = true, m_minimizeButton = false, m_titleBar = true;
  bool m_shown = false, m_modal = false, m_inLoop = false;
  int m_answer = 0;
};

}  // namespace orv::gui::component
