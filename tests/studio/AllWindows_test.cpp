// What holds for each window: it is read, heard and reached, in any look and language.
#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>
#include <QScrollArea>
#include <QScrollBar>
#include <QTreeView>
#include <QXmlStreamReader>

#include "app/studio/HeadlessBrowser.h"
#include "app/studio/QtTexts.h"
#include "app/studio/timeline/CurveStrip.h"
#include "app/studio/timeline/Timeline.h"
#include "app/studio/windows/CurvesPage.h"
#include "app/studio/windows/FollowWindow.h"
#include "app/studio/windows/HelpWindow.h"
#include "app/studio/windows/ImportWindow.h"
#include "app/studio/windows/MakeModelWindow.h"
#include "app/studio/windows/ModelsWindow.h"
#include "app/studio/windows/PunchWindow.h"
#include "core/WindowIds.h"
#include "core/instances/Instance.h"
#include "core/instances/InstanceReference.h"
#include "core/interface/CInterface.h"
#include "core/services/Translation.h"
#include "core/tools/Tool.h"
#include "core/windows/CountdownWindow.h"
#include "core/windows/FitCarWindow.h"
#include "core/windows/MainWindowIds.h"
#include "core/windows/MenuIds.h"
#include "core/windows/MessageBoxWindow.h"
#include "core/windows/ResimulationWindow.h"
#include "gui/Texts.h"
#include "gui/component/qt/Images.h"
#include "gui/component/qt/Scale.h"
#include "gui/component/qt/Theme.h"
#include "gui/componentinterface/Button.h"
#include "support/WindowsTest.h"

namespace orv::tests {

namespace {

using namespace rws::core::windows;
namespace core = rws::core;
namespace qt = gui::component::qt;

constexpr char kLongText[] =
    "xxxxx xxxxxx xxxxxx xxxxxxxx xxxxx xxxxxxxxx xxxxxxx xxxxxxxxx xxxxxx xxxx xxxxxxx xxxxxxx "
    "xxxxx xxxxxx xxxxxx xxxxxxxx xxxxx xxxxxxxxx xxxxxxx xxxxxxxxx xxxxxx xxxx xxxxxxx xxxxxxx";

std::string Name(const QWidget& widget) {
  return std::string(widget.metaObject()->className()) + " " + widget.objectName().toStdString() +
         " \"" + widget.accessibleName().toStdString() + "\"";
}

/// Texts that a widget shows by itself.
QStringList TextsOf(const QWidget& widget) {
  if (const auto* label = qobject_cast<const QLabel*>(&widget)) return {label->text()};
  if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) return {button->text()};
  if (const auto* box = qobject_cast<const QComboBox*>(&widget)) return {box->currentText()};
  if (const auto* line = qobject_cast<const QLineEdit*>(&widget)) return {line->placeholderText()};
  if (const auto* header = qobject_cast<const QHeaderView*>(&widget)) {
    QStringList titles;
    for (int i = 0; i < header->count(); ++i)
      titles << header->model()->headerData(i, Qt::Horizontal).toString();
    return titles;
  }
  return {};
}

/// What a widget's text needs and has not got; empty when all is seen.
std::string Clipped(const QWidget& widget) {
  QSize needed = widget.minimumSizeHint();
  if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
    if (label->text().isEmpty()) return {};
    if (!label->wordWrap()) needed = label->sizeHint();
    needed.setHeight(label->wordWrap() ? label->heightForWidth(label->width()) : needed.height());
  } else if (const auto* box = qobject_cast<const QComboBox*>(&widget)) {
    needed.setWidth(box->fontMetrics().boundingRect(box->currentText()).width() + 24);
  } else if (const auto* line = qobject_cast<const QLineEdit*>(&widget)) {
    needed.setWidth(line->fontMetrics().boundingRect(line->placeholderText()).width() + 8);
  } else if (const auto* header = qobject_cast<const QHeaderView*>(&widget)) {
    for (int i = 0; header->orientation() == Qt::Horizontal && i < header->count(); ++i)
      if (header->sectionSize(i) < header->sectionSizeHint(i)) return "column " + std::to_string(i);
    return {};
  } else if (const auto* bar = qobject_cast<const QMenuBar*>(&widget)) {
    for (QAction* menu : bar->actions())
      if (!bar->rect().contains(bar->actionGeometry(menu))) return menu->text().toStdString();
    return {};
  } else if (const auto* area = qobject_cast<const QScrollArea*>(&widget)) {
    return area->horizontalScrollBar()->maximum() > 0 ? "it scrolls sideways" : "";
  }
  const QRect inside = widget.parentWidget() ? widget.parentWidget()->rect() : widget.rect();
  const auto* scrolled = qobject_cast<QScrollArea*>(
      widget.parentWidget() ? widget.parentWidget()->parentWidget() : nullptr);
  if (!widget.isWindow() && !scrolled && !inside.contains(widget.geometry()))
    return "it lies beyond what it stands in";
  if (widget.layout()) needed.setHeight(0);  // what stands in it tells better
  if (needed.width() <= widget.width() && needed.height() <= widget.height()) return {};
  return "needs " + std::to_string(needed.width()) + " x " + std::to_string(needed.height()) +
         ", has " + std::to_string(widget.width()) + " x " + std::to_string(widget.height());
}

