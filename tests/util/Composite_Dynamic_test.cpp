#include "util/Composite_Dynamic.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "util/AbstractFactory.h"
#include "util/DynamicObject.h"

using namespace orv::util;

namespace {

std::string g_log;
std::string takeLog() {
  return std::exchange(g_log, {});
}

struct Leaf : DynamicObject, Composite_Dynamic<Leaf> {
  explicit Leaf(std::string n, bool kept = false) : name(std::move(n)), outlives(kept) {}
  ~Leaf() override { g_log += "~" + name + " "; }
  void destroyNode() override {
    if (!outlives) destroy();
  }
  void childRemoving() override { g_log += name + (m_parent ? "-removing " : "?"); }
  void childRemoved() override { g_log += name + (m_parent ? "?" : "-removed "); }
  void onChildAdded(Leaf* c, int i) override { g_log += name + "+" + c->name + at(i); }
  void onChildRemoved(Leaf* c, int i) override { g_log += name + "-" + c->name + at(i); }
  static std::string at(int i) { return "@" + std::to_string(i) + " "; }
  std::string name;
  bool outlives;
};

struct Widget {
  struct Factory : DynamicObject {
    Factory(std::string k, std::string m) : key(std::move(k)), mark(std::move(m)) {}
    ~Factory() override { g_log += "~" + mark; }
    virtual std::string name() { return key; }
    std::string key, mark;
  };
};

}  // namespace

TEST(Composite_Dynamic, ChildrenEnterAndLeaveWithTheirHooksInOrder) {
  Leaf root("root"), other("other");
  auto *a = new Leaf("a"), *b = new Leaf("b"), *c = new Leaf("c");
  root.addChild(a);
  root.addChild(c);
  root.insertChild(b, 1);
  EXPECT_EQ(takeLog(), "root+a@0 root+c@1 root+b@1 ");
  EXPECT_EQ(root.children(), (std::vector<Leaf*>{a, b, c}));
  EXPECT_FALSE(other.removeChild(b));
  other.addChild(b);  // leaves the parent that it had
  EXPECT_EQ(takeLog(), "b-removing b-removed root-b@1 other+b@0 ");
  a->destroy();  // takes itself out; its own hooks are gone by then, its parent's are not
  EXPECT_EQ(takeLog(), "~a root-a@0 ");
}

TEST(Composite_Dynamic, ADyingParentDestroysItsChildrenLastFirst) {
  Leaf survivor("survivor", true);
  auto *root = new Leaf("root"), *a = new Leaf("a");
  for (Leaf* child : {a, &survivor, new Leaf("b")}) root->addChild(child);
  a->addChild(new Leaf("inner"));
  takeLog();
  root->destroy();
  EXPECT_EQ(takeLog(), "~root ~b survivor-removing survivor-removed ~a ~inner ");
  EXPECT_EQ(survivor.parent(), nullptr);
}

TEST(Composite_Dynamic, AFactoryWhoseNameIsTakenByAnotherIsDestroyedAtOnce) {
  takeLog();
  auto& list = AbstractFactory<Widget>::instance();
  auto* const first = new Widget::Factory("button", "first");
  EXPECT_TRUE(list.add(first) && !list.add(first));
  EXPECT_TRUE(list.add(new Widget::Factory("butto", "short")));
  EXPECT_FALSE(list.add(new Widget::Factory("button", "second")));
  EXPECT_EQ(takeLog(), "~second");
  EXPECT_TRUE(list.find("button") == first && list.find("butto")->mark == "short");
}
