#include "app/studio/PreviewFolder.h"

#include <QGuiApplication>
#include <QImage>
#include <QOffscreenSurface>
#include <QOpenGLContext>
#include <QOpenGLFramebufferObject>
#include <QOpenGLFunctions>
#include <QPainter>
#include <QPalette>
#include <QString>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <optional>
#include <utility>

#include "adaptor/headless/HeadlessAdaptor.h"
#include "app/studio/view/Graphics.h"
#include "app/studio/view/Renderer.h"
#include "app/studio/view/SceneFrames.h"
#include "app/studio/view/StagePicture.h"
#include "app/studio/view/overlay/OverlayView.h"
#include "gui/Texts.h"
#include "util/AtomicFile.h"

namespace orv::app {

namespace fs = std::filesystem;
using gui::Translate;

namespace {

/// The picture without a gate around what the camera sees.
constexpr std::size_t kWhole = view::kInset;
constexpr int kPreviewSamples = 4;

/// A context of its own, so that the windows' views go on.
class OffscreenPicture {
 public:
  /// False, with why, where there is none to be had.
  bool Begin(int width, int height, std::string& problem) {
    problem = view::GetGraphics().problem;
    if (!problem.empty()) return false;
    m_surface.setFormat(view::MakeFormat(0));
    m_surface.create();
    m_context.setFormat(view::MakeFormat(0));
    problem = Translate("there is no OpenGL for it");
    if (!m_context.create() || !m_context.makeCurrent(&m_surface)) return false;
    GLint most = 0;
    m_context.functions()->glGetIntegerv(GL_MAX_RENDERBUFFER_SIZE, &most);
    if (width > most || height > most) {
      problem = Translate("pictures can't be larger than %1 pixels here", {std::to_string(most)});
      return false;
    }
    m_target = std::make_unique<QOpenGLFramebufferObject>(
        width, height, QOpenGLFramebufferObject::CombinedDepthStencil);
    m_renderer = std::make_unique<view::Renderer>();
    return m_target->isValid() && m_target->bind() && m_renderer->Begin(problem);
  }
  ~OffscreenPicture() {
    if (!m_context.isValid() || !m_context.makeCurrent(&m_surface)) return;
    m_renderer.reset();
    m_target.reset();
    m_context.doneCurrent();
  }

  QImage Draw(const view::FramePacket& packet, int samples) {
    // Whoever handles events meanwhile may have drawn elsewhere.
    m_context.makeCurrent(&m_surface);
    m_target->bind();
    const QSize size = m_target->size();
    m_renderer->Draw(packet, {0, 0, size.width(), size.height()}, 1.0, {samples, 1.0});
    return m_target->toImage(true).convertToFormat(QImage::Format_RGB888);
  }

 private:
  QOffscreenSurface m_surface;
  QOpenGLContext m_context;
  std::unique_ptr<QOpenGLFramebufferObject> m_target;
  std::unique_ptr<view::Renderer> m_renderer;
};

/// A neighbour of the folder in which the pictures are collected. What does not become the folder
/// goes.
class FolderInTheMaking {
 public:
  explicit FolderInTheMaking(const std::string& folder)
      : m_folder(util::absolutePath(folder)), m_part(m_folder.string() + ".part") {}
  ~FolderInTheMaking() {
    std::error_code none;
    if (m_isMade) fs::remove_all(m_part, none);
  }

