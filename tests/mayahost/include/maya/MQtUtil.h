// The program's windows.
#pragma once
#include <maya/MString.h>
class QWidget;
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MQtUtil {
 public:
  static QWidget* mainWindow();
  static QWidget* findControl(const MString& name, const QWidget* parent = NULL);
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