/// A line of a row that is cut off must be heard of by a tooltip.
std::string ClippedRows(const QTreeView& tree) {
  for (int row = 0; row < tree.model()->rowCount(); ++row)
    for (int column = 0; column < tree.model()->columnCount(); ++column) {
      const QModelIndex index = tree.model()->index(row, column);
      const QString text = index.data().toString();
      const bool whole = tree.visualRect(index).width() >= tree.fontMetrics().width(text);
      if (!whole && index.data(Qt::ToolTipRole).toString().isEmpty()) return text.toStdString();
    }
  return {};
}

class AllWindows : public WindowsTest {
 protected:
  AllWindows()
      : browser(WindowsTest::core, session.GetAdaptor(), [](double) { return std::string(); }) {
    program.browser = &browser;
    program.timeline = &timeline;
    program.makePages = [this](MainWindowFrame& frame, const Program::AddPage& add) {
      add(std::make_unique<app::CurvesPage>(frame, curves));
    };
    QApplication::setFont(QFont("DejaVu Sans", 9));  // as small as systems have it
    qt::ApplyTheme(*qApp, qt::Theme::kLight);
    for (int id = kProgramCommands; id < kFirstRecent; ++id) program.has.insert(id);
    Begin();
    car = Add("4WheelerExt", "Car");
    Add("Firepower", "Gun");
    WindowsTest::core.SetSelection({car});
    rws::core::Instance* rig = WindowsTest::core.FindRow(car)->GetInstance();
    for (int i = 0; i < rig->GetProperties().count(); ++i) {
      app::InputDrag::Track track;
      track.set(0.0, 0.5);
      rig->SetTrack(i, track);
    }
    curves.SetVisible(true);
    WindowsTest::core.ArmInputs(*rig, std::vector<bool>{true});
    windows->Open(WindowKind::kMain)->GetWidget()->resize(qt::Scaled(1000), qt::Scaled(700));
  }
  ~AllWindows() override {
    Speak("en");
    windows.reset();  // they look at the browser
  }

  void Speak(const std::string& language) {
    ASSERT_TRUE(core::LoadLanguage(language));
    gui::SetTranslator([](const std::string& text) { return core::Translate(text); });
    windows->ShowSettings();
  }

  /// Shows one after the other, the main window with each of its pages.
  void Each(const std::function<void(QWidget& top)>& look) {
    const auto shown = [&](Window& window) {
      SCOPED_TRACE(window.name());
      // The main window has come to rest when it has looked for what is new.
      const int rest = window.name() == "MainWindow" ? 200 : 40;
      QElapsedTimer time;
      for (time.start(); time.elapsed() < rest;) QApplication::processEvents();
      look(*window.GetWidget()->window());
    };
    Window& main = *windows->Open(WindowKind::kMain);
    for (const int page : {kPageUndo, kPageDevices, kPageParameters}) {
      main.GetRoot()->Get<gui::componentinterface::Button>(page)->Click();
      shown(main);
    }
    for (const WindowKind kind :
         {WindowKind::kDevices, WindowKind::kPreferences, WindowKind::kLog, WindowKind::kHotKeys,
          WindowKind::kWhy, WindowKind::kAbout, WindowKind::kLicence, WindowKind::kToolConfig,
          WindowKind::kInputConfig})
      if (Window* window = windows->Open(kind, kind >= WindowKind::kToolConfig ? car : 0)) {
        shown(*window);
        windows->Drop(kind, kind >= WindowKind::kToolConfig ? car : 0);
      }
    CountdownWindow countdown(*windows);
    countdown.Show();
    countdown.Set(3, 0.5);
    shown(countdown);
    ResimulationWindow resimulation(*windows);
    resimulation.Open(true, true);
    resimulation.SetStatus(
        {0.4f, "40% - 0 minutes and 5 seconds", "0 to 500", "200", "200 of 500", "5"});
    shown(resimulation);
    MessageBoxWindow box(*windows, "Title", kLongText,
                         rws::kButtonsYesNoCancel | rws::kIconWarning);
    box.Show();
    shown(box);
    FitCarWindow fit(*windows, browser, car);
    app::HelpWindow help(*windows);
    const app::ModelFacts facts{};
    app::ImportWindow import(*windows, "/models/of/a/Car.fbx", facts);
    app::MakeModelWindow make(*windows, browser);
    app::ModelsWindow models(*windows, {"ground"});
    app::PunchWindow punch(*windows, {1.0, 2.5});
    app::FollowWindow follow(*windows);
    for (Window* window :
         std::initializer_list<Window*>{&fit, &help, &import, &make, &models, &punch, &follow}) {
      window->Show();
      shown(*window);
      window->Hide();
    }
  }

