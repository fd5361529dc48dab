// The program's windows.
#pragma once
#include <maya/MString.h>
class QWidget;
OPENMAYA_MAJOR_NAMESPACE_OPEN
class MQtUtil {
 public:
  static QWidget* mainWindow();
  static QWidget* findControl(const MString& name, const QWidget* parent = NULL);
  static QWidget* findLayout(const MString& name, const QWidget* parent = NULL);
  static QWidget* findWindow(const MString& name, const QWidget* parent = NULL);
  static double dpiScale(float size) { return size; }
  static int dpiScale(int size) { return size; }
};
OPENMAYA_MAJOR_NAMESPACE_CLOSE
