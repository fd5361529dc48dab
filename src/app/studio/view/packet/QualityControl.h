// How fine a picture the machine bears.
#pragma once

#include <array>
#include <cstddef>

namespace orv::app::view {

struct PictureQuality {
  int samples = 0;     ///< of each pixel; 0 for one, without a buffer for more
  double scale = 1.0;  ///< of width and height, (0, 1]
  /// Coarser meshes may look otherwise, but lie where they should to some pixels; of the grid there
  /// are the coarse lines alone.
  bool isRough = false;
};

/// Takes the costs of pictures that are drawn one after the other, and gives up samples, then
/// pixels, while they take too long; what is easy for long is drawn better again. Where fewer
/// pixels are no gain, as with too many triangles, they stay.
class QualityControl {
 public:
  /// Without a graphics processor each sample costs as much as the picture: there are none.
  explicit QualityControl(bool isSoftware);

  PictureQuality Get() const { return kSteps[m_step]; }
  /// The same, with all pixels: for a picture that stays.
  PictureQuality GetAtRest() const { return {kSteps[m_step].samples, 1.0}; }
  /// What a picture of this quality has cost (ms).
  void Note(double cost);
  /// What was found out holds no longer: another scene, or another size.
  void Restart();

 private:
  static constexpr std::size_t kWindow = 7;  ///< pictures that are judged together
  static constexpr std::array<PictureQuality, 5> kSteps{
      {{4, 1.0}, {2, 1.0}, {0, 1.0}, {0, 0.75}, {0, 0.5}}};

  std::array<double, kWindow> m_costs{};
  std::size_t m_count = 0;
  std::size_t m_best, m_step, m_lowest = kSteps.size() - 1;
  double m_before = 0.0;    ///< cost before the step down that is tried; 0 for none
  bool m_isTrying = false;  ///< the latest step went up
  int m_patience = 1;       ///< easy windows before a step up
  int m_easy = 0;           ///< such windows so far
};

}  // namespace orv::app::view
