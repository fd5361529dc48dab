#include "adaptor/headless/GltfLines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace orv::rws::adaptor::headless {

namespace {

using Point = util::Vector3<double>;

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

using Coordinates = std::array<double, 3>;

struct PlaceHash {
  std::size_t operator()(const Coordinates& place) const {
    std::size_t hash = 0;
    for (const double x : place) hash = hash * 1000003 + std::hash<double>()(x);
    return hash;
  }
};

struct Line {
  std::size_t from, to;  ///< points
};

/// The lines and where they meet.
class Net {
 public:
  Net(const std::vector<double>& numbers, const std::vector<std::uint32_t>& corners) {
    std::unordered_map<Coordinates, std::size_t, PlaceHash> places;
    std::unordered_set<std::uint64_t> known;
    const auto pointAt = [&](std::uint32_t corner) {
      const double* p = &numbers[3 * static_cast<std::size_t>(corner)];
      if (!std::isfinite(p[0]) || !std::isfinite(p[1]) || !std::isfinite(p[2])) return kNone;
      const auto [at, isNew] = places.emplace(Coordinates{p[0], p[1], p[2]}, points.size());
      if (isNew) {
        points.emplace_back(p[0], p[1], p[2]);
        linesAt.emplace_back();
      }
      return at->second;
    };
    for (std::size_t i = 0; i + 1 < corners.size(); i += 2) {
      const Line line{pointAt(corners[i]), pointAt(corners[i + 1])};
      if (line.from == kNone || line.to == kNone || line.from == line.to) continue;
      const auto [low, high] = std::minmax(line.from, line.to);
      if (!known.insert(std::uint64_t{high} << 32 | low).second) continue;
      linesAt[line.from].push_back(lines.size());
      linesAt[line.to].push_back(lines.size());
      lines.push_back(line);
    }
  }

  std::vector<Point> points;
  std::vector<Line> lines;
  std::vector<std::vector<std::size_t>> linesAt;  ///< by point
};

/// Lines one behind the other.
struct Chain {
  std::vector<std::size_t> points;
  bool closed = false;
  double length = 0.0;  ///< m
};

/// Finds the chains of a net one after the other.
class Walker {
 public:
  explicit Walker(const Net& net) : m_net(net), m_walked(net.lines.size(), false) {}

  /// The chain that holds this line, which was not walked yet. Empty where lines branch.
  Chain ChainOf(std::size_t line) {
    const std::vector<std::size_t> around = PartOf(line);
    std::size_t begin = m_net.lines[around.front()].from;
    bool open = false;
    for (const std::size_t one : around) {
      for (const std::size_t point : {m_net.lines[one].from, m_net.lines[one].to}) {
        if (m_net.linesAt[point].size() > 2) return {};
        if (m_net.linesAt[point].size() != 1 || open) continue;
        begin = point;
        open = true;
      }
    }
    Chain chain = Walk(begin, open ? m_net.linesAt[begin].front() : around.front());
    if (m_backward > m_forward) TurnRound(chain);
    return chain;
  }

  bool IsWalked(std::size_t line) const { return m_walked[line]; }

 private:
  /// All lines that hang together with this one, by their numbers.
  std::vector<std::size_t> PartOf(std::size_t line) {
    std::vector<std::size_t> part{line}, open{line};
    m_walked[line] = true;
    while (!open.empty()) {
      const Line at = m_net.lines[open.back()];
      open.pop_back();
      for (const std::size_t point : {at.from, at.to}) {
        for (const std::size_t next : m_net.linesAt[point]) {
          if (m_walked[next]) continue;
          m_walked[next] = true;
          part.push_back(next);
          open.push_back(next);
        }
      }
    }
    std::sort(part.begin(), part.end());
    return part;
  }

  Chain Walk(std::size_t begin, std::size_t line) {
    Chain chain;
    chain.points.push_back(begin);
    m_forward = m_backward = 0;
    for (;;) {
      const std::size_t at = chain.points.back();
      const bool forward = m_net.lines[line].from == at;
      const std::size_t next = forward ? m_net.lines[line].to : m_net.lines[line].from;
      ++(forward ? m_forward : m_backward);
      chain.length += (m_net.points[next] - m_net.points[at]).length();
      if ((chain.closed = next == begin)) return chain;
      chain.points.push_back(next);
      const auto& there = m_net.linesAt[next];
      if (there.size() == 1) return chain;
      line = there[there.front() == line ? 1 : 0];
    }
  }

  /// A loop keeps its first point.
  static void TurnRound(Chain& chain) {
    std::vector<std::size_t> turned(chain.points.rbegin(), chain.points.rend());
    if (chain.closed) std::rotate(turned.begin(), turned.end() - 1, turned.end());
    chain.points = std::move(turned);
  }

  const Net& m_net;
  std::vector<bool> m_walked;         ///< by line
  int m_forward = 0, m_backward = 0;  ///< lines of the latest chain, by how they point along it
};

}  // namespace

std::shared_ptr<const Curve> LongestChain(const std::vector<double>& numbers,
                                          const std::vector<std::uint32_t>& corners,
                                          std::string& left) {
  const Net net(numbers, corners);
  Walker walker(net);
  Chain longest;
  int chains = 0, branched = 0;
  for (std::size_t i = 0; i < net.lines.size(); ++i) {
    if (walker.IsWalked(i)) continue;
    Chain chain = walker.ChainOf(i);
    ++(chain.points.empty() ? branched : chains);
    if (chain.length > longest.length) longest = std::move(chain);
  }
  if (branched > 0) left = "lines that branch are no curve";
  if (chains > 1)
    left += (left.empty() ? "" : ", and ") + std::string("of ") + std::to_string(chains) +
            " chains of lines only the longest is seen here";
  if (longest.points.empty()) return nullptr;
  auto curve = std::make_shared<Curve>();
  curve->closed = longest.closed;
  for (const std::size_t point : longest.points) curve->points.push_back(net.points[point]);
  return curve;
}

}  // namespace orv::rws::adaptor::headless