  app::HeadlessBrowser browser;
  app::Timeline timeline{WindowsTest::core, session.GetAdaptor(), browser};
  app::CurveStrip curves{WindowsTest::core, session.GetAdaptor(), timeline};
  int car = 0;
};

}  // namespace

TEST_F(AllWindows, ShowTextsWhole) {
  // A theme changes no widths: each language in one of them.
  for (const char* language : {"en", "de"}) {
    SCOPED_TRACE(language);
    qt::ApplyTheme(*qApp, language[0] == 'e' ? qt::Theme::kLight : qt::Theme::kDark);
    Speak(language);
    Each([](QWidget& top) {
      for (QWidget* widget : top.findChildren<QWidget*>()) {
        if (!widget->isVisible() || widget->window() != &top) continue;
        EXPECT_EQ(Clipped(*widget), "")
            << Name(*widget) << ": " << TextsOf(*widget).join(" | ").toStdString();
        const auto* tree = qobject_cast<QTreeView*>(widget);
        EXPECT_EQ(tree ? ClippedRows(*tree) : "", "") << Name(*widget);
      }
    });
  }
}

TEST_F(AllWindows, SpeakTheUsersLanguage) {
  std::set<std::string> known, lacking;
  QFile file(ORV_SOURCE_DIR "/data/translations/rigwright_de.ts");
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  QXmlStreamReader xml(&file);
  while (!xml.atEnd())
    if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == "source")
      known.insert(xml.readElementText().toStdString());
  // What went through the translator is in brackets; numbers, names and files are no texts.
  const QRegularExpression words("[A-Za-z]{3}");
  QStringList names{"Orvel Rigwright", "Car", "Gun", "English", "Deutsch", "Title", "200 of 500",
                    "0 to 500", "Car.fbx", "ground",
                    // The core's own translator says this.
                    "This program needs no licence: everything is allowed."};
  for (core::Tool* tool : WindowsTest::core.GetLibrary().GetTools()) {
    names << QString::fromStdString(tool->GetDisplayId());
    for (const std::string& profile : tool->GetConfigProfiles().GetNames())
      names << QString::fromStdString(profile);
    for (const std::string& profile : tool->GetInputProfiles().GetNames())
      names << QString::fromStdString(profile);
  }
  gui::SetTranslator([&](const std::string& text) {
    const QString last = QString::fromStdString(text).section(' ', -1);  // as in "Create Firepower"
    if (QString::fromStdString(text).contains(words) && !known.count(text) &&
        !names.contains(QString::fromStdString(text)) && !names.contains(last))
      lacking.insert(text);
    return "\u27e6" + text + "\u27e7";
  });
  windows->ShowSettings();
  Each([&](QWidget& top) {
    for (const QWidget* widget : top.findChildren<QWidget*>())
      for (const QString& text : TextsOf(*widget))
        if (widget->isVisible() && text.contains(words) && !names.contains(text) &&
            !text.contains("xxx") && !text.contains("<html>")) {
          EXPECT_TRUE(text.contains(QChar(0x27e6))) << Name(*widget) << text.toStdString();
        }
  });
  ASSERT_TRUE(app::LoadQtTexts("de"));
  EXPECT_EQ(QFileDialog::tr("File &name:"), "Datei&name:");
  ASSERT_TRUE(app::LoadQtTexts("en"));
  EXPECT_EQ(QFileDialog::tr("File &name:"), "File &name:");
  EXPECT_EQ(lacking, std::set<std::string>{}) << "scripts/update_translations.py finds them not";
}

