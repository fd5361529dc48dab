#include "app/studio/QtTexts.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QPointer>
#include <QTranslator>

namespace orv::app {

bool LoadQtTexts(const std::string& language) {
  static QPointer<QTranslator> present;
  delete present;  // takes itself off the application
  if (language == "en") return true;
  auto* texts = new QTranslator(QCoreApplication::instance());
  const QString name = QLatin1String("qtbase_") + QString::fromStdString(language);
  present = texts;
  return (texts->load(name, QCoreApplication::applicationDirPath() + "/translations") ||
          texts->load(name, QLibraryInfo::location(QLibraryInfo::TranslationsPath))) &&
         QCoreApplication::installTranslator(texts);
}

}  // namespace orv::app
