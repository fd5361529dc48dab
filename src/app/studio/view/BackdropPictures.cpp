#include "app/studio/view/BackdropPictures.h"

#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>
#include <QRegularExpression>
#include <algorithm>
#include <cstdlib>

namespace orv::app::view {

util::Sentence CheckPicture(const std::string& file) {
  const QString path = QString::fromStdString(file);
  if (!QFileInfo(path).isFile()) return "there is no such file";
  return QImageReader(path).canRead() ? util::Sentence() : "it is no picture that can be read";
}

const BackdropPictures::Sequence& BackdropPictures::FindSequence(const std::string& file) {
  const auto [at, isNew] = m_sequences.emplace(file, Sequence());
  Sequence& sequence = at->second;
  if (!isNew) return sequence;
  sequence.files[0] = file;
  // The last number of the name.
  static const QRegularExpression numbered(R"(^(.*?)(\d{1,9})(\D*)$)");
  const QFileInfo info(QString::fromStdString(file));
  const auto match = numbered.match(info.fileName());
  if (!match.hasMatch()) return sequence;
  std::map<int, std::string> others;
  const QRegularExpression same("^" + QRegularExpression::escape(match.captured(1)) +
                                R"((\d{1,9}))" + QRegularExpression::escape(match.captured(3)) +
                                "$");
  for (const QString& name : info.dir().entryList(QDir::Files)) {
    const auto other = same.match(name);
    if (other.hasMatch())
      others[other.captured(1).toInt()] = info.dir().filePath(name).toStdString();
  }
  sequence.chosen = match.captured(2).toInt();
  if (others.size() < 2) {
    sequence.files = {{sequence.chosen, file}};
    return sequence;
  }
  sequence.files = std::move(others);
  const int first = sequence.files.begin()->first, last = sequence.files.rbegin()->first;
  const auto missing = static_cast<std::size_t>(last - first) + 1 - sequence.files.size();
  if (missing > 0)
    m_odd.push_back(file + ": of the pictures " + std::to_string(first) + " to " +
                    std::to_string(last) + " " + std::to_string(missing) +
                    " are missing; the one before stands in for each");
  return sequence;
}

const std::string& BackdropPictures::FileAt(const Sequence& sequence, long number) {
  auto next =
      sequence.files.upper_bound(static_cast<int>(std::clamp<long>(number, -1, 1000000000)));
  return (next == sequence.files.begin() ? next : std::prev(next))->second;
}

bool BackdropPictures::IsHeld(const std::string& file) const {
  return std::any_of(m_held.begin(), m_held.end(),
                     [&file](const Held& held) { return held.file == file; });
}

std::shared_ptr<const Texture> BackdropPictures::Load(const std::string& file) {
  const auto known = std::find_if(m_held.begin(), m_held.end(),
                                  [&file](const Held& held) { return held.file == file; });
  if (known != m_held.end()) {
    m_held.splice(m_held.begin(), m_held, known);
    return known->picture;
  }
  QImageReader reader(QString::fromStdString(file));
  reader.setAutoTransform(true);
  const QSize size = reader.size();
  if (std::max(size.width(), size.height()) > kLongestSide)
    reader.setScaledSize(size.scaled(kLongestSide, kLongestSide, Qt::KeepAspectRatio));
  const QImage image = reader.read().convertToFormat(QImage::Format_RGBA8888);
  Held held{file, nullptr};
  if (image.isNull()) {
    m_odd.push_back(file + ": " + reader.errorString().toStdString());
  } else {
    auto picture = std::make_shared<Texture>();
    picture->width = image.width();
    picture->height = image.height();
    const auto row = static_cast<std::size_t>(4 * image.width());
    picture->pixels.reserve(row * static_cast<std::size_t>(image.height()));
    for (int y = 0; y < image.height(); ++y)
      picture->pixels.insert(picture->pixels.end(), image.constScanLine(y),
                             image.constScanLine(y) + row);
    m_bytes += picture->pixels.size();
    held.picture = std::move(picture);
  }
  m_held.push_front(held);
  // The one that was just read stays, however large.
  while (m_bytes > kMostBytes && m_held.size() > 1) {
    if (m_held.back().picture) m_bytes -= m_held.back().picture->pixels.size();
    m_held.pop_back();
  }
  return held.picture;
}

std::shared_ptr<const Texture> BackdropPictures::Find(const Backdrop& backdrop, int frame) {
  if (m_latest == backdrop && frame != m_latestFrame)
    m_stride = std::clamp(frame - m_latestFrame, -8, 8);
  m_latest = backdrop;
  m_latestFrame = frame;
  const Sequence& sequence = FindSequence(backdrop.file);
  return Load(FileAt(sequence, static_cast<long>(sequence.chosen) + frame - backdrop.frame));
}

bool BackdropPictures::LoadAhead() {
  if (m_latest.file.empty()) return false;
  const Sequence& sequence = FindSequence(m_latest.file);
  for (int i = 1; i <= kAhead; ++i) {
    const std::string& file =
        FileAt(sequence, static_cast<long>(sequence.chosen) + m_latestFrame - m_latest.frame +
                             static_cast<long>(i) * m_stride);
    if (IsHeld(file)) continue;
    Load(file);
    return true;
  }
  return false;
}

}  // namespace orv::app::view