TEST_F(AllWindows, AreReachedAndHeardWithoutAMouse) {
  for (const char* language : {"en", "de"}) {
    SCOPED_TRACE(language);
    Speak(language);
    Each([](QWidget& top) {
      EXPECT_EQ(Unnamed(top), std::vector<std::string>{});
      // Tab comes back to where it began and has been everywhere.
      std::set<QWidget*> round;
      QWidget* at = &top;
      do round.insert(at);
      while ((at = at->nextInFocusChain()) != &top);
      for (QWidget* widget : top.findChildren<QWidget*>()) {
        const bool reachable = widget->isVisible() && (widget->focusPolicy() & Qt::TabFocus);
        if (!reachable || widget->window() != &top) continue;
        EXPECT_EQ(round.count(widget), 1u) << Name(*widget);
        // Who has the focus is seen.
        top.setAttribute(Qt::WA_KeyboardFocusChange);
        widget->clearFocus();
        const QImage before = widget->grab().toImage();
        widget->setFocus(Qt::TabFocusReason);
        // Rows and links show it by themselves.
        const bool isPart = widget->inherits("QAbstractItemView") || widget->inherits("QLabel");
        if (widget->hasFocus() && !isPart) {
          EXPECT_NE(before, widget->grab().toImage()) << Name(*widget);
        }
      }
      for (QMenuBar* bar : top.findChildren<QMenuBar*>())
        for (QAction* menu : bar->actions()) {
          EXPECT_NE(menu->text().indexOf('&'), -1) << menu->text().toStdString();
          if (!menu->menu()) continue;
          std::set<QChar> letters;
          for (QAction* entry : menu->menu()->actions()) {
            const int mark = entry->text().indexOf('&');
            if (entry->isSeparator() || !entry->isVisible()) continue;
            EXPECT_NE(mark, -1) << entry->text().toStdString();
            EXPECT_TRUE(letters.insert(entry->text()[mark + 1].toLower()).second)
                << entry->text().toStdString();
          }
        }
      // To these two the core says when they close.
      if (top.objectName() == "Countdown" || top.objectName() == "Resimulation") return;
      if (top.objectName() == "MainWindow") return;
      QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
      QApplication::sendEvent(&top, &escape);
      EXPECT_FALSE(top.isVisible()) << "Escape leaves it open";
    });
  }
}

TEST_F(AllWindows, HaveTheirIconsInBothThemes) {
  // Each name that a document or the code tells is there, and nothing is drawn that nobody names.
  std::set<QString> named, drawn;
  const QRegularExpression icon("\\[coreimages\\]/icons/([\\w-]+)\\.png");
  for (const char* folder : {"/src", "/data"}) {
    QDirIterator files(QString(ORV_SOURCE_DIR) + folder, {"*.cpp", "*.h", "*.xml"}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
      QFile file(files.next());
      ASSERT_TRUE(file.open(QIODevice::ReadOnly));
      auto found = icon.globalMatch(QString::fromUtf8(file.readAll()));
      while (found.hasNext()) named.insert(found.next().captured(1));
    }
  }
  for (const QString& file : QDir(":/data/core/images/icons/light").entryList({"*_16.png"}))
    drawn.insert(file.left(file.size() - 7));
  EXPECT_EQ(named, drawn) << "data/core/images/icons.txt lists what is drawn";

  Window& main = *windows->Find(WindowKind::kMain);
  const auto& button =
      *qobject_cast<QAbstractButton*>(qt::WidgetOf(*main.GetRoot()->Find(kTakeRetry)));
  const auto colour = [&](int size) {
    const QImage image = button.icon().pixmap(size, size).toImage();
    EXPECT_EQ(image.width(), size);
    double light = 0.0, weight = 0.0;
    for (int x = 0; x < image.width(); ++x)
      for (int y = 0; y < image.height(); ++y) {
        light += image.pixelColor(x, y).lightnessF() * image.pixelColor(x, y).alphaF();
        weight += image.pixelColor(x, y).alphaF();
      }
    return light / weight;
  };
  for (const int size : {16, 32}) {
    qt::ApplyTheme(*qApp, qt::Theme::kDark);
    QApplication::processEvents();
    EXPECT_GT(colour(size), 0.7);
    qt::ApplyTheme(*qApp, qt::Theme::kLight);
    QApplication::processEvents();
    EXPECT_LT(colour(size), 0.4);
  }
  // The user's own wins.
  QDir().mkpath(QString::fromStdString(folder.path) + "/data/core/images/icons");
  QImage red(16, 16, QImage::Format_RGB32);
  red.fill(Qt::red);
  ASSERT_TRUE(red.save(QString::fromStdString(folder.path) + "/data/core/images/icons/stop.png"));
  EXPECT_EQ(qt::LoadPixmap(*main.GetRoot(), "[coreimages]/icons/stop.png", button)
                .toImage()
                .pixelColor(8, 8),
            QColor(Qt::red));
}

}  // namespace orv::tests
