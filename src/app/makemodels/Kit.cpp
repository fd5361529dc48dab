#include "Kit.h"

#include <QBuffer>
#include <QImage>
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace orv::app {

namespace {

using Vector = Shape::Vector;

// The picture (pixels; four samples a pixel each way), its eye and its light.
constexpr int kWidth = 480;
constexpr int kHeight = 320;
constexpr int kSamples = 3;
const Vector kTowardsEye = Vector(-0.62, 0.36, -0.70);
const Vector kTowardsSun = Vector(-0.35, 0.80, -0.48);
constexpr double kSky = 0.42;     ///< light from everywhere
constexpr double kMargin = 1.08;  ///< of the picture's edges to the model's

Vector unit(const Vector& v) {
  return v * (1.0 / v.length());
}

/// Samples with depth, seen along parallel lines.
class Canvas {
 public:
  Canvas() : m_depth(static_cast<std::size_t>(kW * kH), -1e9), m_colour(m_depth.size(), kGround) {}

  /// Screen coordinates and depth of the corners; nearer is more.
  void Triangle(const std::array<Vector, 3>& p, const std::array<double, 3>& colour) {
    const double area =
        (p[1].x - p[0].x) * (p[2].y - p[0].y) - (p[2].x - p[0].x) * (p[1].y - p[0].y);
    if (!(std::abs(area) > 1e-9)) return;
    const auto bounds = [&](auto part, int most) {
      const auto [low, high] = std::minmax({part(p[0]), part(p[1]), part(p[2])});
      return std::pair(std::clamp(static_cast<int>(low), 0, most),
                       std::clamp(static_cast<int>(high) + 1, 0, most));
    };
    const auto [x0, x1] = bounds([](const Vector& v) { return v.x; }, kW - 1);
    const auto [y0, y1] = bounds([](const Vector& v) { return v.y; }, kH - 1);
    for (int y = y0; y <= y1; ++y) {
      for (int x = x0; x <= x1; ++x) {
        const double u =
            ((x - p[0].x) * (p[2].y - p[0].y) - (p[2].x - p[0].x) * (y - p[0].y)) / area;
        const double v =
            ((p[1].x - p[0].x) * (y - p[0].y) - (x - p[0].x) * (p[1].y - p[0].y)) / area;
        if (u < 0.0 || v < 0.0 || u + v > 1.0) continue;
        const double depth = p[0].z + u * (p[1].z - p[0].z) + v * (p[2].z - p[0].z);
        const auto at = static_cast<std::size_t>(y * kW + x);
        if (depth <= m_depth[at]) continue;
        m_depth[at] = depth;
        m_colour[at] = colour;
      }
    }
  }

  std::string Png() const {
    QImage image(kWidth, kHeight, QImage::Format_RGB32);
    for (int y = 0; y < kHeight; ++y) {
      for (int x = 0; x < kWidth; ++x) {
        std::array<double, 3> sum{};
        for (int i = 0; i < kSamples * kSamples; ++i) {
          const int at = (y * kSamples + i / kSamples) * kW + x * kSamples + i % kSamples;
          for (std::size_t c = 0; c < 3; ++c) sum[c] += m_colour[static_cast<std::size_t>(at)][c];
        }
        const auto part = [&](std::size_t c) {
          const double linear = std::clamp(sum[c] / (kSamples * kSamples), 0.0, 1.0);
          return static_cast<int>(std::lround(255.0 * std::pow(linear, 1.0 / 2.2)));
        };
        image.setPixel(x, y, qRgb(part(0), part(1), part(2)));
      }
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes.toStdString();
  }

  static constexpr int kW = kWidth * kSamples;
  static constexpr int kH = kHeight * kSamples;

 private:
  static constexpr std::array<double, 3> kGround{0.80, 0.82, 0.84};

  std::vector<double> m_depth;
  std::vector<std::array<double, 3>> m_colour;
};

}  // namespace

int Kit::AddMaterial(const std::string& name, double red, double green, double blue,
                     double metallic, double roughness) {
  GltfBuilder::Material material;
  material.name = name;
  material.colour = {red, green, blue, 1.0};
  material.metallic = metallic;
  material.roughness = roughness;
  m_materials.push_back(material);
  return m_builder.AddMaterial(material);
}

int Kit::AddLight(const std::string& name, double red, double green, double blue) {
  GltfBuilder::Material material;
  material.name = name;
  material.colour = {red, green, blue, 1.0};
  material.glow = {0.6 * red, 0.6 * green, 0.6 * blue};
  material.roughness = 0.3;
  m_materials.push_back(material);
  return m_builder.AddMaterial(material);
}

int Kit::AddPart(const std::string& name, const Vector& place, const Shape& shape, int parent) {
  m_parts.push_back({name, parent, place, shape});
  return static_cast<int>(m_parts.size()) - 1;
}

std::string Kit::Finish() {
  for (const Part& part : m_parts) {
    GltfBuilder::Node node;
    node.name = part.name;
    node.parent = part.parent;
    node.pose.translation = part.place;
    if (part.parent >= 0)
      node.pose.translation = part.place - m_parts[static_cast<std::size_t>(part.parent)].place;
    node.mesh = m_builder.AddMesh(part.name, part.shape.Primitives());
    m_builder.AddNode(node);
  }
  return m_builder.Finish();
}

std::string Kit::MakePicture() const {
  const Vector back = unit(kTowardsEye);
  const Vector right = unit(Vector(0.0, 1.0, 0.0).cross(back));
  const Vector up = back.cross(right);
  const auto seen = [&](const Vector& p) { return Vector(p.dot(right), -p.dot(up), p.dot(back)); };
  Vector low(1e9, 1e9, 0.0), high(-1e9, -1e9, 0.0);
  for (const Part& part : m_parts) {
    for (const Vector& corner : part.shape.GetCorners()) {
      const Vector p = seen(corner + part.place);
      low = {std::min(low.x, p.x), std::min(low.y, p.y), 0.0};
      high = {std::max(high.x, p.x), std::max(high.y, p.y), 0.0};
    }
  }
  const double zoom =
      std::min(Canvas::kW / (high.x - low.x), Canvas::kH / (high.y - low.y)) / kMargin;
  const Vector middle = (low + high) * 0.5;
  Canvas canvas;
  for (const Part& part : m_parts) {
    for (std::size_t i = 0; i < part.shape.GetMaterials().size(); ++i) {
      const Vector* c = &part.shape.GetCorners()[3 * i];
      const Vector normal = unit((c[1] - c[0]).cross(c[2] - c[0]));
      if (normal.dot(back) <= 0.0) continue;
      const GltfBuilder::Material& material =
          m_materials[static_cast<std::size_t>(part.shape.GetMaterials()[i])];
      const Vector half = unit(unit(kTowardsSun) + back);
      const double shine =
          (1.0 - material.roughness) * std::pow(std::max(0.0, normal.dot(half)), 30.0) * 0.5;
      const double light =
          kSky * (0.75 + 0.25 * normal.y) + 0.75 * std::max(0.0, normal.dot(unit(kTowardsSun)));
      std::array<double, 3> colour;
      for (std::size_t k = 0; k < 3; ++k)
        colour[k] = material.colour[k] * light + material.glow[k] + shine;
      std::array<Vector, 3> points;
      for (std::size_t k = 0; k < 3; ++k) {
        const Vector p = seen(c[k] + part.place);
        points[k] = {(p.x - middle.x) * zoom + Canvas::kW / 2.0,
                     (p.y - middle.y) * zoom + Canvas::kH / 2.0, p.z};
      }
      canvas.Triangle(points, colour);
    }
  }
  return canvas.Png();
}

}  // namespace orv::app
