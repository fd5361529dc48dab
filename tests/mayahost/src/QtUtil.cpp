// The program's window; in a source of its own, so that programs without windows link without Qt.
#include <maya/M3dView.h>
#include <maya/MQtUtil.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QMainWindow>

#include "Fn.h"
#include "State.h"

using namespace mayahost;

OPENMAYA_MAJOR_NAMESPACE_OPEN
QWidget* M3dView::applicationShell(MStatus* status) { return Ok(status, !TheState().batch), MQtUtil::mainWindow(); }
QWidget* MQtUtil::mainWindow() {
  static QMainWindow* window = nullptr;
  if (!TheState().batch && qApp && !window) {
    window = new QMainWindow;
    qAddPostRoutine([] { delete std::exchange(window, nullptr); });
  }
  return TheState().batch ? nullptr : window;
}
QWidget* MQtUtil::findControl(const MString& name, const QWidget* parent) {
  const QWidget* from = parent ? parent : mainWindow();
  return from ? from->findChild<QWidget*>(name.asChar()) : nullptr;
}
OPENMAYA_MAJOR_NAMESPACE_CLOSE
