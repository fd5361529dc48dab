#include "app/studio/windows/HelpWindow.h"

#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTextDocument>
#include <QUrl>

#include "app/studio/windows/StudioWindowIds.h"
#include "gui/GuiMessages.h"
#include "gui/componentinterface/Dialog.h"
#include "gui/componentinterface/Label.h"
#include "gui/componentinterface/ListBox.h"

namespace orv::app {

namespace {

using namespace gui::componentinterface;

constexpr char kRoot[] = ":/help/";
/// What a reader needs first comes first; the pages of the rigs follow.
constexpr const char* kFirstPages[] = {
    "first-steps.md", "first-take.md", "studio.md",  "delivery.md", "devices.md",
    "windows.md",     "cli.md",        "formats.md", "layout.md",   "vendor.md"};

QString ReadText(const std::string& path) {
  QFile file(QString::fromStdString(kRoot + path));
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

std::string TitleOf(const std::string& path) {
  const QString text = ReadText(path);
  // Without what stands in brackets, such as a rig's longer name.
  return text.mid(2, text.indexOf('\n') - 2).section(" (", 0, 0).toStdString();
}

/// A page's path from what another page calls it.
std::string Resolved(const std::string& page, const QString& link) {
  const QString folder = QString::fromStdString(page).section('/', 0, -2);
  return QDir::cleanPath((folder.isEmpty() ? link : folder + "/" + link)).toStdString();
}

std::string HtmlOf(const std::string& page) {
  QString text = ReadText(page);
  // Pictures lie beside the pages, within the program.
  static const QRegularExpression picture(R"(!\[([^\]]*)\]\(([^)]*)\))");
  for (auto match = picture.match(text); match.hasMatch();
       match = picture.match(text, match.capturedEnd()))
    text.replace(match.capturedStart(2), match.capturedLength(2),
                 kRoot + QString::fromStdString(Resolved(page, match.captured(2))));
  QTextDocument document;
  document.setMarkdown(text, QTextDocument::MarkdownDialectGitHub);
  return document.toHtml().toStdString();
}

}  // namespace

HelpWindow::HelpWindow(rws::core::windows::Windows& windows)
    : Window(windows, "Help", "/core/layout/rws_help.xml") {
  for (const char* path : kFirstPages) m_pages.push_back({path, TitleOf(path)});
  for (const QString& name : QDir(QString(kRoot) + "rigs")
                                 .entryList({"*.md"}, QDir::Files, QDir::Name | QDir::IgnoreCase)) {
    const std::string path = "rigs/" + name.toStdString();
    m_pages.push_back({path, TitleOf(path)});
  }
}

void HelpWindow::OnBuilt() {
  With<ListBox>(kHelpPages, [this](ListBox& list) {
    std::vector<Item> items;
    for (const Page& page : m_pages) {
      Item item;
      item.id = static_cast<int>(items.size()) + 1;
      item.text = page.title;
      items.push_back(std::move(item));
    }
    list.SetItems(std::move(items));
    list.Select({1});
  });
  ShowPage(0);
}

void HelpWindow::ShowPage(std::size_t page) {
  m_shown = page;
  SetText(kHelpText, HtmlOf(m_pages[page].path));
}

void HelpWindow::Follow(const std::string& link) {
  const QString target = QString::fromStdString(link);
  if (target.startsWith("http")) {
    QDesktopServices::openUrl(QUrl(target));
    return;
  }
  const std::string path = Resolved(m_pages[m_shown].path, target.section('#', 0, 0));
  for (std::size_t i = 0; i < m_pages.size(); ++i) {
    if (m_pages[i].path != path) continue;
    With<ListBox>(kHelpPages, [i](ListBox& list) { list.Select({static_cast<int>(i) + 1}); });
    ShowPage(i);
  }
}

void HelpWindow::OnComponent(gui::Component& source, util::Message& message) {
  const int id = source.GetId();
  if (id == kHelpPages && message.id == gui::kMsgSelectionChanged && message.param > 0)
    return ShowPage(static_cast<std::size_t>(message.param - 1));
  if (message.id != gui::kMsgClicked) return;
  if (const auto* link = gui::DataOf<gui::LinkClicked>(message); link && id == kHelpText)
    Follow(link->link);
  if (id == kHelpClose) Hide();
}

}  // namespace orv::app
