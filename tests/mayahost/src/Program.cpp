// Programs of their own, file formats of plug-ins.
#include <maya/MFileObject.h>
#include <maya/MLibrary.h>
#include <maya/MPxFileTranslator.h>
#include <maya/MPxLocatorNode.h>
#include <maya/MSceneMessage.h>

#include <cstdlib>
#include <filesystem>

#include "Command.h"
#include "Notify.h"

using namespace mayahost;
OPENMAYA_MAJOR_NAMESPACE_OPEN
MStatus MLibrary::initialize(bool wantScriptOutput, char* name, bool) {
  if (!name) return MS::kInvalidParameter;
  Reset();
  TheState().batch = TheState().library = true, TheState().alone = wantScriptOutput;
  return NotifyScene(MSceneMessage::kMayaInitialized), MS::kSuccess;
}
void MLibrary::cleanup(int exitStatus, bool exitWhenDone) {
  NotifyScene(MSceneMessage::kMayaExiting);
  if (exitWhenDone) std::exit(exitStatus);
}

MString MFileObject::rawName() const { return std::filesystem::path(fName.asChar()).filename().c_str(); }
MString MFileObject::rawPath() const {
  const MString path = std::filesystem::path(fName.asChar()).parent_path().c_str();
  return path.length() ? path + "/" : path;
}
MStatus MFileObject::setRawPath(const MString& path) { return setRawFullName((std::filesystem::path(path.asChar()) / rawName().asChar()).c_str()); }
bool MFileObject::exists() const { return std::filesystem::exists(expandedFullName().asChar()); }

namespace {
MPxFileTranslator::FileAccessMode g_mode = MPxFileTranslator::kUnknownAccessMode;
}
MStatus MPxFileTranslator::reader(const MFileObject&, const MString&, FileAccessMode) { return MS::kNotImplemented; }
MStatus MPxFileTranslator::writer(const MFileObject&, const MString&, FileAccessMode) { return MS::kNotImplemented; }
MPxFileTranslator::MFileKind MPxFileTranslator::identifyFile(const MFileObject& file, const char*, short) const {
  const std::string end = "." + std::string(defaultExtension().asChar()), name = file.rawName().asChar();
  return end.size() > 1 && name.size() > end.size() && name.substr(name.size() - end.size()) == end ? kCouldBeMyFileType : kNotMyFileType;
}
MPxFileTranslator::FileAccessMode MPxFileTranslator::fileAccessMode() { return g_mode; }

#define LOCATOR(member, name) MObject MPxLocatorNode::member = Obj(FindType("locator")->byName.at(name));
LOCATOR(localPosition, "localPosition")
LOCATOR(localPositionX, "localPositionX")
LOCATOR(localPositionY, "localPositionY")
LOCATOR(localPositionZ, "localPositionZ")
LOCATOR(localScale, "localScale")
LOCATOR(localScaleX, "localScaleX")
LOCATOR(localScaleY, "localScaleY")
LOCATOR(localScaleZ, "localScaleZ")
LOCATOR(worldMatrix, "worldMatrix")
LOCATOR(matrix, "matrix")
LOCATOR(inverseMatrix, "inverseMatrix")
LOCATOR(parentMatrix, "parentMatrix")
LOCATOR(parentInverseMatrix, "parentInverseMatrix")
LOCATOR(worldInverseMatrix, "worldInverseMatrix")
LOCATOR(visibility, "visibility")
LOCATOR(intermediateObject, "intermediateObject")
OPENMAYA_MAJOR_NAMESPACE_CLOSE

namespace mayahost {
std::shared_ptr<MPxFileTranslator> TranslatorFor(const std::string& type, const std::string& file, bool write, std::string& options) {
  MFileObject object;
  object.setRawFullName(file.c_str());
  for (const auto& [name, translator] : TheState().translators) {
    const std::shared_ptr<MPxFileTranslator> made(static_cast<MPxFileTranslator*>(translator.creator()));
    if (write ? !made->haveWriteMethod() : !made->haveReadMethod()) continue;
    if (type.empty() ? write || made->identifyFile(object, "", 0) == MPxFileTranslator::kNotMyFileType : name != type) continue;
    return options = options.empty() ? translator.options : options, made;
  }
  return nullptr;
}
bool Translate(MPxFileTranslator& translator, const std::string& file, const std::string& options, int mode) {
  MFileObject object;
  object.setRawFullName(file.c_str());
  g_mode = static_cast<MPxFileTranslator::FileAccessMode>(mode);
  const bool write = mode >= MPxFileTranslator::kSaveAccessMode;
  const MStatus status = write ? translator.writer(object, options.c_str(), g_mode) : translator.reader(object, options.c_str(), g_mode);
  g_mode = MPxFileTranslator::kUnknownAccessMode;
  return status == MStatus::kSuccess;
}
}  // namespace mayahost
