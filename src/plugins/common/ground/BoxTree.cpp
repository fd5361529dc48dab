#include "plugins/common/ground/BoxTree.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace orv::rws::addon {

using util::Box;
using Vector = BoxTree::Vector;

namespace {

/// Halving by count keeps the tree lower than this.
constexpr int kMostDepth = 64;
/// A step in place of none, which keeps the test of a box free of 0 * infinity.
constexpr double kNoStep = 1e-300;

}  // namespace

void BoxTree::Build(const std::vector<Box>& boxes) {
  struct Task {
    std::int32_t node;
    std::size_t begin, end;
  };
  m_nodes.clear();
  if (boxes.empty()) return;
  std::vector<std::int32_t> order(boxes.size());
  std::iota(order.begin(), order.end(), 0);
  m_nodes.push_back({{}, -1, 0});
  std::vector<Task> tasks{{0, 0, boxes.size()}};
  while (!tasks.empty()) {
    const Task task = tasks.back();
    tasks.pop_back();
    if (task.end - task.begin == 1) {
      m_nodes[static_cast<std::size_t>(task.node)].index = order[task.begin];
      continue;
    }
    Box middles;
    const auto middleOf = [&](std::int32_t i) {
      return boxes[static_cast<std::size_t>(i)].middle();
    };
    for (std::size_t i = task.begin; i < task.end; ++i) middles.add(middleOf(order[i]));
    const Vector size = middles.high - middles.low;
    const int axis = size.x >= size.y && size.x >= size.z ? 0 : size.y >= size.z ? 1 : 2;
    const std::size_t half = task.begin + (task.end - task.begin) / 2;
    const auto at = [&](std::size_t i) { return order.begin() + static_cast<std::ptrdiff_t>(i); };
    std::nth_element(at(task.begin), at(half), at(task.end), [&](std::int32_t a, std::int32_t b) {
      const double x = middleOf(a)[axis], y = middleOf(b)[axis];
      return x != y ? x < y : a < b;
    });
    const auto child = static_cast<std::int32_t>(m_nodes.size());
    m_nodes[static_cast<std::size_t>(task.node)].child = child;
    m_nodes.insert(m_nodes.end(), 2, {{}, -1, 0});
    tasks.push_back({child, task.begin, half});
    tasks.push_back({child + 1, half, task.end});
  }
  Refit(boxes);
}

void BoxTree::Refit(const std::vector<Box>& boxes) {
  for (auto node = m_nodes.rbegin(); node != m_nodes.rend(); ++node) {
    if (node->child < 0) {
      node->box = boxes[static_cast<std::size_t>(node->index)];
      continue;
    }
    node->box = m_nodes[static_cast<std::size_t>(node->child)].box;
    node->box.add(m_nodes[static_cast<std::size_t>(node->child) + 1].box);
  }
}

Vector BoxTree::Inverse(const Vector& direction) {
  Vector inverse;
  for (int i = 0; i < 3; ++i)
    inverse[i] = 1.0 / (direction[i] == 0.0 ? std::copysign(kNoStep, direction[i]) : direction[i]);
  return inverse;
}

double BoxTree::Enter(const Box& box, const Vector& origin, const Vector& inverse, double limit) {
  double enter = 0.0, leave = limit;
  for (int i = 0; i < 3; ++i) {
    const double a = (box.low[i] - origin[i]) * inverse[i];
    const double b = (box.high[i] - origin[i]) * inverse[i];
    enter = std::max(enter, std::min(a, b));
    leave = std::min(leave, std::max(a, b));
  }
  return enter <= leave ? enter : -1.0;
}

void BoxTree::Cross(const Vector& origin, const Vector& direction, double limit,
                    std::vector<Crossing>& out) const {
  out.clear();
  if (m_nodes.empty()) return;
  const Vector inverse = Inverse(direction);
  std::int32_t stack[kMostDepth];
  int depth = 0;
  stack[depth++] = 0;
  while (depth > 0) {
    const Node& node = m_nodes[static_cast<std::size_t>(stack[--depth])];
    const double enter = Enter(node.box, origin, inverse, limit);
    if (enter < 0.0) continue;
    if (node.child < 0) {
      out.push_back({enter, node.index});
      continue;
    }
    stack[depth++] = node.child;
    stack[depth++] = node.child + 1;
  }
  std::sort(out.begin(), out.end(), [](const Crossing& a, const Crossing& b) {
    return a.enter != b.enter ? a.enter < b.enter : a.index < b.index;
  });
}

void BoxTree::FindNear(const Box& place, std::vector<std::int32_t>& out) const {
  if (m_nodes.empty()) return;
  std::int32_t stack[kMostDepth];
  int depth = 0;
  stack[depth++] = 0;
  while (depth > 0) {
    const Node& node = m_nodes[static_cast<std::size_t>(stack[--depth])];
    if (!node.box.meets(place)) continue;
    if (node.child < 0) {
      out.push_back(node.index);
      continue;
    }
    stack[depth++] = node.child + 1;
    stack[depth++] = node.child;
  }
}

}  // namespace orv::rws::addon