  Problem Begin() {
    std::error_code code;
    if (fs::exists(fs::symlink_status(m_folder, code)) &&
        (!fs::is_directory(m_folder, code) || !fs::is_empty(m_folder, code)))
      return {m_folder.string(),
              Translate("there are files already"),
              Translate("choose another folder"),
              {}};
    if (fs::exists(fs::symlink_status(m_part, code)))
      return {m_part.string(),
              Translate("a preview that was interrupted is in the way"),
              Translate("remove it"),
              {}};
    m_isMade = fs::create_directory(m_part, code);
    if (m_isMade) return {};
    return {m_folder.string(),
            Translate("the folder can't be made: %1", {code.message()}),
            Translate("choose one where you may write"),
            {}};
  }
  std::string PathOf(int frame) const {
    const QString number = QString("%1").arg(std::abs(frame), 4, 10, QChar('0'));
    return (m_part / ((frame < 0 ? "frame.-" : "frame.") + number.toStdString() + ".png")).string();
  }
  Problem Finish() {
    std::error_code code;
    fs::remove(m_folder, code);  // an empty one
    fs::rename(m_part, m_folder, code);
    if (code) return {m_folder.string(), code.message(), "", {}};
    m_isMade = false;
    return {};
  }

 private:
  fs::path m_folder, m_part;
  bool m_isMade = false;
};

/// The host's time is what it was in the end.
class TimeKept {
 public:
  explicit TimeKept(rws::adaptor::headless::HeadlessAdaptor& host)
      : m_host(host), m_time(host.GetCurrentTime()) {}
  ~TimeKept() { m_host.SetCurrentTime(m_time); }
  TimeKept(const TimeKept&) = delete;
  TimeKept& operator=(const TimeKept&) = delete;

 private:
  rws::adaptor::headless::HeadlessAdaptor& m_host;
  const double m_time;
};

void AddOverlay(view::OverlayView& over, int height, view::FramePacket& packet) {
  packet.lines.clear();
  over.Read();
  over.Write(packet, height);
}

void PaintNames(view::OverlayView& over, const view::FramePacket& packet, QImage& image) {
  if (image.isNull() || !over.HasTexts()) return;
  QPainter painter(&image);
  over.PaintNames(painter, packet, image.rect(), QGuiApplication::palette());
}

}  // namespace

PreviewResult WritePreview(rws::adaptor::headless::HeadlessAdaptor& host,
                           const PreviewOptions& options, const std::string& folder,
                           const Monitor& monitor) {
  PreviewResult result;
  if (options.width < 1 || options.height < 1 || options.last < options.first) {
    result.problem = {folder,
                      Translate("there is nothing to write"),
                      Translate("give a size and a range of frames"),
                      {}};
    return result;
  }
  FolderInTheMaking made(folder);
  result.problem = made.Begin();
  if (result.problem) return result;
  OffscreenPicture canvas;
  std::string problem;
  if (!canvas.Begin(options.width, options.height, problem)) {
    result.problem = {folder, problem, "", {}};
    return result;
  }
  view::SceneFrames frames(host);
  frames.Read();  // so that it knows the camera
  frames.LookThrough(options.camera, kWhole);
  frames.SetSignsVisible(options.signs);
  view::StagePicture picture(kWhole);
  picture.SetEye(options.eye);
  picture.packet.grid.visible = options.signs;
  std::optional<view::OverlayView> over;
  if (options.overlay) over.emplace(*options.overlay, frames);
  const TimeKept kept(host);
  const long count = static_cast<long>(options.last) - options.first + 1;
  for (int frame = options.first; frame <= options.last; ++frame) {
    host.SetCurrentTime(frame * host.GetFrameDuration());
    frames.Read();
    picture.Make(frames, static_cast<double>(options.width) / options.height);
    if (over) AddOverlay(*over, options.height, picture.packet);
    QImage image = canvas.Draw(picture.packet, options.isFixedQuality ? 0 : kPreviewSamples);
    if (over) PaintNames(*over, picture.packet, image);
    if (image.isNull() || !image.save(QString::fromStdString(made.PathOf(frame)), "PNG")) {
      result.problem = {folder,
                        Translate("a picture could not be written"),
                        Translate("see that the disk has room"),
                        {}};
      return result;
    }
    monitor.Tell(frame - options.first + 1, count);
    if (monitor.IsCancelled()) {
      result.isCancelled = true;
      return result;
    }
  }
  result.odd = frames.TakeOdd();
  result.problem = made.Finish();
  return result;
}

}  // namespace orv::app
